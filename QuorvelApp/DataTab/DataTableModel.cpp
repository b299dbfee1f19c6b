#include "DataTab/DataTableModel.h"

#include "Controls/Wording.h"
#include "DataTab/CellText.h"

#include <algorithm>

namespace quorvel {
namespace {

int rowsOf(const DataTable* table) {
    return table ? int(table->rows.rowCount()) : 0;
}

int columnsOf(const DataTable* table) {
    return table ? int(table->headers.size()) + 1 : 0;
}

}  // namespace

bool DataTableModel::shows(const std::shared_ptr<const DataTable>& table) const {
    // By the owner rather than the address, which a later table may have got again.
    return !table_.owner_before(table) && !table.owner_before(table_);
}

void DataTableModel::reload(const std::shared_ptr<const DataTable>& table) {
    const int rows = rowsOf(table.get());
    const int columns = columnsOf(table.get());
    const int keptRows = std::min(rows, rowCount_);
    const int keptColumns = std::min(columns, columnCount_);
    table_ = table;
    if (columns > columnCount_) {
        beginInsertColumns({}, columnCount_, columns - 1);
        columnCount_ = columns;
        endInsertColumns();
    } else if (columns < columnCount_) {
        beginRemoveColumns({}, columns, columnCount_ - 1);
        columnCount_ = columns;
        endRemoveColumns();
    }
    if (rows > rowCount_) {
        beginInsertRows({}, rowCount_, rows - 1);
        rowCount_ = rows;
        endInsertRows();
    } else if (rows < rowCount_) {
        beginRemoveRows({}, rows, rowCount_ - 1);
        rowCount_ = rows;
        endRemoveRows();
    }
    if (keptColumns > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, keptColumns - 1);
    if (keptColumns > 0 && keptRows > 0) Q_EMIT dataChanged(index(0, 0), index(keptRows - 1, keptColumns - 1));
}

void DataTableModel::replace(const std::shared_ptr<const DataTable>& table) {
    beginResetModel();
    table_ = table;
    rowCount_ = rowsOf(table.get());
    columnCount_ = columnsOf(table.get());
    endResetModel();
}

QVariant DataTableModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) return {};
    const std::shared_ptr<const DataTable> table = table_.lock();
    // While rows are being taken away, one may still be asked for.
    if (!table || !index.isValid() || index.row() >= rowsOf(table.get())) return {};
    const auto row = std::size_t(index.row());
    if (index.column() == rowNumberColumn)
        return role == Qt::ToolTipRole ? QVariant() : QString::number(table->rowNumbers[row]);
    const std::string_view cell = table->rows.cell(row, std::size_t(index.column() - 1));
    if (role == Qt::ToolTipRole) return CellText::toolTip(cell);
    if (role == Qt::AccessibleTextRole) return cell.empty() ? QStringLiteral("empty") : text(cell);
    return CellText::oneLine(cell);
}

QVariant DataTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const std::shared_ptr<const DataTable> table = table_.lock();
    if (!table || section < 0) return {};
    if (orientation == Qt::Vertical) {
        if (section >= rowsOf(table.get())) return {};
        return QString::number(table->rowNumbers[std::size_t(section)]);
    }
    if (section == rowNumberColumn) return role == Qt::ToolTipRole ? QVariant() : QStringLiteral("Row");
    if (section >= columnsOf(table.get())) return {};
    const std::string& header = table->headers[std::size_t(section - 1)];
    return role == Qt::ToolTipRole ? CellText::toolTip(header) : CellText::oneLine(header);
}

Qt::ItemFlags DataTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

}  // namespace quorvel
