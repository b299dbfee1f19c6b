#pragma once

#include <optional>
#include <string_view>

namespace quorvel::XLSX {

/// A cell in the form that nearly all cells of nearly all workbooks have, such as `<c r="B2" s="1"
/// t="s"><v>12</v></c>`: no attributes but these three, each at most once and in any order, and no character that XML
/// treats as special. Most of the time that a workbook takes goes into its cells, and this form needs no XML parser.
struct PlainCell {
    std::optional<std::string_view> reference;
    std::optional<std::string_view> style;
    std::optional<std::string_view> type;
    std::string_view value;
};

/// Takes a plain cell off the front of `bytes`; nothing when anything else stands there, or only a part of a cell.
std::optional<PlainCell> takePlainCell(std::string_view& bytes);

}  // namespace quorvel::XLSX
