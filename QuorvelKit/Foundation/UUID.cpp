#include "Foundation/UUID.h"

#include <cstring>
#include <random>

namespace quorvel {

namespace {

constexpr std::size_t textLength = 36;

constexpr bool isHyphenAt(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

UUID UUID::random() {
    thread_local std::random_device source;
    UUID id;
    for (std::size_t i = 0; i < id.bytes.size(); i += sizeof(std::uint32_t)) {
        const std::uint32_t word = source();
        std::memcpy(id.bytes.data() + i, &word, sizeof word);
    }
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0F) | 0x40);
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3F) | 0x80);
    return id;
}

std::string UUID::text() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(textLength);
    for (const std::uint8_t byte : bytes) {
        if (isHyphenAt(result.size())) result += '-';
        result += digits[byte >> 4];
        result += digits[byte & 15];
    }
    return result;
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength) return std::nullopt;
    UUID id;
    std::size_t count = 0;
    for (std::size_t i = 0; i < textLength; ++i) {
        if (isHyphenAt(i)) {
            if (text[i] != '-') return std::nullopt;
            continue;
        }
        const int high = digitValue(text[i]);
        const int low = digitValue(text[++i]);
        if (high < 0 || low < 0) return std::nullopt;
        id.bytes[count++] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return id;
}

}  // namespace quorvel
