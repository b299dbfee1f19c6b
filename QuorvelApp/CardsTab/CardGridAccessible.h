#pragma once

#include <QAccessibleWidget>
#include <unordered_map>

namespace quorvel {

class CardGrid;

/// The grid for screen readers: a list with one element for each tile. Elements are made when they are asked for.
class CardGridAccessible : public QAccessibleWidget {
public:
    explicit CardGridAccessible(CardGrid& grid);
    ~CardGridAccessible() override;

    /// Makes the toolkit find this class for every grid. May be called again.
    static void install();

    /// Drops the elements of tiles from `index` on.
    static void forgetFrom(CardGrid& grid, int index);

    CardGrid& grid() const;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    mutable std::unordered_map<int, QAccessible::Id> elements_;
};

/// One tile.
class CardTileAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    CardTileAccessible(CardGridAccessible& list, int index) : list_(list), index_(index) {}

    int index() const { return index_; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return list_.window(); }
    QAccessibleInterface* parent() const override { return &list_; }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text text) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    QString localizedActionName(const QString& name) const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    CardGridAccessible& list_;
    int index_;
};

}  // namespace quorvel
