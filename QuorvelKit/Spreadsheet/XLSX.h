#pragma once

#include "Spreadsheet/DataTable.h"
#include "Spreadsheet/XLSXWorkbook.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

/// Excel workbooks as text. Formulas are not evaluated: a cell shows the value that was stored for it. Nothing is kept
/// between calls; who needs both names and rows opens a Workbook.
namespace quorvel::XLSX {

/// The names of all sheets in the workbook's order.
std::expected<std::vector<std::string>, Failure> sheetNames(std::string_view bytes);

/// The cells of one sheet, counted from 0; see Workbook::rows.
std::expected<TextRows, Failure> rows(std::string_view bytes, std::int64_t sheet);

std::expected<DataTable, Failure> table(std::string_view bytes, std::int64_t sheet, std::string sourceName);

}  // namespace quorvel::XLSX
