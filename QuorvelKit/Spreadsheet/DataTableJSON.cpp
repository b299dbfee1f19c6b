#include "Spreadsheet/DataTableJSON.h"

#include "Foundation/JSONReader.h"

#include <utility>

namespace quorvel {

namespace {

std::expected<TextRows, JSONFailure> rowsFromJSON(const JSON& json) {
    if (!json.is_array()) return std::unexpected(JSONFailure{"", "must be a list"});
    TextRows rows;
    for (std::size_t row = 0; row < json.size(); ++row) {
        if (!json[row].is_array()) return std::unexpected(JSONFailure{"", "must be a list"}.inside(row));
        for (std::size_t column = 0; column < json[row].size(); ++column) {
            const JSON& cell = json[row][column];
            if (!cell.is_string()) return std::unexpected(JSONFailure{"", "must be a text"}.inside(column).inside(row));
            rows.appendCell(cell.get_ref<const std::string&>());
        }
        rows.endRow();
    }
    return rows;
}

}  // namespace

JSON toJSON(const DataTable& table) {
    JSON rows = JSON::array();
    for (std::size_t row = 0; row < table.rows.rowCount(); ++row) {
        JSON cells = JSON::array();
        for (std::size_t column = 0; column < table.headers.size(); ++column)
            cells.push_back(table.rows.cell(row, column));
        rows.push_back(std::move(cells));
    }
    return {{"headers", table.headers},
            {"rows", std::move(rows)},
            {"sourceName", table.sourceName},
            {"rowNumbers", table.rowNumbers}};
}

std::expected<DataTable, JSONFailure> dataTableFromJSON(const JSON& json) {
    JSONReader reader(json);
    std::vector<std::string> headers;
    TextRows rows;
    std::string sourceName;
    std::optional<std::vector<std::int64_t>> rowNumbers;
    reader.readList("headers", headers);
    reader.read("rows", rows, rowsFromJSON);
    reader.readIfPresent("sourceName", sourceName);
    std::vector<std::int64_t> numbers;
    reader.readListIfPresent("rowNumbers", numbers, valueFromJSON<std::int64_t>);
    const JSON* given = reader.find("rowNumbers");
    if (given && !given->is_null()) rowNumbers = std::move(numbers);
    return reader.finish(DataTable(std::move(headers), std::move(rows), std::move(sourceName), std::move(rowNumbers)));
}

}  // namespace quorvel
