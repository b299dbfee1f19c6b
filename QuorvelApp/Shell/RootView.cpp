#include "Shell/RootView.h"

#include "Shell/DeckDetail.h"
#include "Shell/DeckList.h"

#include <QEvent>

namespace quorvel {

RootView::RootView(AppModel& model, Desktop& desktop, QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(1);
    sidebar_ = new DeckList(model);
    detail_ = new DeckDetail(model, desktop);
    addWidget(sidebar_);
    addWidget(detail_);
    // What the window gains or loses is the content's.
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    constexpr int rest = 10000;  // a splitter shares out what there is
    setSizes({DeckList::ideal, rest});
}

bool RootView::event(QEvent* event) {
    const bool handled = QSplitter::event(event);
    // Another tab needs another width.
    if (event->type() == QEvent::LayoutRequest) showSidebarWhereItFits();
    return handled;
}

void RootView::resizeEvent(QResizeEvent* event) {
    showSidebarWhereItFits();
    QSplitter::resizeEvent(event);
}

void RootView::showSidebarWhereItFits() {
    const int needed = DeckList::narrowest + handleWidth() + detail_->minimumSizeHint().width();
    const bool fits = width() >= needed;
    if (fits == sidebar_->isHidden()) sidebar_->setVisible(fits);
}

}  // namespace quorvel
