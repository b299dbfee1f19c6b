#pragma once

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
    explicit DeckDetail(AppModel& model, QWidget* parent = nullptr);

private:
    void refresh();
    QWidget* view(Tab tab);

    AppModel& model_;
    QWidget* pages_ = nullptr;
    QStackedLayout* stack_ = nullptr;
    QWidget* welcome_ = nullptr;
    std::map<Tab, QWidget*> views_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
