#include "Inspector/Inspector.h"

#include "Controls/Style.h"
#include "Inspector/LayerInspector.h"
#include "Inspector/TemplateSettings.h"

#include <QShowEvent>
#include <QStackedLayout>
#include <QTimer>
#include <utility>

namespace quorvel {

namespace {

constexpr int sideMargin = 2 * Style::small;

}  // namespace

Inspector::Inspector(AppModel& model, QWidget* parent)
    : QWidget(parent), model_(model), pages_(new QStackedLayout(this)), settings_(new TemplateSettings(model)) {
    addPage(*settings_);
    refresh();
    subscription_ = model_.subscribe([this](Changes changes) {
        const bool isMine = changes.has(Change::decks) || changes.has(Change::selection) ||
                            changes.has(Change::openDeck) || changes.has(Change::editing);
        if (isMine && isVisible()) refresh();
    });
}

void Inspector::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) return;
    refresh();
    QTimer::singleShot(0, this, &Inspector::prepareForm);
}

void Inspector::prepareForm() {
    for (const auto& [kind, name] : EnumText<LayerKind>::cases) {
        if (forms_.contains(kind)) continue;
        form(kind).ensurePolished();
        QTimer::singleShot(0, this, &Inspector::prepareForm);
        return;
    }
}

void Inspector::refresh() {
    const Layer* selected = model_.selectedLayerValue();
    const Subject subject{model_.state()._selection, model_.state()._side,
                          selected ? std::optional(selected->id) : std::nullopt,
                          selected ? std::optional(selected->kind) : std::nullopt};
    if (subject != subject_) turnTo(subject);
    selected = model_.selectedLayerValue();
    if (!selected) {
        pages_->setCurrentWidget(settings_);
        return settings_->refresh();
    }
    LayerInspector& page = form(selected->kind);
    page.setLayer(selected->id);
    page.refresh();
    pages_->setCurrentWidget(&page);
}

void Inspector::turnTo(const Subject& subject) {
    const Subject before = std::exchange(subject_, subject);
    // What is being typed is for the old layer. Another deck may have one with the same id, as its copy has.
    if (before.deck != subject.deck || before.side != subject.side) letGo();
    QWidget* focus = window()->focusWidget();
    if (focus && isAncestorOf(focus)) focus->clearFocus();
    letGo();
}

void Inspector::letGo() {
    if (pages_->currentWidget() == settings_) return settings_->letGo();
    for (const auto& [kind, form] : forms_) form->letGo();
}

LayerInspector& Inspector::form(LayerKind kind) {
    LayerInspector*& form = forms_[kind];
    if (!form) {
        form = new LayerInspector(model_, kind);
        addPage(*form);
    }
    return *form;
}

void Inspector::addPage(GroupedForm& page) {
    page.widget()->layout()->setContentsMargins(sideMargin, Style::large, sideMargin, Style::large);
    pages_->addWidget(&page);
}

}  // namespace quorvel
