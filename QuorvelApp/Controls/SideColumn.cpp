#include "Controls/SideColumn.h"

namespace quorvel {

SideColumn::SideColumn(QWidget* column, const Widths& widths, QWidget* rest, int leastRest, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent) {
    column->setMinimumWidth(widths.least);
    column->setMaximumWidth(widths.most);
    rest->setMinimumWidth(leastRest);
    setChildrenCollapsible(false);
    setHandleWidth(1);
    addWidget(column);
    addWidget(rest);
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    setSizes({widths.ideal, leastRest});
}

}  // namespace quorvel
