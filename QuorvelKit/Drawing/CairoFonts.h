#pragma once

#include <cairo.h>
#include <mutex>
#include <pango/pango.h>

/// The fonts that cairo opens. Documents show text by them; bitmaps by outlines, see GlyphMask.
namespace quorvel::CairoFonts {

/// To be held by whoever makes cairo open or close fonts: laying text out, drawing it on a document, writing a
/// document's pages. Cairo 1.16 opens font files on one FreeType library from all threads without a guard, and fails or
/// crashes where two do.
[[nodiscard]] std::unique_lock<std::recursive_mutex> hold();

/// Shows a run of `text` with its origin at (x, y), y growing down, so that the characters can be copied and searched.
void show(cairo_t* cairo, const char* text, PangoGlyphItem* run, double x, double y);

}  // namespace quorvel::CairoFonts
