#include "TemplateTab/LayerRowsAccessible.h"

#include "TemplateTab/LayerRows.h"

#include <QAccessible>
#include <algorithm>

namespace quorvel {

namespace {

QAccessibleInterface* interfaceOf(LayerRow* row) {
    return QAccessible::queryAccessibleInterface(row);
}

}  // namespace

LayerRowsAccessible::LayerRowsAccessible(LayerRows& list) : QAccessibleWidget(&list, QAccessible::List) {}

void LayerRowsAccessible::announceFocus(const LayerRow& row) {
    if (!QAccessible::isActive()) return;
    for (const QAccessible::Event event : {QAccessible::Selection, QAccessible::Focus}) {
        QAccessibleEvent said(const_cast<LayerRow*>(&row), event);
        QAccessible::updateAccessibility(&said);
    }
}

LayerRows& LayerRowsAccessible::list() const {
    return *static_cast<LayerRows*>(widget());
}

int LayerRowsAccessible::childCount() const {
    return int(list().rows().size());
}

QAccessibleInterface* LayerRowsAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    return interfaceOf(list().rows()[std::size_t(index)]);
}

QAccessibleInterface* LayerRowsAccessible::childAt(int x, int y) const {
    const QPoint place(x, y);
    for (LayerRow* row : list().rows())
        if (row->rect().contains(row->mapFromGlobal(place))) return interfaceOf(row);
    return nullptr;
}

QAccessibleInterface* LayerRowsAccessible::focusChild() const {
    LayerRow* const selected = list().selectedRow();
    return selected && list().hasFocus() ? interfaceOf(selected) : QAccessibleWidget::focusChild();
}

int LayerRowsAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto& rows = list().rows();
    const auto found = std::ranges::find(rows, child->object(), [](LayerRow* row) -> QObject* { return row; });
    return found == rows.end() ? -1 : int(found - rows.begin());
}

LayerRowAccessible::LayerRowAccessible(LayerRow& row) : QAccessibleWidget(&row, QAccessible::ListItem) {}

LayerRow& LayerRowAccessible::row() const {
    return *static_cast<LayerRow*>(widget());
}

LayerRows* LayerRowAccessible::list() const {
    for (QWidget* each = widget()->parentWidget(); each; each = each->parentWidget())
        if (auto* const list = qobject_cast<LayerRows*>(each)) return list;
    return nullptr;
}

QAccessibleInterface* LayerRowAccessible::parent() const {
    LayerRows* const rows = list();
    return rows ? QAccessible::queryAccessibleInterface(rows) : QAccessibleWidget::parent();
}

QAccessible::State LayerRowAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    const bool isSelected = row().look() != LayerRow::Look::plain;
    state.focusable = true;
    state.selectable = true;
    state.selected = isSelected;
    state.focused = row().look() == LayerRow::Look::active;
    return state;
}

}  // namespace quorvel
