#pragma once

#include "Controls/DrawnParts.h"

namespace quorvel {

class CardSurface;

/// The canvas for screen readers: the picture of a card, with one element for each overlay, the lowest layer first, and
/// last the handle of the selected one.
class CardSurfaceAccessible : public DrawnParts {
public:
    explicit CardSurfaceAccessible(CardSurface& surface);

    CardSurface& surface() const;

    int childCount() const override;
    QAccessibleInterface* childAt(int x, int y) const override;

protected:
    DrawnPart* makePart(int index) const override;
};

/// One overlay, or the handle.
class OverlayAccessible : public DrawnPart {
public:
    OverlayAccessible(const CardSurfaceAccessible& canvas, int index) : DrawnPart(canvas, index), canvas_(canvas) {}

    QString text(QAccessible::Text text) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return isHandle() ? QAccessible::Grip : QAccessible::Graphic; }
    QAccessible::State state() const override;

private:
    bool isHandle() const;

    const CardSurfaceAccessible& canvas_;
};

}  // namespace quorvel
