#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace quorvel {

/// What a field can be fed by: "None", then the table's headers. Shared by all pickers, since there may be thousands.
class ColumnListModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    /// False when these are the headers already: then no picker has lost its place.
    bool setHeaders(const std::vector<std::string>& headers);

    /// The place of a column; that of "None" when it is empty, -1 when there is no such column.
    int indexOf(const std::string& column) const;
    /// The column at a place; empty for "None".
    std::string columnAt(int index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<std::string> headers_;
};

}  // namespace quorvel
