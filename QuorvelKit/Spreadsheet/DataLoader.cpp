#include "Spreadsheet/DataLoader.h"

#include "Foundation/FileBytes.h"
#include "Foundation/Text.h"
#include "Spreadsheet/CSV.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvel::DataLoader {

namespace {

std::expected<TextRows, TableFailure> rawRows(std::string_view data, const std::string& name, std::int64_t sheet) {
    const std::string extension = Text::lowercasedExtension(name);
    // Numbers comes first: its documents are ZIP archives and would pass for workbooks.
    if (extension == "numbers") return std::unexpected(Failure{Failure::Kind::numbers, name});
    if (extension == "xls") return std::unexpected(Failure{Failure::Kind::oldExcel, name});
    if (isWorkbook(name, data)) {
        auto rows = XLSX::rows(data, name, static_cast<std::size_t>(std::max<std::int64_t>(sheet, 0)));
        if (!rows) return std::unexpected(rows.error());
        return std::move(*rows);
    }
    std::string storage;
    const std::string_view text = CSV::decode(data, storage);
    if (!CSV::looksLikeText(text)) return std::unexpected(Failure{Failure::Kind::notText, name});
    return CSV::parse(text, extension == "tsv" ? std::optional(U'\t') : std::nullopt);
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
    std::vector<std::string> names = sheetNames(*data, name);
    const auto count = static_cast<std::int64_t>(names.size());
    const std::int64_t used = sheet >= 0 && sheet < count ? sheet : 0;
    auto result = table(*data, name, used);
    return Loaded{std::move(names), used, std::move(result)};
}

std::expected<DataTable, TableFailure> table(std::string_view data, const std::string& name, std::int64_t sheet) {
    auto rows = rawRows(data, name, sheet);
    if (!rows) return std::unexpected(std::move(rows.error()));
    // Before the names are made, so that two headers can't become equal afterwards.
    rows->unifyLineEnds();
    DataTable result(std::move(*rows), name);
    if (result.headers.empty()) return std::unexpected(Failure{Failure::Kind::empty, name});
    return result;
}

std::vector<std::string> sheetNames(std::string_view data, const std::string& name) {
    if (!isWorkbook(name, data)) return {};
    return XLSX::sheetNames(data, name).value_or(std::vector<std::string>());
}

bool isWorkbook(std::string_view name, std::string_view data) {
    return Text::lowercasedExtension(name) == "xlsx" || data.starts_with("PK\x03\x04");
}

}  // namespace quorvel::DataLoader
