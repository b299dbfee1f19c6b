#pragma once

#include "Spreadsheet/TextList.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Rows of text cells of any length each, in one buffer. Cells are either packed, each with a text of its own that
/// costs eight bytes beside it, or sparse: then an empty cell costs nothing, the others sixteen bytes, and cells may
/// share a text. Packed cells can be appended, from left to right and rows from top to bottom.
class TextRows {
public:
    /// A sparse cell: which text of the list it shows, and in which column it stands.
    struct Cell {
        std::uint32_t text = 0;
        std::uint32_t column = 0;
    };

    /// Where a row's cells lie among all cells, and how many cells it has with those that aren't stored.
    struct Row {
        std::uint64_t firstCell = 0;
        std::uint64_t storedCells = 0;
        std::uint64_t width = 0;
    };

    TextRows() = default;
    TextRows(std::initializer_list<std::initializer_list<std::string_view>> rows);

    /// Takes over what a fast reader has laid out: the cells' texts without gaps, where each ends in `text`, and how
    /// many cells there are up to the end of each row.
    TextRows(std::string text, std::vector<std::uint64_t> cellEnds, const std::vector<std::uint64_t>& rowEnds);

    /// Takes over sparse cells, those of each row in the order of their columns.
    TextRows(TextList texts, std::vector<Cell> cells, std::vector<Row> rows);

    void appendCell(std::string_view text);

    /// The text of the cell that is being written, at the end of all text before it; endCell makes it a cell. Spares a
    /// copy to readers that unescape. Only appending is allowed.
    std::string& openText() { return texts_.open(); }
    void endCell() { texts_.close(); }
    void endRow();

    std::size_t rowCount() const { return rows_.size(); }
    std::size_t cellCount(std::size_t row) const { return rows_[row].width; }

    /// The cell's text, valid as long as this object is unchanged; "" beyond the end of a row.
    std::string_view cell(std::size_t row, std::size_t column) const;

    /// The rows that have more than blanks and tabs in some cell, ascending.
    std::vector<std::size_t> filledRows() const;

    /// Keeps the given rows, ascending, and drops the others from view; their text stays in the buffer.
    void keepRows(const std::vector<std::size_t>& rows);

    /// Drops from view what a row has beyond `width` cells.
    void cutRows(std::size_t width);

    /// Turns every CR LF and every other CR inside a cell into LF.
    void unifyLineEnds() { texts_.unifyLineEnds(); }

    /// The same rows, each with the same number of cells.
    bool operator==(const TextRows& other) const;

private:
    TextList texts_;
    std::vector<Cell> cells_;  // none while cells are packed: then the n-th cell has the n-th text
    bool sparse_ = false;
    std::vector<Row> rows_;
    std::uint64_t openRow_ = 0;  // the first cell of the row being written
};

}  // namespace quorvel
