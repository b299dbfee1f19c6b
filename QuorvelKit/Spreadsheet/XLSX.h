#pragma once

#include "Spreadsheet/TextRows.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

/// Excel workbooks. They are recognised and refused: nothing here reads them yet.
namespace quorvel::XLSX {

struct Failure {
    std::string name;  ///< the file's last path component

    bool operator==(const Failure&) const = default;
    std::string description() const;
};

/// The worksheets' names in the workbook's order.
std::expected<std::vector<std::string>, Failure> sheetNames(std::string_view bytes, const std::string& name);

/// The raw rows of the worksheet at `sheet`, from 0.
std::expected<TextRows, Failure> rows(std::string_view bytes, const std::string& name, std::size_t sheet);

}  // namespace quorvel::XLSX
