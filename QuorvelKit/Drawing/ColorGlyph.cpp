#include "Drawing/ColorGlyph.h"

#include "Drawing/Cairo.h"
#include "Drawing/FontFace.h"

#include <cmath>
#include <cstring>
#include <hb-ot.h>
#include <span>
#include <unordered_map>

namespace quorvel {

namespace {

/// Pictures of glyphs have some 140 pixels; a file that says otherwise isn't trusted with the memory.
constexpr int mostPixels = 1024;

struct ColorGlyphs {
    bool any = false;
    std::unordered_map<PangoGlyph, std::optional<ColorGlyph>> glyphs;
};

ColorGlyphs& glyphsOf(PangoFont* font) {
    const auto open = [](PangoFont* made) { return ColorGlyphs{FontFace(made).hasPictures(), {}}; };
    return keptWith<ColorGlyphs>(font, "quorvel-color-glyphs", open);
}

/// The pixels of a surface of its own; nothing when it is in error or far too large.
std::optional<Image> imageOf(cairo_surface_t* surface) {
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return std::nullopt;
    const int width = cairo_image_surface_get_width(surface), height = cairo_image_surface_get_height(surface);
    if (width > mostPixels || height > mostPixels) return std::nullopt;
    auto pixels = allocatePixels(width, height);
    if (!pixels) return std::nullopt;
    const CairoSurface copy(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.get()),
                                                                CAIRO_FORMAT_ARGB32, width, height, width * 4));
    const CairoContext cairo(cairo_create(copy.get()));
    cairo_set_source_surface(cairo.get(), surface, 0, 0);
    cairo_paint(cairo.get());
    cairo_surface_flush(copy.get());
    return Image(width, height, std::move(pixels), Image::Alpha::varying);
}

/// A glyph that the file holds as a PNG.
std::optional<Image> picture(PangoFont* font, PangoGlyph glyph) {
    hb_blob_t* file = hb_ot_color_glyph_reference_png(pango_font_get_hb_font(font), glyph);
    unsigned length = 0;
    const char* bytes = hb_blob_get_data(file, &length);
    std::span<const char> rest(bytes, length);
    const auto read = [](void* closure, unsigned char* target, unsigned wanted) {
        auto& left = *static_cast<std::span<const char>*>(closure);
        if (left.size() < wanted) return CAIRO_STATUS_READ_ERROR;
        std::memcpy(target, left.data(), wanted);
        left = left.subspan(wanted);
        return CAIRO_STATUS_SUCCESS;
    };
    std::optional<Image> image;
    if (length > 0) {
        const CairoSurface surface(cairo_image_surface_create_from_png_stream(read, &rest));
        image = imageOf(surface.get());
    }
    hb_blob_destroy(file);
    return image;
}

std::optional<ColorGlyph> make(PangoFont* font, PangoGlyph glyph) {
    hb_font_t* sized = pango_font_get_hb_font(font);
    hb_glyph_extents_t ink{};
    if (!hb_font_get_glyph_extents(sized, glyph, &ink)) return std::nullopt;
    int scaleX = 0, scaleY = 0;
    hb_font_get_scale(sized, &scaleX, &scaleY);
    const double up = scaleY < 0 ? -1 : 1;  // the engine may have turned the y axis already
    const Rect place{double(ink.x_bearing) / PANGO_SCALE, -up * ink.y_bearing / PANGO_SCALE,
                     double(ink.width) / PANGO_SCALE, std::abs(double(ink.height)) / PANGO_SCALE};
    if (!(place.width > 0 && place.height > 0)) return std::nullopt;
    auto image = picture(font, glyph);
    if (!image) return std::nullopt;
    return ColorGlyph{*std::move(image), place};
}

}  // namespace

bool isColorFont(PangoFont* font) {
    return glyphsOf(font).any;
}

std::optional<ColorGlyph> colorGlyph(PangoFont* font, PangoGlyph glyph) {
    ColorGlyphs& glyphs = glyphsOf(font);
    if (!glyphs.any) return std::nullopt;
    const auto known = glyphs.glyphs.find(glyph);
    if (known != glyphs.glyphs.end()) return known->second;
    return glyphs.glyphs.emplace(glyph, make(font, glyph)).first->second;
}

}  // namespace quorvel
