#pragma once

#include "Model/AppModel.h"

#include <QToolBar>

namespace quorvel {

class ExportCommands;
class SegmentedPicker;

/// The row below the menus while a deck is open: the tabs in its middle, the most wanted commands at its end.
class WindowToolbar : public QToolBar {
    Q_OBJECT
public:
    /// `exports` outlive it.
    WindowToolbar(AppModel& model, const ExportCommands& exports, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeCommands(const ExportCommands& exports);
    void refresh();

    AppModel& model_;
    SegmentedPicker* tabs_ = nullptr;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
