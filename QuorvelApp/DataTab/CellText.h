#pragma once

#include "Spreadsheet/DataTable.h"

#include <QItemSelection>
#include <QString>
#include <string>
#include <string_view>

/// Cells as they are shown and as they are copied.
namespace quorvel::CellText {

/// No line that is shown is longer: what doesn't fit into a column is not worth laying out.
inline constexpr qsizetype longestLine = 300;  ///< in UTF-16 units

/// The cell on one line: a line end, a tab or another control character is a blank. The rest of a long cell is an
/// ellipsis.
QString oneLine(std::string_view cell);

/// The whole cell as a tooltip, line ends included, whatever it looks like; only the start of a very long one.
QString toolTip(std::string_view cell);

/// The selected cells for the clipboard, in the columns of `DataTableModel`: cells are separated by tabs, rows by line
/// feeds, and what lies between the selected cells of a row is empty. One cell alone is copied as it is; among others,
/// one with a tab, a line end or a leading quote is quoted as other spreadsheet programs do, so that it stays one.
std::string copied(const DataTable& table, const QItemSelection& selection);

}  // namespace quorvel::CellText
