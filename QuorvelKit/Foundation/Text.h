#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Operations on UTF-8 text by Unicode data, without any locale. Every function takes any bytes: what is not UTF-8
/// reads as U+FFFD, one for each ill-formed sequence.
namespace quorvel::Text {

/// Takes the scalar that starts at `offset` (below text.size()) and moves `offset` behind it.
char32_t nextScalar(std::string_view text, std::size_t& offset);

void appendScalar(std::string& text, char32_t scalar);

/// Blanks and tabs: general category Zs and U+0009.
bool isBlank(char32_t scalar);

/// Blanks, tabs and everything that ends a line: U+000A to U+000D, U+0085, U+2028, U+2029.
bool isWhitespaceOrNewline(char32_t scalar);

/// General categories L* and N*, in any script. A character as a reader counts it (one of `characters`) is a letter or
/// a number when its first scalar is: marks belong to the letter they stand on.
bool isLetterOrNumber(char32_t scalar);
bool isLetterOrNumber(std::string_view character);

std::string_view trimBlanks(std::string_view text);
std::string_view trimWhitespaceAndNewlines(std::string_view text);

/// Full lower-casing by Unicode data.
std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text);

bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool equalsIgnoringCaseAndMarks(std::string_view a, std::string_view b);

/// Whether `needle` stands in `text`, case and diacritics aside. An empty needle stands in every text.
bool containsIgnoringCaseAndMarks(std::string_view text, std::string_view needle);

/// The characters as a reader counts them (extended grapheme clusters; CR LF is one), as views into `text`.
std::vector<std::string_view> characters(std::string_view text);

/// A base-10 integer with an optional sign that fits 64 bits, ASCII digits only, nothing around it.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// A decimal floating-point number, the whole text, in the form of strtod without hexadecimal, independent of locale.
std::optional<double> parseDecimal(std::string_view text);

/// The text behind the last "/", trailing slashes ignored.
std::string_view lastPathComponent(std::string_view path);

/// The text behind the last "." of the last path component, lower-cased; empty when there is none or the dot leads.
std::string lowercasedExtension(std::string_view path);

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace quorvel::Text
