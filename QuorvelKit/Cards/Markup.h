#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvel {

/// A piece of text in one style.
struct MarkupText {
    std::string text;
    bool bold = false;
    bool italic = false;
    bool operator==(const MarkupText&) const = default;
};

/// An inline icon by its lower-case name; the icon need not exist.
struct MarkupIcon {
    std::string name;
    bool operator==(const MarkupIcon&) const = default;
};

using MarkupRun = std::variant<MarkupText, MarkupIcon>;

/// `**bold**`, `*italic*`, `{icon:coin}` and backslash escapes, read by characters as a reader counts them.
///
/// 1. A backslash makes the next character literal; `\n` is a line feed. At the very end it stands for itself.
/// 2. `**` switches bold and `*` switches italic, each by itself, so marks may overlap. A mark opens only where its
///    partner follows; the search for `*` passes over `**`.
/// 3. `{icon:name}`, in any case, is an icon; a name is letters, numbers, "-" and "_".
/// 4. A lone carriage return is a line feed. Everything else is text, malformed marks included. Nothing fails.
///
/// The work grows with the length of the text alone, whatever it holds.
namespace Markup {

/// The runs of a text. Neighbouring text runs always differ in style, and none is empty.
std::vector<MarkupRun> parse(std::string_view text);

/// The text without its marks; an icon reads "[name]".
std::string plainText(std::string_view text);

/// The names of an icon row, repeats written out: "coin, 2 leaf", "coin x3", "3×coin", "{icon:coin}".
/// Stops at `maximumIconNames`: no card shows more, and a written count must not exhaust memory.
std::vector<std::string> iconNames(std::string_view text);

inline constexpr std::size_t maximumIconNames = 10'000;

}  // namespace Markup
}  // namespace quorvel
