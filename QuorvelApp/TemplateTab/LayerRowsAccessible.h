#pragma once

#include <QAccessibleWidget>

namespace quorvel {

class LayerRow;
class LayerRows;

/// The rows for screen readers: a list of items, each of which holds its controls.
class LayerRowsAccessible : public QAccessibleWidget {
public:
    explicit LayerRowsAccessible(LayerRows& list);

    /// The row is what keys act on.
    static void announceFocus(const LayerRow& row);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    LayerRows& list() const;
};

/// One row.
class LayerRowAccessible : public QAccessibleWidget {
public:
    explicit LayerRowAccessible(LayerRow& row);

    QAccessibleInterface* parent() const override;
    QAccessible::State state() const override;

private:
    LayerRow& row() const;
    /// Null while the row stands in none.
    LayerRows* list() const;
};

}  // namespace quorvel
