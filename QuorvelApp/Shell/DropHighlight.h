#pragma once

#include <QWidget>

namespace quorvel {

/// A frame around what lies below while something is dragged over it that may be dropped there.
class DropHighlight : public QWidget {
    Q_OBJECT
public:
    explicit DropHighlight(QWidget* parent);

    /// Appears over a part of its parent.
    void cover(const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvel
