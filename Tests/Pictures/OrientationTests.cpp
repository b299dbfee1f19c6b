#include "Pictures/Orientation.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace quorvel {
namespace {

using namespace std::string_literals;

/// Letters "abc" over "def", placed upright, rows parted by a bar.
std::string upright(Orientation orientation) {
    const std::string stored = "abcdef";
    constexpr int width = 3, height = 2;
    const UprightPlaces places(orientation, width, height);
    std::string result(6, '?');
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            result.at(std::size_t(places.start + x * places.stepX + y * places.stepY)) =
                stored[std::size_t(y * width + x)];
    const std::size_t rowLength = swapsSides(orientation) ? height : width;
    for (std::size_t at = rowLength; at < result.size(); at += rowLength + 1) result.insert(at, "|");
    return result;
}

TEST(Orientation, placesEveryPixelUpright) {
    const std::pair<int, const char*> cases[] = {{1, "abc|def"},  {2, "cba|fed"},  {3, "fed|cba"},  {4, "def|abc"},
                                                 {5, "ad|be|cf"}, {6, "da|eb|fc"}, {7, "fc|eb|da"}, {8, "cf|be|ad"}};
    for (const auto& [number, expected] : cases) EXPECT_EQ(upright(orientationOf(number)), expected) << number;
}

TEST(Orientation, isUprightForNumbersThatMeanNothing) {
    for (const int number : {-1, 0, 9, 256, 65535}) EXPECT_EQ(orientationOf(number), Orientation::upright);
}

std::string exif(std::string_view order, std::string_view entries) {
    return std::string(order) + (order.starts_with("II") ? "\x2A\0\x08\0\0\0"s : "\0\x2A\0\0\0\x08"s) +
           std::string(entries);
}

TEST(Orientation, isReadFromExifOfEitherByteOrder) {
    EXPECT_EQ(orientationOfExif(exif("II", "\1\0\x12\1\3\0\1\0\0\0\6\0\0\0"s)), Orientation::turned90);
    EXPECT_EQ(orientationOfExif(exif("MM", "\0\1\1\x12\0\3\0\0\0\1\0\x08\0\0"s)), Orientation::turned270);
    EXPECT_EQ(orientationOfExif(exif("II", "\2\0\x0F\1\2\0\1\0\0\0\0\0\0\0\x12\1\3\0\1\0\0\0\3\0\0\0"s)),
              Orientation::turned180);
}

TEST(Orientation, isUprightForBrokenExif) {
    for (const std::string& block :
         {""s, "II"s, "II*\0"s, "XX*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\6\0\0\0"s, "II*\0\xFF\xFF\xFF\xFF"s,
          exif("II", "\xFF\xFF"), exif("II", "\1\0\x12\1\4\0\1\0\0\0\6\0\0\0"s),
          exif("II", "\1\0\x12\1\3\0\1\0\0\0\x09\0\0\0"s), exif("II", "\1\0\x12\1\3\0\1\0"s)})
        EXPECT_EQ(orientationOfExif(block), Orientation::upright) << testing::PrintToString(block);
}

}  // namespace
}  // namespace quorvel
