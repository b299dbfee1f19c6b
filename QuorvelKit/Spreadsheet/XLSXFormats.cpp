#include "Spreadsheet/XLSXFormats.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstddef>

namespace quorvel::XLSX {

namespace {

using Kind = NumberFormat::Kind;

/// Whole numbers below it have all their digits in a double and are shown without an exponent.
constexpr double wholeLimit = 1e15;

/// Whole numbers have fifteen digits at most. A code of far more zeros would only make a small file into a large table.
constexpr std::size_t widestPadding = 64;

/// The end of the year 9999.
constexpr double lastDay = 2958465.999;

/// The code without what is shown as it stands: escaped characters, and what is quoted or bracketed.
std::string strippedCode(std::string_view code) {
    std::string result;
    bool quoted = false;
    bool bracketed = false;
    for (std::size_t i = 0; i < code.size();) {
        const std::size_t start = i;
        const char32_t c = Text::nextScalar(code, i);
        if (c == '\\') {
            if (i < code.size()) Text::nextScalar(code, i);
        } else if (c == '"') {
            quoted = !quoted;
        } else if (c == '[' && !quoted && !bracketed) {
            bracketed = true;
        } else if (c == ']' && !quoted && bracketed) {
            bracketed = false;
        } else if (!quoted && !bracketed) {
            result += code.substr(start, i - start);
        }
    }
    return result;
}

struct DateParts {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
};

std::optional<DateParts> dateParts(double value, DateSystem dates) {
    using namespace std::chrono;
    if (!(value >= 0 && value <= lastDay)) return std::nullopt;  // NaN is neither
    const double wholeDays = std::floor(value);
    auto seconds = static_cast<std::int64_t>(std::round((value - wholeDays) * 86400));
    auto dayNumber = static_cast<std::int64_t>(wholeDays);
    sys_days base = year{1904} / January / 1;
    if (dates == DateSystem::from1900) {
        base = year{1899} / December / 30;
        // Excel counts a 29 February 1900 that never was.
        if (value < 61) ++dayNumber;
    }
    dayNumber += seconds / 86400;
    seconds %= 86400;
    const year_month_day date(base + days(dayNumber));
    return DateParts{int(date.year()), int(unsigned(date.month())), int(unsigned(date.day())), int(seconds / 3600),
                     int(seconds / 60 % 60)};
}

/// Appends a number of at least `width` digits.
void appendDigits(std::string& text, std::uint64_t number, std::size_t width) {
    std::array<char, 20> digits;
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const auto count = static_cast<std::size_t>(end - digits.data());
    if (count < width) text.append(width - count, '0');
    text.append(digits.data(), count);
}

void appendDate(std::string& text, const DateParts& parts) {
    appendDigits(text, static_cast<std::uint64_t>(parts.year), 4);
    text += '-';
    appendDigits(text, static_cast<std::uint64_t>(parts.month), 2);
    text += '-';
    appendDigits(text, static_cast<std::uint64_t>(parts.day), 2);
}

void appendTime(std::string& text, const DateParts& parts) {
    appendDigits(text, static_cast<std::uint64_t>(parts.hour), 2);
    text += ':';
    appendDigits(text, static_cast<std::uint64_t>(parts.minute), 2);
}

bool isWhole(double value) {
    return value == std::round(value) && std::abs(value) < wholeLimit;
}

/// A whole number, or else fifteen significant digits, as many as a double keeps of any decimal.
void appendNumber(std::string& text, double value) {
    std::array<char, 32> digits;
    char* const end = digits.data() + digits.size();
    const auto written = isWhole(value) ? std::to_chars(digits.data(), end, static_cast<std::int64_t>(value))
                                        : std::to_chars(digits.data(), end, value, std::chars_format::general, 15);
    text.append(digits.data(), written.ptr);
}

void appendZeroPadded(std::string& text, double value, std::size_t width) {
    if (!isWhole(value)) return appendNumber(text, value);
    if (value < 0) text += '-';
    appendDigits(text, static_cast<std::uint64_t>(std::abs(value)), width);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether a value already reads as appendNumber would write it: digits without idle zeros, not more than a double
/// keeps, and not so small that an exponent would be shown. Most values in a workbook are.
bool isPlainNumber(std::string_view value) {
    constexpr std::size_t keptDigits = 15;
    if (value.starts_with('-')) value.remove_prefix(1);
    const auto point = std::find_if_not(value.begin(), value.end(), isDigit);
    const auto whole = static_cast<std::size_t>(point - value.begin());
    if (whole == 0 || whole > keptDigits) return false;
    if (whole == value.size()) return value.front() != '0';
    if (*point != '.' || value.size() > keptDigits + 1 || value.back() == '0') return false;
    if (value.front() == '0' && (whole > 1 || value.substr(1).starts_with(".0"))) return false;
    return value.back() != '.' && std::all_of(point + 1, value.end(), isDigit);
}

}  // namespace

std::optional<NumberFormat> builtInFormat(std::int64_t id) {
    const auto within = [&](std::int64_t first, std::int64_t last) { return id >= first && id <= last; };
    if (within(14, 17) || within(27, 36) || within(50, 58)) return NumberFormat{Kind::date};
    if (id == 22) return NumberFormat{Kind::dateTime};
    if (within(18, 21) || within(45, 47)) return NumberFormat{Kind::time};
    if (within(9, 10)) return NumberFormat{Kind::percent};
    return std::nullopt;
}

NumberFormat classifyCode(std::string_view code) {
    const std::string plain = Text::lowercased(strippedCode(code));
    const auto hasAny = [&](std::string_view letters) { return plain.find_first_of(letters) != std::string::npos; };
    const bool hasDate = hasAny("yd");
    const bool hasClock = hasAny("hs");
    if (hasDate) return {hasClock ? Kind::dateTime : Kind::date};
    if (hasClock) return {Kind::time};
    if (hasAny("m") && !hasAny("0#")) return {Kind::date};
    if (hasAny("%")) return {Kind::percent};
    if (plain.size() >= 2 && plain.size() <= widestPadding && plain.find_first_not_of('0') == std::string::npos)
        return {Kind::zeroPadded, static_cast<std::uint8_t>(plain.size())};
    return {Kind::general};
}

void appendDisplayText(std::string& text, std::string_view value, NumberFormat format, DateSystem dates) {
    if (format.kind == Kind::general && isPlainNumber(value)) {
        text += value;
        return;
    }
    const auto number = Text::parseDecimal(Text::trimBlanks(value));
    if (!number) {
        text += value;
        return;
    }
    switch (format.kind) {
        case Kind::general:
            return appendNumber(text, *number);
        case Kind::zeroPadded:
            return appendZeroPadded(text, *number, format.width);
        case Kind::percent:
            appendNumber(text, *number * 100.0);
            text += '%';
            return;
        case Kind::date:
        case Kind::dateTime:
        case Kind::time:
            break;
    }
    const auto parts = dateParts(*number, dates);
    if (!parts) return appendNumber(text, *number);
    if (format.kind != Kind::time) appendDate(text, *parts);
    const bool showsTime =
        format.kind == Kind::time || (format.kind == Kind::dateTime && (parts->hour != 0 || parts->minute != 0));
    if (format.kind != Kind::time && showsTime) text += ' ';
    if (showsTime) appendTime(text, *parts);
}

}  // namespace quorvel::XLSX
