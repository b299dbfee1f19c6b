#pragma once

#include "Model/AppModel.h"

#include <QDialog>

class QLineEdit;

namespace quorvel {

/// Asks for a deck's new name, and renames it.
class RenameDialog : public QDialog {
    Q_OBJECT
public:
    RenameDialog(AppModel& model, const DeckProject& deck, QWidget* window);

private:
    void rename();

    AppModel& model_;
    UUID deck_;
    QLineEdit* name_ = nullptr;
};

}  // namespace quorvel
