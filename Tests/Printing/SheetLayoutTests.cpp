#include "Foundation/Units.h"
#include "Printing/SheetLayout.h"
#include "Templates/CardSize.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>

namespace quorvel {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::SizeIs;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Counts {
    int columns = 0;
    int rows = 0;
    bool operator==(const Counts&) const = default;
};

std::optional<SheetLayout> poker(const SheetSettings& settings, bool landscape) {
    return SheetLayout::compute(settings, landscape, 63.5, 88.9, 3);
}

Counts countsOf(const std::optional<SheetLayout>& layout) {
    return layout ? Counts{layout->columns, layout->rows} : Counts{};
}

void expectRect(const Rect& rect, double x, double y, double width, double height) {
    EXPECT_NEAR(rect.x, x, 1e-9);
    EXPECT_NEAR(rect.y, y, 1e-9);
    EXPECT_NEAR(rect.width, width, 1e-9);
    EXPECT_NEAR(rect.height, height, 1e-9);
}

TEST(SheetLayout, PokerCardsOnLetter) {
    SheetSettings settings;
    EXPECT_EQ(countsOf(poker(settings, false)), (Counts{3, 3}));
    EXPECT_EQ(countsOf(poker(settings, true)), (Counts{4, 2}));

    const auto layout = SheetLayout::make(settings, 63.5, 88.9, 3);
    ASSERT_TRUE(layout);
    EXPECT_FALSE(layout->landscape);
    EXPECT_EQ(layout->pageSize, (Size{612, 792}));
    EXPECT_THAT(layout->slots, SizeIs(9));
    expectRect(layout->grid, 36, 18, 540, 756);
}

TEST(SheetLayout, BleedTurnsPokerCardsToLandscape) {
    SheetSettings settings;
    settings.includeBleed = true;
    EXPECT_EQ(countsOf(poker(settings, false)), (Counts{3, 2}));
    EXPECT_EQ(countsOf(poker(settings, true)), (Counts{4, 2}));

    const auto layout = SheetLayout::make(settings, 63.5, 88.9, 3);
    ASSERT_TRUE(layout);
    EXPECT_TRUE(layout->landscape);
    EXPECT_EQ(layout->pageSize, (Size{792, 612}));
    EXPECT_DOUBLE_EQ(layout->grid.width, 737.007874015748);
    EXPECT_DOUBLE_EQ(layout->grid.height, 521.0078740157481);
}

TEST(SheetLayout, SeparatedPokerCardsWithBleedAndGutter) {
    SheetSettings settings;
    settings.includeBleed = true;
    settings.spacing = Spacing::separated;
    settings.gutterMM = 3;
    EXPECT_EQ(countsOf(poker(settings, false)), (Counts{2, 2}));
    EXPECT_EQ(countsOf(poker(settings, true)), (Counts{3, 2}));

    const auto layout = poker(settings, false);
    const double bleed = Units::points(3);
    const double gutter = Units::points(3);
    EXPECT_DOUBLE_EQ(layout->grid.width, (180 + 2 * bleed) * 2 + gutter);
    EXPECT_DOUBLE_EQ(layout->slots[1].trim.x - layout->slots[0].trim.x, 180 + 2 * bleed + gutter);
    EXPECT_DOUBLE_EQ(layout->slots[1].art.minX() - layout->slots[0].art.maxX(), gutter);
    for (const auto& slot : layout->slots) EXPECT_EQ(slot.art, slot.trim.inset(-bleed, -bleed));
}

TEST(SheetLayout, PokerCardsOnA4) {
    SheetSettings settings;
    settings.paper = Paper::a4;
    const auto layout = SheetLayout::make(settings, 63.5, 88.9, 3);
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->pageSize, (Size{595.2755905511812, 841.8897637795276}));
    EXPECT_EQ(countsOf(layout), (Counts{3, 3}));
    EXPECT_DOUBLE_EQ(layout->grid.x, 27.637795275590577);
    EXPECT_DOUBLE_EQ(layout->grid.y, 42.944881889763735);
}

TEST(SheetLayout, OrientationChoosesTheCandidates) {
    SheetSettings settings;
    settings.orientation = Orientation::landscape;
    EXPECT_EQ(countsOf(SheetLayout::make(settings, 63.5, 88.9, 3)), (Counts{4, 2}));
    settings.orientation = Orientation::portrait;
    EXPECT_EQ(countsOf(SheetLayout::make(settings, 63.5, 88.9, 3)), (Counts{3, 3}));
    EXPECT_FALSE(SheetLayout::make(settings, 250, 100, 0));
}

TEST(SheetLayout, ATieStaysPortrait) {
    const auto layout = SheetLayout::make({}, 100, 100, 0);
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->slots.size(), SheetLayout::compute({}, true, 100, 100, 0)->slots.size());
    EXPECT_FALSE(layout->landscape);
}

TEST(SheetLayout, ACardThatFitsInLandscapeAloneTurnsThePage) {
    const auto layout = SheetLayout::make({}, 250, 100, 0);
    ASSERT_TRUE(layout);
    EXPECT_TRUE(layout->landscape);
}

TEST(SheetLayout, ACardThatIsTooBigHasNoLayout) {
    EXPECT_FALSE(SheetLayout::make({}, 200, 300, 3));
}

TEST(SheetLayout, SharedEdgesAreOneCut) {
    SheetSettings settings;
    settings.includeBleed = true;
    const auto butted = SheetLayout::compute(settings, false, 90, 200, 3);
    EXPECT_EQ(countsOf(butted), (Counts{2, 1}));
    EXPECT_THAT(butted->cutX, SizeIs(3));
    EXPECT_THAT(butted->cutY, SizeIs(2));

    settings.spacing = Spacing::separated;
    const auto separated = SheetLayout::compute(settings, false, 90, 200, 3);
    EXPECT_EQ(countsOf(separated), (Counts{2, 1}));
    const double left = separated->slots[0].trim.minX();
    const double width = Units::points(90);
    const double pitch = width + 2 * Units::points(3);
    EXPECT_THAT(separated->cutX, ElementsAre(DoubleEq(left), DoubleEq(left + width), DoubleEq(left + pitch),
                                             DoubleEq(left + pitch + width)));
    EXPECT_THAT(separated->cutY, SizeIs(2));

    for (Spacing spacing : {Spacing::butted, Spacing::separated}) {
        settings.spacing = spacing;
        EXPECT_THAT(SheetLayout::compute(settings, false, 150, 200, 3)->cutX, SizeIs(2));
    }
}

TEST(SheetLayout, SlotsRunInReadingOrderAndArtGrowsOutwardOnly) {
    SheetSettings settings;
    settings.includeBleed = true;
    const auto layout = SheetLayout::compute(settings, false, 50, 50, 3);
    ASSERT_EQ(countsOf(layout), (Counts{3, 5}));
    const double bleed = Units::points(3);
    for (std::size_t i = 0; i < layout->slots.size(); ++i) {
        const auto& slot = layout->slots[i];
        EXPECT_EQ(slot.column, int(i % 3));
        EXPECT_EQ(slot.row, int(i / 3));
        EXPECT_NEAR(slot.trim.minX() - slot.art.minX(), slot.column == 0 ? bleed : 0, 1e-9);
        EXPECT_NEAR(slot.art.maxX() - slot.trim.maxX(), slot.column == 2 ? bleed : 0, 1e-9);
        EXPECT_NEAR(slot.trim.minY() - slot.art.minY(), slot.row == 0 ? bleed : 0, 1e-9);
        EXPECT_NEAR(slot.art.maxY() - slot.trim.maxY(), slot.row == 4 ? bleed : 0, 1e-9);
    }
    EXPECT_DOUBLE_EQ(layout->slots.front().art.minX(), layout->grid.minX());
    EXPECT_DOUBLE_EQ(layout->slots.back().art.maxX(), layout->grid.maxX());
}

TEST(SheetLayout, SettingsThatDoNotCount) {
    SheetSettings plain;
    const auto reference = poker(plain, false);

    SheetSettings gutter = plain;
    gutter.gutterMM = 10;
    EXPECT_EQ(poker(gutter, false), reference) << "butted cards have no gutter";

    SheetSettings apart = plain;
    apart.spacing = Spacing::separated;
    const auto touching = poker(apart, false);
    apart.gutterMM = -5;
    EXPECT_EQ(poker(apart, false), touching) << "a negative gutter is none";

    SheetSettings bleeding = plain;
    bleeding.includeBleed = true;
    EXPECT_EQ(SheetLayout::compute(bleeding, false, 63.5, 88.9, -3), reference) << "a negative bleed is none";
}

TEST(SheetLayout, WithoutBleedArtIsTheTrim) {
    for (Spacing spacing : {Spacing::butted, Spacing::separated}) {
        SheetSettings settings;
        settings.spacing = spacing;
        const auto layout = poker(settings, false);
        for (const auto& slot : layout->slots) EXPECT_EQ(slot.art, slot.trim);
    }
}

TEST(SheetLayout, AnExactFitCounts) {
    SheetSettings settings;
    settings.marginMM = 0;
    EXPECT_EQ(countsOf(SheetLayout::compute(settings, false, Units::millimetres(612), 100, 0)), (Counts{1, 2}));
    EXPECT_FALSE(SheetLayout::compute(settings, false, Units::millimetres(612.02), 100, 0));
}

TEST(SheetLayout, ANegativeMarginWidensThePrintableArea) {
    SheetSettings settings;
    settings.marginMM = -30;
    EXPECT_EQ(countsOf(poker(settings, false)), (Counts{4, 3}));
    EXPECT_LT(poker(settings, false)->grid.x, 0);
}

// Whatever the settings, the block is centred, the slots fill it, and their art never overlaps.
TEST(SheetLayout, PropertiesOfAllLayouts) {
    for (Paper paper : {Paper::letter, Paper::a4})
        for (Spacing spacing : {Spacing::butted, Spacing::separated})
            for (bool bleed : {false, true})
                for (bool landscape : {false, true})
                    for (double gutter : {0.0, 2.5})
                        for (CardSize size :
                             {CardSize::poker, CardSize::bridge, CardSize::tarot, CardSize::mini, CardSize::square}) {
                            SheetSettings settings;
                            settings.paper = paper;
                            settings.spacing = spacing;
                            settings.includeBleed = bleed;
                            settings.gutterMM = gutter;
                            const auto layout =
                                SheetLayout::compute(settings, landscape, size.widthMM, size.heightMM, 3);
                            ASSERT_TRUE(layout);
                            const auto [width, height] = layout->pageSize;
                            EXPECT_NEAR(layout->grid.midX(), width / 2, 1e-9);
                            EXPECT_NEAR(layout->grid.midY(), height / 2, 1e-9);
                            const double margin = Units::points(settings.marginMM);
                            EXPECT_GE(layout->grid.minX(), margin - 0.006);
                            EXPECT_GE(layout->grid.minY(), margin - 0.006);
                            EXPECT_EQ(layout->slots.size(), std::size_t(layout->columns) * std::size_t(layout->rows));
                            EXPECT_NEAR(layout->slots.front().art.minX(), layout->grid.minX(), 1e-9);
                            EXPECT_NEAR(layout->slots.back().art.maxY(), layout->grid.maxY(), 1e-9);
                            for (std::size_t i = 1; i < layout->slots.size(); ++i) {
                                const auto& before = layout->slots[i - 1];
                                const auto& slot = layout->slots[i];
                                if (slot.row == before.row)
                                    EXPECT_GE(slot.art.minX(), before.art.maxX() - 1e-9);
                                else
                                    EXPECT_GE(slot.art.minY(), before.art.maxY() - 1e-9);
                            }
                            EXPECT_TRUE(std::ranges::is_sorted(layout->cutX));
                            EXPECT_TRUE(std::ranges::is_sorted(layout->cutY));
                        }
}

TEST(SheetLayout, NonsenseHasNoLayoutAndTakesNoMemory) {
    const auto with = [](auto change) {
        SheetSettings settings;
        settings.includeBleed = true;
        change(settings);
        return settings;
    };
    const SheetSettings plain = with([](auto&) {});
    const auto none = [](const SheetSettings& settings, double width, double height, double bleed) {
        return !SheetLayout::make(settings, width, height, bleed);
    };
    EXPECT_TRUE(none(plain, 0, 88.9, 3));
    EXPECT_TRUE(none(plain, -63.5, -88.9, 3));
    EXPECT_TRUE(none(plain, 1e-9, 1e-9, 0)) << "quintillions of cards";
    EXPECT_TRUE(none(plain, 1e-300, 1e-300, 0));
    EXPECT_TRUE(none(plain, 1e300, 1e300, 0));
    EXPECT_TRUE(none(plain, notANumber, 88.9, 3));
    EXPECT_TRUE(none(plain, infinity, 88.9, 3));
    EXPECT_TRUE(none(plain, 63.5, 88.9, infinity));
    EXPECT_TRUE(none(plain, 63.5, 88.9, 1e300));
    for (double margin : {1e9, -1e9, 1e300, -1e300, -infinity, notANumber})
        EXPECT_TRUE(none(with([&](auto& s) { s.marginMM = margin; }), 63.5, 88.9, 3)) << margin;
    for (double gutter : {1e9, infinity})
        EXPECT_TRUE(none(with([&](auto& s) {
                             s.spacing = Spacing::separated;
                             s.gutterMM = gutter;
                         }),
                         300, 400, 3))
            << gutter;
    EXPECT_TRUE(SheetLayout::make(with([](auto& s) {
                                      s.spacing = Spacing::separated;
                                      s.gutterMM = notANumber;
                                  }),
                                  63.5, 88.9, notANumber))
        << "not-a-number is no length";
}

TEST(SheetLayout, TenThousandCardsAPageAreTheMost) {
    SheetSettings settings;
    settings.marginMM = 0;
    const auto most = SheetLayout::compute(settings, false, Units::millimetres(6.12), Units::millimetres(7.92), 0);
    ASSERT_TRUE(most);
    EXPECT_THAT(most->slots, SizeIs(10'000));
    EXPECT_THAT(most->cutX, SizeIs(101));
    EXPECT_FALSE(SheetLayout::compute(settings, false, Units::millimetres(6), Units::millimetres(7.92), 0));
}

}  // namespace
}  // namespace quorvel
