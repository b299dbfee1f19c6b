#include "Drawing/GlyphMask.h"

#include "Drawing/Cairo.h"
#include "Drawing/FontFace.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ft2build.h>
#include <limits>
#include <unordered_map>
#include FT_OUTLINE_H

namespace quorvel {

namespace {

/// In pixels. The rasteriser's coordinates run out beyond.
constexpr double largestGlyph = 100'000;

/// A glyph as the font file has it, in the font's units, y up.
struct Outline {
    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> contours;  ///< the last point of each
    FT_BBox box{0, 0, 0, 0};

    void add(float x, float y, char tag) {
        points.push_back({std::lrint(x), std::lrint(y)});
        tags.push_back(tag);
    }
};

/// The outlines of one font, kept with the font and so used by its thread alone.
struct FontOutlines {
    FontFace face;
    double scale = 0;  ///< of the file's units to the size of the font
    std::unordered_map<PangoGlyph, Outline> glyphs;
};

FontOutlines openOutlines(PangoFont* font) {
    FontFace face(font);
    const double scale = sizeOf(font) / face.unitsPerEm();
    return {std::move(face), scale, {}};
}

/// The calls by which HarfBuzz tells an outline; `target` is the Outline.
hb_draw_funcs_t* outlineCalls() {
    static hb_draw_funcs_t* const calls = [] {
        using Calls = hb_draw_funcs_t;
        using State = hb_draw_state_t;
        constexpr char on = FT_CURVE_TAG_ON, conic = FT_CURVE_TAG_CONIC, cubic = FT_CURVE_TAG_CUBIC;
        Calls* made = hb_draw_funcs_create();
        const auto move = [](Calls*, void* target, State*, float x, float y, void*) {
            static_cast<Outline*>(target)->add(x, y, on);
        };
        const auto quadratic = [](Calls*, void* target, State*, float cx, float cy, float x, float y, void*) {
            static_cast<Outline*>(target)->add(cx, cy, conic);
            static_cast<Outline*>(target)->add(x, y, on);
        };
        const auto curve = [](Calls*, void* target, State*, float c1x, float c1y, float c2x, float c2y, float x,
                              float y, void*) {
            static_cast<Outline*>(target)->add(c1x, c1y, cubic);
            static_cast<Outline*>(target)->add(c2x, c2y, cubic);
            static_cast<Outline*>(target)->add(x, y, on);
        };
        const auto close = [](Calls*, void* target, State*, void*) {
            auto& outline = *static_cast<Outline*>(target);
            outline.contours.push_back(short(outline.points.size() - 1));
        };
        hb_draw_funcs_set_move_to_func(made, move, nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(made, move, nullptr, nullptr);
        hb_draw_funcs_set_quadratic_to_func(made, quadratic, nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(made, curve, nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(made, close, nullptr, nullptr);
        hb_draw_funcs_make_immutable(made);
        return made;
    }();
    return calls;
}

Outline loadOutline(const FontFace& face, PangoGlyph glyph) {
    Outline outline;
#if HB_VERSION_ATLEAST(7, 0, 0)
    hb_font_draw_glyph(face.get(), glyph, outlineCalls(), &outline);
#else
    hb_font_get_glyph_shape(face.get(), glyph, outlineCalls(), &outline);
#endif
    constexpr std::size_t mostPoints = 32'000;  // the rasteriser counts them in 16 bits
    if (outline.points.size() > mostPoints) return {};
    for (const FT_Vector& point : outline.points) {
        if (&point == &outline.points.front()) outline.box = {point.x, point.y, point.x, point.y};
        outline.box.xMin = std::min(outline.box.xMin, point.x);
        outline.box.xMax = std::max(outline.box.xMax, point.x);
        outline.box.yMin = std::min(outline.box.yMin, point.y);
        outline.box.yMax = std::max(outline.box.yMax, point.y);
    }
    return outline;
}

const Outline& outlineOf(FontOutlines& outlines, PangoGlyph glyph) {
    const auto known = outlines.glyphs.find(glyph);
    if (known != outlines.glyphs.end()) return known->second;
    return outlines.glyphs.emplace(glyph, loadOutline(outlines.face, glyph)).first->second;
}

/// A rasteriser for the calling thread.
FT_Library rasteriser() {
    struct Library {
        FT_Library library = nullptr;
        Library() { FT_Init_FreeType(&library); }
        ~Library() { FT_Done_FreeType(library); }
    };
    thread_local const Library made;
    return made.library;
}

/// Coverage of pixels, 0 to 255, rows from the top.
struct Coverage {
    int width;
    int height;
    int stride;
    unsigned char* pixels;
};

/// Glyphs that meet within a pixel cover it together.
void addSpans(int y, int count, const FT_Span* spans, void* target) {
    const auto& coverage = *static_cast<const Coverage*>(target);
    // The rasteriser's y grows up; its row 0 is the lowest of the mask.
    unsigned char* row = coverage.pixels + std::ptrdiff_t(coverage.height - 1 - y) * coverage.stride;
    for (int i = 0; i < count; ++i) {
        unsigned char* pixel = row + spans[i].x;
        if (spans[i].coverage == 255) {
            std::memset(pixel, 255, spans[i].len);
            continue;
        }
        for (unsigned n = 0; n < spans[i].len; ++n) {
            pixel[n] = static_cast<unsigned char>(std::min(255, pixel[n] + spans[i].coverage));
        }
    }
}

}  // namespace

GlyphMask::GlyphMask(cairo_t* cairo)
    : cairo_(cairo), left_(std::numeric_limits<double>::infinity()), top_(left_), right_(-left_), bottom_(-left_) {
    cairo_get_matrix(cairo_, &matrix_);
}

void GlyphMask::add(PangoFont* font, PangoGlyph glyph, double x, double y) {
    FontOutlines& outlines = keptWith<FontOutlines>(font, "quorvel-outlines", openOutlines);
    const Outline& outline = outlineOf(outlines, glyph);
    if (outline.points.empty()) return;

    cairo_matrix_transform_point(&matrix_, &x, &y);
    double left = std::numeric_limits<double>::infinity(), top = left, right = -left, bottom = -left;
    for (const FT_Pos cornerX : {outline.box.xMin, outline.box.xMax}) {
        for (const FT_Pos cornerY : {outline.box.yMin, outline.box.yMax}) {
            double dx = double(cornerX) * outlines.scale, dy = -double(cornerY) * outlines.scale;
            cairo_matrix_transform_distance(&matrix_, &dx, &dy);
            left = std::min(left, x + dx), right = std::max(right, x + dx);
            top = std::min(top, y + dy), bottom = std::max(bottom, y + dy);
        }
    }
    const bool drawable =
        std::isfinite(x) && std::isfinite(y) && right - left < largestGlyph && bottom - top < largestGlyph;
    if (!drawable) return;
    left_ = std::min(left_, left), right_ = std::max(right_, right);
    top_ = std::min(top_, top), bottom_ = std::max(bottom_, bottom);
    places_.push_back({&outline, x, y, outlines.scale});
}

void GlyphMask::paint(const RGBA& color, double alpha) const {
    const CairoSave saved(cairo_);
    cairo_identity_matrix(cairo_);
    double clipLeft = 0, clipTop = 0, clipRight = 0, clipBottom = 0;
    cairo_clip_extents(cairo_, &clipLeft, &clipTop, &clipRight, &clipBottom);
    const double left = std::floor(std::max(left_, clipLeft)), right = std::ceil(std::min(right_, clipRight));
    const double top = std::floor(std::max(top_, clipTop)), bottom = std::ceil(std::min(bottom_, clipBottom));
    if (!(left < right && top < bottom)) return;

    const int width = int(right - left), height = int(bottom - top);
    const CairoSurface mask(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    if (cairo_surface_status(mask.get()) != CAIRO_STATUS_SUCCESS) return;
    cairo_surface_flush(mask.get());
    Coverage coverage{width, height, cairo_image_surface_get_stride(mask.get()),
                      cairo_image_surface_get_data(mask.get())};

    FT_Raster_Params parameters{};
    parameters.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
    parameters.gray_spans = addSpans;
    parameters.user = &coverage;

    std::vector<FT_Vector> points;
    const double farthest = 2 * largestGlyph * 64;
    for (const Place& place : places_) {
        // Outlines aren't changed by drawing; the rasteriser's record just has no const.
        auto& outline = *static_cast<Outline*>(const_cast<void*>(place.outline));
        const double unit = place.scale * 64, originX = (place.x - left) * 64, originY = (bottom - place.y) * 64;
        if (std::abs(originX) > farthest || std::abs(originY) > farthest) continue;
        points.resize(outline.points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double x = double(outline.points[i].x) * unit, y = double(-outline.points[i].y) * unit;
            points[i].x = std::lrint(originX + matrix_.xx * x + matrix_.xy * y);
            points[i].y = std::lrint(originY - matrix_.yx * x - matrix_.yy * y);
        }
        FT_Outline shape{short(outline.contours.size()), short(points.size()), points.data(), outline.tags.data(),
                         outline.contours.data(),        FT_OUTLINE_NONE};
        // The rasteriser walks every row of the box it may draw in.
        FT_BBox box;
        FT_Outline_Get_CBox(&shape, &box);
        parameters.clip_box = {std::max(FT_Pos(0), box.xMin >> 6), std::max(FT_Pos(0), box.yMin >> 6),
                               std::min(FT_Pos(width), (box.xMax + 63) >> 6),
                               std::min(FT_Pos(height), (box.yMax + 63) >> 6)};
        if (parameters.clip_box.xMin >= parameters.clip_box.xMax ||
            parameters.clip_box.yMin >= parameters.clip_box.yMax) {
            continue;
        }
        FT_Outline_Render(rasteriser(), &shape, &parameters);
    }
    cairo_surface_mark_dirty(mask.get());
    cairo_set_source_rgba(cairo_, color.r, color.g, color.b, color.a * alpha);
    cairo_mask_surface(cairo_, mask.get(), left, top);
}

}  // namespace quorvel
