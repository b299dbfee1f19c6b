#include "Rendering/LayerDrawing.h"

#include "Cards/Markup.h"
#include "Cards/Placeholders.h"
#include "Foundation/Text.h"
#include "Foundation/Units.h"
#include "Rendering/IconRow.h"
#include "Rendering/TextDrawing.h"
#include "Rendering/TextLayout.h"

#include <algorithm>
#include <cmath>

namespace quorvel::LayerDrawing {

namespace {

/// A hatch with more lines than this belongs to a frame of tens of metres, of which a card shows an even grey.
constexpr double mostHatchLines = 10'000;

constexpr RGBA missingGround{0.88, 0.88, 0.88};
constexpr RGBA missingHatch{0.75, 0.75, 0.75};

TextStyle missingLabelStyle() {
    return {std::string(defaultFontFamily), 7.0, RGBA::bytes(89, 89, 89), TextAlign::center, VerticalAlign::middle};
}

void fillOutline(const Layer& layer, const Path& path, DrawingContext& context) {
    if (layer.fill) context.fill(path, *layer.fill);
}

void strokeOutline(const Layer& layer, const Path& path, DrawingContext& context) {
    if (layer.stroke && layer.strokeWidth > 0) context.stroke(path, *layer.stroke, layer.strokeWidth);
}

void paintOutline(const Layer& layer, const Rect& rect, DrawingContext& context) {
    if (!layer.fill && !layer.stroke) return;
    const Path path = outlinePath(layer, rect);
    fillOutline(layer, path, context);
    strokeOutline(layer, path, context);
}

/// The text keeps up to a millimetre from the sides of a coloured box; a mere outline gives no such inset.
void drawTextLayer(const Layer& layer, const Card* card, const Rect& rect, Assets& assets, DrawingContext& context) {
    paintOutline(layer, rect, context);
    const std::string text = Placeholders::resolve(layer.content, card);
    if (text.empty()) return;
    const double inset = layer.fill ? Units::points(std::min(layer.frame.width / 10, 1.0)) : 0;
    drawText(text, layer.style, assets, context, rect.inset(inset, 0));
}

/// A bitmap takes the picture resampled for its pixels; a resampled picture is shared by all cards that show it there.
bool drawPictureOnBitmap(std::string_view name, const Layer& layer, const Rect& rect, const Path& outline,
                         Assets& assets, DrawingContext& context) {
    const auto size = assets.size(name);
    if (!size) return false;
    const SavedState saved(context);
    context.clip(outline);
    const Rect place = context.deviceRect(fitRect(layer.imageFit, size->width, size->height, rect));
    const auto placed = assets.placed(name, spilledOver(place, context.deviceRect(rect)), context.visibleDeviceRect());
    if (placed) context.drawPlaced(*placed);
    // Nothing placed: either none of it can be seen, or the file has turned out to be broken behind its header.
    return placed || assets.size(name);
}

/// A document stores the file itself where it can, else the decoded picture.
bool drawPictureInDocument(std::string_view name, const Layer& layer, const Rect& rect, const Path& outline,
                           Assets& assets, DrawingContext& context) {
    const auto encoded = assets.encoded(name);
    const auto image = encoded ? std::nullopt : assets.image(name);
    if (!encoded && !image) return false;
    const SavedState saved(context);
    context.clip(outline);
    if (encoded)
        context.drawEncoded(*encoded, fitRect(layer.imageFit, encoded->width, encoded->height, rect));
    else
        context.drawImage(*image, fitRect(layer.imageFit, image->width(), image->height(), rect));
    return true;
}

bool drawPicture(std::string_view name, const Layer& layer, const Rect& rect, const Path& outline, Assets& assets,
                 DrawingContext& context) {
    return context.target() == DrawingContext::Target::bitmap
               ? drawPictureOnBitmap(name, layer, rect, outline, assets, context)
               : drawPictureInDocument(name, layer, rect, outline, assets, context);
}

void drawImageLayer(const Layer& layer, const Card* card, const Rect& rect, Assets& assets,
                    CardRenderer::MissingPictures missingPictures, DrawingContext& context) {
    const std::string content = Placeholders::resolve(layer.content, card);
    const std::string_view name = Text::trimWhitespaceAndNewlines(content);
    const Path outline = outlinePath(layer, rect);
    fillOutline(layer, outline, context);
    // Without a card "[art]" stands for the field; no file is looked for under that name.
    const bool standsForField = !card && name.starts_with('[');
    const bool found = !standsForField && drawPicture(name, layer, rect, outline, assets, context);
    if (!found && missingPictures == CardRenderer::MissingPictures::mark)
        if (const auto label = missingLabel(layer, name, card)) drawMissingMark(*label, assets, context, rect);
    strokeOutline(layer, outline, context);
}

void drawIconsLayer(const Layer& layer, const Card* card, const Rect& rect, Assets& assets, DrawingContext& context) {
    paintOutline(layer, rect, context);
    const auto names = Markup::iconNames(Placeholders::resolve(layer.content, card));
    const double size = Units::points(std::max(1.0, layer.iconSizeMM));
    const double spacing = Units::points(std::max(0.0, layer.iconSpacingMM));
    const auto rects = iconRects(names.size(), layer.style, size, spacing, rect);
    for (std::size_t i = 0; i < std::min(names.size(), rects.size()); ++i)
        drawIcon(names[i], layer.style, assets, context, rects[i]);
}

}  // namespace

Rect layerRect(const Frame& frame, const Rect& trim) {
    // The top edge follows from the height as written, so a frame of negative height hangs from its lower edge.
    return {trim.minX() + Units::points(frame.x), trim.maxY() - Units::points(frame.y) - Units::points(frame.height),
            std::max(0.0, Units::points(frame.width)), std::max(0.0, Units::points(frame.height))};
}

Path outlinePath(const Layer& layer, const Rect& rect) {
    Path path;
    if (layer.shape == ShapeKind::ellipse) return path.ellipse(rect);
    const double radius = std::min(std::min(rect.width, rect.height) / 2, Units::points(layer.cornerRadiusMM));
    return radius > 0 ? path.roundedRectangle(rect, radius) : path.rectangle(rect);
}

Rect fitRect(ImageFit fit, double imageWidth, double imageHeight, const Rect& rect) {
    if (!(imageWidth > 0) || !(imageHeight > 0)) return rect;
    const double sx = rect.width / imageWidth;
    const double sy = rect.height / imageHeight;
    const double scale = fit == ImageFit::fill ? std::max(sx, sy) : std::min(sx, sy);
    const double width = imageWidth * scale;
    const double height = imageHeight * scale;
    return {rect.midX() - width * 0.5, rect.midY() - height * 0.5, width, height};
}

Rect spilledOver(const Rect& picture, const Rect& frame) {
    constexpr double hair = 1e-3;  // of a pixel: what rounding leaves between edges that are the same
    const auto covers = [](double outer, double inner) { return outer <= inner + hair; };
    const double left = covers(picture.minX(), frame.minX()) ? std::floor(picture.minX() + hair) : picture.minX();
    const double top = covers(picture.minY(), frame.minY()) ? std::floor(picture.minY() + hair) : picture.minY();
    const double right = covers(frame.maxX(), picture.maxX()) ? std::ceil(picture.maxX() - hair) : picture.maxX();
    const double bottom = covers(frame.maxY(), picture.maxY()) ? std::ceil(picture.maxY() - hair) : picture.maxY();
    return {left, top, right - left, bottom - top};
}

std::optional<std::string> missingLabel(const Layer& layer, std::string_view pictureName, const Card* card) {
    if (!pictureName.empty()) {
        const std::string path = Text::replaceAll(pictureName, "\\", "/");
        return std::string(Text::lastPathComponent(path));
    }
    if (!card) return layer.name;
    return std::nullopt;
}

void drawMissingMark(std::string_view label, Assets& assets, DrawingContext& context, const Rect& rect) {
    constexpr double hatchDistance = 6.0;
    constexpr double labelInset = 3.0;
    {
        const SavedState saved(context);
        context.fill(rect, missingGround);
        context.clip(rect);
        Path hatch;
        if ((rect.width + rect.height) / hatchDistance <= mostHatchLines)
            for (double x = rect.minX() - rect.height; x < rect.maxX(); x += hatchDistance)
                hatch.move({x, rect.minY()}).line({x + rect.height, rect.maxY()});
        context.stroke(hatch, missingHatch, 0.5);
    }
    drawText(label, missingLabelStyle(), assets, context, rect.inset(labelInset, labelInset));
}

void draw(const Layer& layer, const Card* card, const Rect& rect, Assets& assets,
          CardRenderer::MissingPictures missingPictures, DrawingContext& context) {
    switch (layer.kind) {
        case LayerKind::shape:
            return paintOutline(layer, rect, context);
        case LayerKind::text:
            return drawTextLayer(layer, card, rect, assets, context);
        case LayerKind::image:
            return drawImageLayer(layer, card, rect, assets, missingPictures, context);
        case LayerKind::icons:
            return drawIconsLayer(layer, card, rect, assets, context);
    }
}

}  // namespace quorvel::LayerDrawing
