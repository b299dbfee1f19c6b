#pragma once

#include "Cards/Deck.h"
#include "Drawing/BitmapContext.h"
#include "Drawing/Image.h"
#include "Spreadsheet/DataTable.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel {

/// Cards from rows of a spreadsheet, headers first; quantities aren't written out.
inline std::vector<Card> cardsFrom(std::initializer_list<std::initializer_list<std::string_view>> rows) {
    DataTable table(TextRows(rows), "cards.csv");
    const auto mapping = FieldMapping::guess(table.headers);
    return Deck(std::move(table), mapping).cards;
}

/// Cards titled "Card 1" and so on.
inline std::vector<Card> numberedCards(int count) {
    TextRows rows{{"Title"}};
    for (int i = 1; i <= count; ++i) {
        rows.appendCell("Card " + std::to_string(i));
        rows.endRow();
    }
    DataTable table(std::move(rows), "cards.csv");
    const auto mapping = FieldMapping::guess(table.headers);
    return Deck(std::move(table), mapping).cards;
}

/// A pixel as 0xAARRGGBB, premultiplied; y from the top.
inline std::uint32_t pixelAt(const Image& image, int x, int y) {
    return image.row(y)[static_cast<std::size_t>(x)];
}

/// An image of one colour.
inline Image plainImage(int width, int height, std::uint32_t pixel) {
    auto pixels = allocatePixels(width, height);
    std::fill_n(pixels.get(), std::size_t(width) * std::size_t(height), pixel);
    return {width, height, pixels, pixel >= 0xFF000000u ? Image::Alpha::opaque : Image::Alpha::varying};
}

}  // namespace quorvel
