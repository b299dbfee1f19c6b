#pragma once

#include "Drawing/EncodedPicture.h"
#include "Drawing/Image.h"
#include "Drawing/ImageScaling.h"
#include "Drawing/Path.h"
#include "Foundation/Geometry.h"
#include "Foundation/RGBA.h"

#include <cairo.h>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace quorvel {

enum class FillRule { winding, evenOdd };

/// A surface to draw on with y growing up from the bottom left, in units that its maker chose (points, after scaling).
/// Adds to cairo an alpha that acts on each mark by itself, so that a half-opaque stroke shows the half-opaque fill
/// below it. Used by one thread at a time. Drawing can't fail: a context in error ignores what is drawn, and so is a
/// rectangle that is empty, negative or not finite, or a path that isn't finite. A document's page must end before its
/// context.
class DrawingContext {
public:
    /// A bitmap has pixels to snap and resample to; a document keeps text and pictures as such.
    enum class Target { bitmap, document };

    /// Draws on `cairo`, which is borrowed and must be y-down as cairo makes it; `height` is the surface's in its
    /// units.
    DrawingContext(cairo_t* cairo, Target target, double height);
    DrawingContext(const DrawingContext&) = delete;
    DrawingContext& operator=(const DrawingContext&) = delete;

    Target target() const { return target_; }

    void save();
    void restore();

    void translate(double x, double y);
    void scale(double x, double y);
    void clip(const Rect& rect);
    /// The same, but a pixel of a bitmap is either in or out: rectangles that touch leave no seam between them. In a
    /// document the edge is exact.
    void clipToPixels(const Rect& rect);
    void clip(const Path& path);

    /// The alpha of every later mark, 0 to 1, until restore.
    void setAlpha(double alpha);
    double alpha() const { return alpha_; }

    void fill(const Rect& rect, const RGBA& color);
    void fill(const Path& path, const RGBA& color, FillRule rule = FillRule::winding);
    void stroke(const Path& path, const RGBA& color, double lineWidth);

    /// The image smoothly scaled into `rect`.
    void drawImage(const Image& image, const Rect& rect);

    /// A JPEG stored as it is. Documents only.
    void drawEncoded(const EncodedPicture& picture, const Rect& rect);

    /// An image resampled for this bitmap, pixel on pixel. Bitmaps only.
    void drawPlaced(const PlacedImage& placed);

    /// `rect` and what the clip leaves visible, in the surface's own units with y down (pixels of a bitmap).
    Rect deviceRect(const Rect& rect) const;
    Rect visibleDeviceRect() const;

    /// For text, which needs cairo itself: y grows up; the alpha is the caller's to apply.
    cairo_t* cairo() const { return cairo_; }

private:
    void transform(const cairo_matrix_t& matrix);
    void clipAway();
    void append(const Rect& rect);
    void append(const Path& path);
    void setSource(const RGBA& color);

    cairo_t* cairo_;
    Target target_;
    double alpha_ = 1;
    std::vector<double> savedAlphas_;
    std::unordered_map<std::uint64_t, Image> lent_;  ///< what a document's page reads when it ends, by id
};

/// Saves the context's state and restores it at the end of the block.
class SavedState {
public:
    explicit SavedState(DrawingContext& context) : context_(context) { context_.save(); }
    ~SavedState() { context_.restore(); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    DrawingContext& context_;
};

}  // namespace quorvel
