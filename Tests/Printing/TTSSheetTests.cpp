#include "Printing/TTSSheet.h"
#include "Rendering/TestCards.h"
#include "Support/Images/ImageDifference.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;
constexpr std::uint32_t blue = 0xFF0000FF;

CardTemplate designOf(CardSize size) {
    return {"Test", size, {}, {}};
}

/// A tiny card, so that sheets are small: red fronts and blue backs; a card of the type "marked" is green on both.
CardRenderer tinyRenderer() {
    CardRenderer renderer;
    renderer.template_ = designOf({CardSize::Preset::custom, 2.54, 2.54});
    renderer.template_.background = RGBA::bytes(255, 0, 0);
    renderer.template_.backBackground = RGBA::bytes(0, 0, 255);
    for (auto* side : {&renderer.template_.front, &renderer.template_.back}) {
        Layer& layer = side->emplace_back("Mark", LayerKind::shape, Frame{-5, -5, 20, 20}, "");
        layer.rules.emplace_back("type", StyleRule::Match::equals, "marked", RGBA::bytes(0, 255, 0), std::nullopt,
                                 std::nullopt, false);
    }
    return renderer;
}

/// Cards of which the given ones are marked.
std::vector<Card> cardsWithMarks(int count, std::initializer_list<int> marked) {
    TextRows rows{{"Title", "Type"}};
    for (int i = 0; i < count; ++i) {
        rows.appendCell("Card");
        rows.appendCell(std::ranges::find(marked, i) != marked.end() ? "marked" : "plain");
        rows.endRow();
    }
    DataTable table(std::move(rows), "cards.csv");
    const auto mapping = FieldMapping::guess(table.headers);
    return Deck(std::move(table), mapping).cards;
}

std::vector<Image> sheetsOf(const std::vector<Card>& cards, const CardRenderer& renderer, Side side,
                            unsigned threads = 2) {
    std::vector<Image> sheets;
    TTSSheet::sheets(
        cards, renderer, side,
        [&](std::size_t index, Image sheet) {
            EXPECT_EQ(index, sheets.size());
            sheets.push_back(std::move(sheet));
            return true;
        },
        threads);
    return sheets;
}

/// The colour in the middle of a place, in reading order from the top left.
std::uint32_t colorAt(const Image& sheet, int place) {
    const int width = sheet.width() / TTSSheet::columns;
    const int height = sheet.height() / TTSSheet::rows;
    return pixelAt(sheet, place % 10 * width + width / 2, place / 10 * height + height / 2);
}

TEST(TTSSheet, Counts) {
    EXPECT_EQ(TTSSheet::sheetCount(-5), 0);
    EXPECT_EQ(TTSSheet::sheetCount(0), 0);
    EXPECT_EQ(TTSSheet::sheetCount(1), 1);
    EXPECT_EQ(TTSSheet::sheetCount(69), 1);
    EXPECT_EQ(TTSSheet::sheetCount(70), 2);
    EXPECT_EQ(TTSSheet::sheetCount(138), 2);
    EXPECT_EQ(TTSSheet::sheetCount(std::numeric_limits<std::int64_t>::max()), 133672058505141679);
}

TEST(TTSSheet, CellsKeepASheetWithinItsLongestSide) {
    EXPECT_EQ(TTSSheet::cellSize(designOf(CardSize::poker)), (CardImage::PixelSize{600, 840}));
    EXPECT_EQ(TTSSheet::cellSize(designOf(CardSize::tarot)), (CardImage::PixelSize{496, 857}));
    EXPECT_EQ(TTSSheet::cellSize(designOf(CardSize::mini)), (CardImage::PixelSize{525, 750}));
    for (double width : {10.0, 33.3, 63.5, 200.0, 5000.0}) {
        for (double height : {10.0, 71.1, 88.9, 300.0}) {
            const auto cell = TTSSheet::cellSize(designOf({CardSize::Preset::custom, width, height}));
            EXPECT_GE(cell.width, 1);
            EXPECT_GE(cell.height, 1);
            EXPECT_LE(cell.width * TTSSheet::columns, TTSSheet::maxSheetSide);
            EXPECT_LE(cell.height * TTSSheet::rows, TTSSheet::maxSheetSide);
        }
    }
    CardTemplate bleeding = designOf(CardSize::poker);
    bleeding.bleedMM = 20;
    EXPECT_EQ(TTSSheet::cellSize(bleeding), (CardImage::PixelSize{600, 840})) << "the bleed plays no part";
}

TEST(TTSSheet, AFullSheetEndsWithTheBackOfItsFirstCard) {
    const auto sheets = sheetsOf(cardsWithMarks(69, {3, 68}), tinyRenderer(), Side::front);
    ASSERT_EQ(sheets.size(), 1u);
    EXPECT_EQ(sheets[0].width(), 300);
    EXPECT_EQ(sheets[0].height(), 210);
    for (int place = 0; place < 69; ++place)
        EXPECT_EQ(colorAt(sheets[0], place), place == 3 || place == 68 ? green : red) << place;
    EXPECT_EQ(colorAt(sheets[0], 69), blue);
    EXPECT_EQ(sheets[0].alpha(), Image::Alpha::opaque);
}

TEST(TTSSheet, SeventyCardsNeedASecondSheetWithItsOwnHiddenCard) {
    for (Side side : {Side::front, Side::back}) {
        const auto sheets = sheetsOf(cardsWithMarks(70, {69}), tinyRenderer(), side);
        ASSERT_EQ(sheets.size(), 2u);
        EXPECT_EQ(colorAt(sheets[0], 0), side == Side::front ? red : blue);
        EXPECT_EQ(colorAt(sheets[0], 69), blue);
        EXPECT_EQ(colorAt(sheets[1], 0), green);
        for (int place = 1; place < 69; ++place) EXPECT_EQ(colorAt(sheets[1], place), white) << place;
        EXPECT_EQ(colorAt(sheets[1], 69), green) << "the back of the second sheet's first card";
    }
}

TEST(TTSSheet, CellsAreTrimmedCards) {
    CardRenderer renderer = tinyRenderer();
    renderer.template_.cornerRadiusMM = 1;
    const auto cards = cardsWithMarks(1, {});
    const Image sheet = sheetsOf(cards, renderer, Side::front)[0];
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 31; ++x) EXPECT_EQ(pixelAt(sheet, x, y), x < 30 ? red : white) << x << ' ' << y;
    EXPECT_EQ(pixelAt(sheet, 0, 30), white);
    EXPECT_EQ(pixelAt(sheet, 270, 180), blue);
    EXPECT_EQ(pixelAt(sheet, 299, 209), blue);
    EXPECT_EQ(pixelAt(sheet, 269, 209), white);
    EXPECT_EQ(pixelAt(sheet, 299, 179), white);
}

TEST(TTSSheet, SheetsStandOnWhiteAndBacksDoNot) {
    CardRenderer renderer = tinyRenderer();
    renderer.template_.background = RGBA(1, 0, 0, 0.5);
    renderer.template_.backBackground = RGBA(0, 0, 1, 0.5);
    const auto cards = cardsWithMarks(1, {});
    EXPECT_EQ(colorAt(sheetsOf(cards, renderer, Side::front)[0], 0) & 0xFFFF0000u, red);
    EXPECT_EQ(colorAt(sheetsOf(cards, renderer, Side::front)[0], 0) >> 24, 255u);
    const auto back = TTSSheet::backImage(&cards[0], renderer);
    ASSERT_TRUE(back);
    EXPECT_EQ(pixelAt(*back, 15, 15) >> 24, 128u);
}

TEST(TTSSheet, BacksHaveThreeHundredDotsAnInch) {
    CardRenderer renderer;
    renderer.template_ = designOf(CardSize::poker);
    const auto back = TTSSheet::backImage(nullptr, renderer);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->width(), 750);
    EXPECT_EQ(back->height(), 1050);
}

TEST(TTSSheet, NoCardsGiveNoSheets) {
    EXPECT_TRUE(sheetsOf({}, tinyRenderer(), Side::front).empty());
    EXPECT_TRUE(TTSSheet::backImage(nullptr, tinyRenderer()));
}

TEST(TTSSheet, StopsWhenToldTo) {
    int taken = 0;
    TTSSheet::sheets(cardsWithMarks(300, {}), tinyRenderer(), Side::front, [&](std::size_t, const Image&) {
        ++taken;
        return false;
    });
    EXPECT_EQ(taken, 1);
}

TEST(TTSSheet, TheNumberOfThreadsDoesNotShow) {
    CardRenderer renderer = tinyRenderer();
    renderer.template_.front.emplace_back("Title", LayerKind::text, Frame{0, 0, 2.5, 2.5}, "{{title}} {icon:coin}");
    const auto cards = numberedCards(40);
    const Image one = sheetsOf(cards, renderer, Side::front, 1)[0];
    const Image four = sheetsOf(cards, renderer, Side::front, 4)[0];
    EXPECT_EQ(differenceBetween(one, four).maximum, 0);
}

TEST(TTSSheet, CardsOfNoSizeGiveWhiteSheets) {
    for (double side : {0.0, -5.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        CardRenderer renderer = tinyRenderer();
        renderer.template_.size = {CardSize::Preset::custom, side, side};
        const auto sheets = sheetsOf(cardsWithMarks(1, {}), renderer, Side::front);
        ASSERT_EQ(sheets.size(), 1u) << side;
        EXPECT_EQ(sheets[0].width(), 10) << side;
        EXPECT_FALSE(TTSSheet::backImage(nullptr, renderer)) << side;
    }
}

}  // namespace
}  // namespace quorvel
