#include "Shell/RootView.h"

#include "Shell/DeckDetail.h"
#include "Shell/DeckList.h"

namespace quorvel {

RootView::RootView(AppModel& model, QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(1);
    addWidget(new DeckList(model));
    addWidget(new DeckDetail(model));
    // What the window gains or loses is the content's.
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    constexpr int rest = 10000;  // a splitter shares out what there is
    setSizes({DeckList::ideal, rest});
}

}  // namespace quorvel
