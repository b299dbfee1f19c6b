#include "Library/Base64.h"

#include <gtest/gtest.h>
#include <random>

namespace quorvel {
namespace {

TEST(Base64, WritesTheStandardForm) {
    const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                         {"f", "Zg=="},
                                                         {"fo", "Zm8="},
                                                         {"foo", "Zm9v"},
                                                         {"foob", "Zm9vYg=="},
                                                         {"fooba", "Zm9vYmE="},
                                                         {"foobar", "Zm9vYmFy"},
                                                         {"\xff\xfe\xfb", "//77"},
                                                         {std::string("\0\0", 2), "AAA="}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(Base64::encode(bytes), text);
        EXPECT_EQ(Base64::decode(text), bytes);
    }
}

TEST(Base64, AnyBytesThereAndBack) {
    std::mt19937 random(4);
    for (std::size_t length = 0; length < 200; ++length) {
        std::string bytes(length, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(Base64::decode(Base64::encode(bytes)), bytes);
    }
}

TEST(Base64, RefusesEverythingElse) {
    for (const char* text : {"Z", "Zg", "Zg=", "Zg===", "Zh==", "Zm9=", "Z===", "====", "Zg==Zg==", "Zm9v\n", "Zm 9",
                             "Zm-_", "=Zg=", "Z=g=", "é=="})
        EXPECT_EQ(Base64::decode(text), std::nullopt) << text;
}

}  // namespace
}  // namespace quorvel
