#pragma once

#include "Desktop/Desktop.h"
#include "Model/AppModel.h"

#include <QSplitter>

namespace quorvel {

class DeckDetail;
class DeckList;

/// Everything inside the window: the sidebar of decks and what is open of one of them. In a window that is too narrow
/// for both the sidebar gives way.
class RootView : public QSplitter {
    Q_OBJECT
public:
    /// Both outlive it; `desktop` keeps what the tabs remember.
    RootView(AppModel& model, Desktop& desktop, QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showSidebarWhereItFits();

    DeckList* sidebar_ = nullptr;
    DeckDetail* detail_ = nullptr;
};

}  // namespace quorvel
