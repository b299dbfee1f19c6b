#pragma once

#include "Model/AppModel.h"

#include <QDialog>
#include <map>

class QLineEdit;
class QRadioButton;

namespace quorvel {

/// Asks for the name and the first design of a new deck, and makes it.
class NewDeckSheet : public QDialog {
    Q_OBJECT
public:
    NewDeckSheet(AppModel& model, QWidget* window);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QWidget* makeKinds();
    void create();

    AppModel& model_;
    QLineEdit* name_ = nullptr;
    std::map<SampleTemplates::Kind, QRadioButton*> kinds_;
};

}  // namespace quorvel
