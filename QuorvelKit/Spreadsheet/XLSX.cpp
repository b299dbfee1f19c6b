#include "Spreadsheet/XLSX.h"

#include <utility>

namespace quorvel::XLSX {

std::expected<std::vector<std::string>, Failure> sheetNames(std::string_view bytes) {
    const auto workbook = Workbook::open(bytes);
    if (!workbook) return std::unexpected(workbook.error());
    return workbook->sheetNames();
}

std::expected<TextRows, Failure> rows(std::string_view bytes, std::int64_t sheet) {
    auto workbook = Workbook::open(bytes);
    if (!workbook) return std::unexpected(std::move(workbook.error()));
    return std::move(*workbook).rows(sheet);
}

std::expected<DataTable, Failure> table(std::string_view bytes, std::int64_t sheet, std::string sourceName) {
    auto raw = rows(bytes, sheet);
    if (!raw) return std::unexpected(std::move(raw.error()));
    return DataTable(std::move(*raw), std::move(sourceName));
}

}  // namespace quorvel::XLSX
