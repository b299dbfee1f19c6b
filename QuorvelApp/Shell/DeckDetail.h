#pragma once

#include "Desktop/Desktop.h"
#include "Model/AppModel.h"

#include <QWidget>
#include <map>

class QStackedLayout;

namespace quorvel {

/// Beside the sidebar: the tab of the open deck, or the welcome screen, and the status banner over either. A tab is
/// made when it is first shown.
class DeckDetail : public QWidget {
    Q_OBJECT
public:
    /// Both outlive it; `desktop` keeps what the tabs remember.
    DeckDetail(AppModel& model, Desktop& desktop, QWidget* parent = nullptr);

    /// Of what is shown: the tabs that aren't need no room.
    QSize minimumSizeHint() const override;

private:
    void refresh();
    QWidget* view(Tab tab);

    AppModel& model_;
    Desktop& desktop_;
    QWidget* pages_ = nullptr;
    QStackedLayout* stack_ = nullptr;
    QWidget* welcome_ = nullptr;
    std::map<Tab, QWidget*> views_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
