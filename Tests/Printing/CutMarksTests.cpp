#include "Foundation/Units.h"
#include "Printing/CutMarks.h"

#include <gtest/gtest.h>
#include <utility>
#include <variant>
#include <vector>

namespace quorvel {
namespace {

/// The marks as pairs of points in the layout's system, y down.
std::vector<std::pair<Point, Point>> marksOf(const SheetLayout& layout) {
    std::vector<std::pair<Point, Point>> marks;
    const Path path = cutMarks(layout);
    const auto down = [&](Point point) { return Point{point.x, layout.pageSize.height - point.y}; };
    for (std::size_t i = 0; i + 1 < path.elements().size(); i += 2)
        marks.emplace_back(down(std::get<Path::Move>(path.elements()[i]).to),
                           down(std::get<Path::Line>(path.elements()[i + 1]).to));
    return marks;
}

TEST(CutMarks, FourMarksStandOnEachSideOfANineCardBlock) {
    SheetSettings settings;
    settings.paper = Paper::a4;
    const auto layout = *SheetLayout::make(settings, 63.5, 88.9, 0);
    const auto marks = marksOf(layout);
    ASSERT_EQ(marks.size(), 16u);
    const double gap = Units::points(1.5);
    for (std::size_t i = 0; i < 16; ++i) {
        const auto& [from, to] = marks[i];
        const std::size_t line = i % 4;
        if (i < 8) {
            EXPECT_DOUBLE_EQ(from.x, layout.cutX[line]);
            EXPECT_DOUBLE_EQ(to.x, layout.cutX[line]);
        } else {
            EXPECT_NEAR(from.y, layout.cutY[line], 1e-9);
            EXPECT_NEAR(to.y, layout.cutY[line], 1e-9);
        }
    }
    EXPECT_NEAR(marks[0].second.y, layout.grid.minY() - gap, 1e-9);
    EXPECT_NEAR(marks[0].second.y - marks[0].first.y, Units::points(6), 1e-9) << "there is room for the longest mark";
    EXPECT_NEAR(marks[4].first.y, layout.grid.maxY() + gap, 1e-9);
    EXPECT_NEAR(marks[8].second.x, layout.grid.minX() - gap, 1e-9);
    EXPECT_NEAR(marks[12].first.x, layout.grid.maxX() + gap, 1e-9);
}

TEST(CutMarks, MarksAreAsLongAsTheRoomBesideTheGrid) {
    SheetLayout layout;
    layout.pageSize = {612, 792};
    layout.grid = {Units::points(4), 100, 612 - 2 * Units::points(4), 592};
    layout.cutX = {layout.grid.minX(), layout.grid.maxX()};
    layout.cutY = {layout.grid.minY(), layout.grid.maxY()};
    const auto marks = marksOf(layout);
    ASSERT_EQ(marks.size(), 8u);
    EXPECT_NEAR(marks[4].second.x - marks[4].first.x, Units::points(4 - 1.5) - 2, 1e-9);
    EXPECT_NEAR(marks[4].first.x, 2, 1e-9);

    layout.grid.x = Units::points(1.5) + 4;  // leaves a mark of exactly 2 points
    layout.grid.width = 612 - 2 * layout.grid.x;
    EXPECT_EQ(marksOf(layout).size(), 4u) << "a mark that short isn't drawn";
}

TEST(CutMarks, AGridThatFillsThePageHasNoMarksOnThoseSides) {
    SheetSettings settings;
    settings.marginMM = 0;
    const auto wide = *SheetLayout::make(settings, Units::millimetres(306), 100, 0);
    for (const auto& [from, to] : marksOf(wide)) EXPECT_EQ(from.x, to.x);
    EXPECT_EQ(marksOf(wide).size(), 6u);
    EXPECT_TRUE(marksOf(*SheetLayout::make(settings, Units::millimetres(306), Units::millimetres(396), 0)).empty());
}

}  // namespace
}  // namespace quorvel
