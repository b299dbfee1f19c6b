#include "Printing/TTSSheet.h"

#include "Drawing/BitmapContext.h"
#include "Foundation/Parallel.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace quorvel::TTSSheet {

namespace {

constexpr double dpi = 300;
constexpr int hiddenCardPlace = columns * rows - 1;

struct Cell {
    int width = 0;
    int height = 0;
};

/// Gives back to the system what decoding has left in holes between the pictures that are kept, some hundred megabytes
/// for a deck of large pictures, before the caller needs as much again to encode the sheet.
void returnFreedMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

/// A card in a place of its own, on white, so that it can be drawn beside others.
std::optional<Image> drawCell(const Card& card, Side side, const CardRenderer& renderer, Cell cell) {
    auto bitmap = BitmapContext::make(cell.width, cell.height);
    if (!bitmap) return std::nullopt;
    DrawingContext& context = bitmap->context();
    context.fill(Rect{0, 0, double(cell.width), double(cell.height)}, RGBA::white);
    const Rect trim{0, 0, renderer.template_.size.widthPoints(), renderer.template_.size.heightPoints()};
    if (trim.width > 0 && trim.height > 0) {
        context.scale(cell.width / trim.width, cell.height / trim.height);
        renderer.draw(&card, side, context, trim, trim);
    }
    return std::move(*bitmap).finish();
}

/// Copies a cell into its place, counted in reading order from the top left.
void paste(const Image& cell, int place, std::uint32_t* sheet) {
    const std::size_t sheetWidth = std::size_t(cell.width()) * columns;
    const std::size_t left = std::size_t(place % columns) * std::size_t(cell.width());
    const std::size_t top = std::size_t(place / columns) * std::size_t(cell.height());
    for (int y = 0; y < cell.height(); ++y) {
        const auto row = cell.row(y);
        std::ranges::copy(row, sheet + (top + std::size_t(y)) * sheetWidth + left);
    }
}

std::optional<Image> drawSheet(std::span<const Card> cards, const CardRenderer& renderer, Side side, Cell cell,
                               unsigned threads) {
    const int width = cell.width * columns;
    const int height = cell.height * rows;
    const auto pixels = allocatePixels(width, height);
    if (!pixels) return std::nullopt;
    std::fill_n(pixels.get(), std::size_t(width) * std::size_t(height), 0xFFFF'FFFFu);

    // The last of the drawings is the hidden card, which shows a back on every sheet.
    const std::size_t drawings = cards.size() + 1;
    std::array<std::optional<Image>, cardsPerSheet + 1> drawn;
    forEachInOrder(
        drawings,
        [&](std::size_t i) {
            const bool hiddenCard = i == cards.size();
            drawn[i] = drawCell(hiddenCard ? cards[0] : cards[i], hiddenCard ? Side::back : side, renderer, cell);
        },
        [&](std::size_t i) {
            if (drawn[i]) paste(*drawn[i], i == cards.size() ? hiddenCardPlace : int(i), pixels.get());
            drawn[i].reset();
            return true;
        },
        threads, threads + 2);
    return Image(width, height, pixels, Image::Alpha::opaque);
}

}  // namespace

std::int64_t sheetCount(std::int64_t cards) {
    return cards < 1 ? 0 : cards / cardsPerSheet + (cards % cardsPerSheet == 0 ? 0 : 1);
}

CardImage::PixelSize cellSize(const CardTemplate& template_) {
    const auto base = CardImage::pixelSize(template_, CardImage::Bleed::none, dpi);
    if (base.width < 1 || base.height < 1) return {1, 1};
    const double scale = std::min(
        {double(maxSheetSide / columns) / double(base.width), double(maxSheetSide / rows) / double(base.height), 1.0});
    const auto reduced = [&](std::int64_t side) {
        return std::max<std::int64_t>(1, std::int64_t(double(side) * scale));
    };
    return {reduced(base.width), reduced(base.height)};
}

void sheets(const std::vector<Card>& cards, const CardRenderer& renderer, Side side,
            const std::function<bool(std::size_t index, Image sheet)>& take, unsigned threads) {
    const auto size = cellSize(renderer.template_);
    const Cell cell{int(size.width), int(size.height)};
    const auto count = std::size_t(sheetCount(std::int64_t(cards.size())));
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t first = index * cardsPerSheet;
        const auto slice = std::span(cards).subspan(first, std::min<std::size_t>(cardsPerSheet, cards.size() - first));
        auto sheet = drawSheet(slice, renderer, side, cell, threads);
        returnFreedMemory();
        if (sheet && !take(index, std::move(*sheet))) return;
    }
}

std::optional<Image> backImage(const Card* card, const CardRenderer& renderer) {
    return CardImage::render(card, Side::back, renderer, CardImage::Bleed::none, CardImage::Corners::square, dpi);
}

}  // namespace quorvel::TTSSheet
