#include "Cards/Quantity.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <cmath>

namespace quorvel::Quantity {

namespace {

constexpr std::string_view multiplicationSign = "×";
constexpr double beyondIntegers = 0x1p63;

/// One "x", "X" or "×" taken from the front, and one from the end.
std::string_view withoutTimesSigns(std::string_view text) {
    if (text.starts_with('x') || text.starts_with('X')) {
        text.remove_prefix(1);
    } else if (text.starts_with(multiplicationSign)) {
        text.remove_prefix(multiplicationSign.size());
    }
    if (text.ends_with('x') || text.ends_with('X')) {
        text.remove_suffix(1);
    } else if (text.ends_with(multiplicationSign)) {
        text.remove_suffix(multiplicationSign.size());
    }
    return text;
}

Parsed copies(std::int64_t count) {
    return {std::min(count, maximum), true};
}

constexpr Parsed notUnderstood{1, false};

}  // namespace

Parsed parse(std::string_view text) {
    text = Text::trimWhitespaceAndNewlines(text);
    if (text.empty()) return {1, true};
    text = Text::trimBlanks(withoutTimesSigns(text));

    if (const auto count = Text::parseInteger(text)) return *count < 0 ? notUnderstood : copies(*count);

    // Written so that not-a-number fails every comparison.
    const auto number = Text::parseDecimal(text);
    const bool isWhole = number && *number >= 0 && *number < beyondIntegers && *number == std::round(*number);
    return isWhole ? copies(static_cast<std::int64_t>(*number)) : notUnderstood;
}

}  // namespace quorvel::Quantity
