#include "Drawing/BitmapContext.h"
#include "Pictures/IconSet.h"
#include "Support/Images/GoldenImage.h"
#include "TestPictures.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::Pointwise;

/// Draws into the unit square times `size` and tells which points of the square are painted.
class Drawn {
public:
    explicit Drawn(std::string_view name, const RGBA& color = RGBA::black) : image_(draw(name, color)) {}

    bool isPainted(double x, double y) const { return colorAt(x, y).at(3) == 255; }
    std::vector<int> colorAt(double x, double y) const {
        return TestPictures::colorAt(image_, int(x * size), size - 1 - int(y * size));
    }

private:
    static constexpr int size = 200;

    static Image draw(std::string_view name, const RGBA& color) {
        auto bitmap = BitmapContext::make(size, size);
        IconSet::draw(name, color, bitmap->context(), {0, 0, size, size});
        return std::move(*bitmap).finish();
    }

    Image image_;
};

TEST(IconSet, namesTheTwentyIconsInOrder) {
    EXPECT_THAT(IconSet::names,
                ElementsAre("coin", "heart", "star", "bolt", "drop", "leaf", "flame", "shield", "sword", "gem", "sun",
                            "moon", "gear", "hourglass", "arrow", "eye", "crown", "key", "plus", "minus"));
}

TEST(IconSet, takesNamesInAnyCase) {
    EXPECT_EQ(IconSet::path("Coin"), IconSet::path("coin"));
    EXPECT_EQ(IconSet::color("COIN"), RGBA::bytes(217, 166, 33));
    EXPECT_TRUE(IconSet::isBuiltIn("hOURGlass"));
    for (const char* unknown : {"nosuch", "", "coin ", " coin", "coi", "coins"}) {
        EXPECT_FALSE(IconSet::isBuiltIn(unknown)) << unknown;
        EXPECT_EQ(IconSet::path(unknown), std::nullopt) << unknown;
        EXPECT_EQ(IconSet::color(unknown), RGBA::bytes(77, 77, 77)) << unknown;
    }
}

TEST(IconSet, hasItsColours) {
    const std::pair<const char*, RGBA> colors[] = {
        {"coin", RGBA::bytes(217, 166, 33)},   {"heart", RGBA::bytes(214, 48, 64)},
        {"star", RGBA::bytes(245, 181, 26)},   {"bolt", RGBA::bytes(250, 199, 0)},
        {"drop", RGBA::bytes(41, 128, 219)},   {"leaf", RGBA::bytes(61, 153, 69)},
        {"flame", RGBA::bytes(237, 105, 28)},  {"shield", RGBA::bytes(84, 110, 148)},
        {"sword", RGBA::bytes(115, 120, 133)}, {"gem", RGBA::bytes(143, 69, 199)},
        {"sun", RGBA::bytes(245, 181, 26)},    {"moon", RGBA::bytes(97, 102, 179)},
        {"gear", RGBA::bytes(107, 107, 115)},  {"hourglass", RGBA::bytes(153, 115, 64)},
        {"arrow", RGBA::bytes(46, 140, 115)},  {"eye", RGBA::bytes(51, 115, 140)},
        {"crown", RGBA::bytes(217, 166, 33)},  {"key", RGBA::bytes(179, 140, 51)},
        {"plus", RGBA::bytes(46, 140, 115)},   {"minus", RGBA::bytes(191, 64, 64)},
    };
    ASSERT_EQ(std::size(colors), IconSet::names.size());
    for (const auto& [name, color] : colors) EXPECT_EQ(IconSet::color(name), color) << name;
}

TEST(IconSet, sharesThreeColoursBetweenPairs) {
    EXPECT_EQ(IconSet::color("coin"), IconSet::color("crown"));
    EXPECT_EQ(IconSet::color("star"), IconSet::color("sun"));
    EXPECT_EQ(IconSet::color("arrow"), IconSet::color("plus"));
}

TEST(IconSet, starPointsAlternateBetweenTheRadiiFromTheTop) {
    const auto points = IconSet::starPoints(5, 0.48, 0.2);
    ASSERT_EQ(points.size(), 10u);
    EXPECT_NEAR(points[0].x, 0.5, 1e-12);
    EXPECT_NEAR(points[0].y, 0.98, 1e-12);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(std::hypot(points[i].x - 0.5, points[i].y - 0.5), i % 2 == 0 ? 0.48 : 0.2, 1e-12);
        const double angle = double(i) * std::numbers::pi / 5 + std::numbers::pi / 2;
        EXPECT_NEAR(std::cos(angle), (points[i].x - 0.5) / (i % 2 == 0 ? 0.48 : 0.2), 1e-12);
    }
    EXPECT_TRUE(IconSet::starPoints(0, 1, 1).empty());
}

TEST(IconSet, coinIsThreeRings) {
    const Drawn coin("coin");
    EXPECT_TRUE(coin.isPainted(0.5, 0.5));
    EXPECT_FALSE(coin.isPainted(0.5, 0.75));
    EXPECT_TRUE(coin.isPainted(0.5, 0.9));
    EXPECT_FALSE(coin.isPainted(0.02, 0.02));
}

TEST(IconSet, hasItsHolesAndSolidParts) {
    struct Case {
        const char* name;
        double x, y;
        bool isPainted;
    };
    const Case cases[] = {
        {"gear", 0.5, 0.5, false},     {"gear", 0.5, 0.7, true},       {"gear", 0.95, 0.53, true},
        {"gear", 0.86, 0.66, false},   {"eye", 0.5, 0.5, true},        {"eye", 0.5, 0.6, false},
        {"eye", 0.2, 0.5, true},       {"gem", 0.5, 0.45, false},      {"gem", 0.5, 0.75, true},
        {"leaf", 0.4, 0.4, false},     {"leaf", 0.4, 0.6, true},       {"sun", 0.5, 0.5, true},
        {"sun", 0.5, 0.76, false},     {"sun", 0.5, 0.85, true},       {"sun", 0.9, 0.5, true},
        {"moon", 0.15, 0.5, true},     {"moon", 0.7, 0.6, false},      {"moon", 0.5, 0.1, true},
        {"drop", 0.5, 0.06, true},     {"drop", 0.5, 0.9, true},       {"drop", 0.2, 0.8, false},
        {"plus", 0.5, 0.5, true},      {"plus", 0.2, 0.5, true},       {"plus", 0.2, 0.2, false},
        {"minus", 0.5, 0.5, true},     {"minus", 0.5, 0.65, false},    {"key", 0.21, 0.5, false},
        {"key", 0.07, 0.5, true},      {"key", 0.8, 0.35, true},       {"sword", 0.5, 0.6, true},
        {"sword", 0.5, 0.285, true},   {"sword", 0.5, 0.2, true},      {"sword", 0.5, 0.04, true},
        {"hourglass", 0.5, 0.5, true}, {"hourglass", 0.2, 0.5, false}, {"arrow", 0.9, 0.5, true},
        {"arrow", 0.1, 0.2, false},    {"crown", 0.3, 0.4, true},      {"crown", 0.3, 0.8, false},
        {"flame", 0.5, 0.8, true},     {"flame", 0.8, 0.8, false},     {"shield", 0.5, 0.9, true},
        {"shield", 0.2, 0.1, false},   {"bolt", 0.5, 0.5, true},       {"bolt", 0.2, 0.2, false},
        {"heart", 0.5, 0.3, true},     {"heart", 0.5, 0.9, false},     {"star", 0.5, 0.9, true},
        {"star", 0.2, 0.3, false},
    };
    for (const Case& each : cases)
        EXPECT_EQ(Drawn(each.name).isPainted(each.x, each.y), each.isPainted)
            << each.name << " at " << each.x << ", " << each.y;
}

TEST(IconSet, drawsInTheGivenColour) {
    EXPECT_THAT(Drawn("heart", RGBA::bytes(1, 2, 3)).colorAt(0.5, 0.4), ElementsAre(1, 2, 3, 255));
}

TEST(IconSet, drawsAGreyTileWithAHoleForAnUnknownName) {
    const Drawn tile("nosuch", RGBA::bytes(255, 0, 0));
    EXPECT_THAT(tile.colorAt(0.2, 0.5), ElementsAre(153, 153, 153, 255));
    EXPECT_FALSE(tile.isPainted(0.5, 0.5));
    EXPECT_FALSE(tile.isPainted(0.05, 0.5));
    EXPECT_FALSE(tile.isPainted(0.11, 0.11));  // outside the round corner
    EXPECT_TRUE(tile.isPainted(0.17, 0.17));
}

TEST(IconSet, fillsItsRectangleAndLeavesTheContextAsItWas) {
    auto bitmap = BitmapContext::make(100, 60);
    DrawingContext& context = bitmap->context();
    IconSet::draw("minus", RGBA::black, context, {20, 10, 40, 30});
    for (const Rect& empty : {Rect{5, 5, 0, 10}, Rect{5, 5, 10, 0}, Rect{5, 5, std::nan(""), 10}})
        IconSet::draw("coin", RGBA::black, context, empty);
    context.fill(Rect{90, 0, 10, 10}, RGBA::white);
    const Image image = std::move(*bitmap).finish();
    const auto alphaAt = [&](int x, int yUp) { return TestPictures::colorAt(image, x, 59 - yUp).at(3); };
    EXPECT_EQ(alphaAt(25, 25), 255);  // 0.1 and 0.4 of the rectangle are its corner
    EXPECT_EQ(alphaAt(54, 25), 255);
    EXPECT_EQ(alphaAt(22, 25), 0);
    EXPECT_EQ(alphaAt(40, 20), 0);
    EXPECT_EQ(alphaAt(95, 5), 255);
}

TEST(IconSet, looksAsItDid) {
    auto bitmap = BitmapContext::make(432, 240);
    bitmap->context().fill(Rect{0, 0, 432, 240}, RGBA::white);
    for (std::size_t i = 0; i <= IconSet::names.size(); ++i) {
        const std::string_view name = i < IconSet::names.size() ? IconSet::names[i] : "unknown";
        const double x = 4 + 72.0 * double(i % 6), y = 184 - 60.0 * double(i / 6);
        IconSet::draw(name, IconSet::color(name), bitmap->context(), {x, y, 52, 52});
        IconSet::draw(name, IconSet::color(name), bitmap->context(), {x + 53, y, 14, 14});
    }
    EXPECT_TRUE(matchesGolden(std::move(*bitmap).finish(), "Pictures/icons"));
}

}  // namespace
}  // namespace quorvel
