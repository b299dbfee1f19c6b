#pragma once

#include "Cards/Card.h"
#include "Drawing/Image.h"
#include "Foundation/Parallel.h"
#include "Rendering/CardImage.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

/// Deck sheets for Tabletop Simulator: a grid of 10 × 7 whose last place shows a hidden card.
namespace quorvel::TTSSheet {

inline constexpr int columns = 10;
inline constexpr int rows = 7;
inline constexpr int cardsPerSheet = 69;
inline constexpr int maxSheetSide = 6000;  ///< pixels

std::int64_t sheetCount(std::int64_t cards);

/// Pixels of one place: the trimmed card at 300 dpi, reduced so that the sheet stays within its longest side.
CardImage::PixelSize cellSize(const CardTemplate& template_);

/// Draws the sheets of a side in order and hands each on, by its index from 0, as soon as it is drawn; keeps none. A
/// sheet whose bitmap can't be made is passed over. `take` answers false to stop; it is called on the calling thread.
/// The cards of a sheet are drawn on `threads` threads, whose number doesn't show in the pixels.
void sheets(const std::vector<Card>& cards, const CardRenderer& renderer, Side side,
            const std::function<bool(std::size_t index, Image sheet)>& take, unsigned threads = processorCount());

/// The back shared by all cards, at 300 dpi.
std::optional<Image> backImage(const Card* card, const CardRenderer& renderer);

}  // namespace quorvel::TTSSheet
