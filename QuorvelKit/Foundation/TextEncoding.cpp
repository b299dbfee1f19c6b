#include "Foundation/TextEncoding.h"

#include "Foundation/Text.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace quorvel::TextEncoding {

namespace {

/// Where the bytes from `offset` on stop being ASCII.
std::size_t skipASCII(std::string_view bytes, std::size_t offset) {
    constexpr std::size_t step = 4 * sizeof(std::uint64_t);
    while (offset + step <= bytes.size()) {
        std::array<std::uint64_t, 4> words;
        std::memcpy(words.data(), bytes.data() + offset, step);
        if ((words[0] | words[1] | words[2] | words[3]) & 0x8080808080808080) break;
        offset += step;
    }
    while (offset < bytes.size() && static_cast<unsigned char>(bytes[offset]) < 0x80) ++offset;
    return offset;
}

/// Code page 1252 differs from Latin-1 in 80 to 9F only; 0 marks the bytes that stand for nothing.
constexpr std::array<char16_t, 32> windows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

}  // namespace

bool isValidUTF8(std::string_view bytes) {
    constexpr std::size_t encodedReplacement = 3;
    std::size_t offset = skipASCII(bytes, 0);
    while (offset < bytes.size()) {
        const std::size_t start = offset;
        if (Text::nextScalar(bytes, offset) == 0xFFFD) {
            // Either a real U+FFFD, which is valid, or what stands for broken bytes.
            const bool real = offset - start == encodedReplacement && bytes.substr(start, 3) == "\xEF\xBF\xBD";
            if (!real) return false;
        }
        if (offset < bytes.size() && static_cast<unsigned char>(bytes[offset]) < 0x80)
            offset = skipASCII(bytes, offset);
    }
    return true;
}

std::string repairedUTF8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    for (std::size_t offset = 0; offset < bytes.size();) {
        const std::size_t plainEnd = skipASCII(bytes, offset);
        result += bytes.substr(offset, plainEnd - offset);
        offset = plainEnd;
        while (offset < bytes.size() && static_cast<unsigned char>(bytes[offset]) >= 0x80)
            Text::appendScalar(result, Text::nextScalar(bytes, offset));
    }
    return result;
}

std::optional<std::string> fromUTF16(std::string_view bytes, ByteOrder order) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    const std::size_t low = order == ByteOrder::littleEndian ? 0 : 1;
    const auto unitAt = [&](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[i + low]) |
                                     static_cast<unsigned char>(bytes[i + 1 - low]) << 8);
    };
    std::string result;
    result.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        char32_t scalar = unitAt(i);
        if (scalar >= 0xDC00 && scalar <= 0xDFFF) return std::nullopt;
        if (scalar >= 0xD800 && scalar <= 0xDBFF) {
            i += 2;
            if (i == bytes.size()) return std::nullopt;
            const char32_t trail = unitAt(i);
            if (trail < 0xDC00 || trail > 0xDFFF) return std::nullopt;
            scalar = 0x10000 + ((scalar - 0xD800) << 10 | (trail - 0xDC00));
        }
        Text::appendScalar(result, scalar);
    }
    return result;
}

std::optional<std::string> fromWindows1252(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() + bytes.size() / 8);
    for (std::size_t offset = 0; offset < bytes.size();) {
        const std::size_t plainEnd = skipASCII(bytes, offset);
        result += bytes.substr(offset, plainEnd - offset);
        offset = plainEnd;
        for (; offset < bytes.size() && static_cast<unsigned char>(bytes[offset]) >= 0x80; ++offset) {
            const auto byte = static_cast<unsigned char>(bytes[offset]);
            const char32_t scalar = byte < 0xA0 ? windows1252[byte - 0x80u] : byte;
            if (scalar == 0) return std::nullopt;
            Text::appendScalar(result, scalar);
        }
    }
    return result;
}

}  // namespace quorvel::TextEncoding
