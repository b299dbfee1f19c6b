#pragma once

#include <QAccessibleWidget>
#include <map>

namespace quorvel {

class CardSurface;

/// The canvas for screen readers: the picture of a card, with one element for each overlay, the lowest layer first, and
/// last the handle of the selected one. Elements are made when they are asked for.
class CardSurfaceAccessible : public QAccessibleWidget {
public:
    explicit CardSurfaceAccessible(CardSurface& surface);
    ~CardSurfaceAccessible() override;

    /// Makes the toolkit find this class for every canvas. May be called again.
    static void install();

    /// The number of overlays has changed.
    static void announceReordered(CardSurface& surface);

    CardSurface& surface() const;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    mutable std::map<int, QAccessible::Id> elements_;
};

/// One overlay, or the handle.
class OverlayAccessible : public QAccessibleInterface {
public:
    OverlayAccessible(CardSurfaceAccessible& canvas, int index) : canvas_(canvas), index_(index) {}

    int index() const { return index_; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return canvas_.window(); }
    QAccessibleInterface* parent() const override { return &canvas_; }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text text) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return isHandle() ? QAccessible::Grip : QAccessible::Graphic; }
    QAccessible::State state() const override;

private:
    bool isHandle() const;

    CardSurfaceAccessible& canvas_;
    int index_;
};

}  // namespace quorvel
