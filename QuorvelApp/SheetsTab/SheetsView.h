#pragma once

#include "Model/AppModel.h"

#include <QWidget>

namespace quorvel {

class PrintForm;
class SheetPreview;

/// Paper, imposition, backs and exports, with a live preview of one sheet. Reads the model and calls its operations;
/// keeps no state of its own. While it isn't seen it follows nothing.
class SheetsView : public QWidget {
    Q_OBJECT
public:
    explicit SheetsView(AppModel& model, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// Shows what the model has now.
    void refresh(Changes changes);

    AppModel& model_;
    PrintForm* form_ = nullptr;
    SheetPreview* preview_ = nullptr;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
