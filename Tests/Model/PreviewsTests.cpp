#include "Drawing/BitmapContext.h"
#include "Model/Previews.h"
#include "Printing/SheetPDF.h"
#include "Rendering/CardImage.h"
#include "Rendering/TestCards.h"
#include "Samples/SampleTemplates.h"
#include "Support/Desktop/ManualScheduler.h"
#include "Support/Images/ImageDifference.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
constexpr std::uint32_t white = 0xFFFFFFFF;

/// Cards that show their titles on both sides.
CardRenderer titledRenderer(CardSize size = CardSize::poker) {
    CardRenderer renderer;
    renderer.template_ = CardTemplate("Test", size, {}, {});
    renderer.template_.background = RGBA::bytes(255, 240, 200);
    renderer.template_.backBackground = RGBA::bytes(200, 220, 255);
    renderer.template_.front.emplace_back("Title", LayerKind::text, Frame{5, 5, 50, 10}, "{{title}} front");
    renderer.template_.back.emplace_back("Title", LayerKind::text, Frame{5, 25, 50, 10}, "{{title}} back");
    renderer.missingPictures = CardRenderer::MissingPictures::mark;
    return renderer;
}

std::shared_ptr<const Deck> deckOf(int cards) {
    auto deck = std::make_shared<Deck>();
    deck->cards = numberedCards(cards);
    return deck;
}

/// Cards with 0, 1, 2 and so on copies.
std::shared_ptr<const Deck> unevenDeck(int cards) {
    auto deck = std::make_shared<Deck>();
    deck->cards = numberedCards(cards);
    for (Card& card : deck->cards) card.quantity = card.id % 5;
    return deck;
}

Image sheetOf(const CardRenderer& renderer, const std::shared_ptr<const Deck>& deck, const SheetSettings& settings,
              std::int64_t page, bool back = false) {
    return (*Previews::sheet(renderer, deck, settings, page, back))().value();
}

/// The page of a print list that is written out.
Image wholeListPage(const CardRenderer& renderer, const Deck& deck, const SheetSettings& settings, std::size_t page,
                    Side side) {
    const auto layout = *Previews::layout(renderer.template_, settings);
    auto bitmap = *BitmapContext::make(int(layout.pageSize.width * 1.6), int(layout.pageSize.height * 1.6));
    bitmap.context().scale(1.6, 1.6);
    SheetPDF::drawPage(page, side, Deck::printedCards(deck.cards), layout, settings, renderer, bitmap.context());
    return std::move(bitmap).finish();
}

bool isSame(const Image& a, const Image& b) {
    return differenceBetween(a, b).maximum == 0;
}

TEST(Previews, ResolutionsFollowTheWidth) {
    CardTemplate design("Test", CardSize::poker, {}, {});
    EXPECT_DOUBLE_EQ(Previews::thumbnailDPI(design, 400), 160);
    EXPECT_DOUBLE_EQ(Previews::canvasDPI(design), 1000 / (69.5 / 25.4));
    design.bleedMM = -3;
    EXPECT_DOUBLE_EQ(Previews::canvasDPI(design), 400) << "there is no negative bleed to show";
    design.size = CardSize::custom(100, 400);
    EXPECT_DOUBLE_EQ(Previews::thumbnailDPI(design, 400), 101.6);
}

TEST(Previews, EveryCardIsAThousandPixelsWideOnTheCanvas) {
    for (const CardSize size : {CardSize::poker, CardSize::bridge, CardSize::tarot, CardSize::mini, CardSize::square,
                                CardSize::custom(500, 50)}) {
        for (const double bleed : {-2.0, 0.0, 3.0, 10.0}) {
            CardRenderer renderer = titledRenderer(size);
            renderer.template_.bleedMM = bleed;
            const auto image = Previews::canvas(renderer, std::nullopt, Side::front)();
            ASSERT_TRUE(image);
            EXPECT_EQ(image->width(), 1000);
        }
    }
}

TEST(Previews, TheCanvasShowsTheBleedAndSquareCorners) {
    const auto image = Previews::canvas(titledRenderer(), std::nullopt, Side::front)();
    EXPECT_EQ(image->alpha(), Image::Alpha::opaque);
    EXPECT_EQ(pixelAt(*image, 0, 0), 0xFFFFF0C8u);
    EXPECT_EQ(image->height(), 1365);
}

TEST(Previews, TheCanvasShowsTheCardAndTheSideItIsGiven) {
    const CardRenderer renderer = titledRenderer();
    const auto cards = numberedCards(2);
    const auto expected = [&](const Card* card, Side side) {
        return *CardImage::render(card, side, renderer, CardImage::Bleed::included, CardImage::Corners::square,
                                  Previews::canvasDPI(renderer.template_));
    };
    for (const Side side : {Side::front, Side::back}) {
        EXPECT_TRUE(isSame(*Previews::canvas(renderer, cards[1], side)(), expected(&cards[1], side)));
        EXPECT_TRUE(isSame(*Previews::canvas(renderer, std::nullopt, side)(), expected(nullptr, side)));
        EXPECT_FALSE(isSame(expected(&cards[1], side), expected(nullptr, side)));
    }
    EXPECT_FALSE(isSame(expected(nullptr, Side::front), expected(nullptr, Side::back)));
}

TEST(Previews, WithoutACardTheNamesStandInBrackets) {
    CardRenderer renderer = titledRenderer();
    const auto without = Previews::canvas(renderer, std::nullopt, Side::front)();
    renderer.template_.front[0].content = "[title] front";
    EXPECT_TRUE(isSame(*without, *Previews::canvas(renderer, std::nullopt, Side::front)()));
}

TEST(Previews, TheSampleDesignWithoutADeckOrCards) {
    const CardRenderer renderer{SampleTemplates::make(SampleTemplates::Kind::classic, "Your Game")};
    for (const Side side : {Side::front, Side::back}) {
        const auto image = Previews::canvas(renderer, std::nullopt, side)();
        ASSERT_TRUE(image);
        EXPECT_GT(differenceBetween(*image, plainImage(image->width(), image->height(), white)).mean, 1);
    }
}

TEST(Previews, ACanvasOfNonsenseIsNoPictureOrASmallOne) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const double side : {0.0, -5.0, infinity, -infinity, none, 1e300, -1e300}) {
        for (const bool wide : {false, true}) {
            CardRenderer renderer = titledRenderer();
            (wide ? renderer.template_.size.widthMM : renderer.template_.size.heightMM) = side;
            renderer.template_.bleedMM = 0;
            EXPECT_FALSE(Previews::canvas(renderer, std::nullopt, Side::front)()) << side;
        }
        CardRenderer renderer = titledRenderer();
        renderer.template_.bleedMM = side;
        const auto image = Previews::canvas(renderer, std::nullopt, Side::front)();
        EXPECT_EQ(image ? image->width() : 1000, 1000) << side;
    }
}

TEST(Previews, ACardOfAHairsWidthCostsNoGigabytes) {
    CardRenderer renderer = titledRenderer({CardSize::Preset::custom, 0.5, 2000});
    renderer.template_.bleedMM = 0;
    const auto image = Previews::canvas(renderer, std::nullopt, Side::front)();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->height(), 20000);
    EXPECT_EQ(image->width(), 5);
    renderer.template_.size.widthMM = 100;
    EXPECT_EQ(Previews::canvas(renderer, std::nullopt, Side::front)()->width(), 1000) << "twenty times is fine";
}

TEST(Previews, ThePageIsItsSizeInPointsRoundedDown) {
    struct Case {
        Paper paper;
        Orientation orientation;
        int width, height;
    };
    for (const Case& each :
         {Case{Paper::letter, Orientation::portrait, 979, 1267}, Case{Paper::letter, Orientation::landscape, 1267, 979},
          Case{Paper::a4, Orientation::portrait, 952, 1347}, Case{Paper::a4, Orientation::landscape, 1347, 952}}) {
        SheetSettings settings;
        settings.paper = each.paper;
        settings.orientation = each.orientation;
        const Image page = sheetOf(titledRenderer(), deckOf(1), settings, 0);
        EXPECT_EQ(page.width(), each.width);
        EXPECT_EQ(page.height(), each.height);
        EXPECT_EQ(page.alpha(), Image::Alpha::opaque) << "paper is white to its edges";
        EXPECT_EQ(pixelAt(page, 0, page.height() - 1), white);
    }
}

// What is drawn of a slice of the print list is what is drawn of all of it.
TEST(Previews, EachPageIsThatOfTheWholePrintList) {
    const CardRenderer renderer = titledRenderer(CardSize::mini);
    const auto deck = unevenDeck(33);
    for (const Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
        for (const DuplexFlip flip : {DuplexFlip::longEdge, DuplexFlip::shortEdge}) {
            SheetSettings settings;
            settings.orientation = orientation;
            settings.flip = flip;
            settings.duplex = true;
            settings.includeBleed = true;
            settings.backOffsetXMM = 1.5;
            settings.backOffsetYMM = -2;
            const auto layout = *Previews::layout(renderer.template_, settings);
            const std::int64_t pages = Previews::pageCount(layout, deck->cards);
            ASSERT_GE(pages, 4);
            ASSERT_NE(Deck::totalCopies(deck->cards) % layout.columns, 0) << "the last row is to be partly empty";
            for (const std::int64_t page : {std::int64_t(0), pages / 2, pages - 1}) {
                for (const bool back : {false, true}) {
                    const Image whole =
                        wholeListPage(renderer, *deck, settings, std::size_t(page), back ? Side::back : Side::front);
                    EXPECT_TRUE(isSame(sheetOf(renderer, deck, settings, page, back), whole)) << page << back;
                }
            }
        }
    }
}

TEST(Previews, APageBeyondTheLastIsTheLast) {
    const CardRenderer renderer = titledRenderer();
    const auto deck = deckOf(20);  // nine on a page
    const Image last = sheetOf(renderer, deck, {}, 2);
    EXPECT_FALSE(isSame(last, sheetOf(renderer, deck, {}, 1)));
    for (const std::int64_t page : {std::int64_t(3), std::int64_t(1000), INT64_MAX})
        EXPECT_TRUE(isSame(sheetOf(renderer, deck, {}, page), last)) << page;
    EXPECT_TRUE(isSame(sheetOf(renderer, deck, {}, -1), sheetOf(renderer, deck, {}, 0)));
}

TEST(Previews, TheBackIsShownOnlyWithDuplex) {
    const CardRenderer renderer = titledRenderer();
    const auto deck = deckOf(3);
    SheetSettings settings;
    const Image front = sheetOf(renderer, deck, settings, 0);
    EXPECT_TRUE(isSame(sheetOf(renderer, deck, settings, 0, true), front));
    settings.duplex = true;
    EXPECT_TRUE(isSame(sheetOf(renderer, deck, settings, 0), front));
    EXPECT_FALSE(isSame(sheetOf(renderer, deck, settings, 0, true), front));
}

TEST(Previews, ACardBiggerThanThePaperGivesNothing) {
    const CardRenderer renderer = titledRenderer(CardSize::custom(200, 300));
    EXPECT_FALSE(Previews::layout(renderer.template_, {}));
    EXPECT_FALSE(Previews::sheet(renderer, deckOf(3), {}, 0, false));
}

TEST(Previews, AnEmptyDeckGivesAnEmptySheet) {
    const CardRenderer renderer = titledRenderer();
    SheetSettings settings;
    const Image page = sheetOf(renderer, deckOf(0), settings, 0);
    EXPECT_TRUE(isSame(page, wholeListPage(renderer, {}, settings, 0, Side::front)));
    EXPECT_FALSE(isSame(page, plainImage(page.width(), page.height(), white))) << "its cut marks stand";
    EXPECT_TRUE(isSame(sheetOf(renderer, deckOf(0), settings, 7), page));
    settings.cutMarks = false;
    EXPECT_TRUE(isSame(sheetOf(renderer, deckOf(0), settings, 0), plainImage(page.width(), page.height(), white)));

    auto none = std::make_shared<Deck>(*deckOf(4));
    for (Card& card : none->cards) card.quantity = 0;
    EXPECT_TRUE(isSame(sheetOf(renderer, none, {}, 0), page)) << "no copies are no cards";
}

TEST(Previews, CountsThePagesOfThePrintList) {
    const auto layout = *Previews::layout(titledRenderer().template_, {});
    ASSERT_EQ(layout.slots.size(), 9u);
    EXPECT_EQ(Previews::pageCount(layout, {}), 0);
    EXPECT_EQ(Previews::pageCount(layout, deckOf(1)->cards), 1);
    EXPECT_EQ(Previews::pageCount(layout, deckOf(9)->cards), 1);
    EXPECT_EQ(Previews::pageCount(layout, deckOf(10)->cards), 2);
    EXPECT_EQ(Previews::pageCount(layout, unevenDeck(10)->cards), 3) << "twenty copies";
}

TEST(Previews, MillionsOfCopiesAreNeverWrittenOut) {
    auto deck = std::make_shared<Deck>();
    deck->cards = numberedCards(5000);
    for (Card& card : deck->cards) card.quantity = 999;
    const CardRenderer renderer = titledRenderer();
    EXPECT_EQ(Previews::pageCount(*Previews::layout(renderer.template_, {}), deck->cards), 555'000);
    auto last = std::make_shared<Deck>();
    last->cards.assign(9, deck->cards.back());
    EXPECT_TRUE(isSame(sheetOf(renderer, deck, {}, INT64_MAX), sheetOf(renderer, last, {}, 0)));
}

TEST(Previews, ADrawingKeepsWhatItIsMadeOf) {
    LiveRender::Draw draw;
    const Image expected = sheetOf(titledRenderer(), deckOf(3), {}, 0);
    {
        auto deck = deckOf(3);
        draw = *Previews::sheet(titledRenderer(), deck, {}, 0, false);
    }
    EXPECT_TRUE(isSame(*draw(), expected));
    EXPECT_TRUE(isSame(*LiveRender::Draw(draw)(), expected));
}

TEST(Previews, TheCanvasComesAfterTwentyFiveMillisecondsAndThePageAfterSixty) {
    ManualScheduler scheduler;
    std::optional<Image> canvasImage;
    std::optional<Image> sheetImage;
    LiveRender canvas(scheduler, Previews::canvasDelay, [&](auto image) { canvasImage = std::move(image); });
    LiveRender sheet(scheduler, Previews::sheetDelay, [&](auto image) { sheetImage = std::move(image); });
    canvas.restart(Previews::canvas(titledRenderer(), std::nullopt, Side::front));
    sheet.restart(*Previews::sheet(titledRenderer(), deckOf(3), {}, 0, false));
    scheduler.settle(24ms);
    EXPECT_FALSE(canvasImage);
    scheduler.settle(1ms);
    EXPECT_TRUE(canvasImage);
    scheduler.settle(34ms);
    EXPECT_FALSE(sheetImage) << "59 ms";
    scheduler.settle(1ms);
    EXPECT_TRUE(sheetImage);
}

}  // namespace
}  // namespace quorvel
