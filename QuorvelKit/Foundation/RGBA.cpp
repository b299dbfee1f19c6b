#include "Foundation/RGBA.h"

#include "Foundation/Text.h"

#include <charconv>
#include <cstdint>
#include <system_error>

namespace quorvel {

namespace {

void appendByte(std::string& text, int byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += digits[static_cast<std::size_t>(byte >> 4)];
    text += digits[static_cast<std::size_t>(byte & 15)];
}

/// An unsigned number in base 16 with an optional sign; "-" goes with zero alone.
std::optional<std::uint64_t> parseBase16(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (negative && value != 0) return std::nullopt;
    return value;
}

}  // namespace

std::string RGBA::hexString() const {
    std::string text = "#";
    for (const double channel : {r, g, b}) appendByte(text, byteOf(channel));
    if (a < 1) appendByte(text, byteOf(a));
    return text;
}

std::optional<RGBA> RGBA::parseHex(std::string_view text) {
    text = Text::trimBlanks(text);
    if (text.starts_with('#')) text.remove_prefix(1);
    // All digits are ASCII, so six bytes are six characters wherever the digits are right.
    if (text.size() != 6 && text.size() != 8) return std::nullopt;
    const auto value = parseBase16(text);
    if (!value) return std::nullopt;
    const auto byte = [&](int shift) { return static_cast<int>(*value >> shift & 0xFF); };
    if (text.size() == 6) return bytes(byte(16), byte(8), byte(0));
    return bytes(byte(24), byte(16), byte(8), byte(0));
}

}  // namespace quorvel
