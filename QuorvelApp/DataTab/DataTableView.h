#pragma once

#include "DataTab/DataTableModel.h"

#include <QTableView>

namespace quorvel {

/// The table as read: a scrolling grid of plain text whose cells can be selected and copied. Only what is seen is laid
/// out, and the widths of the columns come from a sample of the rows, so that the number of rows costs nothing.
class DataTableView : public QTableView {
    Q_OBJECT
public:
    explicit DataTableView(QWidget* parent = nullptr);

    /// Whether the places of the selection and of the scroll bars still mean something.
    enum class Places { kept, dropped };
    void setTable(const std::shared_ptr<const DataTable>& table, Places places);

    bool shows(const std::shared_ptr<const DataTable>& table) const { return cells_->shows(table); }

    /// Puts the selected cells on the clipboard; without any, changes nothing.
    void copy() const;

    /// Typing doesn't search: it would look through all rows.
    void keyboardSearch(const QString&) override {}

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void applyFont();
    void fitColumns();

    DataTableModel* cells_;
};

}  // namespace quorvel
