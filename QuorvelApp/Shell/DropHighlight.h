#pragma once

#include <QWidget>

namespace quorvel {

/// A frame around all of its parent while something is dragged over it that may be dropped there.
class DropHighlight : public QWidget {
    Q_OBJECT
public:
    explicit DropHighlight(QWidget* parent);

    /// Over all of the parent, as large as it is now.
    void cover();

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvel
