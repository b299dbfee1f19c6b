#include "Spreadsheet/TextRows.h"

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
    : text_(std::move(text)), cellEnds_(std::move(cellEnds)) {
    rows_.reserve(rowEnds.size());
    for (const std::uint64_t end : rowEnds) {
        rows_.push_back({openRow_, end - openRow_});
        openRow_ = end;
    }
}

void TextRows::appendCell(std::string_view text) {
    text_ += text;
    endCell();
}

void TextRows::endRow() {
    rows_.push_back({openRow_, cellEnds_.size() - openRow_});
    openRow_ = cellEnds_.size();
}

std::string_view TextRows::storedCell(std::size_t cell) const {
    const std::uint64_t start = cell == 0 ? 0 : cellEnds_[cell - 1];
    return {text_.data() + start, cellEnds_[cell] - start};
}

std::string_view TextRows::cell(std::size_t row, std::size_t column) const {
    const Row& place = rows_[row];
    return column < place.count ? storedCell(place.firstCell + column) : std::string_view();
}

void TextRows::keepRows(const std::vector<std::size_t>& rows) {
    // Ascending indices are never behind their new place, so the list can be packed where it is.
    for (std::size_t i = 0; i < rows.size(); ++i) rows_[i] = rows_[rows[i]];
    rows_.resize(rows.size());
}

void TextRows::cutRows(std::size_t width) {
    for (Row& row : rows_) row.count = std::min<std::uint64_t>(row.count, width);
}

void TextRows::unifyLineEnds() {
    if (text_.find('\r') == std::string::npos) return;
    std::size_t read = 0;
    std::size_t written = 0;
    for (std::uint64_t& cellEnd : cellEnds_) {
        for (; read < cellEnd; ++read) {
            const char c = text_[read];
            if (c == '\r') {
                text_[written++] = '\n';
                if (read + 1 < cellEnd && text_[read + 1] == '\n') ++read;
            } else {
                text_[written++] = c;
            }
        }
        cellEnd = written;
    }
    text_.resize(written);
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
