#include "CardsTab/CardGridAccessible.h"

#include "CardsTab/CardGrid.h"

#include <QAccessible>
#include <algorithm>

namespace quorvel {

CardGridAccessible::CardGridAccessible(CardGrid& grid) : DrawnParts(grid, QAccessible::List) {}

void CardGridAccessible::forgetFrom(CardGrid& grid, int index) {
    auto* const list = dynamic_cast<CardGridAccessible*>(QAccessible::queryAccessibleInterface(&grid));
    if (list) list->DrawnParts::forgetFrom(index);
}

CardGrid& CardGridAccessible::grid() const {
    return *static_cast<CardGrid*>(widget());
}

int CardGridAccessible::childCount() const {
    return grid().count();
}

DrawnPart* CardGridAccessible::makePart(int index) const {
    return new CardTileAccessible(*this, index);
}

QAccessibleInterface* CardGridAccessible::childAt(int x, int y) const {
    const QPoint place = grid().mapFromGlobal(QPoint(x, y)) - CardGrid::tilesAt();
    const auto index = grid().tiles().at(place);
    return index ? child(*index) : nullptr;
}

QAccessibleInterface* CardGridAccessible::focusChild() const {
    return grid().hasFocus() && grid().current() ? child(*grid().current()) : nullptr;
}

QString CardTileAccessible::text(QAccessible::Text text) const {
    if (!isValid()) return {};
    switch (text) {
        case QAccessible::Name:
            return list_.grid().tile(index()).accessibleLabel();
        case QAccessible::Description:
        case QAccessible::Help:
            return CardTile::accessibleHint();
        default:
            return {};
    }
}

QRect CardTileAccessible::rect() const {
    if (!isValid()) return {};
    const QRect tile = list_.grid().tileRect(index());
    return {list_.grid().mapToGlobal(tile.topLeft()), tile.size()};
}

QAccessible::State CardTileAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const CardGrid& grid = list_.grid();
    const bool isCurrent = grid.current() == index();
    state.focusable = true;
    state.selectable = true;
    state.selected = isCurrent;
    state.focused = isCurrent && grid.hasFocus();
    state.invisible = !grid.isVisible();
    state.offscreen = !grid.visibleRegion().intersects(grid.tileRect(index()));
    return state;
}

void* CardTileAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

QStringList CardTileAccessible::actionNames() const {
    return {pressAction(), setFocusAction()};
}

QString CardTileAccessible::localizedActionName(const QString& name) const {
    return name == pressAction() ? QStringLiteral("Edit Template with This Card")
                                 : QAccessibleActionInterface::localizedActionName(name);
}

void CardTileAccessible::doAction(const QString& name) {
    if (!isValid()) return;
    if (name == pressAction()) return list_.grid().editTemplateWith(index());
    if (name != setFocusAction()) return;
    list_.grid().setFocus();
    list_.grid().setCurrent(index());
}

}  // namespace quorvel
