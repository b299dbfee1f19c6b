#include "Spreadsheet/TextRows.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <utility>

namespace quorvel {

TextRows::TextRows(std::initializer_list<std::initializer_list<std::string_view>> rows) {
    for (const auto& row : rows) {
        for (const std::string_view text : row) appendCell(text);
        endRow();
    }
}

TextRows::TextRows(std::string text, std::vector<std::uint64_t> cellEnds, const std::vector<std::uint64_t>& rowEnds)
    : texts_(std::move(text), std::move(cellEnds)) {
    rows_.reserve(rowEnds.size());
    for (const std::uint64_t end : rowEnds) {
        rows_.push_back({openRow_, end - openRow_, end - openRow_});
        openRow_ = end;
    }
}

TextRows::TextRows(TextList texts, std::vector<Cell> cells, std::vector<Row> rows)
    : texts_(std::move(texts)), cells_(std::move(cells)), sparse_(true), rows_(std::move(rows)) {}

void TextRows::appendCell(std::string_view text) {
    texts_.append(text);
}

void TextRows::endRow() {
    const std::uint64_t count = texts_.size() - openRow_;
    rows_.push_back({openRow_, count, count});
    openRow_ = texts_.size();
}

std::string_view TextRows::cell(std::size_t row, std::size_t column) const {
    const Row& place = rows_[row];
    if (column >= place.width) return {};
    if (!sparse_) return texts_[place.firstCell + column];
    const Cell* first = cells_.data() + place.firstCell;
    // Where nothing is empty to the left, a cell's column is its place; otherwise it stands further to the front.
    if (column < place.storedCells && first[column].column == column) return texts_[first[column].text];
    const Cell* end = first + std::min<std::uint64_t>(place.storedCells, column);
    const Cell* found = std::lower_bound(first, end, column, [](const Cell& c, std::size_t i) { return c.column < i; });
    return found != end && found->column == column ? texts_[found->text] : std::string_view();
}

std::vector<std::size_t> TextRows::filledRows() const {
    // A shared text may stand in any number of cells, and is looked at once.
    const std::vector<bool> filled = sparse_ ? texts_.filled() : std::vector<bool>();
    const auto isFilled = [&](std::uint64_t cell) {
        return sparse_ ? filled[cells_[cell].text] : !Text::trimBlanks(texts_[cell]).empty();
    };
    std::vector<std::size_t> result;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const std::uint64_t end = rows_[row].firstCell + rows_[row].storedCells;
        for (std::uint64_t cell = rows_[row].firstCell; cell < end; ++cell) {
            if (!isFilled(cell)) continue;
            result.push_back(row);
            break;
        }
    }
    return result;
}

void TextRows::keepRows(const std::vector<std::size_t>& rows) {
    // Ascending indices are never behind their new place, so the list can be packed where it is.
    for (std::size_t i = 0; i < rows.size(); ++i) rows_[i] = rows_[rows[i]];
    rows_.resize(rows.size());
}

void TextRows::cutRows(std::size_t width) {
    for (Row& row : rows_) {
        if (row.width <= width) continue;
        row.width = width;
        if (!sparse_) {
            row.storedCells = width;
            continue;
        }
        const Cell* first = cells_.data() + row.firstCell;
        while (row.storedCells > 0 && first[row.storedCells - 1].column >= width) --row.storedCells;
    }
}

bool TextRows::operator==(const TextRows& other) const {
    if (rowCount() != other.rowCount()) return false;
    for (std::size_t row = 0; row < rowCount(); ++row) {
        if (cellCount(row) != other.cellCount(row)) return false;
        for (std::size_t column = 0; column < cellCount(row); ++column)
            if (cell(row, column) != other.cell(row, column)) return false;
    }
    return true;
}

}  // namespace quorvel
