#include "CardsTab/CardGridAccessible.h"

#include "CardsTab/CardGrid.h"

#include <QAccessible>
#include <algorithm>

namespace quorvel {

CardGridAccessible::CardGridAccessible(CardGrid& grid) : QAccessibleWidget(&grid, QAccessible::List) {}

CardGridAccessible::~CardGridAccessible() {
    for (const auto& [index, id] : elements_) QAccessible::deleteAccessibleInterface(id);
}

void CardGridAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* const grid = qobject_cast<CardGrid*>(object);
            return grid ? new CardGridAccessible(*grid) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

void CardGridAccessible::forgetFrom(CardGrid& grid, int index) {
    auto* const list = dynamic_cast<CardGridAccessible*>(QAccessible::queryAccessibleInterface(&grid));
    if (!list) return;
    std::erase_if(list->elements_, [index](const auto& element) {
        if (element.first < index) return false;
        QAccessible::deleteAccessibleInterface(element.second);
        return true;
    });
}

CardGrid& CardGridAccessible::grid() const {
    return *static_cast<CardGrid*>(widget());
}

int CardGridAccessible::childCount() const {
    return grid().count();
}

QAccessibleInterface* CardGridAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto found = elements_.find(index);
    if (found != elements_.end()) return QAccessible::accessibleInterface(found->second);
    auto* const element = new CardTileAccessible(const_cast<CardGridAccessible&>(*this), index);
    elements_[index] = QAccessible::registerAccessibleInterface(element);
    return element;
}

QAccessibleInterface* CardGridAccessible::childAt(int x, int y) const {
    const QPoint place = grid().mapFromGlobal(QPoint(x, y)) - CardGrid::tilesAt();
    const auto index = grid().tiles().at(place);
    return index ? child(*index) : nullptr;
}

QAccessibleInterface* CardGridAccessible::focusChild() const {
    return grid().hasFocus() && grid().current() ? child(*grid().current()) : nullptr;
}

int CardGridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const element = dynamic_cast<const CardTileAccessible*>(child);
    return element && element->parent() == this ? element->index() : -1;
}

bool CardTileAccessible::isValid() const {
    return list_.isValid() && index_ < list_.childCount();
}

QString CardTileAccessible::text(QAccessible::Text text) const {
    if (!isValid()) return {};
    switch (text) {
        case QAccessible::Name:
            return list_.grid().tile(index_).accessibleLabel();
        case QAccessible::Description:
        case QAccessible::Help:
            return CardTile::accessibleHint();
        default:
            return {};
    }
}

QRect CardTileAccessible::rect() const {
    if (!isValid()) return {};
    const QRect tile = list_.grid().tileRect(index_);
    return {list_.grid().mapToGlobal(tile.topLeft()), tile.size()};
}

QAccessible::State CardTileAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const CardGrid& grid = list_.grid();
    const bool isCurrent = grid.current() == index_;
    state.focusable = true;
    state.selectable = true;
    state.selected = isCurrent;
    state.focused = isCurrent && grid.hasFocus();
    state.invisible = !grid.isVisible();
    state.offscreen = !grid.visibleRegion().intersects(grid.tileRect(index_));
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
    if (name == pressAction()) return list_.grid().editTemplateWith(index_);
    if (name != setFocusAction()) return;
    list_.grid().setFocus();
    list_.grid().setCurrent(index_);
}

}  // namespace quorvel
