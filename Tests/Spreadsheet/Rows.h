#pragma once

#include "Spreadsheet/TextRows.h"

#include <ostream>
#include <string>
#include <vector>

namespace quorvel {

using RowList = std::vector<std::vector<std::string>>;

/// The cells that are stored, as a list that tests can compare and print.
inline RowList listOf(const TextRows& rows) {
    RowList result(rows.rowCount());
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        for (std::size_t column = 0; column < rows.cellCount(row); ++column)
            result[row].emplace_back(rows.cell(row, column));
    return result;
}

inline TextRows textRows(const RowList& list) {
    TextRows rows;
    for (const auto& row : list) {
        for (const std::string& cell : row) rows.appendCell(cell);
        rows.endRow();
    }
    return rows;
}

/// Shows the cells when a comparison fails.
inline void PrintTo(const TextRows& rows, std::ostream* stream) {
    for (const auto& row : listOf(rows)) {
        for (const std::string& cell : row) *stream << '[' << cell << ']';
        *stream << '\n';
    }
}

}  // namespace quorvel
