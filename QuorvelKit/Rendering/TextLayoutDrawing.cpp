#include "Drawing/Cairo.h"
#include "Drawing/ColorGlyph.h"
#include "Drawing/GlyphMask.h"
#include "Rendering/TextLayoutState.h"

#include <cmath>
#include <utility>

namespace quorvel {

namespace {

/// Draws runs on one context, in the coordinates of the layout engine: y down, in points at layoutSize.
class RunDrawing {
public:
    RunDrawing(cairo_t* cairo, DrawingContext::Target target) : cairo_(cairo), target_(target), mask_(cairo) {}

    /// A glyph that is a picture, and where its origin stands.
    struct Picture {
        ColorGlyph glyph;
        double x;
        double y;
    };

    void draw(const char* text, PangoLayoutRun* run, double x, double y) {
        PangoFont* font = run->item->analysis.font;
        const bool colored = isColorFont(font);
        if (!colored && target_ == DrawingContext::Target::document) return CairoFonts::show(cairo_, text, run, x, y);
        for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
            const PangoGlyph glyph = run->glyphs->glyphs[i].glyph;
            const PangoGlyphGeometry& geometry = run->glyphs->glyphs[i].geometry;
            const double glyphX = x + double(geometry.x_offset) / PANGO_SCALE;
            const double glyphY = y + double(geometry.y_offset) / PANGO_SCALE;
            x += double(geometry.width) / PANGO_SCALE;
            if (glyph == PANGO_GLYPH_EMPTY) continue;
            if (!colored) {
                mask_.add(font, glyph, glyphX, glyphY);
            } else if (auto picture = colorGlyph(font, glyph)) {
                pictures_.push_back({*std::move(picture), glyphX, glyphY});
            }
        }
    }

    /// To be called once, at the end: paints the outlines; the pictures are left to the caller.
    std::vector<Picture> finish(const RGBA& color, double alpha) {
        mask_.paint(color, alpha);
        return std::move(pictures_);
    }

private:
    cairo_t* cairo_;
    DrawingContext::Target target_;
    GlyphMask mask_;
    std::vector<Picture> pictures_;
};

}  // namespace

void TextLayout::State::draw(DrawingContext& context, Point topLeft, std::size_t count) const {
    if (!std::isfinite(topLeft.x) || !std::isfinite(topLeft.y)) return;
    cairo_t* cairo = context.cairo();
    const double scale = size / layoutSize;
    std::vector<RunDrawing::Picture> pictures;
    {
        const CairoSave saved(cairo);
        cairo_translate(cairo, topLeft.x, topLeft.y);
        cairo_scale(cairo, scale, -scale);
        cairo_set_source_rgba(cairo, color.r, color.g, color.b, color.a * context.alpha());
        RunDrawing drawing(cairo, context.target());
        const GSList* line = pango_layout_get_lines_readonly(layout.get());
        for (std::size_t i = 0; i < count; ++i, line = line->next) {
            double x = lines[i].x / scale;
            for (const GSList* node = static_cast<PangoLayoutLine*>(line->data)->runs; node; node = node->next) {
                auto* run = static_cast<PangoLayoutRun*>(node->data);
                const bool holdsIcon = iconAt(std::size_t(run->item->offset)) != nullptr;
                if (!holdsIcon) drawing.draw(styled.text.c_str(), run, x, lines[i].baseline / scale);
                x += double(pango_glyph_string_get_width(run->glyphs)) / PANGO_SCALE;
            }
        }
        pictures = drawing.finish(color, context.alpha());
    }
    for (const auto& [glyph, x, y] : pictures) {
        const Rect& place = glyph.place;
        context.drawImage(glyph.image, {topLeft.x + (x + place.x) * scale, topLeft.y - (y + place.maxY()) * scale,
                                        place.width * scale, place.height * scale});
    }
    drawMissing(context, topLeft, count);
}

/// An empty box for each character that can't be shown.
void TextLayout::State::drawMissing(DrawingContext& context, Point topLeft, std::size_t count) const {
    Path boxes;
    for (const auto& glyph : missing) {
        if (glyph.line >= count) break;
        const double stroke = size * 0.05;
        const Rect outer{topLeft.x + glyph.x + stroke, topLeft.y - lines[glyph.line].baseline, glyph.width - 2 * stroke,
                         size * 0.7};
        boxes.rectangle(outer).rectangle(outer.inset(stroke, stroke));
    }
    if (!boxes.empty()) context.fill(boxes, color, FillRule::evenOdd);
}

}  // namespace quorvel
