#include "Spreadsheet/DataLoader.h"

#include "Foundation/FileBytes.h"
#include "Foundation/Text.h"
#include "Spreadsheet/CSV.h"

#include <optional>
#include <utility>

namespace quorvel::DataLoader {

namespace {

using Workbook = std::expected<XLSX::Workbook, XLSX::Failure>;

/// The extensions whose files are refused by their names alone.
std::optional<Failure> refusal(const std::string& name) {
    const std::string extension = Text::lowercasedExtension(name);
    // Numbers comes first: its documents are ZIP archives and would pass for workbooks.
    if (extension == "numbers") return Failure{Failure::Kind::numbers, name};
    if (extension == "xls") return Failure{Failure::Kind::oldExcel, name};
    return std::nullopt;
}

std::expected<DataTable, TableFailure> tableOf(TextRows rows, const std::string& name) {
    // Before the names are made, so that two headers can't become equal afterwards.
    rows.unifyLineEnds();
    DataTable result(std::move(rows), name);
    if (result.headers.empty()) return std::unexpected(Failure{Failure::Kind::empty, name});
    return result;
}

std::expected<DataTable, TableFailure> workbookTable(Workbook workbook, const std::string& name, std::int64_t sheet) {
    if (auto refused = refusal(name)) return std::unexpected(std::move(*refused));
    if (!workbook) return std::unexpected(std::move(workbook.error()));
    auto rows = std::move(*workbook).rows(sheet);
    if (!rows) return std::unexpected(std::move(rows.error()));
    return tableOf(std::move(*rows), name);
}

std::expected<DataTable, TableFailure> textTable(std::string_view data, const std::string& name) {
    if (auto refused = refusal(name)) return std::unexpected(std::move(*refused));
    std::string storage;
    const std::string_view text = CSV::decode(data, storage);
    if (!CSV::looksLikeText(text)) return std::unexpected(Failure{Failure::Kind::notText, name});
    const bool tabs = Text::lowercasedExtension(name) == "tsv";
    return tableOf(CSV::parse(text, tabs ? std::optional(U'\t') : std::nullopt), name);
}

}  // namespace

std::string Failure::description() const {
    const std::string quoted = "“" + name + "”";
    switch (kind) {
        case Kind::numbers:
            return quoted + " is a Numbers file. Export it as CSV first (File › Export To › CSV in Numbers).";
        case Kind::oldExcel:
            return quoted + " is an older Excel file. Save it as .xlsx or CSV first.";
        case Kind::notText:
            return quoted + " doesn’t look like a CSV or Excel file.";
        case Kind::empty:
            return quoted + " is empty.";
    }
    return {};
}

std::string description(const TableFailure& failure) {
    return std::visit([](const auto& each) { return each.description(); }, failure);
}

std::expected<Loaded, FileFailure> load(const std::filesystem::path& file, std::int64_t sheet) {
    const auto data = FileBytes::read(file);
    if (!data) return std::unexpected(data.error());
    const std::string name = file.filename().string();
    if (!isWorkbook(name, *data)) return Loaded{{}, 0, textTable(*data, name)};
    Workbook workbook = XLSX::Workbook::open(*data);
    std::vector<std::string> names = workbook ? workbook->sheetNames() : std::vector<std::string>();
    const std::int64_t used = sheet >= 0 && static_cast<std::uint64_t>(sheet) < names.size() ? sheet : 0;
    return Loaded{std::move(names), used, workbookTable(std::move(workbook), name, used)};
}

std::expected<DataTable, TableFailure> table(std::string_view data, const std::string& name, std::int64_t sheet) {
    if (isWorkbook(name, data)) return workbookTable(XLSX::Workbook::open(data), name, sheet);
    return textTable(data, name);
}

std::vector<std::string> sheetNames(std::string_view data, const std::string& name) {
    if (!isWorkbook(name, data)) return {};
    return XLSX::sheetNames(data).value_or(std::vector<std::string>());
}

bool isWorkbook(std::string_view name, std::string_view data) {
    return Text::lowercasedExtension(name) == "xlsx" || data.starts_with("PK\x03\x04");
}

}  // namespace quorvel::DataLoader
