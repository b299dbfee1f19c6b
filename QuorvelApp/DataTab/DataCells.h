#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace quorvel {

/// Where texts stand in the columns of the table preview. All lengths are logical pixels.
namespace DataCells {

inline constexpr int inset = 16;          ///< around the whole table
inline constexpr int columnSpacing = 14;  ///< between texts side by side
inline constexpr int rowSpacing = 6;
inline constexpr int widestText = 260;

/// Of a column whose text needs `textWidth`.
int columnWidth(double textWidth, bool isFirst, bool isLast);

/// The place of the text in a cell's rectangle.
QRect textRect(const QRect& cell, bool isFirst, bool isLast, Qt::LayoutDirection direction);

}  // namespace DataCells

/// Draws one cell: one line, cut at its end, with the whole as the tooltip then. Leaner than the default, since a
/// window shows a thousand cells at once.
class DataCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

/// The table's first line: the names of its columns.
class DataTableHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit DataTableHeader(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
};

}  // namespace quorvel
