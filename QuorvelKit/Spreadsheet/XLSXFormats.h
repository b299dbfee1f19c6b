#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// How a workbook's numbers become the text that its author sees.
namespace quorvel::XLSX {

/// What a cell style does to a number.
struct NumberFormat {
    enum class Kind : std::uint8_t { zeroPadded, general, date, dateTime, time, percent };

    Kind kind = Kind::general;
    std::uint8_t width = 0;  ///< digits, of zeroPadded alone

    bool operator==(const NumberFormat&) const = default;
};

/// What the number a date is stored as counts from.
enum class DateSystem { from1900, from1904 };

/// The format of a built-in id; nothing for ids that leave it to their code (without a code they are `general`).
std::optional<NumberFormat> builtInFormat(std::int64_t id);

/// The format of a custom code such as "yyyy-mm-dd". Quoted, bracketed and escaped parts don't count; "[h]:mm" is a
/// date therefore.
NumberFormat classifyCode(std::string_view code);

/// Appends what a numeric cell shows. A value that is no number is shown as it stands.
void appendDisplayText(std::string& text, std::string_view value, NumberFormat format, DateSystem dates);

}  // namespace quorvel::XLSX
