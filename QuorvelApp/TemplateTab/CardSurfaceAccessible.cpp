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

CardSurfaceAccessible::CardSurfaceAccessible(CardSurface& surface) : DrawnParts(surface, QAccessible::Canvas) {}

CardSurface& CardSurfaceAccessible::surface() const {
    return *static_cast<CardSurface*>(widget());
}

int CardSurfaceAccessible::childCount() const {
    return overlayCount(surface()) + (selected(surface()) ? 1 : 0);
}

DrawnPart* CardSurfaceAccessible::makePart(int index) const {
    return new OverlayAccessible(*this, index);
}

QAccessibleInterface* CardSurfaceAccessible::childAt(int x, int y) const {
    const QPoint place = surface().mapFromGlobal(QPoint(x, y));
    const auto& overlays = surface().overlays();
    const auto grip = gripAt({double(place.x()), double(place.y())}, overlays);
    if (!grip) return nullptr;
    if (grip->kind == Grip::Kind::resize) return child(childCount() - 1);
    return child(int(std::ranges::find(overlays, grip->layer, &LayerOverlay::layer) - overlays.begin()));
}

bool OverlayAccessible::isHandle() const {
    return index() >= overlayCount(canvas_.surface());
}

QString OverlayAccessible::text(QAccessible::Text text) const {
    if (!isValid() || text != QAccessible::Name) return {};
    return isHandle() ? QString("Resize handle")
                      : quorvel::text(canvas_.surface().overlays()[std::size_t(index())].name);
}

QRect OverlayAccessible::rect() const {
    if (!isValid()) return {};
    const CardSurface& surface = canvas_.surface();
    const QRect rect =
        toQRect(isHandle() ? *selected(surface)->handle : surface.overlays()[std::size_t(index())].outline);
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
    state.selected = surface.overlays()[std::size_t(index())].isSelected();
    return state;
}

}  // namespace quorvel
