// Edits of the design. Each makes the next template and hands it to the one gate, `setTemplate`.

#include "Model/AppModel.h"
#include "Model/Storable.h"
#include "Model/TemplateFiles.h"
#include "Templates/TemplateEdits.h"

#include <utility>

namespace quorvel {

void AppModel::setTemplate(CardTemplate template_) {
    const DeckProject* current = currentProject();
    if (!current || !isStorable(template_) || !editing_.admits(current->template_, template_)) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::undo);
    DeckProject next = *current;
    next.template_ = std::move(template_);
    updateProject(std::move(next));
}

void AppModel::beginLayerDrag() {
    if (!currentProject()) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::undo);
    editing_.beginLayerDrag(template_());
}

void AppModel::endLayerDrag() {
    editing_.endLayerDrag();
}

void AppModel::updateLayer(const Layer& layer) {
    setTemplate(TemplateEdits::replacing(template_(), state_._side, layer));
}

void AppModel::addLayer(LayerKind kind) {
    if (!currentProject()) return;
    const Announcer::Turn turn(announcer_);
    Layer layer = TemplateEdits::newLayer(kind, template_().size);
    const UUID id = layer.id;
    setTemplate(TemplateEdits::adding(template_(), state_._side, std::move(layer)));
    selectLayer(id);
}

void AppModel::deleteSelectedLayer() {
    if (!currentProject() || !state_._selectedLayer) return;
    const Announcer::Turn turn(announcer_);
    setTemplate(TemplateEdits::removing(template_(), state_._side, *state_._selectedLayer));
    selectLayer(std::nullopt);
}

void AppModel::duplicateSelectedLayer() {
    const Layer* selected = selectedLayerValue();
    if (!currentProject() || !selected) return;
    const Announcer::Turn turn(announcer_);
    Layer copy = TemplateEdits::copyOf(*selected);
    const UUID id = copy.id;
    setTemplate(TemplateEdits::addingAbove(template_(), state_._side, selected->id, std::move(copy)));
    selectLayer(id);
}

void AppModel::moveSelectedLayer(std::int64_t delta) {
    if (state_._selectedLayer)
        setTemplate(TemplateEdits::moving(template_(), state_._side, *state_._selectedLayer, delta));
}

void AppModel::nudgeSelectedLayer(double dx, double dy) {
    if (state_._selectedLayer)
        setTemplate(TemplateEdits::nudging(template_(), state_._side, *state_._selectedLayer, dx, dy));
}

void AppModel::startOver(SampleTemplates::Kind kind) {
    const DeckProject* current = currentProject();
    if (!current) return;
    const Announcer::Turn turn(announcer_);
    setTemplate(SampleTemplates::make(kind, current->name));
    selectLayer(std::nullopt);
}

void AppModel::exportTemplate() {
    if (const auto exported = TemplateFiles::exportTemplate(desktop_, template_()); !exported)
        setError(exported.error());
}

void AppModel::importTemplate() {
    if (!currentProject()) return;
    const auto shownFor = state_._selection;
    auto imported = TemplateFiles::importTemplate(desktop_);
    const bool cancelled = imported && !*imported;
    if (cancelled || state_._selection != shownFor) return;
    if (!imported) return setError(imported.error());
    const Announcer::Turn turn(announcer_);
    setTemplate(std::move(**imported));
    selectLayer(std::nullopt);
}

// Undo

void AppModel::setUndoManager(std::weak_ptr<UndoStack> undoManager) {
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::undo);
    editing_.setUndoManager(std::move(undoManager));
}

void AppModel::undo() {
    const auto stack = editing_.undoManager();
    if (!stack || editing_.coalescing()) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::undo);
    stack->undo([this](const CardTemplate& before) { setTemplate(before); });
}

void AppModel::redo() {
    const auto stack = editing_.undoManager();
    if (!stack || editing_.coalescing()) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::undo);
    stack->redo([this](const CardTemplate& before) { setTemplate(before); });
}

}  // namespace quorvel
