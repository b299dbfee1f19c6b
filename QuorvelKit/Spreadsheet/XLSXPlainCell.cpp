#include "Spreadsheet/XLSXPlainCell.h"

#include <array>
#include <cstddef>

namespace quorvel::XLSX {

namespace {

/// Printable ASCII without what ends or escapes anything in a text or in an attribute's value.
constexpr auto plainCharacters = [] {
    std::array<bool, 256> plain{};
    for (int c = 0x20; c <= 0x7E; ++c) plain[static_cast<std::size_t>(c)] = true;
    for (const unsigned char special : {'&', '<', '>', '"'}) plain[special] = false;
    return plain;
}();

/// Takes a literal off the front; its length is known to the compiler, which makes this a comparison of two numbers.
template <std::size_t size>
bool take(std::string_view& bytes, const char (&expected)[size]) {
    constexpr std::size_t length = size - 1;
    if (!bytes.starts_with(std::string_view(expected, length))) return false;
    bytes.remove_prefix(length);
    return true;
}

/// The plain characters up to the first other one.
std::string_view takePlainText(std::string_view& bytes) {
    std::size_t count = 0;
    while (count < bytes.size() && plainCharacters[static_cast<unsigned char>(bytes[count])]) ++count;
    const std::string_view text = bytes.substr(0, count);
    bytes.remove_prefix(count);
    return text;
}

bool takeAttribute(std::string_view& bytes, PlainCell& cell) {
    if (bytes.size() < 4 || bytes[0] != ' ' || bytes[2] != '=' || bytes[3] != '"') return false;
    const char name = bytes[1];
    auto* const attribute = name == 'r'   ? &cell.reference
                            : name == 's' ? &cell.style
                            : name == 't' ? &cell.type
                                          : nullptr;
    if (!attribute || *attribute) return false;
    bytes.remove_prefix(4);
    *attribute = takePlainText(bytes);
    return take(bytes, "\"");
}

}  // namespace

std::optional<PlainCell> takePlainCell(std::string_view& bytes) {
    std::string_view rest = bytes;
    if (!take(rest, "<c")) return std::nullopt;
    PlainCell cell;
    while (rest.starts_with(' '))
        if (!takeAttribute(rest, cell)) return std::nullopt;
    if (!take(rest, "/>")) {
        if (!take(rest, ">")) return std::nullopt;
        if (take(rest, "<v>")) {
            cell.value = takePlainText(rest);
            if (!take(rest, "</v>")) return std::nullopt;
        }
        if (!take(rest, "</c>")) return std::nullopt;
    }
    bytes = rest;
    return cell;
}

}  // namespace quorvel::XLSX
