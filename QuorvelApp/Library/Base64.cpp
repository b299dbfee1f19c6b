#include "Library/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace quorvel::Base64 {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char padding = '=';
constexpr std::uint8_t noDigit = 64;

constexpr std::array<std::uint8_t, 256> digits = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(noDigit);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return table;
}();

}  // namespace

std::string encode(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(bytes.size() - i, 3);
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j)
            group = group << 8 | (j < count ? static_cast<std::uint8_t>(bytes[i + j]) : 0);
        for (std::size_t j = 0; j < 4; ++j) text += j <= count ? alphabet[group >> (18 - 6 * j) & 63] : padding;
    }
    return text;
}

std::optional<std::string> decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        const bool isLast = i + 4 == text.size();
        std::size_t count = 4;
        while (isLast && count > 2 && text[i + count - 1] == padding) --count;
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 4; ++j) {
            const std::uint8_t digit = j < count ? digits[static_cast<unsigned char>(text[i + j])] : 0;
            if (digit == noDigit) return std::nullopt;
            group = group << 6 | digit;
        }
        // What padding leaves over must be zero, so that no two texts mean the same bytes.
        if ((group & ((1U << (8 * (4 - count))) - 1)) != 0) return std::nullopt;
        for (std::size_t j = 0; j + 1 < count; ++j) bytes += static_cast<char>(group >> (16 - 8 * j) & 0xFF);
    }
    return bytes;
}

}  // namespace quorvel::Base64
