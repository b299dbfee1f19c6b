#include "DataTab/DataTableView.h"

#include "Controls/Style.h"
#include "DataTab/CellText.h"
#include "DataTab/DataCells.h"
#include "DataTab/TextWidths.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <bit>

namespace quorvel {
namespace {

/// For all columns together: what can be measured without being felt.
constexpr std::size_t measuredCells = 20'000;
constexpr std::size_t mostMeasuredRows = 400;

/// Widths go up in steps, so that an edit of a cell seldom moves the columns beside it.
constexpr int widthStep = 4;

/// The rows by which a column's width is chosen: the first ones, and every so many of the others. That distance is a
/// power of two, so that a few rows more seldom change what was chosen.
std::vector<std::size_t> sample(std::size_t rowCount, std::size_t columnCount) {
    const std::size_t wanted =
        std::clamp<std::size_t>(measuredCells / std::max<std::size_t>(columnCount, 1), 2, mostMeasuredRows);
    const std::size_t first = std::min(rowCount, wanted / 2);
    std::vector<std::size_t> rows(first);
    for (std::size_t row = 0; row < first; ++row) rows[row] = row;
    const std::size_t others = wanted - wanted / 2;
    const std::size_t distance = std::bit_ceil(std::max<std::size_t>(1, (rowCount - first + others - 1) / others));
    for (std::size_t row = first; row < rowCount; row += distance) rows.push_back(row);
    return rows;
}

int steppedUp(double width) {
    return (int(width) / widthStep + 1) * widthStep;
}

}  // namespace

DataTableView::DataTableView(QWidget* parent) : QTableView(parent), cells_(new DataTableModel(this)) {
    setAccessibleName(QStringLiteral("Table"));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    // Tab leaves the table: arrows walk in it.
    setTabKeyNavigation(false);
    setItemDelegate(new DataCellDelegate(this));
    setHorizontalHeader(new DataTableHeader(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setModel(cells_);

    auto* copyAction = new QAction(QStringLiteral("Copy"), this);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    connect(copyAction, &QAction::triggered, this, &DataTableView::copy);
    addAction(copyAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    applyFont();
}

void DataTableView::setTable(const std::shared_ptr<const DataTable>& table, Places places) {
    if (places == Places::dropped) {
        cells_->replace(table);
        scrollToTop();
        horizontalScrollBar()->setValue(0);
    } else {
        cells_->reload(table);
    }
    fitColumns();
}

void DataTableView::copy() const {
    const auto table = cells_->table();
    if (!table || !selectionModel()->hasSelection()) return;
    QGuiApplication::clipboard()->setText(
        QString::fromStdString(CellText::copied(*table, selectionModel()->selection())));
}

bool DataTableView::event(QEvent* event) {
    // With the focus here these keys are ours, whatever the window's menus do with them.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void DataTableView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void DataTableView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        applyFont();
        fitColumns();
    }
}

void DataTableView::applyFont() {
    QFont headerFont = font();
    headerFont.setWeight(QFont::DemiBold);
    horizontalHeader()->setFont(headerFont);
    const int rowHeight = fontMetrics().height() + DataCells::rowSpacing;
    verticalHeader()->setMinimumSectionSize(rowHeight);
    verticalHeader()->setDefaultSectionSize(rowHeight);
    verticalScrollBar()->setSingleStep(rowHeight);
    horizontalScrollBar()->setSingleStep(rowHeight);
}

void DataTableView::fitColumns() {
    const auto table = cells_->table();
    if (!table) return;
    TextWidths widths(font());
    TextWidths headerWidths(horizontalHeader()->font());
    const double limit = DataCells::widestText;
    const int columnCount = cells_->columnCount();
    const std::vector<std::size_t> rows = sample(table->rows.rowCount(), table->headers.size());
    QHeaderView& header = *horizontalHeader();
    // Otherwise it would find the places of all columns anew for each of them.
    header.setUpdatesEnabled(false);
    for (int column = 0; column < columnCount; ++column) {
        double width = 0;
        if (column == DataTableModel::rowNumberColumn) {
            width = headerWidths.width("Row", limit);
            // The last number is the largest.
            if (!table->rowNumbers.empty())
                width = std::max(width, widths.width(std::to_string(table->rowNumbers.back()), limit));
        } else {
            const auto cell = std::size_t(column - 1);
            width = headerWidths.width(table->headers[cell], limit);
            for (const std::size_t row : rows) {
                if (width >= limit) break;
                width = std::max(width, widths.width(table->rows.cell(row, cell), limit));
            }
        }
        header.resizeSection(column, DataCells::columnWidth(steppedUp(width), column == 0, column == columnCount - 1));
    }
    header.setUpdatesEnabled(true);
}

}  // namespace quorvel
