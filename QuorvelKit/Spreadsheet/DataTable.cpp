#include "Spreadsheet/DataTable.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace quorvel {

namespace {

/// Gives out column names that differ without regard to case: the plain name, or the plain name with the first of
/// " 2", " 3" and so on that is free.
class UniqueNames {
public:
    std::string add(std::string name) {
        const auto [entry, isNew] = nextNumbers_.try_emplace(Text::lowercased(name), 2);
        if (isNew) return name;
        // Names are only ever added, so a number that was taken stays taken and needn't be tried again.
        for (std::size_t& number = entry->second;; ++number) {
            const std::string suffix = " " + std::to_string(number);
            if (nextNumbers_.try_emplace(entry->first + suffix, 2).second) return name + suffix;
        }
    }

private:
    // Ordered: a file's author can't choose names that make it slow, as those of one hash would.
    std::map<std::string, std::size_t> nextNumbers_;  // of every name given out, lower-cased
};

/// As much of a header cell as becomes a name. Cells may share one text, but each name is a text of its own, so a long
/// one over many columns could grow past all memory. No spreadsheet lets anybody type so much into a cell.
std::string_view nameText(std::string_view cell) {
    constexpr std::size_t longest = 131'072;
    cell = Text::trimWhitespaceAndNewlines(cell);
    if (cell.size() <= longest) return cell;
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(cell[end]) & 0xC0) == 0x80) --end;
    return cell.substr(0, end);
}

std::vector<std::string> columnNames(const TextRows& rows, std::size_t headerRow, std::size_t width) {
    UniqueNames names;
    std::vector<std::string> result;
    result.reserve(width);
    for (std::size_t column = 0; column < width; ++column) {
        std::string name(nameText(rows.cell(headerRow, column)));
        if (name.empty()) name = "Column " + std::to_string(column + 1);
        result.push_back(names.add(std::move(name)));
    }
    return result;
}

}  // namespace

DataTable::DataTable(std::vector<std::string> headers_, TextRows rows_, std::string sourceName_,
                     std::optional<std::vector<std::int64_t>> rowNumbers_)
    : headers(std::move(headers_)), rows(std::move(rows_)), sourceName(std::move(sourceName_)) {
    rows.cutRows(headers.size());
    if (headers.empty()) rows.keepRows({});
    if (rowNumbers_ && rowNumbers_->size() == rows.rowCount()) {
        rowNumbers = std::move(*rowNumbers_);
    } else {
        rowNumbers.resize(rows.rowCount());
        std::iota(rowNumbers.begin(), rowNumbers.end(), 2);
    }
}

DataTable::DataTable(TextRows rawRows, std::string sourceName_) {
    std::vector<std::size_t> filled = rawRows.filledRows();
    std::size_t width = 0;
    for (const std::size_t row : filled) width = std::max(width, rawRows.cellCount(row));
    std::vector<std::string> names;
    std::vector<std::int64_t> numbers;
    if (!filled.empty()) {
        names = columnNames(rawRows, filled.front(), width);
        filled.erase(filled.begin());
        numbers.reserve(filled.size());
        for (const std::size_t row : filled) numbers.push_back(static_cast<std::int64_t>(row) + 1);
    }
    rawRows.keepRows(filled);
    *this = DataTable(std::move(names), std::move(rawRows), std::move(sourceName_), std::move(numbers));
}

bool DataTable::operator==(const DataTable& other) const {
    if (headers != other.headers || sourceName != other.sourceName || rowNumbers != other.rowNumbers) return false;
    if (rows.rowCount() != other.rows.rowCount()) return false;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        const std::size_t stored = std::max(rows.cellCount(row), other.rows.cellCount(row));
        for (std::size_t column = 0; column < std::min(stored, headers.size()); ++column)
            if (rows.cell(row, column) != other.rows.cell(row, column)) return false;
    }
    return true;
}

}  // namespace quorvel
