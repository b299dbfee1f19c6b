#include "CardsTab/GridLayout.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using Step = GridLayout::Step;

TEST(GridLayout, ColumnsShareTheWidth) {
    struct Row {
        int width, columns, columnWidth;
    };
    for (const Row& row : {Row{0, 1, 150}, Row{149, 1, 150}, Row{150, 1, 150}, Row{210, 1, 210}, Row{317, 1, 210},
                           Row{318, 2, 150}, Row{438, 2, 210}, Row{485, 2, 210}, Row{486, 3, 150}, Row{560, 3, 174},
                           Row{653, 3, 205}, Row{654, 4, 150}, Row{1260, 7, 164}}) {
        const GridLayout layout(10, row.width, 0.7, 14);
        EXPECT_EQ(layout.columns(), row.columns) << row.width;
        EXPECT_EQ(layout.columnWidth(), row.columnWidth) << row.width;
    }
}

TEST(GridLayout, TilesStandApartByTheirGaps) {
    const GridLayout layout(10, 486, 0.75, 14);
    EXPECT_EQ(layout.tile(0), QRect(0, 0, 150, 200 + 6 + 14));
    EXPECT_EQ(layout.tile(1), QRect(168, 0, 150, 220));
    EXPECT_EQ(layout.tile(3), QRect(0, 240, 150, 220));
    EXPECT_EQ(layout.picture(4), QRect(168, 240, 150, 200));
    EXPECT_EQ(layout.caption(4), QRect(168, 446, 150, 14));
    EXPECT_EQ(layout.rows(), 4);
    EXPECT_EQ(layout.height(), 4 * 220 + 3 * 20);
}

TEST(GridLayout, NoWidthIsWastedNorExceeded) {
    for (int width = 486; width < 4000; ++width) {
        const GridLayout layout(100, width, 0.7, 14);
        const int used = layout.tile(layout.columns() - 1).right() + 1;
        ASSERT_LE(used, width);
        ASSERT_LT(width - used, layout.columns()) << width;
        ASSERT_GE(layout.columnWidth(), GridLayout::minimumColumn);
        ASSERT_LE(layout.columnWidth(), GridLayout::maximumColumn);
    }
}

TEST(GridLayout, SeesTheRowsThatReachIn) {
    const GridLayout layout(10, 486, 0.75, 14);  // rows of 220 every 240
    struct Row {
        int top, bottom;
        TileRange range;
    };
    for (const Row& row : {Row{0, 1, {0, 3}}, Row{0, 240, {0, 3}}, Row{0, 241, {0, 6}}, Row{219, 220, {0, 3}},
                           Row{220, 240, {}}, Row{220, 241, {3, 6}}, Row{-100, 1, {0, 3}}, Row{-100, 0, {}},
                           Row{720, 5000, {9, 10}}, Row{939, 5000, {9, 10}}, Row{940, 5000, {}}, Row{5000, 6000, {}},
                           Row{50, 50, {}}, Row{50, 20, {}}, Row{0, std::numeric_limits<int>::max(), {0, 10}}})
        EXPECT_EQ(layout.visible(row.top, row.bottom), row.range) << row.top << " to " << row.bottom;
    EXPECT_TRUE(GridLayout(0, 486, 0.75, 14).visible(0, 1000).isEmpty());
}

TEST(GridLayout, VisibleIsWhatIntersects) {
    const GridLayout layout(23, 700, 0.7, 16);
    for (int top = -30; top < layout.height() + 30; top += 7)
        for (const int height : {1, 10, 200, 500}) {
            const TileRange range = layout.visible(top, top + height);
            for (int index = 0; index < 23; ++index)
                ASSERT_EQ(range.contains(index), layout.tile(index).intersects(QRect(0, top, 700, height)))
                    << index << " from " << top;
        }
}

TEST(GridLayout, FindsTheTileAtAPlace) {
    const GridLayout layout(10, 486, 0.75, 14);
    EXPECT_EQ(layout.at({0, 0}), 0);
    EXPECT_EQ(layout.at({149, 219}), 0);
    EXPECT_EQ(layout.at({150, 0}), std::nullopt);
    EXPECT_EQ(layout.at({168, 0}), 1);
    EXPECT_EQ(layout.at({0, 220}), std::nullopt);
    EXPECT_EQ(layout.at({0, 720}), 9);
    EXPECT_EQ(layout.at({168, 720}), std::nullopt) << "the last row ends before";
    EXPECT_EQ(layout.at({504, 0}), std::nullopt) << "beyond the last column";
    EXPECT_EQ(layout.at({-1, 0}), std::nullopt);
    EXPECT_EQ(layout.at({0, -1}), std::nullopt);
    for (int index = 0; index < 10; ++index) EXPECT_EQ(layout.at(layout.tile(index).center()), index);
}

TEST(GridLayout, KeysLeadThroughTheGrid) {
    const GridLayout layout(10, 486, 0.75, 14);  // 0 1 2 / 3 4 5 / 6 7 8 / 9
    struct Row {
        int from;
        Step step;
        int to;
    };
    for (const Row& row :
         {Row{0, Step::left, 0}, Row{3, Step::left, 2}, Row{2, Step::right, 3}, Row{9, Step::right, 9},
          Row{1, Step::up, 1}, Row{4, Step::up, 1}, Row{4, Step::down, 7}, Row{7, Step::down, 9}, Row{9, Step::down, 9},
          Row{1, Step::pageDown, 7}, Row{4, Step::pageDown, 9}, Row{8, Step::pageUp, 2}, Row{4, Step::pageUp, 1},
          Row{5, Step::first, 0}, Row{5, Step::last, 9}})
        EXPECT_EQ(layout.moved(row.from, row.step, 2), row.to) << row.from << " by " << int(row.step);
}

TEST(GridLayout, StandsWhatNoCardCanBe) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double aspect : {0.0, -1.0, infinite, -infinite, std::numeric_limits<double>::quiet_NaN(), 1e-300}) {
        const GridLayout layout(100, 600, aspect, 14);
        EXPECT_GT(layout.picture(0).height(), 0) << aspect;
        EXPECT_LE(layout.picture(0).height(), 20 * layout.columnWidth()) << aspect;
    }
    const GridLayout most(std::numeric_limits<int>::max(), 600, 0.7, 14);
    EXPECT_EQ(most.height(), QWIDGETSIZE_MAX);
    EXPECT_EQ(GridLayout(-5, -5, 0.7, -5).count(), 0);
    EXPECT_EQ(GridLayout(-5, -5, 0.7, -5).height(), 0);
}

}  // namespace
}  // namespace quorvel
