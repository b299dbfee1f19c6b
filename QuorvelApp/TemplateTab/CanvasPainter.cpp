#include "TemplateTab/CanvasPainter.h"

#include "Controls/QtImage.h"
#include "Controls/Style.h"
#include "Drawing/ImageScaling.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quorvel {

namespace {

// On the card, which is light or dark as its designer likes: the same in every appearance.
const QColor cutLineColor(230, 30, 30, 204);
const QColor safeZoneColor(30, 90, 230, 204);
const QColor outlineColor(128, 128, 128, 153);
constexpr double guideWidth = 1;
constexpr double outlineWidth = 0.75;
constexpr double selectedWidth = 2;
constexpr double handleLineWidth = 1.5;
constexpr double handleRadius = 3.5;
constexpr double waitingOpacity = 0.1;
constexpr double farAway = 1e6;  // as good as anywhere beside the surface
constexpr int lineReach = 3;     // how far the lines around a rectangle are drawn beside it, at most

QRectF toQRectF(const Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

/// No further out than makes no difference to what is seen: the toolkit counts in integers.
QRectF bounded(const Rect& rect, QSize surface) {
    constexpr double margin = 50;
    const auto cut = [](double value, int length) { return std::clamp(value, -margin, length + margin); };
    const double left = cut(rect.minX(), surface.width()), top = cut(rect.minY(), surface.height());
    return {left, top, cut(rect.maxX(), surface.width()) - left, cut(rect.maxY(), surface.height()) - top};
}

/// The edges moved, by less than a pixel of the screen, to where lines of this width are sharpest.
QRectF crisp(const QRectF& rect, double width, qreal pixelRatio) {
    const bool odd = std::lround(width * pixelRatio) % 2 == 1;
    const auto place = [&](double value) {
        const double pixel = value * pixelRatio;
        return (odd ? std::floor(pixel) + 0.5 : std::round(pixel)) / pixelRatio;
    };
    const double left = place(rect.left()), top = place(rect.top());
    return {left, top, place(rect.right()) - left, place(rect.bottom()) - top};
}

/// A pen with sharp ends and corners. Lengths of its dashes in points.
QPen pen(const QColor& color, double width, double on = 0, double off = 0) {
    QPen pen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (on > 0) pen.setDashPattern({on / width, off / width});
    return pen;
}

void paintRect(QPainter& painter, const Rect& rect, const QPen& pen, const CanvasPainter::Scene& scene) {
    painter.setPen(pen);
    painter.drawRect(crisp(bounded(rect, scene.surface), pen.widthF(), scene.pixelRatio));
}

void paintHandle(QPainter& painter, const Rect& handle, const QPalette& palette) {
    painter.setPen(QPen(Qt::white, handleLineWidth));
    painter.setBrush(Style::accent(palette));
    const double half = handleLineWidth / 2;
    painter.drawRoundedRect(toQRectF(handle.inset(half, half)), handleRadius, handleRadius);
    painter.setBrush(Qt::NoBrush);
}

}  // namespace

void CanvasPainter::paint(QPainter& painter, const Scene& scene, const QRegion& region) {
    painter.fillRect(region.boundingRect(), Style::underPage(scene.palette));
    paintCard(painter, scene, region);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (scene.guides) {
        paintRect(painter, scene.geometry.cutLine(), pen(cutLineColor, guideWidth), scene);
        const Rect& safe = scene.geometry.safeZone();
        if (safe.width > 0 && safe.height > 0) paintRect(painter, safe, pen(safeZoneColor, guideWidth, 4, 3), scene);
    }
    const QPen selected = pen(Style::accent(scene.palette), selectedWidth);
    const QPen other = pen(outlineColor, outlineWidth, 3, 3);
    for (const LayerOverlay& overlay : scene.overlays)
        if (region.intersects(reach(overlay)))
            paintRect(painter, overlay.outline, overlay.isSelected() ? selected : other, scene);
    for (const LayerOverlay& overlay : scene.overlays)
        if (overlay.handle) paintHandle(painter, *overlay.handle, scene.palette);
}

void CanvasPainter::paintCard(QPainter& painter, const Scene& scene, const QRegion& region) {
    // On whole pixels, so that its edges are sharp.
    const QRectF card = crisp(bounded(scene.geometry.group(), scene.surface), 0, scene.pixelRatio);
    const bool besideCard = !card.contains(region.boundingRect());
    if (besideCard) {
        painter.save();
        painter.setClipRegion(region - card.toAlignedRect().adjusted(1, 1, -1, -1), Qt::IntersectClip);
        shadow_.paint(painter, card);
        painter.restore();
    }
    if (!scene.picture) return painter.fillRect(card, Style::panel(scene.palette, waitingOpacity));
    keepPicture(scene, card);
    painter.drawImage(kept_.at, kept_.picture);
}

void CanvasPainter::keepPicture(const Scene& scene, const QRectF& card) {
    const qreal ratio = scene.pixelRatio;
    const bool isKept = kept_.from == scene.picture->id() && kept_.card == card && kept_.surface == scene.surface &&
                        kept_.picture.devicePixelRatio() == ratio;
    if (isKept) return;
    kept_ = {.from = scene.picture->id(), .card = card, .surface = scene.surface, .picture = {}, .at = {}};
    // From the exact rectangle, which may reach far beyond the surface.
    const Rect& group = scene.geometry.group();
    const auto whole = [ratio](double value) { return std::round(value * ratio); };
    const Rect target{whole(group.minX()), whole(group.minY()), whole(group.maxX()) - whole(group.minX()),
                      whole(group.maxY()) - whole(group.minY())};
    const Rect visible{0, 0, std::ceil(scene.surface.width() * ratio), std::ceil(scene.surface.height() * ratio)};
    const auto placed = ImageScaling::place(*scene.picture, target, visible);
    if (!placed) return;
    kept_.picture = toQImage(placed->image);
    kept_.picture.setDevicePixelRatio(ratio);
    kept_.at = QPointF(placed->x, placed->y) / ratio;
}

QRegion CanvasPainter::reach(const LayerOverlay& overlay) {
    const auto inIntegers = [](const Rect& rect) {
        const auto cut = [](double value) { return std::clamp(value, -farAway, farAway); };
        const QPointF topLeft(cut(rect.minX()), cut(rect.minY())), bottomRight(cut(rect.maxX()), cut(rect.maxY()));
        return QRectF(topLeft, bottomRight).toAlignedRect();
    };
    const QRect outline = inIntegers(overlay.outline);
    QRegion reach = outline.adjusted(-lineReach, -lineReach, lineReach, lineReach);
    reach -= outline.adjusted(lineReach, lineReach, -lineReach, -lineReach);
    if (overlay.handle) reach += inIntegers(*overlay.handle).adjusted(-1, -1, 1, 1);
    return reach;
}

}  // namespace quorvel
