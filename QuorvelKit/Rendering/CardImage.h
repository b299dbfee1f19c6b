#pragma once

#include "Drawing/Image.h"
#include "Rendering/CardRenderer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// One side of one card as a bitmap.
namespace quorvel::CardImage {

enum class Bleed { none, included };
enum class Corners { square, rounded };

struct PixelSize {
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool operator==(const PixelSize&) const = default;
};

/// More pixels than this are not drawn: A2 at 600 dpi has 139 million.
inline constexpr std::int64_t mostPixels = 256LL << 20;

/// Each side rounded by itself; 0 for a side that isn't a finite number or is beyond any bitmap.
PixelSize pixelSize(const CardTemplate& template_, Bleed bleed, double dpi);

/// Nothing when a side has no pixels or the bitmap can't be made. Corners are rounded only without bleed. Transparent
/// where nothing is drawn.
std::optional<Image> render(const Card* card, Side side, const CardRenderer& renderer, Bleed bleed, Corners corners,
                            double dpi);

std::optional<std::string> pngData(const Image& image, double dpi);

/// "007 Rain Barrel": the running number with at least three digits and at most 60 characters of the title, without
/// markup and without what a file name can't hold. The extension is the caller's.
std::string fileName(std::int64_t number, std::string_view title);

}  // namespace quorvel::CardImage
