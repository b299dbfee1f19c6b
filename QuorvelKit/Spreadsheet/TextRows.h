#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Rows of text cells of any length each, in one buffer: a cell costs eight bytes beside its text, a cell that was
/// never stored costs nothing. Cells are appended from left to right and rows from top to bottom.
class TextRows {
public:
    TextRows() = default;
    TextRows(std::initializer_list<std::initializer_list<std::string_view>> rows);

    /// Takes over what a fast reader has laid out: the cells' texts without gaps, where each ends in `text`, and how
    /// many cells there are up to the end of each row.
    TextRows(std::string text, std::vector<std::uint64_t> cellEnds, const std::vector<std::uint64_t>& rowEnds);

    void appendCell(std::string_view text);

    /// The text of the cell that is being written, at the end of all text before it; endCell makes it a cell. Spares a
    /// copy to readers that unescape. Only appending is allowed.
    std::string& openText() { return text_; }
    void endCell() { cellEnds_.push_back(text_.size()); }
    void endRow();

    std::size_t rowCount() const { return rows_.size(); }
    std::size_t cellCount(std::size_t row) const { return rows_[row].count; }

    /// The cell's text, valid as long as this object is unchanged; "" beyond the end of a row.
    std::string_view cell(std::size_t row, std::size_t column) const;

    /// Keeps the given rows, ascending, and drops the others from view; their text stays in the buffer.
    void keepRows(const std::vector<std::size_t>& rows);

    /// Drops from view what a row has beyond `width` cells.
    void cutRows(std::size_t width);

    /// Turns every CR LF and every other CR inside a cell into LF.
    void unifyLineEnds();

    /// The same rows, each with the same number of cells.
    bool operator==(const TextRows& other) const;

private:
    struct Row {
        std::uint64_t firstCell = 0;
        std::uint64_t count = 0;
    };

    std::string_view storedCell(std::size_t cell) const;

    std::string text_;
    std::vector<std::uint64_t> cellEnds_;  // where each cell's text ends; it begins where the one before ends
    std::vector<Row> rows_;
    std::uint64_t openRow_ = 0;  // the first cell of the row being written
};

}  // namespace quorvel
