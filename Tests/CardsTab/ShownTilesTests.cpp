#include "CardsTab/ShownTiles.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>

namespace quorvel {
namespace {

TEST(ShownTiles, TellsWhatChangedOnly) {
    std::string told;
    ShownTiles tiles([&](int index) { told += "+" + std::to_string(index); },
                     [&](int index) { told += "-" + std::to_string(index); });
    const auto after = [&](TileRange seen) {
        told.clear();
        tiles.show(seen);
        return told;
    };
    EXPECT_EQ(after({0, 3}), "+0+1+2");
    EXPECT_EQ(after({0, 3}), "");
    EXPECT_EQ(after({1, 5}), "-0+3+4");
    EXPECT_EQ(after({7, 9}), "-1-2-3-4+7+8");
    EXPECT_EQ(after({}), "-7-8");
    EXPECT_EQ(after({}), "");
    EXPECT_EQ(after({7, 8}), "+7") << "shown again, told again";
}

TEST(ShownTiles, WhatWasToldIsWhatIsSeen) {
    std::multiset<int> present;
    ShownTiles tiles([&](int index) { present.insert(index); },
                     [&](int index) {
                         ASSERT_EQ(present.count(index), 1u);
                         present.erase(index);
                     });
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        const int first = int(random() % 40);
        const TileRange seen{first, first + int(random() % 15)};
        tiles.show(seen);
        ASSERT_EQ(int(present.size()), seen.end - seen.first);
        for (int index = seen.first; index < seen.end; ++index) ASSERT_EQ(present.count(index), 1u);
    }
}

}  // namespace
}  // namespace quorvel
