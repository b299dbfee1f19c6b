#pragma once

#include "Spreadsheet/DataTable.h"

#include <QAbstractTableModel>
#include <memory>
#include <string_view>

namespace quorvel {

/// The table as read, behind a column with the numbers of the spreadsheet's rows. Nothing is copied, and the table is
/// not kept alive: its owner lets go of it where nobody waits for so much memory to be freed. Until it has been told of
/// the next one, the cells of a table that is gone are empty.
class DataTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int rowNumberColumn = 0;

    using QAbstractTableModel::QAbstractTableModel;

    /// The next reading of the same spreadsheet: what is selected and where one has scrolled to stays, as far as the
    /// rows and columns still exist. Null is an empty table.
    void reload(const std::shared_ptr<const DataTable>& table);

    /// Another spreadsheet: everything starts anew.
    void replace(const std::shared_ptr<const DataTable>& table);

    /// Null once its owner has let go of it.
    std::shared_ptr<const DataTable> table() const { return table_.lock(); }
    /// Whether this very table is shown.
    bool shows(const std::shared_ptr<const DataTable>& table) const;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rowCount_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columnCount_; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::weak_ptr<const DataTable> table_;
    int rowCount_ = 0;
    int columnCount_ = 0;
};

}  // namespace quorvel
