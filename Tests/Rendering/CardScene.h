#pragma once

#include "Foundation/Units.h"
#include "Rendering/CardRenderer.h"
#include "Rendering/TestCards.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace quorvel {

inline constexpr int pixelsPerMM = 10;
inline constexpr int roundMM = 8;  // shown around the card

inline constexpr std::uint32_t white = 0xFFFFFFFF;
inline constexpr std::uint32_t nothing = 0;

inline const RGBA red = RGBA::bytes(255, 0, 0);
inline const RGBA blue = RGBA::bytes(0, 0, 255);
inline constexpr std::uint32_t redPixel = 0xFFFF0000;
inline constexpr std::uint32_t bluePixel = 0xFF0000FF;
inline constexpr std::uint32_t greenPixel = 0xFF00FF00;

/// A card of 40 × 30 mm with 8 mm of bare ground around it, ten pixels a millimetre.
class Scene {
public:
    CardRenderer renderer;
    std::optional<Rect> clip;

    Scene() {
        renderer.template_.size = CardSize(CardSize::Preset::custom, 40, 30);
        renderer.template_.background = RGBA::white;
    }

    Layer& add(LayerKind kind, Frame frame, std::string content = "") {
        return renderer.template_.front.emplace_back("Layer", kind, frame, std::move(content));
    }

    Rect trim() const {
        const CardSize& size = renderer.template_.size;
        return {Units::points(roundMM), Units::points(roundMM), size.widthPoints(), size.heightPoints()};
    }

    Image draw(const Card* card = nullptr, Side side = Side::front) const {
        auto bitmap = BitmapContext::make((40 + 2 * roundMM) * pixelsPerMM, (30 + 2 * roundMM) * pixelsPerMM);
        bitmap->context().scale(pixelsPerMM * 25.4 / 72, pixelsPerMM * 25.4 / 72);
        renderer.draw(card, side, bitmap->context(), clip, trim());
        return std::move(*bitmap).finish();
    }
};

/// The pixel at a place of the card: millimetres from the trim's top-left corner.
inline std::uint32_t at(const Image& image, double x, double y) {
    return pixelAt(image, int(std::floor((x + roundMM) * pixelsPerMM)), int(std::floor((y + roundMM) * pixelsPerMM)));
}

}  // namespace quorvel
