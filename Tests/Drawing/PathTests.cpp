#include "Drawing/Path.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace quorvel {
namespace {

constexpr double pi = std::numbers::pi;

Point pointOn(Point from, const Path::Curve& curve, double t) {
    const double a = (1 - t) * (1 - t) * (1 - t), b = 3 * t * (1 - t) * (1 - t), c = 3 * t * t * (1 - t), d = t * t * t;
    return {a * from.x + b * curve.control1.x + c * curve.control2.x + d * curve.to.x,
            a * from.y + b * curve.control1.y + c * curve.control2.y + d * curve.to.y};
}

/// Points along all curves of a path.
std::vector<Point> curvePoints(const Path& path) {
    std::vector<Point> points;
    Point from;
    for (const auto& element : path.elements()) {
        if (const auto* curve = std::get_if<Path::Curve>(&element)) {
            for (int i = 0; i <= 16; ++i) points.push_back(pointOn(from, *curve, i / 16.0));
            from = curve->to;
        } else if (const auto* move = std::get_if<Path::Move>(&element)) {
            from = move->to;
        } else if (const auto* line = std::get_if<Path::Line>(&element)) {
            from = line->to;
        }
    }
    return points;
}

TEST(Path, RectangleIsFourCornersAndAClose) {
    EXPECT_EQ(Path().rectangle({1, 2, 3, 4}), Path().move({1, 2}).line({4, 2}).line({4, 6}).line({1, 6}).close());
}

TEST(Path, PolylineMovesThenDrawsLines) {
    const std::array points{Point{0, 0}, Point{1, 0}, Point{1, 1}};
    EXPECT_EQ(Path().polyline(points), Path().move({0, 0}).line({1, 0}).line({1, 1}));
    EXPECT_TRUE(Path().polyline({}).empty());
}

TEST(Path, CloseOfNothingIsNothing) {
    EXPECT_TRUE(Path().close().empty());
}

TEST(Path, EllipseKeepsItsRadiiWithinThreeTenThousandths) {
    for (const Point& point : curvePoints(Path().ellipse({-2, 1, 8, 4}))) {
        EXPECT_NEAR(std::hypot((point.x - 2) / 4, (point.y - 3) / 2), 1, 3e-4);
    }
}

TEST(Path, RoundedCornersAreQuarterCircles) {
    for (const Point& point : curvePoints(Path().roundedRectangle({0, 0, 20, 10}, 3))) {
        const double x = point.x < 10 ? 3 : 17, y = point.y < 5 ? 3 : 7;
        EXPECT_NEAR(std::hypot(point.x - x, point.y - y), 3, 1e-3);
    }
}

TEST(Path, CornerRadiusIsHalfTheShorterSideAtMost) {
    const Rect rect{0, 0, 20, 10};
    EXPECT_EQ(Path().roundedRectangle(rect, 100), Path().roundedRectangle(rect, 5));
}

TEST(Path, CornerRadiusOfNothingGivesThePlainRectangle) {
    const Rect rect{1, 2, 20, 10};
    for (const double radius : {0.0, -3.0, std::nan("")}) {
        EXPECT_EQ(Path().roundedRectangle(rect, radius), Path().rectangle(rect));
    }
    EXPECT_EQ(Path().roundedRectangle({1, 2, 0, 10}, 3), Path().rectangle({1, 2, 0, 10}));
}

struct ArcCase {
    const char* name;
    double start, end;
    Path::Sweep sweep;
    double middle;  ///< the angle halfway along
};

class PathArc : public testing::TestWithParam<ArcCase> {};

TEST_P(PathArc, RunsItsWayOnTheCircle) {
    const auto& arc = GetParam();
    const Path path = Path().arc({5, 6}, 2, arc.start, arc.end, arc.sweep);
    const auto points = curvePoints(path);
    for (const Point& point : points) EXPECT_NEAR(std::hypot(point.x - 5, point.y - 6), 2, 1e-3);
    EXPECT_NEAR(points.front().x, 5 + 2 * std::cos(arc.start), 1e-12);
    EXPECT_NEAR(points.front().y, 6 + 2 * std::sin(arc.start), 1e-12);
    EXPECT_NEAR(points.back().x, 5 + 2 * std::cos(arc.end), 1e-12);
    EXPECT_NEAR(points.back().y, 6 + 2 * std::sin(arc.end), 1e-12);

    const Point middle{5 + 2 * std::cos(arc.middle), 6 + 2 * std::sin(arc.middle)};
    double nearest = 10;
    for (const Point& p : points) nearest = std::min(nearest, std::hypot(p.x - middle.x, p.y - middle.y));
    EXPECT_LT(nearest, 0.15);
}

INSTANTIATE_TEST_SUITE_P(, PathArc,
                         testing::Values(ArcCase{"bottomHalf", pi, 0, Path::Sweep::growing, 1.5 * pi},
                                         ArcCase{"topHalf", pi, 0, Path::Sweep::falling, 0.5 * pi},
                                         ArcCase{"outerMoon", 1.6020122240156682, -0.5878152152309948,
                                                 Path::Sweep::growing, 1.6020122240156682 + 2.05},
                                         ArcCase{"innerMoon", -1.063090768701302, 2.0772877774859757,
                                                 Path::Sweep::falling, -1.063090768701302 - 1.57},
                                         ArcCase{"small", 0.1, 0.2, Path::Sweep::growing, 0.15},
                                         ArcCase{"wholeTurn", 0, 2 * pi, Path::Sweep::growing, pi}),
                         [](const auto& test) { return test.param.name; });

TEST(Path, ArcBeginsWithAMoveOrWithALineFromTheCurrentPoint) {
    const Path alone = Path().arc({0, 0}, 1, 0, 1, Path::Sweep::growing);
    EXPECT_TRUE(std::holds_alternative<Path::Move>(alone.elements()[0]));
    const Path after = Path().move({5, 5}).arc({0, 0}, 1, 0, 1, Path::Sweep::growing);
    EXPECT_EQ(after.elements()[1], Path::Element(Path::Line{{1, 0}}));
}

TEST(Path, ArcOfHostileAnglesEnds) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double end : {infinity, -infinity, std::nan(""), 1e300, -1e300}) {
        EXPECT_LE(Path().arc({0, 0}, 1, 0, end, Path::Sweep::growing).elements().size(), 6U);
    }
}

TEST(Path, QuadraticIsTheSameCurve) {
    const Path path = Path().move({0, 0}).quadratic({4, 0}, {2, 6});
    const auto points = curvePoints(path);
    for (int i = 0; i <= 16; ++i) {
        const double t = i / 16.0;
        EXPECT_NEAR(points[std::size_t(i)].x, 4 * t, 1e-12);
        EXPECT_NEAR(points[std::size_t(i)].y, 12 * t * (1 - t), 1e-12);
    }
}

TEST(Path, QuadraticAfterACloseStartsWhereTheOutlineBegan) {
    const Path path = Path().move({3, 0}).line({9, 9}).close().quadratic({0, 0}, {3, 3});
    const auto& curve = std::get<Path::Curve>(path.elements().back());
    EXPECT_EQ(curve.control1, (Point{3, 2}));
}

}  // namespace
}  // namespace quorvel
