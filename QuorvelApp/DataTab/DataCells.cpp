#include "DataTab/DataCells.h"

#include "Controls/Style.h"
#include "DataTab/DataTableModel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace quorvel {
namespace DataCells {
namespace {

int before(bool isFirst) {
    return isFirst ? inset : columnSpacing / 2;
}

int behind(bool isLast) {
    return isLast ? inset : columnSpacing / 2;
}

}  // namespace

int columnWidth(double textWidth, bool isFirst, bool isLast) {
    return before(isFirst) + int(std::ceil(std::min<double>(textWidth, widestText))) + behind(isLast);
}

QRect textRect(const QRect& cell, bool isFirst, bool isLast, Qt::LayoutDirection direction) {
    return direction == Qt::RightToLeft ? cell.adjusted(behind(isLast), 0, -before(isFirst), 0)
                                        : cell.adjusted(before(isFirst), 0, -behind(isLast), 0);
}

}  // namespace DataCells

namespace {

QRect textRect(const QRect& cell, int column, int columnCount, Qt::LayoutDirection direction) {
    return DataCells::textRect(cell, column == 0, column == columnCount - 1, direction);
}

void drawLine(QPainter& painter, const QRect& rect, Qt::LayoutDirection direction, const QString& line) {
    if (line.isEmpty()) return;
    const QFontMetrics metrics = painter.fontMetrics();
    const Qt::Alignment side = QStyle::visualAlignment(direction, Qt::AlignLeft) | Qt::AlignAbsolute;
    painter.drawText(rect, int(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     metrics.elidedText(line, Qt::ElideRight, rect.width()));
}

bool isCut(const QFont& font, const QString& line, const QRect& rect) {
    return QFontMetrics(font).horizontalAdvance(line) > rect.width();
}

}  // namespace

void DataCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const bool isSelected = option.state & QStyle::State_Selected;
    const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    if (isSelected) painter->fillRect(option.rect, option.palette.color(group, QPalette::Highlight));
    const bool isRowNumber = index.column() == DataTableModel::rowNumberColumn;
    QColor color = option.palette.color(group, QPalette::Text);
    if (isSelected)
        color = option.palette.color(group, QPalette::HighlightedText);
    else if (isRowNumber)
        color = Style::secondary(option.palette);
    painter->setPen(color);
    painter->setFont(option.font);
    drawLine(*painter, textRect(option.rect, index.column(), index.model()->columnCount(), option.direction),
             option.direction, index.data().toString());
    if (option.state & QStyle::State_HasFocus) {
        painter->setPen(isSelected ? color : Style::accent(option.palette));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
}

bool DataCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QRect rect = textRect(option.rect, index.column(), index.model()->columnCount(), option.direction);
    const bool cut = isCut(option.font, index.data().toString(), rect);
    QToolTip::showText(event->globalPos(), cut ? index.data(Qt::ToolTipRole).toString() : QString(), view->viewport(),
                       option.rect);
    return true;
}

DataTableHeader::DataTableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionResizeMode(QHeaderView::Fixed);
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(DataCells::columnSpacing);
    setAccessibleName(QStringLiteral("Columns"));
}

QSize DataTableHeader::sizeHint() const {
    return {0, DataCells::inset + fontMetrics().height() + DataCells::rowSpacing};
}

void DataTableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->fillRect(rect, palette().color(QPalette::Base));
    const QRect line = rect.adjusted(0, DataCells::inset - DataCells::rowSpacing / 2, 0, 0);
    painter->setFont(font());
    painter->setPen(logicalIndex == DataTableModel::rowNumberColumn ? Style::secondary(palette())
                                                                    : palette().color(QPalette::Text));
    drawLine(*painter, textRect(line, logicalIndex, count(), layoutDirection()), layoutDirection(),
             model()->headerData(logicalIndex, Qt::Horizontal).toString());
}

void DataTableHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    QPainter painter(viewport());
    // The base class gives what lies behind the last column the look of a button.
    const int width = viewport()->width();
    const int end = length() - offset();
    const QRect behind(layoutDirection() == Qt::RightToLeft ? 0 : end, 0, width - end, height());
    if (end < width) painter.fillRect(behind, palette().color(QPalette::Base));
    painter.fillRect(QRect(0, height() - 1, width, 1), Style::line(palette()));
}

bool DataTableHeader::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int section = logicalIndexAt(help->pos());
    if (section < 0) return true;
    const QRect cell(sectionViewportPosition(section), 0, sectionSize(section), height());
    const QString line = model()->headerData(section, Qt::Horizontal).toString();
    const bool cut = isCut(font(), line, textRect(cell, section, count(), layoutDirection()));
    QToolTip::showText(help->globalPos(),
                       cut ? model()->headerData(section, Qt::Horizontal, Qt::ToolTipRole).toString() : QString(),
                       viewport(), cell);
    return true;
}

}  // namespace quorvel
