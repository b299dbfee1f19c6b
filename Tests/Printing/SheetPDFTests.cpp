#include "Drawing/BitmapContext.h"
#include "Foundation/Units.h"
#include "Printing/Duplex.h"
#include "Printing/PageMeasures.h"
#include "Printing/SheetPDFTest.h"
#include "Rendering/CardImage.h"
#include "Support/Images/GoldenImage.h"
#include "Support/Images/ImageDifference.h"
#include "Support/Images/RenderPDFPage.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using testing::HasSubstr;

constexpr double tenthOfAMillimetre = 0.1 / 25.4 * 72;

TEST(SheetPDF, FailsWithoutCardsBeforeAnythingElse) {
    const auto tooBig = plainRenderer(CardSize(CardSize::Preset::custom, 500, 500));
    EXPECT_EQ(SheetPDF::make({}, tooBig, {}, "").error(), SheetPDF::Failure::noCards);
    EXPECT_EQ(SheetPDF::make(numberedCards(1), tooBig, {}, "").error(), SheetPDF::Failure::cardTooBig);
}

TEST(SheetPDF, FailuresHaveWords) {
    EXPECT_EQ(SheetPDF::description(SheetPDF::Failure::cardTooBig),
              "The card is bigger than the printable area of the paper. Choose a smaller card or smaller margins.");
    EXPECT_EQ(SheetPDF::description(SheetPDF::Failure::noCards), "There are no cards to print: every quantity is 0.");
    EXPECT_EQ(SheetPDF::description(SheetPDF::Failure::couldNotWrite), "The PDF couldn’t be made.");
}

TEST(SheetPDF, FrontsAndBacksAlternateAndTheLastSheetIsPartlyEmpty) {
    SheetSettings settings;
    settings.duplex = true;
    std::vector<std::pair<std::size_t, std::size_t>> steps;
    const auto pdf = SheetPDF::make(numberedCards(10), titledRenderer(), settings, "Deck",
                                    [&](std::size_t done, std::size_t total) { steps.emplace_back(done, total); });
    ASSERT_TRUE(pdf);
    EXPECT_EQ(SheetPDF::pageCount(*pdf), 4);
    EXPECT_EQ(steps, (std::vector<std::pair<std::size_t, std::size_t>>{{1, 2}, {2, 2}}));
    for (int page = 0; page < 4; ++page) {
        const std::string text = pdfPageText(*pdf, page);
        EXPECT_EQ(occurrences(text, page % 2 ? "back" : "front"), page < 2 ? 9u : 1u);
        EXPECT_EQ(occurrences(text, page % 2 ? "front" : "back"), 0u);
    }
    EXPECT_THAT(pdfPageText(*pdf, 0), HasSubstr("Card 9 front"));
    EXPECT_THAT(pdfPageText(*pdf, 3), HasSubstr("Card 10 back"));
}

TEST(SheetPDF, WithoutDuplexThereAreFrontsAlone) {
    const auto pdf = pdfOf(numberedCards(10), titledRenderer(), {});
    EXPECT_EQ(SheetPDF::pageCount(pdf), 2);
}

TEST(SheetPDF, AFrontWithoutLayersStillComesFirst) {
    SheetSettings settings;
    settings.duplex = true;
    const auto pdf = pdfOf(numberedCards(1), plainRenderer(), settings);
    const Image front = renderPDFPage(pdf, 0, 72);
    const Image back = renderPDFPage(pdf, 1, 72);
    EXPECT_EQ(pixelAt(front, 36 + 90, 18 + 126), 0xFFFF0000u);
    EXPECT_EQ(pixelAt(back, 612 - 36 - 90, 18 + 126), 0xFF0000FFu) << "behind its front, not in the first column";
    EXPECT_EQ(pixelAt(back, 36 + 90, 18 + 126), 0xFFFFFFFFu);
}

TEST(SheetPDF, MediaBoxesAreExact) {
    SheetSettings settings;
    settings.duplex = true;
    for (Paper paper : {Paper::letter, Paper::a4}) {
        for (Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
            settings.paper = paper;
            settings.orientation = orientation;
            Size expected = sizePoints(paper);
            if (orientation == Orientation::landscape) std::swap(expected.width, expected.height);
            const auto sizes = pdfPageSizes(pdfOf(numberedCards(1), plainRenderer(), settings));
            ASSERT_EQ(sizes.size(), 2u);
            for (const Size& size : sizes) {
                EXPECT_NEAR(size.width, expected.width, 1e-5);
                EXPECT_NEAR(size.height, expected.height, 1e-5);
            }
        }
    }
}

TEST(SheetPDF, CardsLieWhereTheLayoutSays) {
    SheetSettings settings;
    settings.cutMarks = false;
    settings.spacing = Spacing::separated;
    settings.gutterMM = 4;
    for (Paper paper : {Paper::letter, Paper::a4}) {
        for (bool bleed : {false, true}) {
            settings.paper = paper;
            settings.includeBleed = bleed;
            const auto layout = *SheetLayout::make(settings, 63.5, 88.9, 3);
            const double dpi = 200;
            const Image page =
                renderPDFPage(pdfOf(numberedCards(int(layout.slots.size())), plainRenderer(), settings), 0, dpi);
            std::vector<double> expectedX, expectedY;
            for (int column = 0; column < layout.columns; ++column) {
                const Rect art = layout.slots[std::size_t(column)].art;
                expectedX.insert(expectedX.end(), {art.minX(), art.maxX()});
            }
            for (int row = 0; row < layout.rows; ++row) {
                const Rect art = layout.slots[std::size_t(row * layout.columns)].art;
                expectedY.insert(expectedY.end(), {art.minY(), art.maxY()});
            }
            const Rect first = layout.slots[0].trim;
            EXPECT_THAT(darkEdges(page, Along::row, first.midY(), dpi),
                        testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre), expectedX));
            EXPECT_THAT(darkEdges(page, Along::column, first.midX(), dpi),
                        testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre), expectedY));
        }
    }
}

TEST(SheetPDF, ButtedCardsBleedOutwardOnlyAndStopAtTheTrimWithoutBleed) {
    SheetSettings settings;
    settings.cutMarks = false;
    auto renderer = plainRenderer();
    renderer.template_.background = RGBA::black;
    for (bool bleed : {false, true}) {
        settings.includeBleed = bleed;
        const auto layout = *SheetLayout::make(settings, 63.5, 88.9, 3);
        const double dpi = 200;
        const Image page = renderPDFPage(pdfOf(numberedCards(int(layout.slots.size())), renderer, settings), 0, dpi);
        EXPECT_THAT(darkEdges(page, Along::row, layout.slots[0].trim.midY(), dpi),
                    testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre),
                                       std::vector{layout.grid.minX(), layout.grid.maxX()}));
    }
}

TEST(SheetPDF, BleedNeverReachesOverANeighbour) {
    SheetSettings settings;
    settings.cutMarks = false;
    settings.includeBleed = true;
    auto renderer = plainRenderer();
    // All black, but for the trim and a millimetre around it: what is black of a card lies in its bleed alone.
    renderer.template_.background = RGBA::black;
    renderer.template_.front.emplace_back("Ground", LayerKind::shape, Frame{-1, -1, 65.5, 90.9}, "").fill = RGBA::white;
    const auto layout = *SheetLayout::make(settings, 63.5, 88.9, 3);
    const double dpi = 200;
    const Image page = renderPDFPage(pdfOf(numberedCards(int(layout.slots.size())), renderer, settings), 0, dpi);
    const double seen = Units::points(2);
    const Rect& grid = layout.grid;
    EXPECT_THAT(darkEdges(page, Along::row, layout.slots[0].trim.midY(), dpi),
                testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre),
                                   std::vector{grid.minX(), grid.minX() + seen, grid.maxX() - seen, grid.maxX()}));
    EXPECT_THAT(darkEdges(page, Along::column, layout.slots[0].trim.midX(), dpi),
                testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre),
                                   std::vector{grid.minY(), grid.minY() + seen, grid.maxY() - seen, grid.maxY()}));
}

// Seen through the paper, the ink of the back page lies on the ink of the front page.
TEST(SheetPDF, BacksLieBehindTheirFronts) {
    for (Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
        for (DuplexFlip flip : {DuplexFlip::longEdge, DuplexFlip::shortEdge}) {
            SheetSettings settings;
            settings.orientation = orientation;
            settings.flip = flip;
            settings.duplex = true;
            settings.cutMarks = false;
            settings.includeBleed = true;
            auto renderer = plainRenderer();
            renderer.template_.background = renderer.template_.backBackground = RGBA::black;
            const auto pdf = pdfOf(numberedCards(3), renderer, settings);
            const double dpi = 72;
            const Image front = renderPDFPage(pdf, 0, dpi);
            const Image back = renderPDFPage(pdf, 1, dpi);
            const bool sideways = Duplex::mirrorsHorizontally(orientation == Orientation::landscape, flip);
            int different = 0;
            for (int y = 0; y < front.height(); ++y)
                for (int x = 0; x < front.width(); ++x) {
                    const double through = sideways ? darknessAt(back, back.width() - 1 - x, y)
                                                    : darknessAt(back, x, back.height() - 1 - y);
                    different += std::abs(darknessAt(front, x, y) - through) > 0.1;
                }
            EXPECT_EQ(different, 0);
        }
    }
}

TEST(SheetPDF, BacksStandUprightAndMoveByTheirOffset) {
    SheetSettings settings;
    settings.duplex = true;
    settings.cutMarks = false;
    settings.backOffsetXMM = 1.5;
    settings.backOffsetYMM = -2;
    auto renderer = plainRenderer();
    renderer.template_.backBackground = RGBA::black;
    const double dpi = 200;
    const Image back = renderPDFPage(pdfOf(numberedCards(1), renderer, settings), 1, dpi);
    const double right = 612 - 36 + Units::points(1.5);
    const double top = 18 + Units::points(2);
    EXPECT_THAT(darkEdges(back, Along::row, 144, dpi),
                testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre), std::vector{right - 180, right}));
    EXPECT_THAT(darkEdges(back, Along::column, right - 90, dpi),
                testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre), std::vector{top, top + 252}));
}

TEST(SheetPDF, CutMarksStandOnTheCutLinesOfFrontsAlone) {
    SheetSettings settings;
    settings.paper = Paper::a4;
    settings.duplex = true;
    auto renderer = plainRenderer();
    renderer.template_.background = renderer.template_.backBackground = RGBA::white;
    const auto pdf = pdfOf(numberedCards(9), renderer, settings);
    const auto layout = *SheetLayout::make(settings, 63.5, 88.9, 3);
    const double dpi = 300;
    const Image front = renderPDFPage(pdf, 0, dpi);
    const auto centres = [&](Along along, double place) {
        const auto edges = darkEdges(front, along, place, dpi);
        std::vector<double> middles;
        for (std::size_t i = 0; i + 1 < edges.size(); i += 2) middles.push_back((edges[i] + edges[i + 1]) / 2);
        return middles;
    };
    const double away = Units::points(4);
    for (double y : {layout.grid.minY() - away, layout.grid.maxY() + away})
        EXPECT_THAT(centres(Along::row, y), testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre), layout.cutX));
    for (double x : {layout.grid.minX() - away, layout.grid.maxX() + away})
        EXPECT_THAT(centres(Along::column, x),
                    testing::Pointwise(testing::DoubleNear(tenthOfAMillimetre), layout.cutY));
    EXPECT_THAT(darkEdges(front, Along::row, layout.grid.minY() - Units::points(1), dpi), testing::IsEmpty())
        << "the marks keep away from the art";

    const Image back = renderPDFPage(pdf, 1, 72);
    EXPECT_EQ(differenceBetween(back, plainImage(back.width(), back.height(), 0xFFFFFFFF)).maximum, 0);
    settings.cutMarks = false;
    const Image bare = renderPDFPage(pdfOf(numberedCards(9), renderer, settings), 0, 72);
    EXPECT_EQ(differenceBetween(bare, plainImage(bare.width(), bare.height(), 0xFFFFFFFF)).maximum, 0);
}

TEST(SheetPDF, ThePreviewDrawsThePageOfTheDocument) {
    SheetSettings settings;
    settings.duplex = true;
    const auto renderer = titledRenderer();
    const auto cards = numberedCards(10);
    const auto layout = *SheetLayout::make(settings, 63.5, 88.9, 3);
    const auto pdf = pdfOf(cards, renderer, settings);
    const double scale = 1.6;
    for (int page = 0; page < 4; ++page) {
        auto bitmap = BitmapContext::make(int(std::lround(612 * scale)), int(std::lround(792 * scale)));
        bitmap->context().scale(bitmap->context().deviceRect({0, 0, 612 * scale, 1}).width / 612,
                                std::lround(792 * scale) / 792.0);
        SheetPDF::drawPage(std::size_t(page / 2), page % 2 ? Side::back : Side::front, cards, layout, settings,
                           renderer, bitmap->context());
        const Image preview = std::move(*bitmap).finish();
        EXPECT_LT(differenceBetween(preview, renderPDFPage(pdf, page, 72 * scale)).mean, 0.6) << page;
    }
}

TEST(SheetPDF, APageBehindTheLastHasItsCutMarks) {
    const auto layout = *SheetLayout::make({}, 63.5, 88.9, 3);
    const auto drawn = [&](std::size_t page, const std::vector<Card>& cards) {
        auto bitmap = BitmapContext::make(612, 792);
        SheetPDF::drawPage(page, Side::front, cards, layout, {}, plainRenderer(), bitmap->context());
        return std::move(*bitmap).finish();
    };
    const Image empty = drawn(0, {});
    EXPECT_EQ(differenceBetween(drawn(7, numberedCards(10)), empty).maximum, 0);
    EXPECT_EQ(differenceBetween(drawn(std::numeric_limits<std::size_t>::max(), numberedCards(10)), empty).maximum, 0);
    EXPECT_GT(differenceBetween(empty, plainImage(612, 792, 0xFFFFFFFF)).maximum, 50);
}

// One design through both kinds of context: opacity, outlines, pictures, icons and text must agree.
TEST(SheetPDF, ACardOnPaperLooksAsItsImageDoes) {
    auto renderer = plainRenderer();
    renderer.template_.background = RGBA::bytes(0xF3, 0xE6, 0xC8);
    auto pixels = allocatePixels(60, 40);
    for (int i = 0; i < 60 * 40; ++i)
        pixels[std::size_t(i)] = 0xFF000000u | std::uint32_t(i % 60 * 4) << 16 | std::uint32_t(i / 60 * 6) << 8 | 0x40;
    renderer.assets->register_(Image(60, 40, pixels, Image::Alpha::opaque), "art");
    auto& layers = renderer.template_.front;
    Layer& shape = layers.emplace_back("Shape", LayerKind::shape, Frame{5, 5, 40, 20}, "");
    shape.fill = RGBA::bytes(0, 0, 255);
    shape.stroke = RGBA::bytes(255, 0, 0);
    shape.strokeWidth = 8;
    shape.opacity = 0.5;
    shape.cornerRadiusMM = 4;
    Layer& picture = layers.emplace_back("Art", LayerKind::image, Frame{10, 20, 40, 30}, "art");
    picture.shape = ShapeKind::ellipse;
    picture.opacity = 0.7;
    picture.stroke = RGBA::black;
    Layer& icons = layers.emplace_back("Icons", LayerKind::icons, Frame{5, 52, 50, 10}, "3 coin, leaf, sword");
    icons.opacity = 0.4;
    Layer& text =
        layers.emplace_back("Text", LayerKind::text, Frame{5, 62, 53, 22}, "Gain **2** {icon:coin} {{title}}");
    text.fill = RGBA(1, 1, 1, 0.6);
    text.style.size = 16;
    text.opacity = 0.8;

    const auto cards = numberedCards(1);
    SheetSettings settings;
    settings.cutMarks = false;
    const double dpi = 144;
    const Image page = renderPDFPage(pdfOf(cards, renderer, settings), 0, dpi);
    const auto card =
        CardImage::render(&cards[0], Side::front, renderer, CardImage::Bleed::none, CardImage::Corners::square, dpi);
    ASSERT_TRUE(card);
    auto cut = allocatePixels(card->width(), card->height());
    for (int y = 0; y < card->height(); ++y)
        for (int x = 0; x < card->width(); ++x) cut[std::size_t(y * card->width() + x)] = pixelAt(page, x + 72, y + 36);
    const Image onPaper(card->width(), card->height(), cut, Image::Alpha::opaque);
    EXPECT_LT(differenceBetween(onPaper, *card).mean, 1.5);
    EXPECT_TRUE(matchesGolden(onPaper, "Printing/card-on-paper", {.mean = 0.5, .maximum = 128}));
}

TEST(SheetPDF, NonsenseNeverHarms) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (double value : {1e9, -1e9, 1e300, -1e300, infinity, std::numeric_limits<double>::quiet_NaN()}) {
        SheetSettings settings;
        settings.duplex = true;
        settings.backOffsetXMM = value;
        settings.backOffsetYMM = value;
        auto renderer = titledRenderer();
        renderer.template_.bleedMM = value;
        renderer.assets->register_(plainImage(8, 8, 0xFF208040), "art");
        for (LayerKind kind : {LayerKind::shape, LayerKind::image, LayerKind::icons, LayerKind::text}) {
            for (int field = 0; field < 4; ++field) {
                Layer& layer = renderer.template_.front.emplace_back("Layer", kind, Frame{5, 5, 9, 9}, "art");
                layer.stroke = RGBA::black;
                double* fields[] = {&layer.frame.x, &layer.frame.y, &layer.frame.width, &layer.frame.height};
                *fields[field] = value;
            }
        }
        const auto pdf = SheetPDF::make(numberedCards(2), renderer, settings, "Deck");
        ASSERT_TRUE(pdf) << value;
        EXPECT_EQ(SheetPDF::pageCount(*pdf), 2) << value;
        EXPECT_THAT(pdfPageText(*pdf, 0), HasSubstr("Card 2 front")) << value;
    }
}

}  // namespace
}  // namespace quorvel
