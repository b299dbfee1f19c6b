#include "Pictures/PictureReader.h"
#include "Support/Images/ImageDifference.h"
#include "Support/TemporaryFolder.h"
#include "TestPictures.h"
#include "TestProfiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

namespace quorvel {
namespace {

using namespace TestPictures;
using testing::ElementsAre;

constexpr PictureFormat allFormats[] = {PictureFormat::jpeg, PictureFormat::png, PictureFormat::webp,
                                        PictureFormat::tiff, PictureFormat::heif};

class PictureReaderTest : public testing::Test {
protected:
    std::filesystem::path file(std::string_view bytes, const char* name = "picture") {
        write(folder_ / name, bytes);
        return folder_ / name;
    }

    std::optional<Image> read(std::string_view bytes) { return PictureReader::read(file(bytes)); }

    std::optional<Image> read(const Samples& samples, PictureFormat format, const Options& options = {}) {
        return read(encoded(samples, format, options));
    }

    TemporaryFolder folder_;
};

testing::AssertionResult isNear(const std::optional<Image>& image, int x, int y, std::array<int, 4> expected,
                                int tolerance) {
    if (!image) return testing::AssertionFailure() << "no image";
    const std::vector<int> color = colorAt(*image, x, y);
    for (std::size_t i = 0; i < 4; ++i)
        if (std::abs(color[i] - expected[i]) > tolerance)
            return testing::AssertionFailure() << testing::PrintToString(color) << " at " << x << ", " << y;
    return testing::AssertionSuccess();
}

int toleranceOf(PictureFormat format) {
    // HEIC's colours pass through luma and chroma, even where it is called lossless.
    return format == PictureFormat::jpeg || format == PictureFormat::heif ? 6 : 0;
}

TEST_F(PictureReaderTest, readsEveryFormatInEveryOrientation) {
    constexpr std::array<int, 4> red{255, 0, 0, 255}, green{0, 255, 0, 255}, blue{0, 0, 255, 255},
        white{255, 255, 255, 255};
    // What is to be seen from the top left clockwise when red, green, white and blue are stored in this way.
    const std::array<std::array<int, 4>, 4> upright[] = {
        {red, green, white, blue}, {green, red, blue, white}, {white, blue, red, green}, {blue, white, green, red},
        {red, blue, white, green}, {blue, red, green, white}, {white, green, red, blue}, {green, white, blue, red}};
    for (const PictureFormat format :
         {PictureFormat::jpeg, PictureFormat::png, PictureFormat::webp, PictureFormat::tiff})
        for (int orientation = 1; orientation <= 8; ++orientation) {
            SCOPED_TRACE(testing::Message() << "format " << int(format) << ", orientation " << orientation);
            const auto image = read(fourFields(48, 32), format, {.orientation = orientation});
            ASSERT_TRUE(image);
            EXPECT_EQ(image->width(), orientation < 5 ? 48 : 32);
            EXPECT_EQ(image->height(), orientation < 5 ? 32 : 48);
            EXPECT_EQ(image->alpha(), Image::Alpha::opaque);
            const int right = image->width() - 3, bottom = image->height() - 3;
            const auto& expected = upright[orientation - 1];
            EXPECT_TRUE(isNear(image, 2, 2, expected[0], toleranceOf(format)));
            EXPECT_TRUE(isNear(image, right, 2, expected[1], toleranceOf(format)));
            EXPECT_TRUE(isNear(image, right, bottom, expected[2], toleranceOf(format)));
            EXPECT_TRUE(isNear(image, 2, bottom, expected[3], toleranceOf(format)));
            const auto header = PictureReader::header(folder_ / "picture");
            ASSERT_TRUE(header);
            EXPECT_EQ(header->width, image->width());
            EXPECT_EQ(header->height, image->height());
        }
}

// Such files carry their turn in a box of their own, which the decoder has applied; the EXIF tag only repeats it.
TEST_F(PictureReaderTest, turnsHEICOnlyOnce) {
    for (const int orientation : {1, 6}) {
        const auto image = read(fourFields(96, 64), PictureFormat::heif, {.orientation = orientation});
        ASSERT_TRUE(image);
        EXPECT_EQ(image->width(), 96);
        EXPECT_EQ(image->height(), 64);
        EXPECT_TRUE(isNear(image, 20, 10, {255, 0, 0, 255}, 6));
        EXPECT_TRUE(isNear(image, 70, 10, {0, 255, 0, 255}, 6));
        EXPECT_TRUE(isNear(image, 70, 50, {255, 255, 255, 255}, 6));
        EXPECT_TRUE(isNear(image, 20, 50, {0, 0, 255, 255}, 6));
    }
}

TEST_F(PictureReaderTest, choosesTheDecoderByContentAndNotByName) {
    const std::string bytes = encoded(plain(5, 4, {10, 200, 30}), PictureFormat::png);
    for (const char* name : {"a.jpg", "b.tiff", "c", "d.heic", "e.txt"})
        EXPECT_TRUE(isNear(PictureReader::read(file(bytes, name)), 0, 0, {10, 200, 30, 255}, 0)) << name;
    EXPECT_FALSE(PictureReader::read(file(bytes, "f.pdf")));
}

struct Variant {
    const char* what;
    PictureFormat format;
    Samples samples;
    Options options;
    std::array<int, 4> expected;
    int tolerance = 0;
};

TEST_F(PictureReaderTest, readsEveryKindOfPixel) {
    auto sixteen = [](std::vector<std::uint16_t> color) {
        Samples samples = plain(20, 10, std::move(color));
        samples.sixteenBits = true;
        return samples;
    };
    const Variant variants[] = {
        {"grey JPEG", PictureFormat::jpeg, plain(20, 10, {77}), {}, {77, 77, 77, 255}, 1},
        {"progressive JPEG",
         PictureFormat::jpeg,
         plain(20, 10, {10, 99, 200}),
         {.progressive = true},
         {10, 99, 200, 255},
         2},
        {"grey PNG", PictureFormat::png, plain(20, 10, {77}), {}, {77, 77, 77, 255}},
        {"grey PNG with alpha", PictureFormat::png, plain(20, 10, {200, 128}), {}, {200, 200, 200, 128}, 1},
        {"PNG with alpha", PictureFormat::png, plain(20, 10, {200, 100, 0, 128}), {}, {200, 100, 0, 128}, 1},
        {"clear PNG", PictureFormat::png, plain(20, 10, {200, 100, 0, 0}), {}, {0, 0, 0, 0}},
        {"interlaced PNG", PictureFormat::png, plain(20, 10, {1, 2, 3}), {.progressive = true}, {1, 2, 3, 255}},
        {"palette PNG", PictureFormat::png, plain(20, 10, {255, 0, 255}), {.extra = "palette"}, {255, 0, 255, 255}},
        {"PNG of one bit", PictureFormat::png, plain(20, 10, {255}), {.extra = "bitdepth=1"}, {255, 255, 255, 255}},
        {"PNG of 16 bits", PictureFormat::png, sixteen({0x8080, 0xFFFF, 0x0101}), {}, {128, 255, 1, 255}, 1},
        {"PNG of 16 bits with alpha",
         PictureFormat::png,
         sixteen({0xC8C8, 0x6464, 0, 0x8080}),
         {},
         {200, 100, 0, 128},
         1},
        {"grey PNG of 16 bits", PictureFormat::png, sixteen({0x4D4D}), {}, {77, 77, 77, 255}, 1},
        {"grey PNG of 16 bits with alpha", PictureFormat::png, sixteen({0xC8C8, 0x8080}), {}, {200, 200, 200, 128}, 1},
        {"WebP", PictureFormat::webp, plain(20, 10, {10, 99, 200}), {.lossless = false}, {10, 99, 200, 255}, 5},
        {"WebP with alpha", PictureFormat::webp, plain(20, 10, {200, 100, 0, 128}), {}, {200, 100, 0, 128}, 1},
        {"TIFF", PictureFormat::tiff, plain(20, 10, {10, 99, 200}), {}, {10, 99, 200, 255}},
        {"TIFF in tiles, by LZW",
         PictureFormat::tiff,
         plain(20, 10, {10, 99, 200}),
         {.extra = "tile,compression=lzw"},
         {10, 99, 200, 255}},
        {"TIFF by deflate",
         PictureFormat::tiff,
         plain(20, 10, {10, 99, 200}),
         {.extra = "compression=deflate"},
         {10, 99, 200, 255}},
        {"TIFF by JPEG",
         PictureFormat::tiff,
         plain(20, 10, {10, 99, 200}),
         {.extra = "compression=jpeg,Q=95"},
         {10, 99, 200, 255},
         3},
        {"large TIFF", PictureFormat::tiff, plain(20, 10, {10, 99, 200}), {.extra = "bigtiff"}, {10, 99, 200, 255}},
        {"grey TIFF", PictureFormat::tiff, plain(20, 10, {77}), {}, {77, 77, 77, 255}},
        {"TIFF of one bit", PictureFormat::tiff, plain(20, 10, {255}), {.extra = "bitdepth=1"}, {255, 255, 255, 255}},
        {"TIFF with alpha", PictureFormat::tiff, plain(20, 10, {200, 100, 0, 128}), {}, {200, 100, 0, 128}, 1},
        {"TIFF of 16 bits", PictureFormat::tiff, sixteen({0x8080, 0xFFFF, 0x0101}), {}, {128, 255, 1, 255}, 1},
        {"TIFF of 16 bits with alpha",
         PictureFormat::tiff,
         sixteen({0xC8C8, 0x6464, 0, 0x8080}),
         {},
         {200, 100, 0, 128},
         1},
        {"grey TIFF of 16 bits", PictureFormat::tiff, sixteen({0x4D4D}), {}, {77, 77, 77, 255}, 1},
        {"HEIC", PictureFormat::heif, plain(64, 64, {10, 99, 200}), {.lossless = false}, {10, 99, 200, 255}, 5},
        {"HEIC with alpha", PictureFormat::heif, plain(64, 64, {200, 100, 0, 128}), {}, {200, 100, 0, 128}, 4},
    };
    for (const Variant& each : variants) {
        const auto image = read(each.samples, each.format, each.options);
        EXPECT_TRUE(isNear(image, 9, 5, each.expected, each.tolerance)) << each.what;
        EXPECT_EQ(image && image->alpha() == Image::Alpha::opaque, each.expected[3] == 255) << each.what;
    }
}

TEST_F(PictureReaderTest, readsInksWithTheirMeaningTheRightWayRound) {
    struct Case {
        const char* what;
        std::vector<std::uint16_t> inks;
        std::array<int, 4> expected;
        int tolerance;
    };
    const Case cases[] = {{"paper", {0, 0, 0, 0}, {255, 255, 255, 255}, 3},
                          {"black", {0, 0, 0, 255}, {35, 32, 32, 255}, 35},
                          {"cyan", {255, 0, 0, 0}, {0, 160, 225, 255}, 40},
                          {"magenta", {0, 255, 0, 0}, {220, 10, 130, 255}, 45},
                          {"yellow", {0, 0, 255, 0}, {255, 235, 10, 255}, 35}};
    for (const Case& each : cases) {
        const Samples samples = plain(16, 16, each.inks);
        EXPECT_TRUE(isNear(read(samples, PictureFormat::jpeg, {.inks = true}), 8, 8, each.expected, each.tolerance))
            << each.what << ", JPEG";
        EXPECT_TRUE(isNear(read(samples, PictureFormat::tiff, {.inks = true}), 8, 8, each.expected, each.tolerance))
            << each.what << ", TIFF";
    }
}

/// A multiplication of matrices and its inverse, to say what a colour should become.
using Matrix = std::array<std::array<double, 3>, 3>;

Matrix columns(const TestProfiles::Primary& a, const TestProfiles::Primary& b, const TestProfiles::Primary& c) {
    return {{{a[0], b[0], c[0]}, {a[1], b[1], c[1]}, {a[2], b[2], c[2]}}};
}

std::array<double, 3> solve(Matrix m, std::array<double, 3> right) {
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t row = 0; row < 3; ++row) {
            if (row == i) continue;
            const double factor = m[row][i] / m[i][i];
            for (std::size_t k = 0; k < 3; ++k) m[row][k] -= factor * m[i][k];
            right[row] -= factor * right[i];
        }
    for (std::size_t i = 0; i < 3; ++i) right[i] /= m[i][i];
    return right;
}

std::array<int, 4> fromAdobe(std::array<int, 3> color) {
    using namespace TestProfiles;
    const Matrix toXYZ = columns(adobeRed, adobeGreen, adobeBlue);
    std::array<double, 3> xyz{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t k = 0; k < 3; ++k) xyz[row] += toXYZ[row][k] * std::pow(color[k] / 255.0, 2.19921875);
    std::array<int, 4> result{0, 0, 0, 255};
    const auto light = solve(columns(sRGBRed, sRGBGreen, sRGBBlue), xyz);
    for (std::size_t i = 0; i < 3; ++i) {
        const double x = std::clamp(light[i], 0.0, 1.0);
        result[i] = int(std::lround(255 * (x <= 0.0031308 ? x * 12.92 : 1.055 * std::pow(x, 1 / 2.4) - 0.055)));
    }
    return result;
}

TEST_F(PictureReaderTest, convertsEmbeddedProfilesToSRGB) {
    using namespace TestProfiles;
    const std::string swapped = rgb(sRGBBlue, sRGBGreen, sRGBRed, sRGBTable(4096));
    const std::string adobe = rgb(adobeRed, adobeGreen, adobeBlue, power(2.19921875));
    for (const PictureFormat format : allFormats) {
        const int tolerance = 2 + toleranceOf(format) / 2;
        EXPECT_TRUE(isNear(read(plain(64, 64, {200, 50, 10}), format, {.profile = swapped}), 30, 30, {10, 50, 200, 255},
                           tolerance))
            << int(format);
        for (const std::array<std::uint16_t, 3> color :
             {std::array<std::uint16_t, 3>{128, 128, 128}, {120, 140, 100}, {200, 180, 190}, {60, 70, 90}})
            EXPECT_TRUE(isNear(read(plain(64, 64, {color[0], color[1], color[2]}), format, {.profile = adobe}), 30, 30,
                               fromAdobe({color[0], color[1], color[2]}), tolerance))
                << int(format) << ": " << testing::PrintToString(color);
    }
}

TEST_F(PictureReaderTest, convertsProfilesOfSixteenBitsAlphaGreyAndReducedPictures) {
    using namespace TestProfiles;
    const std::string swapped = rgb(sRGBBlue, sRGBGreen, sRGBRed, sRGBTable(4096));
    Samples deep = plain(20, 10, {0xC8C8, 0x3232, 0x0A0A});
    deep.sixteenBits = true;
    for (const PictureFormat format : {PictureFormat::png, PictureFormat::tiff})
        EXPECT_TRUE(isNear(read(deep, format, {.profile = swapped}), 5, 5, {10, 50, 200, 255}, 2));
    EXPECT_TRUE(isNear(read(plain(20, 10, {200, 50, 10, 128}), PictureFormat::png, {.profile = swapped}), 5, 5,
                       {10, 50, 200, 128}, 2));
    EXPECT_TRUE(isNear(read(plain(20, 10, {128}), PictureFormat::png, {.profile = grey(power(1))}), 5, 5,
                       {188, 188, 188, 255}, 2));
    EXPECT_TRUE(isNear(read(plain(20, 10, {128, 200}), PictureFormat::png, {.profile = grey(power(1))}), 5, 5,
                       {188, 188, 188, 200}, 2));
    EXPECT_TRUE(isNear(read(plain(3000, 40, {200, 50, 10}), PictureFormat::png, {.profile = swapped}), 1200, 16,
                       {10, 50, 200, 255}, 2));
    EXPECT_TRUE(isNear(read(plain(3000, 40, {200, 50, 10, 128}), PictureFormat::png, {.profile = swapped}), 1200, 16,
                       {10, 50, 200, 128}, 3));
}

TEST_F(PictureReaderTest, leavesColoursAloneThatAreSRGBAlready) {
    using namespace TestProfiles;
    const std::string profile = rgb(sRGBRed, sRGBGreen, sRGBBlue, sRGBTable(1024));
    const Image bare = *read(waves(60, 40), PictureFormat::png);
    EXPECT_EQ(differenceBetween(*read(waves(60, 40), PictureFormat::png, {.profile = profile}), bare).maximum, 0);
}

TEST_F(PictureReaderTest, ignoresProfilesThatAreBrokenOrOfAnotherSpace) {
    using namespace TestProfiles;
    const std::string swapped = rgb(sRGBBlue, sRGBGreen, sRGBRed, sRGBTable(64));
    for (const std::string& profile : {std::string(300, 'x'), swapped.substr(0, 200), grey(power(1))})
        EXPECT_TRUE(isNear(read(plain(20, 10, {200, 50, 10}), PictureFormat::jpeg, {.profile = profile}), 5, 5,
                           {200, 50, 10, 255}, 3));
    EXPECT_TRUE(
        isNear(read(plain(20, 10, {77}), PictureFormat::jpeg, {.profile = swapped}), 5, 5, {77, 77, 77, 255}, 1));
}

TEST_F(PictureReaderTest, reducesLargePicturesToTheLongestSide) {
    struct Case {
        int width, height, expectedWidth, expectedHeight;
    };
    const Case cases[] = {{6000, 4000, 2400, 1600}, {2400, 2400, 2400, 2400}, {2401, 3, 2400, 3},
                          {2401, 2401, 2400, 2400}, {40, 4801, 20, 2400},     {30000, 1, 2400, 1},
                          {30000, 20, 2400, 2},     {5003, 1707, 2400, 819},  {2399, 100, 2399, 100}};
    for (const Case& each : cases)
        for (const PictureFormat format : {PictureFormat::jpeg, PictureFormat::png}) {
            if (format == PictureFormat::png && each.height > 2000) continue;  // the path is the same, and long
            const auto image = read(plain(each.width, each.height, {10, 99, 200}), format);
            ASSERT_TRUE(image) << each.width << " × " << each.height;
            EXPECT_EQ(image->width(), each.expectedWidth);
            EXPECT_EQ(image->height(), each.expectedHeight);
            EXPECT_TRUE(isNear(image, 0, 0, {10, 99, 200, 255}, 2));
            EXPECT_TRUE(isNear(image, image->width() - 1, image->height() - 1, {10, 99, 200, 255}, 2));
            const auto header = PictureReader::header(folder_ / "picture");
            EXPECT_EQ(header->width, each.expectedWidth);
            EXPECT_EQ(header->height, each.expectedHeight);
        }
}

TEST_F(PictureReaderTest, reducesAndTurns) {
    const auto image = read(fourFields(6000, 4000), PictureFormat::jpeg, {.orientation = 6});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 1600);
    EXPECT_EQ(image->height(), 2400);
    EXPECT_TRUE(isNear(image, 100, 100, {0, 0, 255, 255}, 3));
    EXPECT_TRUE(isNear(image, 1500, 100, {255, 0, 0, 255}, 3));
    EXPECT_TRUE(isNear(image, 1500, 2300, {0, 255, 0, 255}, 3));
}

TEST_F(PictureReaderTest, keepsEdgesAndDetailInPlaceWhileReducing) {
    for (const PictureFormat format : {PictureFormat::jpeg, PictureFormat::png, PictureFormat::tiff}) {
        const auto image = read(fourFields(5000, 600), format);
        ASSERT_TRUE(image);
        EXPECT_TRUE(isNear(image, 1195, 140, {255, 0, 0, 255}, 6)) << int(format);
        EXPECT_TRUE(isNear(image, 1204, 140, {0, 255, 0, 255}, 6)) << int(format);
        EXPECT_TRUE(isNear(image, 1195, 147, {0, 0, 255, 255}, 6)) << int(format);
    }
}

TEST_F(PictureReaderTest, doesNotLetClearColoursBleedWhileReducing) {
    Samples samples{5000, 50, 4, {}};
    for (int y = 0; y < samples.height; ++y)
        for (int x = 0; x < samples.width; ++x) {
            const bool clear = x % 4 < 2;
            samples.values.insert(samples.values.end(), {std::uint16_t(clear ? 0 : 250), std::uint16_t(clear ? 255 : 0),
                                                         0, std::uint16_t(clear ? 0 : 255)});
        }
    const auto image = read(samples, PictureFormat::png);
    ASSERT_TRUE(image);
    for (int x = 100; x < 110; ++x) {
        EXPECT_LE(colorAt(*image, x, 10)[1], 2);
        EXPECT_LE(image->row(10)[std::size_t(x)] >> 16 & 255, image->row(10)[std::size_t(x)] >> 24);
    }
}

TEST_F(PictureReaderTest, readsThePageOfAPDFByItsExtension) {
    const std::string bytes = pdfPage(100, 200);
    for (const char* name : {"a.pdf", "b.PDF"}) {
        const auto image = PictureReader::read(file(bytes, name));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->width(), 256);
        EXPECT_EQ(image->height(), 512);
        EXPECT_EQ(image->alpha(), Image::Alpha::varying);
        EXPECT_TRUE(isNear(image, 25, 490, {0, 0, 255, 255}, 0));
        EXPECT_TRUE(isNear(image, 128, 100, {0, 0, 0, 0}, 0));
        const auto header = PictureReader::header(folder_ / name);
        EXPECT_EQ(header->width, 256);
        EXPECT_EQ(header->height, 512);
        EXPECT_FALSE(header->storable);
    }
    EXPECT_FALSE(PictureReader::read(file(bytes, "page")));
    EXPECT_FALSE(PictureReader::encoded(file(encoded(waves(8, 8), PictureFormat::jpeg), "c.pdf")));
}

TEST_F(PictureReaderTest, readsFromManyThreadsAtOnce) {
    std::vector<std::filesystem::path> files;
    std::vector<Image> expected;
    for (const PictureFormat format : allFormats) {
        const std::string name = "picture" + std::to_string(int(format));
        files.push_back(file(encoded(waves(300, 200), format), name.c_str()));
        expected.push_back(*PictureReader::read(files.back()));
    }
    files.push_back(file(pdfPage(80, 90), "page.pdf"));
    expected.push_back(*PictureReader::read(files.back()));
    std::vector<int> wrong(4, 0);
    {
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < wrong.size(); ++thread)
            threads.emplace_back([&, thread] {
                for (std::size_t i = 0; i < 5 * files.size(); ++i) {
                    const std::size_t which = (i + thread) % files.size();
                    const auto image = PictureReader::read(files[which]);
                    wrong[thread] += !image || differenceBetween(*image, expected[which]).maximum > 0;
                }
            });
    }
    EXPECT_THAT(wrong, ElementsAre(0, 0, 0, 0));
}

}  // namespace
}  // namespace quorvel
