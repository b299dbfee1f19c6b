#include "Rendering/CardRenderer.h"

#include "Foundation/Units.h"
#include "Rendering/LayerDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvel {

namespace {

/// Points, a few kilometres. Text further away than that would break a document's arithmetic, and no one would see it.
constexpr double farthest = 1e7;

bool isWithinReach(const Rect& rect) {
    return std::ranges::all_of(std::array{rect.minX(), rect.minY(), rect.maxX(), rect.maxY()},
                               [](double edge) { return std::abs(edge) <= farthest; });
}

void drawLayer(const Layer& layer, const CardRenderer& renderer, const Card* card, const Rect& trim,
               DrawingContext& context) {
    const Rect rect = LayerDrawing::layerRect(layer.frame, trim);
    if (layer.hidden || !(layer.opacity > 0) || !isWithinReach(rect)) return;
    const SavedState saved(context);
    context.setAlpha(std::min(layer.opacity, 1.0));
    LayerDrawing::draw(layer, card, rect, *renderer.assets, renderer.missingPictures, context);
}

}  // namespace

void CardRenderer::draw(const Card* card, Side side, DrawingContext& context, const std::optional<Rect>& clip,
                        const Rect& trim) const {
    if (!isWithinReach(trim)) return;
    const SavedState saved(context);
    // Cards that touch on a sheet share their edge to the pixel.
    if (clip) context.clipToPixels(*clip);
    const double bleed = Units::points(template_.bleedMM);
    context.fill(trim.inset(-bleed, -bleed), template_.backgroundColor(side));
    for (const Layer& layer : template_.layers(side)) {
        if (layer.hidden) continue;  // no rule shows it again
        if (card && !layer.rules.empty())
            drawLayer(layer.resolved(card), *this, card, trim, context);
        else
            drawLayer(layer, *this, card, trim, context);
    }
}

}  // namespace quorvel
