#pragma once

#include "Controls/DrawnParts.h"

namespace quorvel {

class CardGrid;

/// The grid for screen readers: a list with one element for each tile.
class CardGridAccessible : public DrawnParts {
public:
    explicit CardGridAccessible(CardGrid& grid);

    /// Drops the elements of tiles from `index` on.
    static void forgetFrom(CardGrid& grid, int index);

    CardGrid& grid() const;

    int childCount() const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

protected:
    DrawnPart* makePart(int index) const override;
};

/// One tile.
class CardTileAccessible : public DrawnPart, public QAccessibleActionInterface {
public:
    CardTileAccessible(const CardGridAccessible& list, int index) : DrawnPart(list, index), list_(list) {}

    QString text(QAccessible::Text text) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    QString localizedActionName(const QString& name) const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    const CardGridAccessible& list_;
};

}  // namespace quorvel
