#include "TemplateTab/CardSurfaceAccessible.h"

#include "Controls/Wording.h"
#include "TemplateTab/CardSurface.h"

#include <QAccessible>
#include <algorithm>

namespace quorvel {

namespace {

/// The overlay that has the handle; null when none has.
const LayerOverlay* selected(const CardSurface& surface) {
    const auto found = std::ranges::find_if(surface.overlays(), &LayerOverlay::isSelected);
    return found == surface.overlays().end() ? nullptr : &*found;
}

int overlayCount(const CardSurface& surface) {
    return int(surface.overlays().size());
}

QRect toQRect(const Rect& rect) {
    return QRectF(rect.x, rect.y, rect.width, rect.height).toAlignedRect();
}

}  // namespace

CardSurfaceAccessible::CardSurfaceAccessible(CardSurface& surface) : QAccessibleWidget(&surface, QAccessible::Canvas) {}

CardSurfaceAccessible::~CardSurfaceAccessible() {
    for (const auto& [index, id] : elements_) QAccessible::deleteAccessibleInterface(id);
}

void CardSurfaceAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* const surface = qobject_cast<CardSurface*>(object);
            return surface ? new CardSurfaceAccessible(*surface) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

void CardSurfaceAccessible::announceReordered(CardSurface& surface) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent reordered(&surface, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&reordered);
}

CardSurface& CardSurfaceAccessible::surface() const {
    return *static_cast<CardSurface*>(widget());
}

int CardSurfaceAccessible::childCount() const {
    return overlayCount(surface()) + (selected(surface()) ? 1 : 0);
}

QAccessibleInterface* CardSurfaceAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto found = elements_.find(index);
    if (found != elements_.end()) return QAccessible::accessibleInterface(found->second);
    auto* const element = new OverlayAccessible(const_cast<CardSurfaceAccessible&>(*this), index);
    elements_[index] = QAccessible::registerAccessibleInterface(element);
    return element;
}

QAccessibleInterface* CardSurfaceAccessible::childAt(int x, int y) const {
    const QPoint place = surface().mapFromGlobal(QPoint(x, y));
    const auto& overlays = surface().overlays();
    const auto grip = gripAt({double(place.x()), double(place.y())}, overlays);
    if (!grip) return nullptr;
    if (grip->kind == Grip::Kind::resize) return child(childCount() - 1);
    return child(int(std::ranges::find(overlays, grip->layer, &LayerOverlay::layer) - overlays.begin()));
}

int CardSurfaceAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const element = dynamic_cast<const OverlayAccessible*>(child);
    return element && element->parent() == this ? element->index() : -1;
}

bool OverlayAccessible::isHandle() const {
    return index_ >= overlayCount(canvas_.surface());
}

bool OverlayAccessible::isValid() const {
    return canvas_.isValid() && index_ < canvas_.childCount();
}

QString OverlayAccessible::text(QAccessible::Text text) const {
    if (!isValid() || text != QAccessible::Name) return {};
    return isHandle() ? QString("Resize handle")
                      : quorvel::text(canvas_.surface().overlays()[std::size_t(index_)].name);
}

QRect OverlayAccessible::rect() const {
    if (!isValid()) return {};
    const CardSurface& surface = canvas_.surface();
    const QRect rect =
        toQRect(isHandle() ? *selected(surface)->handle : surface.overlays()[std::size_t(index_)].outline);
    return {surface.mapToGlobal(rect.topLeft()), rect.size()};
}

QAccessible::State OverlayAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const CardSurface& surface = canvas_.surface();
    state.invisible = !surface.isVisible();
    if (isHandle()) return state;
    state.selectable = true;
    state.selected = surface.overlays()[std::size_t(index_)].isSelected();
    return state;
}

}  // namespace quorvel
