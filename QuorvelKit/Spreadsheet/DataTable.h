#pragma once

#include "Spreadsheet/TextRows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// Every spreadsheet once it is read: unique headers and rows of plain text cells as wide as the headers.
struct DataTable {
    std::vector<std::string> headers;      ///< unique without regard to case
    TextRows rows;                         ///< may be shorter than the headers: what isn't stored reads as ""
    std::string sourceName;                ///< the file's name, as given
    std::vector<std::int64_t> rowNumbers;  ///< for each row its place among the source's raw rows, from 1

    DataTable() = default;

    /// Repairs what it is given: cells beyond the headers are cut; row numbers of another count than the rows are
    /// replaced by 2, 3, 4 and so on, as if the first row were a header on row 1.
    DataTable(std::vector<std::string> headers, TextRows rows, std::string sourceName,
              std::optional<std::vector<std::int64_t>> rowNumbers = std::nullopt);

    /// From a file's rows: the first row that isn't blank gives the headers, the others that aren't blank the body.
    DataTable(TextRows rawRows, std::string sourceName);

    bool operator==(const DataTable& other) const;
};

}  // namespace quorvel
