#include "Model/Previews.h"

#include "Drawing/BitmapContext.h"
#include "Foundation/Units.h"
#include "Printing/SheetPDF.h"
#include "Rendering/CardImage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvel::Previews {

namespace {

double dpiAcross(double widthMM, double heightMM, double pixels) {
    return pixels / Units::inches(std::max(widthMM, heightMM / mostSlender));
}

std::int64_t cardsPerPage(const SheetLayout& layout) {
    return std::int64_t(layout.slots.size());
}

/// All that one page is drawn from.
struct Page {
    CardRenderer renderer;
    std::shared_ptr<const Deck> deck;
    SheetSettings settings;
    SheetLayout layout;
    std::int64_t number = 0;
    Side side = Side::front;
};

std::optional<Image> draw(const Page& page) {
    const Size size = page.layout.pageSize;
    auto bitmap =
        BitmapContext::make(int(std::floor(size.width * pageScale)), int(std::floor(size.height * pageScale)));
    if (!bitmap) return std::nullopt;
    bitmap->context().scale(pageScale, pageScale);
    // A deck may print millions of cards: only those of this page are written out, as a list of one page.
    const std::int64_t perPage = cardsPerPage(page.layout);
    const auto cards = Deck::printedCards(page.deck->cards, page.number * perPage, perPage);
    SheetPDF::drawPage(0, page.side, cards, page.layout, page.settings, page.renderer, bitmap->context());
    return std::move(*bitmap).finish();
}

}  // namespace

double thumbnailDPI(const CardTemplate& template_, double pixels) {
    return dpiAcross(template_.size.widthMM, template_.size.heightMM, pixels);
}

double canvasDPI(const CardTemplate& template_) {
    const double bleeds = 2 * std::max(0.0, template_.bleedMM);
    return dpiAcross(template_.size.widthMM + bleeds, template_.size.heightMM + bleeds, canvasWidth);
}

LiveRender::Draw canvas(CardRenderer renderer, std::optional<Card> card, Side side) {
    // Behind a pointer, so that copies of the drawing cost nothing.
    const auto shared = std::make_shared<const CardRenderer>(std::move(renderer));
    return [shared, card = std::move(card), side] {
        return CardImage::render(card ? &*card : nullptr, side, *shared, CardImage::Bleed::included,
                                 CardImage::Corners::square, canvasDPI(shared->template_));
    };
}

std::optional<SheetLayout> layout(const CardTemplate& template_, const SheetSettings& settings) {
    return SheetLayout::make(settings, template_.size.widthMM, template_.size.heightMM, template_.bleedMM);
}

std::int64_t pageCount(const SheetLayout& layout, const std::vector<Card>& cards) {
    const std::int64_t perPage = cardsPerPage(layout);
    return (Deck::totalCopies(cards) + perPage - 1) / perPage;
}

std::optional<LiveRender::Draw> sheet(CardRenderer renderer, std::shared_ptr<const Deck> deck,
                                      const SheetSettings& settings, std::int64_t page, bool back) {
    auto found = layout(renderer.template_, settings);
    if (!found) return std::nullopt;
    const std::int64_t last = std::max<std::int64_t>(pageCount(*found, deck->cards) - 1, 0);
    const auto shared = std::make_shared<const Page>(Page{
        .renderer = std::move(renderer),
        .deck = std::move(deck),
        .settings = settings,
        .layout = std::move(*found),
        .number = std::clamp<std::int64_t>(page, 0, last),
        .side = back && settings.duplex ? Side::back : Side::front,
    });
    return [shared] { return draw(*shared); };
}

}  // namespace quorvel::Previews
