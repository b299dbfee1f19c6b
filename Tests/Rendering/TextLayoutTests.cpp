#include "Drawing/BitmapContext.h"
#include "Rendering/TextLayout.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace quorvel {
namespace {

/// Nimbus Sans by its own name, since its measures are the same wherever it is installed.
TextStyle sans(TextAlign align = TextAlign::left) {
    return TextStyle("Nimbus Sans", 10, RGBA::black, align, VerticalAlign::top);
}

std::string dump(std::string_view text, const TextStyle& style, double width, double size = 10) {
    return TextLayout(text, style, size, width).dump();
}

double widthOf(std::string_view text, const TextStyle& style) {
    return TextLayout(text, style, 10, 1000).lines()[0].width;
}

TEST(TextLayout, LinesBreakBetweenWords) {
    EXPECT_EQ(dump("one two three four", sans(), 40),
              "line 0.00 8.29 12.00 x 0.00 width 35.16\n"
              "line 12.00 20.29 24.00 x 0.00 width 22.63\n"
              "line 24.00 32.29 36.00 x 0.00 width 17.13\n");
}

TEST(TextLayout, AWordThatIsTooLongBreaksWithin) {
    const TextLayout layout("abcdefghij", sans(), 10, 20);
    EXPECT_EQ(layout.lines().size(), 3U);
    for (const auto& line : layout.lines()) EXPECT_LE(line.width, 20);
}

TEST(TextLayout, OnlySoftHyphensShow) {
    const TextLayout plain("Wonderful", sans(), 10, 30), soft("Won\u00ADderful", sans(), 10, 30);
    EXPECT_EQ(plain.lines()[0].width, widthOf("Wond", sans()));
    EXPECT_NEAR(soft.lines()[0].width, widthOf("Won-", sans()), 0.05);
}

TEST(TextLayout, IconsHoldTheirPlaces) {
    EXPECT_EQ(dump("Gain 1 {icon:coin}.", sans(), 100),
              "line 0.00 8.50 12.21 x 0.00 width 45.96\n"
              "  coin x 32.18 width 11.00 ascent 8.50 descent 1.50\n");
    EXPECT_EQ(dump("Gain 1 {icon:coin}.", sans(), 30),
              "line 0.00 8.29 12.00 x 0.00 width 29.40\n"
              "line 12.00 20.50 24.21 x 0.00 width 13.78\n"
              "  coin x 0.00 width 11.00 ascent 8.50 descent 1.50\n");
}

TEST(TextLayout, IconsAreAlignedAndStandSideBySide) {
    EXPECT_EQ(dump("{icon:coin}{icon:coin}\n{icon:leaf}", sans(TextAlign::center), 50),
              "line 0.00 8.50 10.00 x 14.00 width 22.00\n"
              "  coin x 14.00 width 11.00 ascent 8.50 descent 1.50\n"
              "  coin x 25.00 width 11.00 ascent 8.50 descent 1.50\n"
              "line 10.00 18.50 20.00 x 19.50 width 11.00\n"
              "  leaf x 19.50 width 11.00 ascent 8.50 descent 1.50\n");
}

TEST(TextLayout, SlotsFollowTheSize) {
    const TextLayout layout("**{icon:coin}**", sans(), 24, 100);
    ASSERT_EQ(layout.slots().size(), 1U);
    EXPECT_NEAR(layout.slots()[0].ascent, 24 * 0.85, 1e-9);
    EXPECT_NEAR(layout.slots()[0].descent, 24 * 0.15, 1e-9);
    EXPECT_NEAR(layout.slots()[0].width, 24 * 1.1, 1e-2);
}

TEST(TextLayout, AlignmentIsThatOfThePaperInEveryScript) {
    const char* hebrew = "\u05E9\u05DC\u05D5\u05DD";
    const double width = widthOf(hebrew, sans());
    EXPECT_NEAR(TextLayout(hebrew, sans(TextAlign::left), 10, 100).lines()[0].x, 0, 1e-9);
    EXPECT_NEAR(TextLayout(hebrew, sans(TextAlign::right), 10, 100).lines()[0].x, 100 - width, 1e-6);
    EXPECT_NEAR(TextLayout(hebrew, sans(TextAlign::center), 10, 100).lines()[0].x, 50 - width / 2, 1e-6);
}

TEST(TextLayout, RightToLeftTextPutsItsIconsToTheLeft) {
    const TextLayout layout("\u05E9\u05DC\u05D5\u05DD {icon:coin}{icon:star}", sans(), 10, 100);
    ASSERT_EQ(layout.slots().size(), 2U);
    EXPECT_EQ(layout.slots()[0].icon, "star");
    EXPECT_NEAR(layout.slots()[0].x, 0, 1e-6);
    EXPECT_EQ(layout.slots()[1].icon, "coin");
    EXPECT_NEAR(layout.slots()[1].x, 11, 0.01);
}

TEST(TextLayout, EveryParagraphHasItsOwnDirection) {
    const TextLayout layout("{icon:coin} abc\n{icon:coin} \u05E9\u05DC\u05D5\u05DD", sans(), 10, 100);
    ASSERT_EQ(layout.slots().size(), 2U);
    EXPECT_NEAR(layout.slots()[0].x, 0, 1e-6);
    EXPECT_NEAR(layout.slots()[1].x, layout.lines()[1].width - 11, 0.01);
}

TEST(TextLayout, EmptyLinesHaveHeight) {
    EXPECT_EQ(dump("a\n\nb", sans(), 100),
              "line 0.00 8.29 12.00 x 0.00 width 5.56\n"
              "line 12.00 20.29 24.00 x 0.00 width 0.00\n"
              "line 24.00 32.29 36.00 x 0.00 width 5.56\n");
    EXPECT_EQ(dump("", sans(), 100), "line 0.00 8.29 12.00 x 0.00 width 0.00\n");
}

TEST(TextLayout, BlanksAtTheEndDoNotPushAside) {
    EXPECT_EQ(dump("ab   \ncd", sans(TextAlign::right), 100), dump("ab\ncd", sans(TextAlign::right), 100));
}

TEST(TextLayout, StandInsAreSetOnTheLinesOfTheirOriginal) {
    for (const auto* family : {"Helvetica Neue", "Georgia", ""}) {
        const auto line = Fonts::lineOfAbsent(family);
        if (!line) continue;  // installed after all
        TextStyle style = sans();
        style.fontFamily = family;
        const TextLayout layout("a\n\nb", style, 10, 100);
        EXPECT_NEAR(layout.lines()[0].baseline, line->ascent * 10, 1e-9);
        EXPECT_NEAR(layout.height(), 3 * (line->ascent + line->descent) * 10, 1e-9);
    }
    TextStyle style = sans();
    style.fontFamily = "";
    TextStyle named = sans();
    named.fontFamily = defaultFontFamily;
    EXPECT_EQ(dump("Rain", style, 100), dump("Rain", named, 100));
}

TEST(TextLayout, ALayoutIsTheSameAtEverySize) {
    const char* text = "Gain **two** coins {icon:coin} for every *fragile* parcel discarded this way.";
    const TextLayout small(text, sans(), 5, 60), large(text, sans(), 500, 6000);
    ASSERT_EQ(small.lines().size(), large.lines().size());
    for (std::size_t i = 0; i < small.lines().size(); ++i) {
        EXPECT_NEAR(small.lines()[i].width * 100, large.lines()[i].width, 1e-6);
        EXPECT_NEAR(small.lines()[i].baseline * 100, large.lines()[i].baseline, 1e-6);
    }
}

TEST(TextLayout, ResizingIsAsLayingOutAnew) {
    const char* text = "Gain **two** coins {icon:coin} for every *fragile* parcel discarded this way.";
    TextLayout layout(text, sans(), 12, 60);
    for (const double size : {11.5, 5.0, 30.0, 12.0}) {
        layout.resize(size);
        EXPECT_EQ(layout.dump(), dump(text, sans(), 60, size));
    }
}

TEST(TextLayout, LettersAreSetEvenlyWhateverTheSize) {
    // Advances in font sizes don't depend on the size: a bar of Nimbus Sans takes 0.222.
    for (const double size : {3.0, 5.0, 7.25, 40.0}) {
        EXPECT_NEAR(TextLayout("llllllllll", sans(), size, 1000).lines()[0].width, size * 2.22, size * 1e-3);
    }
}

TEST(TextLayout, MarkupChoosesFaces) {
    TextStyle bold = sans(), italic = sans();
    bold.bold = true;
    italic.italic = true;
    TextStyle both = bold;
    both.italic = true;
    EXPECT_EQ(widthOf("**bold**", sans()), widthOf("bold", bold));
    EXPECT_NE(widthOf("bold", sans()), widthOf("bold", bold));
    // A style can't be turned off by markup: both words are bold, the second also italic.
    EXPECT_NEAR(widthOf("**bold** *it*", bold), widthOf("bold ", bold) + widthOf(" *it*", bold), 0.5);
    EXPECT_EQ(widthOf("*it*", bold), widthOf("it", both));
}

TEST(TextLayout, NoFaceIsMadeUp) {
    TextStyle math = sans();
    math.fontFamily = "DejaVu Math TeX Gyre";
    EXPECT_EQ(dump("**wide** *lean* ***both***", math, 500), dump("wide lean both", math, 500));
    TextStyle naskh = sans();
    naskh.fontFamily = "Noto Naskh Arabic";
    EXPECT_EQ(dump("***\u0633\u0644\u0627\u0645***", naskh, 500), dump("**\u0633\u0644\u0627\u0645**", naskh, 500));
    EXPECT_NE(dump("**\u0633\u0644\u0627\u0645**", naskh, 500), dump("\u0633\u0644\u0627\u0645", naskh, 500));
}

TEST(TextLayout, OtherScriptsAndEmojiAreSet) {
    for (const char* text :
         {"\U0001F600", "\u2665", "\u0E44\u0E17\u0E22", "\u03A9", "\u0416", "\uE001", "\U000E1234"}) {
        EXPECT_GT(widthOf(text, sans()), 1) << text;
    }
}

TEST(TextLayout, BytesThatAreNoTextAreSurvived) {
    EXPECT_EQ(dump(std::string_view("a\0b", 3), sans(), 100), dump("ab", sans(), 100));
    EXPECT_EQ(dump("a\xFF\xC0", sans(), 100), dump("a\uFFFD\uFFFD", sans(), 100));
}

TEST(TextLayout, WidthsOfEverySizeAreTaken) {
    for (const double width : {-5.0, 0.0, 1e-9, 1e9, 1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
        const TextLayout layout("one two {icon:coin}", sans(), 10, width);
        EXPECT_GE(layout.lines().size(), 1U) << width;
        EXPECT_EQ(layout.slots().size(), 1U) << width;
    }
}

TEST(TextLayout, CountsTheLinesThatEndWithinAHeight) {
    const TextLayout layout("a\nb\nc", sans(), 10, 100);
    EXPECT_EQ(layout.linesWithin(11.9), 0U);
    EXPECT_EQ(layout.linesWithin(12.01), 1U);
    EXPECT_EQ(layout.linesWithin(35), 2U);
    EXPECT_EQ(layout.linesWithin(1e9), 3U);
}

TEST(TextLayout, WhatCannotShowIsLeftOutWithoutATrace) {
    std::string cell;
    while (cell.size() < 100'000)
        cell += "Gain **two** coins {icon:coin} for *every* parcel discarded this way. \u05E9\u05DC ";
    const double enough = 45;
    TextLayout part(cell, sans(), 10, 140, enough);
    const TextLayout whole(cell, sans(), 10, 140);
    EXPECT_LT(part.lines().size(), whole.lines().size() / 10);
    EXPECT_GT(part.height(), enough);
    const std::size_t shown = whole.linesWithin(enough);
    ASSERT_EQ(part.linesWithin(enough), shown);
    for (std::size_t i = 0; i < shown; ++i) {
        EXPECT_EQ(part.lines()[i].width, whole.lines()[i].width);
        EXPECT_EQ(part.lines()[i].bottom, whole.lines()[i].bottom);
    }
    part.resize(0.1);  // at which far more of it would show
    const TextLayout tiny(cell, sans(), 0.1, 140);
    EXPECT_EQ(part.linesWithin(enough), tiny.linesWithin(enough));
    EXPECT_EQ(part.height() <= enough, tiny.height() <= enough);
}

TEST(TextLayout, TheLeastHeightIsNeverAboveTheHeight) {
    for (const char* text :
         {"", "a", "Gain **two** coins {icon:coin} for every *fragile* parcel discarded this way.",
          "a\n\nb\n\u05E9\u05DC\u05D5\u05DD", "WWWWWWWWWWWWWWWWWW", "{icon:a}{icon:b}{icon:c}",
          "\u0915\u094D\u0937\u093F\u0915\u094D\u0937\u093F", "i i i i i i i i i i i i i i i i i i i"}) {
        for (const double width : {2.0, 20.0, 60.0, 500.0}) {
            TextLayout layout(text, sans(), 20, width);
            for (double size = 200; size >= 1; size /= 1.3) {
                const double least = layout.leastHeight(size);
                layout.resize(size);
                EXPECT_LE(least, layout.height() + 1e-9) << text << " at " << size << " in " << width;
            }
        }
    }
}

/// The share of ink in every column of a bitmap.
std::vector<double> columns(const Image& image) {
    std::vector<double> sums(std::size_t(image.width()));
    for (int y = 0; y < image.height(); ++y) {
        for (std::size_t x = 0; x < sums.size(); ++x) sums[x] += (image.row(y)[x] >> 24) / 255.0;
    }
    return sums;
}

Image drawnText(const TextLayout& layout, int width, int height, double scale, double alpha = 1) {
    auto bitmap = BitmapContext::make(width, height);
    bitmap->context().scale(scale, scale);
    bitmap->context().setAlpha(alpha);
    layout.draw(bitmap->context(), {1, height / scale - 1}, layout.lines().size());
    return std::move(*bitmap).finish();
}

TEST(TextLayout, StemsStandAtEvenDistancesOnEveryBitmap) {
    // A stem that covers one whole pixel, since the middle of anything thinner can't be told from its pixels.
    constexpr int count = 12;
    constexpr double stem = 0.083;  // of Nimbus Sans
    for (const double dpi : {25.0, 40.0, 60.0, 72.0, 110.0, 300.0}) {
        const double scale = dpi / 72;
        const double size = 1 / (stem * scale), advance = 0.222 * size * scale;
        const int width = 40, height = 20;
        std::vector<double> middles, before = std::vector<double>(std::size_t(width), 0.0);
        std::string bars;
        for (int i = 0; i < count; ++i) {
            bars += 'l';
            const auto ink = columns(drawnText(TextLayout(bars, sans(), size, 1e4), width, height, scale));
            double added = 0, moment = 0;
            for (std::size_t x = 0; x < ink.size(); ++x) {
                added += ink[x] - before[x];
                moment += (ink[x] - before[x]) * (double(x) + 0.5);
            }
            middles.push_back(moment / added);
            before = ink;
        }
        for (std::size_t i = 1; i < middles.size(); ++i) {
            EXPECT_NEAR(middles[i] - middles[i - 1], advance, 0.05) << dpi << " dpi, bar " << i;
        }
    }
}

TEST(TextLayout, OnlyTheLinesAskedForAreDrawn) {
    const TextLayout layout("l\nl\nl", sans(), 10, 100);
    auto bitmap = BitmapContext::make(20, 40);
    layout.draw(bitmap->context(), {0, 40}, 2);
    const Image image = std::move(*bitmap).finish();
    const auto inked = [&](int from, int to) {
        for (int y = from; y < to; ++y) {
            for (const auto pixel : image.row(y)) {
                if (pixel != 0) return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(inked(0, 12));
    EXPECT_TRUE(inked(12, 24));
    EXPECT_FALSE(inked(24, 40));
}

TEST(TextLayout, ColourAndOpacityAreThoseOfTheMark) {
    TextStyle red = sans();
    red.color = RGBA::bytes(255, 0, 0, 128);
    red.bold = true;
    const Image image = drawnText(TextLayout("l", red, 100, 100), 60, 130, 1, 0.5);
    std::uint32_t strongest = 0;
    for (int y = 0; y < image.height(); ++y) strongest = std::max(strongest, std::ranges::max(image.row(y)));
    EXPECT_NEAR(strongest >> 24, 64, 1);
    EXPECT_EQ((strongest >> 16) & 0xFF, strongest >> 24);
    EXPECT_EQ(strongest & 0xFFFF, 0U);

    const Image nothing = drawnText(TextLayout("l", red, 100, 100), 60, 130, 1, 0);
    EXPECT_EQ(std::ranges::max(columns(nothing)), 0);
}

TEST(TextLayout, EightThreadsGetWhatOneGets) {
    const char* text =
        "Gain **two** coins {icon:coin} for *every* parcel \u05E9\u05DC\u05D5\u05DD discarded \u2665 this way.";
    const auto work = [&] {
        std::string result;
        for (int i = 0; i < 20; ++i) {
            const TextLayout layout(text, sans(), 6 + i % 5, 90);
            const auto ink = columns(drawnText(layout, 100, 100, 1));
            result += layout.dump();
            for (const double column : ink) result += std::to_string(column);
        }
        return result;
    };
    const std::string expected = work();
    std::vector<std::string> results(8);
    {
        std::vector<std::jthread> threads;
        for (auto& result : results) threads.emplace_back([&] { result = work(); });
    }
    for (const auto& result : results) EXPECT_TRUE(result == expected);
}

}  // namespace
}  // namespace quorvel
