#include "Foundation/Text.h"
#include "Foundation/TextEncoding.h"

#include <gtest/gtest.h>

namespace quorvel::TextEncoding {
namespace {

using namespace std::string_view_literals;

TEST(TextEncoding, tellsUTF8) {
    EXPECT_TRUE(isValidUTF8(""));
    EXPECT_TRUE(isValidUTF8("Élan – 漢字 😀\0!"sv));
    EXPECT_TRUE(isValidUTF8("a real \uFFFD is valid"));
    for (const std::string_view bad : {"\x80"sv, "\xC0\x80"sv, "\xE2\x82"sv, "\xED\xA0\x80"sv, "\xF4\x90\x80\x80"sv,
                                       "\xF8\x88\x80\x80\x80"sv, "\xEF\xBF"sv, "\xEF\xBF\xBD\xBD"sv})
        EXPECT_FALSE(isValidUTF8(bad));
}

TEST(TextEncoding, findsABrokenByteAtAnyPlace) {
    for (std::size_t place = 0; place < 80; ++place) {
        std::string text(80, 'a');
        EXPECT_TRUE(isValidUTF8(text));
        text[place] = '\xE9';
        EXPECT_FALSE(isValidUTF8(text)) << place;
        EXPECT_EQ(repairedUTF8(text), std::string(place, 'a') + "\uFFFD" + std::string(79 - place, 'a')) << place;
    }
}

TEST(TextEncoding, repairs) {
    EXPECT_EQ(repairedUTF8("caf\xE9 \xE2\x82 x"), "caf\uFFFD \uFFFD x");
    EXPECT_EQ(repairedUTF8("é"), "é");
    EXPECT_EQ(repairedUTF8(""), "");
    EXPECT_TRUE(isValidUTF8(repairedUTF8("\xFF\xC2\xF0\x9F\xED\xBF\xBF")));
}

TEST(TextEncoding, readsUTF16) {
    EXPECT_EQ(fromUTF16("a\0\xE9\0\x3D\xD8\0\xDE"sv, ByteOrder::littleEndian), "aé😀");
    EXPECT_EQ(fromUTF16("\0a\0\xE9\xD8\x3D\xDE\0"sv, ByteOrder::bigEndian), "aé😀");
    EXPECT_EQ(fromUTF16("", ByteOrder::bigEndian), "");
    EXPECT_EQ(fromUTF16("a", ByteOrder::littleEndian), std::nullopt);
    EXPECT_EQ(fromUTF16("\x3D\xD8"sv, ByteOrder::littleEndian), std::nullopt) << "a surrogate at the end";
    EXPECT_EQ(fromUTF16("\x3D\xD8"
                        "a\0"sv,
                        ByteOrder::littleEndian),
              std::nullopt)
        << "a surrogate alone";
    EXPECT_EQ(fromUTF16("\0\xDE"sv, ByteOrder::littleEndian), std::nullopt) << "a second half alone";
}

TEST(TextEncoding, readsEveryScalarFromUTF16) {
    for (char32_t scalar = 0; scalar <= 0x10FFFF; scalar += scalar < 0x10000 ? 1 : 61) {
        if (scalar == 0xD800) scalar = 0xE000;
        const auto unit = [](char32_t u) {
            return std::string{static_cast<char>(u & 0xFF), static_cast<char>(u >> 8)};
        };
        const std::string bytes =
            scalar < 0x10000 ? unit(scalar)
                             : unit(0xD800 + ((scalar - 0x10000) >> 10)) + unit(0xDC00 + ((scalar - 0x10000) & 0x3FF));
        std::string expected;
        Text::appendScalar(expected, scalar);
        ASSERT_EQ(fromUTF16(bytes, ByteOrder::littleEndian), expected);
    }
}

TEST(TextEncoding, readsWindows1252) {
    EXPECT_EQ(fromWindows1252("Don\x92t \x93"
                              "caf\xE9\x94 \x80 5 \x85\x9F\xFF"),
              "Don’t “café” € 5 …Ÿÿ");
    EXPECT_EQ(fromWindows1252("\xA0"), "\u00A0");
    EXPECT_EQ(fromWindows1252(""), "");
    for (const char* unassigned : {"\x81", "\x8D", "\x8F", "\x90", "\x9D"})
        EXPECT_EQ(fromWindows1252(unassigned), std::nullopt);
    int readable = 0;
    for (int byte = 0; byte < 256; ++byte)
        readable += fromWindows1252(std::string(1, static_cast<char>(byte))).has_value();
    EXPECT_EQ(readable, 251);
}

}  // namespace
}  // namespace quorvel::TextEncoding
