#pragma once

#include "Controls/SoftShadow.h"
#include "Drawing/Image.h"
#include "TemplateTab/CanvasGeometry.h"
#include "TemplateTab/LayerOverlay.h"

#include <QImage>
#include <QPalette>
#include <QRegion>
#include <optional>
#include <vector>

class QPainter;

namespace quorvel {

/// Draws the canvas from its values. Keeps the picture of the card resampled to the very pixels that it covers, so that
/// what a drag draws anew costs a copy.
class CanvasPainter {
public:
    struct Scene {
        QSize surface;  ///< in logical pixels, which are the points of the geometry
        qreal pixelRatio = 1;
        QPalette palette;
        CanvasGeometry geometry;
        std::optional<Image> picture;  ///< stretched to the card with its bleed
        bool guides = true;
        std::vector<LayerOverlay> overlays;
    };

    /// What of the scene lies within `region`, to which the painter is clipped.
    void paint(QPainter& painter, const Scene& scene, const QRegion& region);

    /// All that is drawn of the overlay.
    static QRegion reach(const LayerOverlay& overlay);

private:
    void paintCard(QPainter& painter, const Scene& scene, const QRegion& region);
    void keepPicture(const Scene& scene, const QRectF& card);

    /// The picture as it is on screen, of which only what the surface shows is made.
    struct Kept {
        std::uint64_t from = 0;  ///< the image's id
        QRectF card;
        QSize surface;
        QImage picture;
        QPointF at;
    } kept_;
    SoftShadow shadow_{{.radius = 6, .offset = {0, 2}, .opacity = 0.2}};
};

}  // namespace quorvel
