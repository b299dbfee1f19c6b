#include "Drawing/DrawingContext.h"

#include "Drawing/PicturePattern.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace quorvel {

namespace {

/// Beyond every surface, and so far within cairo's 24 bits of whole numbers that the edges of strokes stay within, too.
constexpr double farthest = 1 << 20;

bool finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

bool finite(const Path& path) {
    for (const auto& element : path.elements()) {
        const bool good = std::visit(
            [](const auto& e) {
                if constexpr (requires { e.control1; }) {
                    return finite({e.control1.x, e.control1.y, e.control2.x, e.control2.y, e.to.x, e.to.y});
                } else if constexpr (requires { e.to; }) {
                    return finite({e.to.x, e.to.y});
                } else {
                    return true;
                }
            },
            element);
        if (!good) return false;
    }
    return true;
}

bool drawable(const Rect& rect) {
    return rect.width > 0 && rect.height > 0 && finite({rect.minX(), rect.minY(), rect.maxX(), rect.maxY()});
}

cairo_matrix_t matrixOf(cairo_t* cairo) {
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    return matrix;
}

/// By cairo's own measure, whose error would stay.
bool invertible(const cairo_matrix_t& matrix) {
    const double determinant = matrix.xx * matrix.yy - matrix.yx * matrix.xy;
    return std::isfinite(determinant) && determinant != 0 && finite({matrix.x0, matrix.y0});
}

/// Keeps a point on the side of the surface where it lies, but near enough to be computed with. Matrices here only
/// move and scale, so an edge that was upright stays upright.
Point nearEnough(const cairo_matrix_t& matrix, Point point) {
    const auto clamped = [](double value, double scale, double offset) {
        const double device = value * scale + offset;
        return std::abs(device) <= farthest ? value : (std::copysign(farthest, device) - offset) / scale;
    };
    return {clamped(point.x, matrix.xx, matrix.x0), clamped(point.y, matrix.yy, matrix.y0)};
}

/// Paints a source of this size in pixels, whose rows run from the top, into `rect`.
void paintInto(cairo_t* cairo, cairo_pattern_t* source, int width, int height, const Rect& rect, double alpha) {
    cairo_matrix_t matrix = matrixOf(cairo);
    cairo_matrix_translate(&matrix, rect.minX(), rect.maxY());
    cairo_matrix_scale(&matrix, rect.width / width, -rect.height / height);
    if (!invertible(matrix)) return;
    const CairoSave saved(cairo);
    cairo_set_matrix(cairo, &matrix);
    cairo_set_source(cairo, source);
    cairo_pattern_set_filter(source, CAIRO_FILTER_GOOD);
    cairo_paint_with_alpha(cairo, alpha);
}

}  // namespace

DrawingContext::DrawingContext(cairo_t* cairo, Target target, double height) : cairo_(cairo), target_(target) {
    cairo_translate(cairo_, 0, height);
    cairo_scale(cairo_, 1, -1);
}

void DrawingContext::save() {
    cairo_save(cairo_);
    savedAlphas_.push_back(alpha_);
}

void DrawingContext::restore() {
    if (savedAlphas_.empty()) return;
    cairo_restore(cairo_);
    alpha_ = savedAlphas_.back();
    savedAlphas_.pop_back();
}

void DrawingContext::translate(double x, double y) {
    cairo_matrix_t matrix = matrixOf(cairo_);
    cairo_matrix_translate(&matrix, x, y);
    transform(matrix);
}

void DrawingContext::scale(double x, double y) {
    cairo_matrix_t matrix = matrixOf(cairo_);
    cairo_matrix_scale(&matrix, x, y);
    transform(matrix);
}

void DrawingContext::transform(const cairo_matrix_t& matrix) {
    // What is drawn at no size, or nowhere, shows nothing; cairo would refuse every later mark, restored or not.
    if (invertible(matrix)) {
        cairo_set_matrix(cairo_, &matrix);
    } else {
        clipAway();
    }
}

void DrawingContext::clipAway() {
    cairo_new_path(cairo_);
    cairo_clip(cairo_);
}

void DrawingContext::clip(const Rect& rect) {
    cairo_new_path(cairo_);
    append(rect);
    cairo_clip(cairo_);
}

void DrawingContext::clipToPixels(const Rect& rect) {
    if (target_ != Target::bitmap) return clip(rect);
    const cairo_antialias_t antialias = cairo_get_antialias(cairo_);
    cairo_set_antialias(cairo_, CAIRO_ANTIALIAS_NONE);
    clip(rect);
    cairo_set_antialias(cairo_, antialias);
}

void DrawingContext::clip(const Path& path) {
    cairo_new_path(cairo_);
    append(path);
    cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_WINDING);
    cairo_clip(cairo_);
}

void DrawingContext::setAlpha(double alpha) {
    alpha_ = alpha > 0 ? std::min(alpha, 1.0) : 0;
}

void DrawingContext::fill(const Rect& rect, const RGBA& color) {
    cairo_new_path(cairo_);
    append(rect);
    setSource(color);
    cairo_fill(cairo_);
}

void DrawingContext::fill(const Path& path, const RGBA& color, FillRule rule) {
    cairo_new_path(cairo_);
    append(path);
    cairo_set_fill_rule(cairo_, rule == FillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    setSource(color);
    cairo_fill(cairo_);
}

void DrawingContext::stroke(const Path& path, const RGBA& color, double lineWidth) {
    if (!(lineWidth > 0)) return;
    const cairo_matrix_t matrix = matrixOf(cairo_);
    const double widest = farthest / std::max(std::abs(matrix.xx), std::abs(matrix.yy));
    cairo_new_path(cairo_);
    append(path);
    setSource(color);
    cairo_set_line_width(cairo_, std::min(lineWidth, widest));
    cairo_stroke(cairo_);
}

void DrawingContext::drawImage(const Image& image, const Rect& rect) {
    if (!drawable(rect) || alpha_ == 0) return;
    const cairo_matrix_t matrix = matrixOf(cairo_);
    if (target_ == Target::bitmap && matrix.xx > 0 && matrix.yy < 0) {
        if (const auto placed = ImageScaling::place(image, deviceRect(rect), visibleDeviceRect())) drawPlaced(*placed);
        return;
    }
    const auto lent = lent_.try_emplace(image.id(), image).first;
    const CairoPattern source = PicturePattern::forDocument(&lent->second);
    paintInto(cairo_, source.get(), image.width(), image.height(), rect, alpha_);
}

void DrawingContext::drawEncoded(const EncodedPicture& encoded, const Rect& rect) {
    if (target_ != Target::document || !encoded.jpeg || !drawable(rect) || alpha_ == 0) return;
    const CairoPattern source = PicturePattern::forDocument(encoded);
    paintInto(cairo_, source.get(), encoded.width, encoded.height, rect, alpha_);
}

void DrawingContext::drawPlaced(const PlacedImage& placed) {
    if (target_ != Target::bitmap || alpha_ == 0) return;
    const CairoPattern source = PicturePattern::forBitmap(placed.image);
    const CairoSave saved(cairo_);
    cairo_identity_matrix(cairo_);
    cairo_translate(cairo_, placed.x, placed.y);
    cairo_set_source(cairo_, source.get());
    cairo_pattern_set_filter(source.get(), CAIRO_FILTER_NEAREST);
    cairo_paint_with_alpha(cairo_, alpha_);
}

void DrawingContext::append(const Rect& rect) {
    if (!drawable(rect)) return;
    const cairo_matrix_t matrix = matrixOf(cairo_);
    const Point low = nearEnough(matrix, {rect.minX(), rect.minY()});
    const Point high = nearEnough(matrix, {rect.maxX(), rect.maxY()});
    cairo_rectangle(cairo_, low.x, low.y, high.x - low.x, high.y - low.y);
}

void DrawingContext::append(const Path& path) {
    if (!finite(path)) return;
    const cairo_matrix_t matrix = matrixOf(cairo_);
    const auto near = [&](Point point) { return nearEnough(matrix, point); };
    for (const auto& element : path.elements()) {
        if (const auto* move = std::get_if<Path::Move>(&element)) {
            const Point to = near(move->to);
            cairo_move_to(cairo_, to.x, to.y);
        } else if (const auto* line = std::get_if<Path::Line>(&element)) {
            const Point to = near(line->to);
            cairo_line_to(cairo_, to.x, to.y);
        } else if (const auto* curve = std::get_if<Path::Curve>(&element)) {
            const Point c1 = near(curve->control1), c2 = near(curve->control2), to = near(curve->to);
            cairo_curve_to(cairo_, c1.x, c1.y, c2.x, c2.y, to.x, to.y);
        } else {
            cairo_close_path(cairo_);
        }
    }
}

void DrawingContext::setSource(const RGBA& color) {
    cairo_set_source_rgba(cairo_, color.r, color.g, color.b, color.a * alpha_);
}

Rect DrawingContext::deviceRect(const Rect& rect) const {
    double x0 = rect.minX(), y0 = rect.minY(), x1 = rect.maxX(), y1 = rect.maxY();
    cairo_user_to_device(cairo_, &x0, &y0);
    cairo_user_to_device(cairo_, &x1, &y1);
    return {std::min(x0, x1), std::min(y0, y1), std::abs(x1 - x0), std::abs(y1 - y0)};
}

Rect DrawingContext::visibleDeviceRect() const {
    const CairoSave saved(cairo_);
    cairo_identity_matrix(cairo_);
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    cairo_clip_extents(cairo_, &x0, &y0, &x1, &y1);
    return {x0, y0, x1 - x0, y1 - y0};
}

}  // namespace quorvel
