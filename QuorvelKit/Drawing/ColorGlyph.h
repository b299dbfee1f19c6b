#pragma once

#include "Drawing/Image.h"
#include "Foundation/Geometry.h"

#include <optional>
#include <pango/pango.h>

namespace quorvel {

/// A glyph that is a picture, as emoji are.
struct ColorGlyph {
    Image image;
    Rect place;  ///< about the glyph's origin with y growing down, at the size of the font
};

/// Whether a font's glyphs are pictures and not outlines.
bool isColorFont(PangoFont* font);

/// A glyph of a colour font in the resolution of its file; nothing when it shows nothing. Made once for each font and
/// glyph, so that a document stores it once. `font` is one of the calling thread.
std::optional<ColorGlyph> colorGlyph(PangoFont* font, PangoGlyph glyph);

}  // namespace quorvel
