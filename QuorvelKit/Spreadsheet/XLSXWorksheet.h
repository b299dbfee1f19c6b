#pragma once

#include "Spreadsheet/TextList.h"
#include "Spreadsheet/TextRows.h"
#include "Spreadsheet/XLSXFormats.h"
#include "Spreadsheet/XLSXPlainCell.h"
#include "Spreadsheet/XMLEvents.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::XLSX {

/// A place in a sheet, counted from 0.
struct CellPlace {
    std::int64_t row = 0;
    std::int64_t column = 0;

    bool operator==(const CellPlace&) const = default;
};

/// A reference such as "B12" or "$AA$7". Refused are rows above 2,000,000, columns above 20,000 and anything else that
/// is no such reference.
std::optional<CellPlace> parseReference(std::string_view reference);

/// Turns the events of a worksheet part into rows of text.
class Worksheet {
public:
    static constexpr std::int64_t mostRows = 100'000;
    static constexpr std::int64_t mostColumns = 500;

    /// `formats`, by the index of a cell style, must outlive the worksheet.
    Worksheet(TextList sharedStrings, const std::vector<NumberFormat>& formats, DateSystem dates);

    /// The same as the events of this cell.
    void cell(const PlainCell& cell);

    void start(std::string_view name, const XMLAttributes& attributes);
    void end(std::string_view name, std::string& text);

    /// What was gathered: as many rows as the last cell with text needs, all as wide as the rightmost one needs.
    TextRows rows() &&;

private:
    enum class Type { number, sharedString, inlineString, date, string, boolean };

    static Type typeNamed(std::string_view name);

    void startRow(const XMLAttributes& attributes);
    void startCell(std::optional<std::string_view> reference, std::optional<std::string_view> style,
                   std::optional<std::string_view> type);
    void endCell();
    void storeText(std::uint32_t place, std::string_view text);
    void store(std::uint32_t place, std::uint32_t text);
    void sortCells();

    TextList texts_;  // the shared strings, then the text of every other cell
    std::size_t sharedCount_ = 0;
    const std::vector<NumberFormat>& formats_;
    DateSystem dates_;

    // What a cell's column will be told from once all cells are known: row and column in one number.
    std::vector<TextRows::Cell> cells_;
    bool inOrder_ = true;

    std::int64_t row_ = -1;
    std::int64_t column_ = 0;
    std::int64_t nextColumn_ = 0;
    Type type_ = Type::number;
    std::int64_t style_ = 0;
    std::string value_;
    std::string inlineText_;
    bool inInline_ = false;
};

}  // namespace quorvel::XLSX
