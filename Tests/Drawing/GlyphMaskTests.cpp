#include "Bitmap.h"
#include "Drawing/ColorGlyph.h"
#include "Drawing/Fonts.h"
#include "Drawing/GlyphMask.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

/// The letter l of Nimbus Sans at 64 units: an upright bar, 5 to 9 units from its origin, 46.7 high.
class GlyphMaskTest : public testing::Test {
protected:
    GlyphMaskTest() {
        PangoFontDescription* description = pango_font_description_new();
        pango_font_description_set_family(description, "Nimbus Sans");
        pango_font_description_set_absolute_size(description, 64 * PANGO_SCALE);
        font_ = pango_context_load_font(Fonts::context(), description);
        pango_font_description_free(description);
        layout_ = pango_layout_new(Fonts::context());
    }
    ~GlyphMaskTest() override {
        g_object_unref(font_);
        g_object_unref(layout_);
    }

    PangoGlyph glyph(hb_codepoint_t character) {
        hb_codepoint_t found = 0;
        hb_font_get_nominal_glyph(pango_font_get_hb_font(font_), character, &found);
        return found;
    }

    /// A bitmap on which the letter l was drawn at each x, scaled about the top left.
    Image bars(int width, int height, double scale, std::initializer_list<double> xs, double alpha = 1) {
        return drawn(width, height, [&](DrawingContext& context) {
            cairo_t* cairo = context.cairo();
            cairo_identity_matrix(cairo);
            cairo_scale(cairo, scale, scale);
            GlyphMask mask(cairo);
            for (const double x : xs) mask.add(font_, glyph('l'), x, 60);
            mask.paint(RGBA::black, alpha);
        });
    }

    PangoFont* font_ = nullptr;
    PangoLayout* layout_ = nullptr;
};

/// The sum of coverage, in pixels, and its middle along x.
struct Ink {
    double area = 0;
    double middle = 0;
};

Ink ink(const Image& image, int left, int right) {
    Ink ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = left; x < right; ++x) {
            const double share = (image.row(y)[std::size_t(x)] >> 24) / 255.0;
            ink.area += share;
            ink.middle += share * (x + 0.5);
        }
    }
    ink.middle /= ink.area;
    return ink;
}

TEST_F(GlyphMaskTest, GlyphsStandWhereTheyAreToldToAFractionOfAPixel) {
    const double at = ink(bars(100, 80, 1, {20}), 0, 100).middle;
    for (const double shift : {0.1, 0.25, 0.5, 0.7, 0.9}) {
        EXPECT_NEAR(ink(bars(100, 80, 1, {20 + shift}), 0, 100).middle, at + shift, 0.02);
    }
}

TEST_F(GlyphMaskTest, TheInkIsTheSameAtEveryScale) {
    const double area = ink(bars(100, 80, 1, {20}), 0, 100).area;
    for (const double scale : {0.1, 0.37, 2.5}) {
        const double found = ink(bars(300, 250, scale, {20}), 0, 300).area;
        EXPECT_NEAR(found / (scale * scale), area, area * 0.02) << scale;
    }
}

TEST_F(GlyphMaskTest, GlyphsOnOneAnotherAreOneMark) {
    const Image once = bars(100, 80, 1, {20}, 0.5), twice = bars(100, 80, 1, {20, 20}, 0.5);
    EXPECT_EQ(twice.row(40)[27] >> 24, 128U);
    EXPECT_EQ(once.row(40)[27], twice.row(40)[27]);
}

TEST_F(GlyphMaskTest, TheClipHoldsAndWhatLiesOutsideIsNothing) {
    const Image image = drawn(40, 80, [&](DrawingContext& context) {
        cairo_t* cairo = context.cairo();
        cairo_identity_matrix(cairo);
        cairo_rectangle(cairo, 0, 0, 40, 30);
        cairo_clip(cairo);
        GlyphMask mask(cairo);
        for (const double x : {-1e9, -500.0, 10.0, 39.5, 60.0, 1e9}) mask.add(font_, glyph('l'), x, 60);
        mask.paint(RGBA::black, 1);
    });
    EXPECT_EQ(image.row(29)[17], 0xFF000000U);
    EXPECT_EQ(image.row(30)[17], 0U);
}

TEST_F(GlyphMaskTest, LeavesOutWhatItCannotDraw) {
    const Image image = drawn(40, 40, [&](DrawingContext& context) {
        cairo_t* cairo = context.cairo();
        GlyphMask mask(cairo);
        mask.add(font_, glyph('l'), std::nan(""), 0);
        mask.add(font_, 0xFFFFFF, 0, 0);
        cairo_scale(cairo, 1e5, 1e5);
        GlyphMask huge(cairo);
        huge.add(font_, glyph('l'), 0, 0);
        mask.paint(RGBA::black, 1);
        huge.paint(RGBA::black, 1);
    });
    EXPECT_TRUE(blank(image));
}

TEST_F(GlyphMaskTest, BlanksAreGlyphsWithoutInk) {
    const Image image = drawn(40, 40, [&](DrawingContext& context) {
        GlyphMask mask(context.cairo());
        mask.add(font_, glyph(' '), 10, 10);
        mask.paint(RGBA::black, 1);
    });
    EXPECT_TRUE(blank(image));
}

TEST_F(GlyphMaskTest, AFontOfOutlinesHasNoColorGlyphs) {
    EXPECT_FALSE(isColorFont(font_));
    EXPECT_FALSE(colorGlyph(font_, glyph('l')));
}

}  // namespace
}  // namespace quorvel
