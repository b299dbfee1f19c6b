#pragma once

#include "Foundation/FileFailure.h"
#include "Spreadsheet/DataTable.h"
#include "Spreadsheet/XLSX.h"

#include <array>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The one door through which a spreadsheet file enters. No state; safe from any thread.
namespace quorvel::DataLoader {

struct Failure {
    enum class Kind { numbers, oldExcel, notText, empty };

    Kind kind = Kind::notText;
    std::string name;  ///< the file's last path component

    bool operator==(const Failure&) const = default;
    std::string description() const;
};

using TableFailure = std::variant<Failure, XLSX::Failure>;

/// The sentence of whichever failure it is.
std::string description(const TableFailure& failure);

struct Loaded {
    std::vector<std::string> sheetNames;  ///< worksheets in the workbook's order; empty for text files
    std::int64_t sheet = 0;               ///< the worksheet that was read, from 0
    std::expected<DataTable, TableFailure> result;
};

/// The extensions that a dropped spreadsheet may have.
inline constexpr std::array<std::string_view, 4> spreadsheetExtensions{"csv", "tsv", "txt", "xlsx"};

/// Reads a file. Fails only when its bytes can't be read; a worksheet index out of range becomes 0.
std::expected<Loaded, FileFailure> load(const std::filesystem::path& file, std::int64_t sheet);

std::expected<DataTable, TableFailure> table(std::string_view data, const std::string& name, std::int64_t sheet);

/// The worksheet names, empty where there are none.
std::vector<std::string> sheetNames(std::string_view data, const std::string& name);

/// By the extension .xlsx or by the four bytes that begin a ZIP archive.
bool isWorkbook(std::string_view name, std::string_view data);

}  // namespace quorvel::DataLoader
