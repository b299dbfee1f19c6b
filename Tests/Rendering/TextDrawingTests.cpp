#include "Drawing/BitmapContext.h"
#include "Drawing/PDFContext.h"
#include "Rendering/TextDrawing.h"
#include "Rendering/TextLayout.h"
#include "Support/Images/RenderPDFPage.h"
#include "TestCards.h"

#include <cmath>
#include <gtest/gtest.h>
#include <thread>

namespace quorvel {
namespace {

constexpr const char* rules =
    "Gain **two** coins {icon:coin} for every *fragile* parcel discarded this way, then move on.";

/// Nimbus Sans by its own name: a line is 1.2 font sizes high.
TextStyle sans(double size, VerticalAlign vertical = VerticalAlign::top) {
    return TextStyle("Nimbus Sans", size, RGBA::black, TextAlign::left, vertical);
}

/// The first rows from the top and bottom of a bitmap that have ink; equal when it is blank.
struct Rows {
    int first = 0;
    int end = 0;
    bool operator==(const Rows&) const = default;
};

Rows inkedRows(const Image& image) {
    Rows rows;
    for (int y = 0; y < image.height(); ++y) {
        const bool inked = std::ranges::any_of(image.row(y), [](auto pixel) { return pixel != 0; });
        if (!inked) continue;
        if (rows.end == 0) rows.first = y;
        rows.end = y + 1;
    }
    return rows;
}

Image drawn(std::string_view text, const TextStyle& style, const Rect& rect, int width = 200, int height = 100) {
    Assets assets;
    auto bitmap = BitmapContext::make(width, height);
    drawText(text, style, assets, bitmap->context(), rect);
    return std::move(*bitmap).finish();
}

/// The search as it is told: every step laid out, nothing skipped.
double walked(std::string_view text, const TextStyle& style, const Rect& rect) {
    double size = std::max(style.size, 1.0);
    if (!style.shrinkToFit) return size;
    while (size > 5) {
        if (std::ceil(TextLayout(text, style, size, rect.width).height() - 1e-6) <= rect.height + 0.5) break;
        size -= 0.5;
    }
    return std::max(size, 5.0);
}

TEST(FittedFontSize, TextThatFitsKeepsItsSize) {
    EXPECT_EQ(fittedFontSize("short", sans(10), {0, 0, 100, 12}), 10);
    EXPECT_EQ(fittedFontSize("", sans(10), {0, 0, 100, 12}), 10);
}

TEST(FittedFontSize, SmallSizes) {
    TextStyle three = sans(3);
    EXPECT_EQ(fittedFontSize("a", three, {0, 0, 100, 100}), 5);
    three.shrinkToFit = false;
    EXPECT_EQ(fittedFontSize("a", three, {0, 0, 100, 100}), 3);
    TextStyle zero = sans(0);
    EXPECT_EQ(fittedFontSize("a", zero, {0, 0, 100, 100}), 5);
    zero.shrinkToFit = false;
    EXPECT_EQ(fittedFontSize("a", zero, {0, 0, 100, 100}), 1);
    EXPECT_EQ(fittedFontSize("a", sans(5.2), {0, 0, 100, 3}), 5);
    EXPECT_EQ(fittedFontSize("a", sans(5.2), {0, 0, 100, 7}), 5.2);
}

TEST(FittedFontSize, TheFloorIsNotTested) {
    EXPECT_EQ(fittedFontSize(rules, sans(12), {0, 0, 20, 2}), 5);
}

TEST(FittedFontSize, AHalfPointAboveTheFrameFits) {
    // A line of 10 points is 12 high, one of 9.5 rounds up to 12.
    EXPECT_EQ(fittedFontSize("a", sans(10), {0, 0, 100, 11.5}), 10);
    EXPECT_EQ(fittedFontSize("a", sans(10), {0, 0, 100, 11.49}), 9);
    EXPECT_EQ(fittedFontSize("a", sans(9.5), {0, 0, 100, 11.5}), 9.5);
}

TEST(FittedFontSize, StepsAreHalfAPointFromTheDesignSize) {
    const double size = fittedFontSize(rules, sans(14.3), {0, 0, 100, 40});
    EXPECT_LT(size, 14.3);
    EXPECT_EQ(size, 14.3 - 0.5 * std::round((14.3 - size) / 0.5));
}

TEST(FittedFontSize, IsWhatTheWalkFinds) {
    std::string story;
    for (int i = 0; i < 12; ++i) story += std::string(rules) + (i % 3 ? " " : "\n");
    for (const std::string& text : {std::string("word"), std::string(rules), story, std::string("WWWWWWWWWWWWWWW"),
                                    std::string("a\n\n\nb"), std::string("{icon:a}{icon:b}{icon:c} {icon:d}")}) {
        for (const double size : {5.0, 9.0, 14.25, 33.0, 120.0}) {
            for (const Rect& rect : {Rect{0, 0, 140, 45}, Rect{0, 0, 60, 200}, Rect{0, 0, 8, 60}, Rect{0, 0, 500, 9}}) {
                EXPECT_EQ(fittedFontSize(text, sans(size), rect), walked(text, sans(size), rect))
                    << text << " at " << size << " in " << rect.width << " by " << rect.height;
            }
        }
    }
}

TEST(FittedFontSize, SizesWithoutEndComeToAnEnd) {
    const Rect rect{0, 0, 140, 45};
    const double ordinary = fittedFontSize(rules, sans(1e4), rect);
    EXPECT_EQ(fittedFontSize(rules, sans(1e30), rect), ordinary);
    EXPECT_EQ(fittedFontSize(rules, sans(std::numeric_limits<double>::infinity()), rect), ordinary);
    EXPECT_EQ(fittedFontSize(rules, sans(std::nan("")), rect), 5);
}

TEST(DrawText, NothingInARectangleOfAPoint) {
    EXPECT_EQ(inkedRows(drawn("{icon:coin} a", sans(10), {10, 10, 1, 50})), Rows{});
    EXPECT_EQ(inkedRows(drawn("{icon:coin} a", sans(10), {10, 10, 50, 1})), Rows{});
    EXPECT_EQ(inkedRows(drawn("{icon:coin} a", sans(10), {10, 10, -50, 50})), Rows{});
    EXPECT_EQ(inkedRows(drawn("{icon:coin} a", sans(10), {10, 10, std::nan(""), 50})), Rows{});
}

/// The row on which the capital H stands, from the top of the bitmap.
int baselineOf(const TextStyle& style, const Rect& rect) {
    return inkedRows(drawn("H", style, rect)).end;
}

TEST(DrawText, IsPlacedByItsHeightRoundedUpAndOne) {
    // Nimbus Sans at 20 needs 24 and so 25 points; its baseline lies 16.58 below the top.
    const Rect rect{10, 10, 100, 60};  // its top edge lies at row 30 of 100
    EXPECT_EQ(baselineOf(sans(20, VerticalAlign::top), rect), 47);
    EXPECT_EQ(baselineOf(sans(20, VerticalAlign::middle), rect), int(std::ceil(100 - (40 + 12.5) + 16.58)));
    EXPECT_EQ(baselineOf(sans(20, VerticalAlign::bottom), rect), int(std::ceil(100 - (10 + 25) + 16.58)));
}

TEST(DrawText, TextAsTallAsItsFrameStartsAtTheTop) {
    // 24 needed and one more: a frame of 25 is full.
    for (const double height : {25.0, 24.0, 23.5}) {
        const Rect rect{10, 70 - height, 100, height};
        for (const auto vertical : {VerticalAlign::top, VerticalAlign::middle, VerticalAlign::bottom}) {
            EXPECT_EQ(baselineOf(sans(20, vertical), rect), 47) << height;
        }
    }
}

TEST(DrawText, LinesThatDoNotFitAreLeftOutWithTheirIcons) {
    TextStyle style = sans(10);
    style.shrinkToFit = false;
    const Rect rect{0, 50, 100, 26};  // two lines of 12
    EXPECT_EQ(inkedRows(drawn("H\nH\nH", style, rect)), inkedRows(drawn("H\nH", style, rect)));
    EXPECT_EQ(inkedRows(drawn("H\nH\n{icon:coin}", style, rect)), inkedRows(drawn("H\nH", style, rect)));
    EXPECT_NE(inkedRows(drawn("H\n{icon:coin}", style, rect)), inkedRows(drawn("H\n", style, rect)));
}

TEST(DrawText, TextThatFitsLosesNoLine) {
    // 36 points of text in 35.5: it counts as fitting, and is all there.
    const Rect rect{0, 50, 100, 35.5};
    EXPECT_EQ(fittedFontSize("H\nH\nH", sans(10), rect), 10);
    EXPECT_EQ(inkedRows(drawn("H\nH\nH", sans(10), rect)).end, int(std::ceil(100 - 85.5 + 24 + 8.29)));
}

TEST(DrawText, InlineIconsStandInTheirPlaces) {
    // At 20 points the slot is 22 wide, 17 above the baseline and 3 below; the icon is the square of 20 in its middle.
    Assets assets;
    assets.register_(plainImage(10, 10, 0xFFFF0000U), "icon:mark");
    auto bitmap = BitmapContext::make(100, 100);
    drawText("{icon:mark}", sans(20), assets, bitmap->context(), {10, 10, 80, 80});
    const Image image = std::move(*bitmap).finish();
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            const bool inside = x >= 11 && x < 31 && y >= 10 && y < 30;
            EXPECT_EQ(pixelAt(image, x, y) >> 24, inside ? 255U : 0U) << x << ", " << y;
        }
    }
}

TEST(DrawText, IconsTakeTheOpacityOfTheirLayer) {
    Assets assets;
    assets.register_(plainImage(10, 10, 0xFFFF0000U), "icon:mark");
    auto bitmap = BitmapContext::make(100, 100);
    bitmap->context().setAlpha(0.5);
    drawText("{icon:mark}", sans(20), assets, bitmap->context(), {10, 10, 80, 80});
    EXPECT_NEAR(pixelAt(std::move(*bitmap).finish(), 20, 20) >> 24, 128, 1);
}

TEST(DrawText, ACellOfAHundredKilobytesShowsWhatItsFrameHolds) {
    std::string cell;
    while (cell.size() < 100'000) cell += "Gain **two** coins {icon:coin} for *every* parcel discarded this way. ";
    const Rect rect{0, 0, 141, 45};
    const Image whole = drawn(cell, sans(9), rect, 141, 45), part = drawn(cell.substr(0, 5000), sans(9), rect, 141, 45);
    EXPECT_EQ(fittedFontSize(cell, sans(9), rect), 5);
    for (int y = 0; y < 45; ++y) EXPECT_TRUE(std::ranges::equal(whole.row(y), part.row(y))) << y;
    EXPECT_GT(inkedRows(whole).end, 35);
}

TEST(DrawText, InDocumentsTextStaysText) {
    Assets assets;
    const auto document = PDFContext::make({"test", ""});
    DrawingContext& page = document->beginPage({200, 100});
    drawText("Gain **two** coins {icon:coin} quickly.\nλόγος", sans(10), assets, page, {10, 10, 180, 80});
    document->endPage();
    const auto bytes = document->finish();
    ASSERT_TRUE(bytes);
    const std::string text = pdfPageText(*bytes, 0);
    EXPECT_NE(text.find("Gain two coins"), std::string::npos) << text;
    EXPECT_NE(text.find("quickly."), std::string::npos) << text;
    EXPECT_NE(text.find("λόγος"), std::string::npos) << text;
}

TEST(DrawText, DocumentsAndBitmapsLookAlike) {
    Assets assets;
    const char* text = "Gain **two** coins {icon:coin} for *every* parcel. \uE001";
    const auto document = PDFContext::make({"test", ""});
    drawText(text, sans(20), assets, document->beginPage({200, 100}), {10, 10, 180, 80});
    document->endPage();
    const Image page = renderPDFPage(*document->finish(), 0, 144);

    auto bitmap = BitmapContext::make(400, 200);
    bitmap->context().scale(2, 2);
    bitmap->context().fill(Rect{0, 0, 200, 100}, RGBA::white);
    drawText(text, sans(20), assets, bitmap->context(), {10, 10, 180, 80});
    const Image image = std::move(*bitmap).finish();
    ASSERT_EQ(page.width(), 400);
    double difference = 0, ink = 0;
    for (int y = 0; y < 200; ++y) {
        for (std::size_t x = 0; x < 400; ++x) {
            const int a = int(page.row(y)[x] & 0xFF), b = int(image.row(y)[x] & 0xFF);
            difference += std::abs(a - b);
            ink += 255 - b;
        }
    }
    EXPECT_GT(ink, 255 * 1000);
    EXPECT_LT(difference / ink, 0.1);
}

TEST(DrawText, EmojiAreInColourWhereAFontHasThem) {
    const Image image = drawn("\U0001F600", sans(60), {0, 0, 200, 100});
    bool colored = false;
    for (int y = 0; y < image.height(); ++y) {
        colored = colored || std::ranges::any_of(image.row(y), [](auto pixel) { return (pixel & 0xFFFFFF) != 0; });
    }
    EXPECT_NE(inkedRows(image), Rows{});
    EXPECT_EQ(colored, std::ranges::count(Fonts::families(), "Noto Color Emoji") > 0);
}

TEST(DrawText, DocumentsAndBitmapsAreDrawnAtOnce) {
    const char* text = "Gain **two** coins {icon:coin} for *every* parcel \u05E9\u05DC\u05D5\u05DD \u2665 this way.";
    const auto work = [&] {
        Assets assets;
        std::string result;
        for (int i = 0; i < 5; ++i) {
            TextStyle style = sans(9);
            if (i % 2) style.fontFamily = "Charis SIL";
            const auto document = PDFContext::make({"test", ""});
            drawText(text, style, assets, document->beginPage({100, 100}), {0, 0, 100, 100});
            document->endPage();
            result += document->finish().value_or("failed");
            const Image image = drawn(text, style, {0, 0, 100, 100}, 100, 100);
            for (int y = 0; y < 100; ++y) {
                for (const auto pixel : image.row(y)) result += char(pixel >> 24);
            }
        }
        return result;
    };
    std::vector<std::string> results(8);
    {
        std::vector<std::jthread> threads;
        for (auto& result : results) threads.emplace_back([&] { result = work(); });
    }
    for (const auto& result : results) EXPECT_TRUE(result == results.front());
    EXPECT_EQ(results.front().find("failed"), std::string::npos);
}

}  // namespace
}  // namespace quorvel
