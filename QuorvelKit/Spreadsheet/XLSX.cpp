#include "Spreadsheet/XLSX.h"

namespace quorvel::XLSX {

std::string Failure::description() const {
    return "“" + name + "” is an Excel workbook, which can’t be read yet. Save it as CSV.";
}

std::expected<std::vector<std::string>, Failure> sheetNames(std::string_view, const std::string& name) {
    return std::unexpected(Failure{name});
}

std::expected<TextRows, Failure> rows(std::string_view, const std::string& name, std::size_t) {
    return std::unexpected(Failure{name});
}

}  // namespace quorvel::XLSX
