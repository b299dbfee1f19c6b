#include "DataTab/ColumnListModel.h"

#include "DataTab/CellText.h"

#include <algorithm>

namespace quorvel {

bool ColumnListModel::setHeaders(const std::vector<std::string>& headers) {
    if (headers == headers_) return false;
    beginResetModel();
    headers_ = headers;
    endResetModel();
    return true;
}

int ColumnListModel::indexOf(const std::string& column) const {
    if (column.empty()) return 0;
    const auto found = std::ranges::find(headers_, column);
    return found == headers_.end() ? -1 : int(found - headers_.begin()) + 1;
}

std::string ColumnListModel::columnAt(int index) const {
    return index > 0 && std::size_t(index) <= headers_.size() ? headers_[std::size_t(index) - 1] : std::string();
}

int ColumnListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(headers_.size()) + 1;
}

QVariant ColumnListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
    return index.row() == 0 ? QStringLiteral("None") : CellText::oneLine(headers_[std::size_t(index.row()) - 1]);
}

}  // namespace quorvel
