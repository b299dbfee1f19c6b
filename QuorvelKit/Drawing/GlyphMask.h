#pragma once

#include "Foundation/RGBA.h"

#include <cairo.h>
#include <cstddef>
#include <pango/pango.h>
#include <vector>

namespace quorvel {

/// Text on a bitmap by the outlines of its glyphs, each where the layout puts it to a sixty-fourth of a pixel: cairo
/// moves glyphs to whole pixels, which makes small text limp. All glyphs together are one mark, painted once.
class GlyphMask {
public:
    /// Takes the transformation and the clip that `cairo` has now.
    explicit GlyphMask(cairo_t* cairo);

    /// Adds the outline of a glyph whose origin stands at (x, y) in the coordinates of `cairo`, with y growing down, at
    /// the size of `font`. Glyphs larger than any page are left out.
    void add(PangoFont* font, PangoGlyph glyph, double x, double y);

    /// Paints what was added.
    void paint(const RGBA& color, double alpha) const;

private:
    struct Place {
        const void* outline;
        double x;  ///< of the origin, on the surface
        double y;
        double scale;  ///< of the outline's units to the font's
    };

    cairo_t* cairo_;
    cairo_matrix_t matrix_;
    std::vector<Place> places_;
    double left_, top_, right_, bottom_;  ///< what the glyphs touch, in pixels
};

}  // namespace quorvel
