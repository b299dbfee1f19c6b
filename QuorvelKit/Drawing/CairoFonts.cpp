#include "Drawing/CairoFonts.h"

#include "Drawing/FontFace.h"

#include <cairo-ft.h>
#include <memory>
#include <pango/pangofc-font.h>
#include <vector>

namespace quorvel::CairoFonts {

namespace {

struct Destroy {
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
};
using Face = std::unique_ptr<cairo_font_face_t, Destroy>;

cairo_font_face_t* faceOf(PangoFont* font) {
    return keptWith<Face>(font, "quorvel-cairo-face",
                          [](PangoFont* made) {
                              FcPattern* pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(made));
                              return Face(cairo_ft_font_face_create_for_pattern(pattern));
                          })
        .get();
}

}  // namespace

std::unique_lock<std::recursive_mutex> hold() {
    static auto& mutex = *new std::recursive_mutex;  // outlives every thread
    return std::unique_lock(mutex);
}

void show(cairo_t* cairo, const char* text, PangoGlyphItem* run, double x, double y) {
    std::vector<cairo_glyph_t> glyphs;
    std::vector<int> positions;  // where each of the run's glyphs comes in `glyphs`, since empty ones are left out
    for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
        const auto& glyph = run->glyphs->glyphs[i];
        positions.push_back(int(glyphs.size()));
        if (glyph.glyph != PANGO_GLYPH_EMPTY) {
            glyphs.push_back({glyph.glyph, x + double(glyph.geometry.x_offset) / PANGO_SCALE,
                              y + double(glyph.geometry.y_offset) / PANGO_SCALE});
        }
        x += double(glyph.geometry.width) / PANGO_SCALE;
    }
    positions.push_back(int(glyphs.size()));
    if (glyphs.empty()) return;

    std::vector<cairo_text_cluster_t> clusters;
    bool backward = false;
    PangoGlyphItemIter at;
    for (bool more = pango_glyph_item_iter_init_start(&at, run, text); more;
         more = pango_glyph_item_iter_next_cluster(&at)) {
        // Text from right to left has its glyphs counted down.
        backward = at.start_glyph > at.end_glyph;
        const int first = backward ? at.end_glyph + 1 : at.start_glyph;
        const int end = backward ? at.start_glyph + 1 : at.end_glyph;
        clusters.push_back(
            {at.end_index - at.start_index, positions[std::size_t(end)] - positions[std::size_t(first)]});
    }

    const auto held = hold();
    cairo_set_font_face(cairo, faceOf(run->item->analysis.font));
    cairo_set_font_size(cairo, sizeOf(run->item->analysis.font));
    cairo_show_text_glyphs(cairo, text + run->item->offset, run->item->length, glyphs.data(), int(glyphs.size()),
                           clusters.data(), int(clusters.size()),
                           backward ? CAIRO_TEXT_CLUSTER_FLAG_BACKWARD : cairo_text_cluster_flags_t(0));
}

}  // namespace quorvel::CairoFonts
