#pragma once

#include "Cards/Card.h"
#include "Drawing/DrawingContext.h"
#include "Drawing/Path.h"
#include "Foundation/Geometry.h"
#include "Pictures/Assets.h"
#include "Rendering/CardRenderer.h"
#include "Templates/Layer.h"

#include <optional>
#include <string>
#include <string_view>

/// How each kind of layer is drawn. Rectangles are in points with y up.
namespace quorvel::LayerDrawing {

/// A frame, which counts down from the trim's top-left corner, as a rectangle; negative sizes become 0.
Rect layerRect(const Frame& frame, const Rect& trim);

/// The layer's outline in `rect`: an ellipse, or a rectangle rounded by at most half its shorter side.
Path outlinePath(const Layer& layer, const Rect& rect);

/// Where a picture of this size lies: scaled to cover (fill) or to stay inside (fit), and centred.
Rect fitRect(ImageFit fit, double imageWidth, double imageHeight, const Rect& rect);

/// A picture's place with each edge that `frame` covers moved out to the next whole pixel. There the outline's clip
/// alone decides what an edge pixel shows; a picture that ended within the same pixel would thin it a second time, and
/// what lies below would shine through as a seam. Both rectangles are in pixels with y down.
Rect spilledOver(const Rect& picture, const Rect& frame);

/// What the mark of a missing picture says, or nothing where no picture is missing: a card that names none needs none.
std::optional<std::string> missingLabel(const Layer& layer, std::string_view pictureName, const Card* card);

/// A grey hatched field with a label.
void drawMissingMark(std::string_view label, Assets& assets, DrawingContext& context, const Rect& rect);

/// Draws a layer whose rules have been applied, hidden or not. The context's alpha is the layer's already.
void draw(const Layer& layer, const Card* card, const Rect& rect, Assets& assets,
          CardRenderer::MissingPictures missingPictures, DrawingContext& context);

}  // namespace quorvel::LayerDrawing
