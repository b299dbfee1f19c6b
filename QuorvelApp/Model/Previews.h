#pragma once

#include "Cards/Deck.h"
#include "Drawing/Image.h"
#include "Model/LiveRender.h"
#include "Printing/SheetLayout.h"
#include "Rendering/CardRenderer.h"
#include "Templates/SheetSettings.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// The large pictures of the window: the card on the canvas and the page of the print preview. Pure functions that give
/// the drawing of `LiveRender`; a drawing gives nothing when its bitmap can't be made.
namespace quorvel::Previews {

inline constexpr double canvasWidth = 1000;  ///< pixels across the card's width with both bleeds
inline constexpr double pageScale = 1.6;     ///< pixels per point
inline constexpr std::chrono::milliseconds canvasDelay{25};
inline constexpr std::chrono::milliseconds sheetDelay{60};

/// How many times higher than wide a picture may be. Cards narrower than that are drawn narrower, so that a slip in a
/// size costs no gigabytes.
inline constexpr double mostSlender = 20;

/// Dots per inch at which the trim width comes to `pixels`.
double thumbnailDPI(const CardTemplate& template_, double pixels);

/// Dots per inch at which the card with its bleed is `canvasWidth` pixels wide. A negative bleed is none.
double canvasDPI(const CardTemplate& template_);

/// One side of a card with its bleed and square corners; without a card the template as it is.
LiveRender::Draw canvas(CardRenderer renderer, std::optional<Card> card, Side side);

/// How cards lie on the pages of a deck; nothing when the card doesn't fit.
std::optional<SheetLayout> layout(const CardTemplate& template_, const SheetSettings& settings);

/// Pages of the print list: 0 for an empty list. Backs are not counted.
std::int64_t pageCount(const SheetLayout& layout, const std::vector<Card>& cards);

/// Page `page` from 0, at most the last one; the back only with duplex. An empty print list has one page without cards.
/// Nothing when the card doesn't fit the page. `deck` is not null.
std::optional<LiveRender::Draw> sheet(CardRenderer renderer, std::shared_ptr<const Deck> deck,
                                      const SheetSettings& settings, std::int64_t page, bool back);

}  // namespace quorvel::Previews
