#include "TemplateTab/TemplateEditor.h"

#include "Inspector/Inspector.h"
#include "TemplateTab/CardCanvas.h"
#include "TemplateTab/LayerList.h"

namespace quorvel {

namespace {

// Of the inspector, in points.
constexpr int narrowest = 290;
constexpr int ideal = 320;
constexpr int widest = 400;

}  // namespace

TemplateEditor::TemplateEditor(AppModel& model, Desktop& desktop, QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(1);
    auto* inspector = new Inspector(model);
    inspector->setMinimumWidth(narrowest);
    inspector->setMaximumWidth(widest);
    addWidget(new LayerList(model));
    canvas_ = new CardCanvas(model, desktop);
    addWidget(canvas_);
    addWidget(inspector);
    // What the window gains or loses is the card's.
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    setStretchFactor(2, 0);
    constexpr int rest = 10000;  // a splitter shares out what there is
    setSizes({LayerList::ideal, rest, ideal});
}

void TemplateEditor::focusInEvent(QFocusEvent*) {
    canvas_->setFocus();
}

}  // namespace quorvel
