#include "Foundation/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>
#include <utf8proc.h>

namespace quorvel::Text {

namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool isASCII(char32_t scalar) {
    return scalar < 0x80;
}

bool isASCII(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

constexpr char lowerASCII(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr char upperASCII(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

utf8proc_category_t category(char32_t scalar) {
    return utf8proc_category(static_cast<utf8proc_int32_t>(scalar));
}

char32_t simpleUpper(char32_t scalar) {
    return static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(scalar)));
}

/// The scalars that utf8proc makes of one, in room that every Unicode character fits.
struct Decomposed {
    std::array<utf8proc_int32_t, 32> scalars;
    std::size_t count = 0;

    Decomposed(char32_t scalar, int options) {
        int boundary = 0;
        const auto made = utf8proc_decompose_char(static_cast<utf8proc_int32_t>(scalar), scalars.data(),
                                                  static_cast<utf8proc_ssize_t>(scalars.size()),
                                                  static_cast<utf8proc_option_t>(options), &boundary);
        if (made >= 0 && static_cast<std::size_t>(made) <= scalars.size()) {
            count = static_cast<std::size_t>(made);
        } else {
            scalars[0] = static_cast<utf8proc_int32_t>(scalar);
            count = 1;
        }
    }
};

std::int16_t combiningClass(char32_t scalar) {
    return utf8proc_get_property(static_cast<utf8proc_int32_t>(scalar))->combining_class;
}

/// Canonical ordering: every run of combining scalars sorted by class, in a stable way.
void orderMarks(std::u32string& scalars) {
    auto begin = scalars.begin();
    while (begin != scalars.end()) {
        begin = std::find_if(begin, scalars.end(), [](char32_t s) { return !isASCII(s) && combiningClass(s) != 0; });
        const auto end =
            std::find_if(begin, scalars.end(), [](char32_t s) { return isASCII(s) || combiningClass(s) == 0; });
        if (end - begin > 1)
            std::stable_sort(begin, end, [](char32_t a, char32_t b) { return combiningClass(a) < combiningClass(b); });
        begin = end;
    }
}

enum class Marks { keep, strip };

/// What two texts have in common that differ in case only (or in case and marks): canonical decomposition and full case
/// folding, so that ß meets SS and a composed letter its parts.
std::u32string folded(std::string_view text, Marks marks) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t scalar = nextScalar(text, i);
        if (isASCII(scalar)) {
            result += static_cast<char32_t>(lowerASCII(static_cast<char>(scalar)));
            continue;
        }
        const Decomposed parts(scalar, UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD);
        for (std::size_t k = 0; k < parts.count; ++k) {
            const auto part = static_cast<char32_t>(parts.scalars[k]);
            if (marks == Marks::keep || category(part) != UTF8PROC_CATEGORY_MN) result += part;
        }
    }
    orderMarks(result);
    return result;
}

bool foldedEqual(std::string_view a, std::string_view b, Marks marks) {
    if (isASCII(a) && isASCII(b))
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](char x, char y) { return lowerASCII(x) == lowerASCII(y); });
    return folded(a, marks) == folded(b, marks);
}

template <class IsDropped>
std::string_view trim(std::string_view text, IsDropped isDropped) {
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t next = start;
        if (!isDropped(nextScalar(text, next))) break;
        start = next;
    }
    text.remove_prefix(start);
    while (!text.empty()) {
        std::size_t last = text.size() - 1;
        for (int steps = 0; steps < 3 && last > 0 && (text[last] & 0xC0) == 0x80; ++steps) --last;
        std::size_t next = last;
        if (!isDropped(nextScalar(text, next)) || next != text.size()) break;
        text = text.substr(0, last);
    }
    return text;
}

/// Whether the number's magnitude is above 1, told from its digits and its exponent alone.
bool isLarge(std::string_view number) {
    std::int64_t exponent = 0;
    if (const std::size_t e = number.find_first_of("eE"); e != std::string_view::npos) {
        std::string_view digits = number.substr(e + 1);
        const bool negative = digits.starts_with('-');
        if (negative || digits.starts_with('+')) digits.remove_prefix(1);
        for (const char digit : digits) exponent = std::min<std::int64_t>(exponent * 10 + (digit - '0'), 1LL << 50);
        if (negative) exponent = -exponent;
        number = number.substr(0, e);
    }
    const std::size_t point = std::min(number.find('.'), number.size());
    const std::size_t first = number.find_first_of("123456789");
    if (first == std::string_view::npos) return false;
    return static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first) + exponent > 0;
}

}  // namespace

char32_t nextScalar(std::string_view text, std::size_t& offset) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byteAt(offset++);
    if (lead < 0x80) return lead;
    if (lead < 0xC2 || lead > 0xF4) return replacement;

    // The second byte's range depends on the first: it keeps out overlong forms, surrogates and what is above 10FFFF.
    const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    unsigned char least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned char most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t scalar = lead & (0x3F >> more);
    for (int k = 0; k < more; ++k) {
        if (offset == text.size() || byteAt(offset) < least || byteAt(offset) > most) return replacement;
        scalar = scalar << 6 | (byteAt(offset++) & 0x3F);
        least = 0x80;
        most = 0xBF;
    }
    return scalar;
}

void appendScalar(std::string& text, char32_t scalar) {
    if (scalar < 0x80) {
        text += static_cast<char>(scalar);
        return;
    }
    if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF)) scalar = replacement;
    const auto continuation = [&](int shift) { text += static_cast<char>(0x80 | (scalar >> shift & 0x3F)); };
    if (scalar < 0x800) {
        text += static_cast<char>(0xC0 | scalar >> 6);
    } else if (scalar < 0x10000) {
        text += static_cast<char>(0xE0 | scalar >> 12);
        continuation(6);
    } else {
        text += static_cast<char>(0xF0 | scalar >> 18);
        continuation(12);
        continuation(6);
    }
    continuation(0);
}

bool isBlank(char32_t scalar) {
    if (isASCII(scalar)) return scalar == ' ' || scalar == '\t';
    return category(scalar) == UTF8PROC_CATEGORY_ZS;
}

bool isWhitespaceOrNewline(char32_t scalar) {
    if (isASCII(scalar)) return scalar == ' ' || (scalar >= 0x09 && scalar <= 0x0D);
    return scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029 || isBlank(scalar);
}

bool isLetterOrNumber(char32_t scalar) {
    if (isASCII(scalar))
        return (scalar >= '0' && scalar <= '9') || (scalar >= 'a' && scalar <= 'z') || (scalar >= 'A' && scalar <= 'Z');
    const auto kind = category(scalar);
    return (kind >= UTF8PROC_CATEGORY_LU && kind <= UTF8PROC_CATEGORY_LO) ||
           (kind >= UTF8PROC_CATEGORY_ND && kind <= UTF8PROC_CATEGORY_NO);
}

bool isLetterOrNumber(std::string_view character) {
    std::size_t offset = 0;
    return !character.empty() && isLetterOrNumber(nextScalar(character, offset));
}

std::string_view trimBlanks(std::string_view text) {
    return trim(text, isBlank);
}

std::string_view trimWhitespaceAndNewlines(std::string_view text) {
    return trim(text, isWhitespaceOrNewline);
}

std::string lowercased(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t scalar = nextScalar(text, i);
        if (isASCII(scalar)) {
            result += lowerASCII(static_cast<char>(scalar));
        } else if (scalar == 0x130) {
            result += "i\u0307";  // İ, the one letter whose lower case is two scalars in every language
        } else {
            appendScalar(result, static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(scalar))));
        }
    }
    return result;
}

std::string uppercased(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t scalar = nextScalar(text, i);
        if (isASCII(scalar)) {
            result += upperASCII(static_cast<char>(scalar));
            continue;
        }
        // A letter that folds to several scalars has the upper case of those (ß, ligatures, Greek with iota), unless it
        // is upper case itself.
        const Decomposed parts(scalar, UTF8PROC_CASEFOLD);
        if (parts.count > 1 && category(scalar) != UTF8PROC_CATEGORY_LU) {
            for (std::size_t k = 0; k < parts.count; ++k)
                appendScalar(result, simpleUpper(static_cast<char32_t>(parts.scalars[k])));
        } else {
            appendScalar(result, simpleUpper(scalar));
        }
    }
    return result;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return foldedEqual(a, b, Marks::keep);
}

bool equalsIgnoringCaseAndMarks(std::string_view a, std::string_view b) {
    return foldedEqual(a, b, Marks::strip);
}

bool containsIgnoringCaseAndMarks(std::string_view text, std::string_view needle) {
    return folded(text, Marks::strip).find(folded(needle, Marks::strip)) != std::u32string::npos;
}

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> result;
    result.reserve(text.size());
    std::size_t start = 0;
    std::size_t offset = 0;
    utf8proc_int32_t state = 0;
    char32_t previous = 0;
    while (offset < text.size()) {
        const std::size_t here = offset;
        const char32_t scalar = nextScalar(text, offset);
        if (here > 0) {
            // Among ASCII only CR LF sticks together, and then no state is carried on.
            const bool plain = isASCII(previous) && isASCII(scalar);
            const bool breaks = plain ? !(previous == '\r' && scalar == '\n')
                                      : utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(previous),
                                                                         static_cast<utf8proc_int32_t>(scalar), &state);
            if (plain) state = 0;
            if (breaks) {
                result.push_back(text.substr(start, here - start));
                start = here;
            }
        }
        previous = scalar;
    }
    if (start < text.size()) result.push_back(text.substr(start));
    return result;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<double> parseDecimal(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size() || error == std::errc::invalid_argument) return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        const bool negative = text.starts_with('-');
        const double magnitude = isLarge(text.substr(negative ? 1 : 0)) ? std::numeric_limits<double>::infinity() : 0.0;
        return negative ? -magnitude : magnitude;
    }
    return value;
}

std::string_view lastPathComponent(std::string_view path) {
    while (path.ends_with('/')) path.remove_suffix(1);
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

std::string lowercasedExtension(std::string_view path) {
    const std::string_view name = lastPathComponent(path);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return {};
    return lowercased(name.substr(dot + 1));
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    while (!from.empty()) {
        const std::size_t found = text.find(from, start);
        if (found == std::string_view::npos) break;
        result += text.substr(start, found - start);
        result += to;
        start = found + from.size();
    }
    result += text.substr(start);
    return result;
}

}  // namespace quorvel::Text
