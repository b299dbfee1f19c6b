#include "Foundation/EnumText.h"

#include <gtest/gtest.h>

namespace quorvel {

enum class Fruit { apple, auto_ };

template <>
struct EnumText<Fruit> {
    static constexpr std::array cases{std::pair{Fruit::apple, std::string_view("apple")},
                                      std::pair{Fruit::auto_, std::string_view("auto")}};
};

namespace {

TEST(EnumText, goesThereAndBack) {
    EXPECT_EQ(textOf(Fruit::auto_), "auto");
    EXPECT_EQ(parseEnum<Fruit>("auto"), Fruit::auto_);
    for (const auto& [value, text] : EnumText<Fruit>::cases) {
        EXPECT_EQ(textOf(value), text);
        EXPECT_EQ(parseEnum<Fruit>(text), value);
    }
}

TEST(EnumText, knowsExactNamesOnly) {
    for (const char* text : {"", "Apple", "apple ", "auto_", "pear"}) EXPECT_EQ(parseEnum<Fruit>(text), std::nullopt);
}

}  // namespace
}  // namespace quorvel
