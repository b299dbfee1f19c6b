#include "Foundation/Units.h"
#include "Printing/Duplex.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

struct Turn {
    bool landscape;
    DuplexFlip flip;
};

constexpr Turn allTurns[] = {{false, DuplexFlip::longEdge},
                             {false, DuplexFlip::shortEdge},
                             {true, DuplexFlip::longEdge},
                             {true, DuplexFlip::shortEdge}};

SheetSettings settingsFor(const Turn& turn, double offsetX = 0, double offsetY = 0) {
    SheetSettings settings;
    settings.flip = turn.flip;
    settings.includeBleed = true;
    settings.backOffsetXMM = offsetX;
    settings.backOffsetYMM = offsetY;
    return settings;
}

SheetLayout layoutFor(const Turn& turn) {
    return *SheetLayout::compute(settingsFor(turn), turn.landscape, 63.5, 88.9, 3);
}

TEST(Duplex, MirrorsAboutTheEdgeThatThePaperIsTurnedOn) {
    EXPECT_TRUE(Duplex::mirrorsHorizontally(false, DuplexFlip::longEdge));
    EXPECT_FALSE(Duplex::mirrorsHorizontally(false, DuplexFlip::shortEdge));
    EXPECT_FALSE(Duplex::mirrorsHorizontally(true, DuplexFlip::longEdge));
    EXPECT_TRUE(Duplex::mirrorsHorizontally(true, DuplexFlip::shortEdge));
}

TEST(Duplex, PortraitOnTheLongEdgeSwapsLeftAndRight) {
    const SheetSettings settings;
    const SheetLayout front = *SheetLayout::compute(settings, false, 63.5, 88.9, 3);
    const auto backs = Duplex::backLayout(front, settings);
    ASSERT_EQ(backs.size(), 9u);
    EXPECT_EQ(backs[0].column, 2);
    EXPECT_EQ(backs[0].row, 0);
    EXPECT_DOUBLE_EQ(backs[0].trim.x, front.pageSize.width - front.slots[0].trim.maxX());
    EXPECT_DOUBLE_EQ(backs[0].trim.x, front.slots[2].trim.x);
    EXPECT_DOUBLE_EQ(backs[0].trim.y, front.slots[0].trim.y);
}

TEST(Duplex, LandscapeOnTheLongEdgeSwapsTopAndBottom) {
    const Turn turn{true, DuplexFlip::longEdge};
    const SheetLayout front = layoutFor(turn);
    const auto backs = Duplex::backLayout(front, settingsFor(turn));
    EXPECT_EQ(backs[0].column, 0);
    EXPECT_EQ(backs[0].row, front.rows - 1);
    EXPECT_DOUBLE_EQ(backs[0].trim.y, front.pageSize.height - front.slots[0].trim.maxY());
    EXPECT_DOUBLE_EQ(backs[0].trim.x, front.slots[0].trim.x);
}

// Turning a back page over by the same rule must give the front again, rectangle on rectangle.
TEST(Duplex, MirroringTwiceGivesTheFront) {
    for (const Turn& turn : allTurns) {
        SheetLayout front = layoutFor(turn);
        SheetLayout back = front;
        back.slots = Duplex::backLayout(front, settingsFor(turn));
        const auto again = Duplex::backLayout(back, settingsFor(turn));
        for (std::size_t i = 0; i < again.size(); ++i) {
            EXPECT_EQ(again[i].column, front.slots[i].column);
            EXPECT_EQ(again[i].row, front.slots[i].row);
            EXPECT_NEAR(again[i].trim.x, front.slots[i].trim.x, 1e-9);
            EXPECT_NEAR(again[i].trim.y, front.slots[i].trim.y, 1e-9);
            EXPECT_NEAR(again[i].art.x, front.slots[i].art.x, 1e-9);
            EXPECT_NEAR(again[i].art.y, front.slots[i].art.y, 1e-9);
            EXPECT_EQ(again[i].art.width, front.slots[i].art.width);
        }
    }
}

TEST(Duplex, OffsetsMoveBacksByTheTable) {
    struct Case {
        Turn turn;
        double signX;
        double signY;
    };
    const Case cases[] = {{{false, DuplexFlip::longEdge}, 1, -1},
                          {{false, DuplexFlip::shortEdge}, -1, 1},
                          {{true, DuplexFlip::longEdge}, -1, 1},
                          {{true, DuplexFlip::shortEdge}, 1, -1}};
    for (const auto& [turn, signX, signY] : cases) {
        const SheetLayout front = layoutFor(turn);
        const auto still = Duplex::backLayout(front, settingsFor(turn));
        const auto moved = Duplex::backLayout(front, settingsFor(turn, 1, 2));
        for (std::size_t i = 0; i < still.size(); ++i) {
            EXPECT_NEAR(moved[i].trim.x - still[i].trim.x, signX * Units::points(1), 1e-9);
            EXPECT_NEAR(moved[i].trim.y - still[i].trim.y, signY * Units::points(2), 1e-9);
            EXPECT_NEAR(moved[i].art.x - still[i].art.x, signX * Units::points(1), 1e-9);
            EXPECT_NEAR(moved[i].art.y - still[i].art.y, signY * Units::points(2), 1e-9);
        }
    }
}

TEST(Duplex, NothingIsClamped) {
    const Turn turn{false, DuplexFlip::longEdge};
    const auto backs = Duplex::backLayout(layoutFor(turn), settingsFor(turn, -1000, 0));
    EXPECT_LT(backs[0].trim.maxX(), 0);
}

TEST(Duplex, OuterBleedStaysOutward) {
    for (const Turn& turn : allTurns) {
        const SheetLayout front = layoutFor(turn);
        for (const auto& slot : Duplex::backLayout(front, settingsFor(turn))) {
            const double bleed = Units::points(3);
            EXPECT_NEAR(slot.trim.minX() - slot.art.minX(), slot.column == 0 ? bleed : 0, 1e-9);
            EXPECT_NEAR(slot.art.maxX() - slot.trim.maxX(), slot.column == front.columns - 1 ? bleed : 0, 1e-9);
            EXPECT_NEAR(slot.trim.minY() - slot.art.minY(), slot.row == 0 ? bleed : 0, 1e-9);
            EXPECT_NEAR(slot.art.maxY() - slot.trim.maxY(), slot.row == front.rows - 1 ? bleed : 0, 1e-9);
        }
    }
}

}  // namespace
}  // namespace quorvel
