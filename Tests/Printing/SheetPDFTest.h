#pragma once

#include "Printing/SheetPDF.h"
#include "Rendering/TestCards.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel {

/// Fronts in red and backs in blue, without layers.
inline CardRenderer plainRenderer(CardSize size = CardSize::poker) {
    CardRenderer renderer;
    renderer.template_ = CardTemplate("Test", size, {}, {});
    renderer.template_.background = RGBA::bytes(255, 0, 0);
    renderer.template_.backBackground = RGBA::bytes(0, 0, 255);
    return renderer;
}

/// White fronts and blue backs with the card’s title and side.
inline CardRenderer titledRenderer(CardSize size = CardSize::poker) {
    CardRenderer renderer = plainRenderer(size);
    renderer.template_.background = RGBA::white;
    renderer.template_.front.emplace_back("Title", LayerKind::text, Frame{5, 5, 50, 10}, "{{title}} front");
    renderer.template_.back.emplace_back("Title", LayerKind::text, Frame{5, 5, 50, 10}, "{{title}} back");
    return renderer;
}

/// The document, empty if there is none.
inline std::string pdfOf(const std::vector<Card>& cards, const CardRenderer& renderer, const SheetSettings& settings,
                         const std::string& title = "Deck") {
    auto pdf = SheetPDF::make(cards, renderer, settings, title);
    return pdf ? std::move(*pdf) : std::string();
}

/// How often one text stands in another.
inline std::size_t occurrences(std::string_view text, std::string_view needle) {
    std::size_t count = 0;
    for (auto at = text.find(needle); at != text.npos; at = text.find(needle, at + 1)) ++count;
    return count;
}

}  // namespace quorvel
