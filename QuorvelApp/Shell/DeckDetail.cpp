#include "Shell/DeckDetail.h"

#include "CardsTab/CardsView.h"
#include "DataTab/DataView.h"
#include "SheetsTab/SheetsView.h"
#include "Shell/StatusBanner.h"
#include "Shell/WelcomeView.h"
#include "TemplateTab/TemplateEditor.h"

#include <QStackedLayout>
#include <QVBoxLayout>

namespace quorvel {
namespace {

QWidget* makeView(Tab tab, AppModel& model, Desktop& desktop) {
    switch (tab) {
        case Tab::cards:
            return new CardsView(model);
        case Tab::template_:
            return new TemplateEditor(model, desktop);
        case Tab::sheets:
            return new SheetsView(model);
        case Tab::data:
            return new DataView(model);
    }
    return nullptr;
}

}  // namespace

DeckDetail::DeckDetail(AppModel& model, Desktop& desktop, QWidget* parent)
    : QWidget(parent), model_(model), desktop_(desktop) {
    pages_ = new QWidget;
    stack_ = new QStackedLayout(pages_);
    welcome_ = new WelcomeView(model_);
    stack_->addWidget(welcome_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(pages_);
    new StatusBanner(model_, this);

    subscription_ = model_.subscribe([this](Changes changes) {
        if (changes.has(Change::tab) || changes.has(Change::selection) || changes.has(Change::decks)) refresh();
    });
    refresh();
}

void DeckDetail::refresh() {
    QWidget* wanted = model_.currentProject() ? view(model_.state()._tab) : welcome_;
    if (stack_->currentWidget() == wanted) return;
    // The keyboard goes from view to view. Left alone it would go to whatever comes next in the window.
    const QWidget* focus = window()->focusWidget();
    const bool hasKeyboard = focus && isAncestorOf(focus);
    stack_->setCurrentWidget(wanted);
    if (hasKeyboard) wanted->setFocus();
    updateGeometry();
}

QSize DeckDetail::minimumSizeHint() const {
    return stack_->currentWidget()->minimumSizeHint();
}

QWidget* DeckDetail::view(Tab tab) {
    QWidget*& view = views_[tab];
    if (!view) {
        view = makeView(tab, model_, desktop_);
        stack_->addWidget(view);
    }
    return view;
}

}  // namespace quorvel
