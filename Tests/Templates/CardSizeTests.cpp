#include "Templates/CardSize.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using Preset = CardSize::Preset;

TEST(CardSize, Presets) {
    const struct {
        Preset preset;
        std::string_view text;
        double width;
        double height;
        std::string_view label;
        CardSize constant;
    } cases[] = {
        {Preset::poker, "poker", 63.5, 88.9, "Poker, 63.5 × 88.9 mm (2.5 × 3.5 in)", CardSize::poker},
        {Preset::bridge, "bridge", 57.15, 88.9, "Bridge, 57.2 × 88.9 mm (2.25 × 3.5 in)", CardSize::bridge},
        {Preset::tarot, "tarot", 69.85, 120.65, "Tarot, 69.9 × 120.7 mm (2.75 × 4.75 in)", CardSize::tarot},
        {Preset::mini, "mini", 44.45, 63.5, "Mini, 44.5 × 63.5 mm (1.75 × 2.5 in)", CardSize::mini},
        {Preset::square, "square", 63.5, 63.5, "Square, 63.5 × 63.5 mm (2.5 in)", CardSize::square},
    };
    std::size_t index = 0;
    for (const auto& each : cases) {
        EXPECT_EQ(EnumText<Preset>::cases[index++].first, each.preset);
        EXPECT_EQ(textOf(each.preset), each.text);
        EXPECT_EQ(CardSize::dimensions(each.preset), (Size{each.width, each.height}));
        EXPECT_EQ(CardSize(each.preset), each.constant);
        EXPECT_EQ(each.constant, CardSize(each.preset, each.width, each.height));
        EXPECT_EQ(CardSize::label(each.preset), each.label);
    }
    EXPECT_EQ(EnumText<Preset>::cases.size(), index + 1);
    EXPECT_EQ(CardSize(), CardSize::poker);
}

TEST(CardSize, Custom) {
    EXPECT_EQ(EnumText<Preset>::cases.back().first, Preset::custom);
    EXPECT_EQ(CardSize::label(Preset::custom), "Custom");
    EXPECT_EQ(CardSize::dimensions(Preset::custom), std::nullopt);
    EXPECT_EQ(CardSize(Preset::custom), CardSize(Preset::custom, 63.5, 88.9));
    EXPECT_EQ(CardSize::custom(5, 200), CardSize(Preset::custom, 10, 200));
    EXPECT_EQ(CardSize::custom(10, 9.999), CardSize(Preset::custom, 10, 10));
    EXPECT_EQ(CardSize::custom(10.001, -3), CardSize(Preset::custom, 10.001, 10));
    EXPECT_EQ(CardSize::custom(std::nan(""), 20), CardSize(Preset::custom, 10, 20));
    EXPECT_EQ(CardSize::custom(20, std::nan("")), CardSize(Preset::custom, 20, 10));
    EXPECT_EQ(CardSize::custom(-std::numeric_limits<double>::infinity(), 20).widthMM, 10);
}

TEST(CardSize, Points) {
    EXPECT_EQ(CardSize::poker.widthPoints(), 63.5 / 25.4 * 72.0);
    EXPECT_EQ(CardSize::poker.heightPoints(), 88.9 / 25.4 * 72.0);
    EXPECT_EQ(CardSize(Preset::custom, 25.4, 50.8).widthPoints(), 72);
}

}  // namespace
}  // namespace quorvel
