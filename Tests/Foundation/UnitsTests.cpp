#include "Foundation/Units.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvel::Units {
namespace {

TEST(Units, convertsLengths) {
    EXPECT_EQ(points(25.4), 72);
    EXPECT_EQ(millimetres(72), 25.4);
    EXPECT_EQ(inches(63.5), 2.5);
    EXPECT_EQ(points(210), 595.2755905511812);
    EXPECT_EQ(points(297), 841.8897637795276);
}

TEST(Units, countsPixels) {
    EXPECT_EQ(pixels(63.5, 300), 750);
    EXPECT_EQ(pixels(88.9, 300), 1050);
    EXPECT_EQ(pixels(63.5, 600), 1500);
    EXPECT_EQ(pixels(12.7, 1), 1) << "a half goes away from zero";
    EXPECT_EQ(pixels(-12.7, 1), -1);
    EXPECT_EQ(pixels(0, 300), 0);
}

#ifndef NDEBUG
TEST(UnitsDeathTest, pixelsMustBeCountable) {
    EXPECT_DEATH(pixels(1e300, 300), "");
    EXPECT_DEATH(pixels(std::numeric_limits<double>::quiet_NaN(), 300), "");
}
#endif

}  // namespace
}  // namespace quorvel::Units
