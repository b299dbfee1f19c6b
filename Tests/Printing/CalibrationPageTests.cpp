#include "Foundation/Units.h"
#include "Printing/CalibrationPage.h"
#include "Printing/Duplex.h"
#include "Printing/PageMeasures.h"
#include "Printing/SheetPDF.h"
#include "Support/Images/GoldenImage.h"
#include "Support/Images/RenderPDFPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr double dpi = 300;
constexpr double tenthOfAMillimetre = 0.1 / 25.4 * 72;

std::string pageOf(const SheetSettings& settings, bool landscape = false) {
    return SheetPDF::calibrationPage(settings, landscape).value_or("");
}

/// How dark the page is within a tenth of a millimetre of a place, in points from the top left.
double darkest(const Image& page, double x, double y) {
    double most = 0;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            most = std::max(most, darknessAt(page, int(x / 72 * dpi) + dx, int(y / 72 * dpi) + dy));
    return most;
}

TEST(CalibrationPage, HasTwoPagesOfThePaper) {
    SheetSettings settings;
    settings.paper = Paper::a4;
    for (bool landscape : {false, true}) {
        const auto pdf = pageOf(settings, landscape);
        EXPECT_EQ(SheetPDF::pageCount(pdf), 2);
        for (const Size& size : pdfPageSizes(pdf)) {
            EXPECT_NEAR(landscape ? size.height : size.width, 595.2755905511812, 1e-5);
            EXPECT_NEAR(landscape ? size.width : size.height, 841.8897637795276, 1e-5);
        }
    }
}

TEST(CalibrationPage, SaysWhatToDo) {
    const auto pdf = pageOf({});
    const std::string front = pdfPageText(pdf, 0);
    EXPECT_THAT(front, HasSubstr("Duplex calibration: front"));
    EXPECT_THAT(front, HasSubstr("1. Print both pages double-sided at 100% (Actual Size)"));
    EXPECT_THAT(front, HasSubstr("2. Hold the sheet up to a light, front facing you."));
    EXPECT_THAT(front, HasSubstr("the crosses should sit on the centres."));
    EXPECT_THAT(front, HasSubstr("−"));
    EXPECT_THAT(pdfPageText(pdf, 1), HasSubstr("Duplex calibration: back"));
    EXPECT_THAT(pdf, HasSubstr("/Creator (Quorvel)"));
    EXPECT_THAT(pdf, Not(HasSubstr("/Title")));

    const auto own =
        *SheetPDF::calibrationPage({}, false, {.frontTitle = "Vorn", .backTitle = "Hinten", .steps = "1."});
    EXPECT_THAT(pdfPageText(own, 0), HasSubstr("Vorn"));
    EXPECT_THAT(pdfPageText(own, 1), HasSubstr("Hinten"));
}

TEST(CalibrationPage, TheStepsAreFourLines) {
    EXPECT_EQ(SheetPDF::CalibrationText().steps,
              "1. Print both pages double-sided at 100% (Actual Size), with the same paper and flip setting as your "
              "cards.\n"
              "2. Hold the sheet up to a light, front facing you.\n"
              "3. At the middle target, read where the back’s cross meets the scales: millimetres right and down are "
              "positive, left and up negative.\n"
              "4. Enter those two numbers as the back offset, then print this page again to check: the crosses should "
              "sit on the centres.");
}

TEST(CalibrationPage, TargetsHaveArmsAndTicksAtEveryMillimetre) {
    const Image page = renderPDFPage(pageOf({}), 0, dpi);
    for (const auto& [fx, fy] : {Point{0.5, 0.5}, {0.25, 0.3}, {0.75, 0.3}, {0.25, 0.75}, {0.75, 0.75}}) {
        const double x = 612 * fx;
        const double y = 792 * fy;
        for (int i = -6; i <= 6; ++i) {
            const double along = Units::points(i);
            const double across = Units::points(i % 5 == 0 ? 2.1 : 1.0);
            EXPECT_GT(darkest(page, x + along * 0.99, y), 0.5);
            EXPECT_GT(darkest(page, x, y + along * 0.99), 0.5);
            if (i == 0) continue;
            for (double side : {-across, across}) {
                EXPECT_GT(darkest(page, x + along, y + side), 0.3) << i;
                EXPECT_GT(darkest(page, x + side, y + along), 0.3) << i;
            }
            EXPECT_LT(darkest(page, x + along, y + Units::points(i % 5 == 0 ? 2.5 : 1.4)), 0.1) << i;
        }
        EXPECT_LT(darkest(page, x + Units::points(6.5), y), 0.1);
    }
}

TEST(CalibrationPage, CrossesStandBehindTheTargets) {
    for (bool landscape : {false, true}) {
        for (DuplexFlip flip : {DuplexFlip::longEdge, DuplexFlip::shortEdge}) {
            for (double offset : {0.0, 2.0}) {
                SheetSettings settings;
                settings.flip = flip;
                settings.backOffsetXMM = offset;
                settings.backOffsetYMM = offset / 2;
                const double width = landscape ? 792 : 612;
                const double height = landscape ? 612 : 792;
                const bool sideways = Duplex::mirrorsHorizontally(landscape, flip);
                const double ox = Units::points(settings.backOffsetXMM) * (sideways ? 1 : -1);
                const double oy = Units::points(settings.backOffsetYMM) * (sideways ? -1 : 1);
                const Image page = renderPDFPage(pageOf(settings, landscape), 1, dpi);
                for (const auto& [fx, fy] : {Point{0.5, 0.5}, {0.25, 0.3}, {0.75, 0.3}, {0.25, 0.75}, {0.75, 0.75}}) {
                    const double x = (sideways ? width - width * fx : width * fx) + ox;
                    const double y = (sideways ? height * fy : height - height * fy) + oy;
                    const double arm = Units::points(8.8);
                    for (const Point& end : {Point{x - arm, y}, {x + arm, y}, {x, y - arm}, {x, y + arm}})
                        EXPECT_GT(darkest(page, end.x, end.y), 0.5);
                    EXPECT_LT(darkest(page, x + Units::points(9.3), y), 0.1);
                    EXPECT_LT(darkest(page, x + arm, y + 2), 0.1);
                }
            }
        }
    }
}

TEST(CalibrationPage, WordsKeepEightMillimetresFromTheEdge) {
    for (double margin : {2.0, 20.0}) {
        SheetSettings settings;
        settings.marginMM = margin;
        const Image page = renderPDFPage(pageOf(settings), 0, dpi);
        int left = page.width();
        for (int y = 0; y < page.height() / 5; ++y)
            for (int x = 0; x < left; ++x)
                if (darknessAt(page, x, y) > 0.5) left = x;
        const double expected = Units::points(std::max(8.0, margin));
        EXPECT_GE(left / dpi * 72, expected - tenthOfAMillimetre);
        EXPECT_LE(left / dpi * 72, expected + Units::points(1.5));
    }
}

TEST(CalibrationPage, LooksAsItShould) {
    const auto pdf = pageOf({});
    EXPECT_TRUE(
        matchesGolden(renderPDFPage(pdf, 0, 100), "Printing/calibration-front", {.mean = 0.25, .maximum = 160}));
    EXPECT_TRUE(matchesGolden(renderPDFPage(pdf, 1, 100), "Printing/calibration-back", {.mean = 0.25, .maximum = 160}));
}

TEST(CalibrationPage, NonsenseNeverHarms) {
    for (double value :
         {1e9, -1e9, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        SheetSettings settings;
        settings.marginMM = value;
        settings.backOffsetXMM = value;
        settings.backOffsetYMM = value;
        EXPECT_EQ(SheetPDF::pageCount(pageOf(settings)), 2) << value;
    }
}

}  // namespace
}  // namespace quorvel
