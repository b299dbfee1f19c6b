#pragma once

#include "Drawing/CairoFonts.h"
#include "Rendering/StyledText.h"
#include "Rendering/TextLayout.h"

#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <pango/pango.h>
#include <string>
#include <vector>

namespace quorvel {

/// Every text is laid out at this font size, and the result is scaled to the one that is wanted: unhinted text is the
/// same at every size, each font is loaded once, and a size is nothing but another width to break lines for. The
/// layout engine counts in 1024ths of it.
inline constexpr double layoutSize = 16;

/// Owns the layout engine's objects.
struct ReleasePango {
    void operator()(PangoLayout* p) const {
        const auto held = CairoFonts::hold();
        g_object_unref(p);
    }
    void operator()(PangoFont* p) const { g_object_unref(p); }
    void operator()(PangoFontDescription* p) const { pango_font_description_free(p); }
    void operator()(PangoAttrList* p) const { pango_attr_list_unref(p); }
};

using PangoLayoutHandle = std::unique_ptr<PangoLayout, ReleasePango>;
using PangoFontHandle = std::unique_ptr<PangoFont, ReleasePango>;
using PangoFontDescriptionHandle = std::unique_ptr<PangoFontDescription, ReleasePango>;
using PangoAttributesHandle = std::unique_ptr<PangoAttrList, ReleasePango>;

/// What a TextLayout holds. For the files that lay it out and draw it.
struct TextLayout::State {
    /// A character that no installed font has, shown as an empty box.
    struct MissingGlyph {
        std::size_t line;
        double x;
        double width;
    };

    StyledText styled;
    RGBA color;
    TextAlign align;
    double width;
    double enough;
    double size = 0;

    PangoLayoutHandle layout;
    std::size_t laidOut = 0;  ///< bytes of the text that the engine was given
    PangoFontDescriptionHandle plain;
    std::string drawnFamily;
    std::optional<Fonts::LineExtent> familyLine;  ///< of a family that a relative stands in for
    Fonts::Face plainFace;                        ///< where the markup asks for no other
    std::map<PangoFont*, Fonts::LineExtent> extents;

    std::vector<Line> lines;
    std::vector<Slot> slots;
    std::vector<MissingGlyph> missing;

    /// What holds for the text at every size, in font sizes.
    struct Bound {
        double ink = 0;  ///< the width of all that isn't blank
        double lowestLine = std::numeric_limits<double>::infinity();
        double widestLine = 0;
        std::size_t paragraphs = 0;
    };
    std::optional<Bound> bound;

    State(std::string_view text, const TextStyle& style, double width_, double enough_);

    void layOut(double newSize);
    double leastHeight(double atSize);
    void draw(DrawingContext& context, Point topLeft, std::size_t count) const;

private:
    void give(std::size_t length);
    void measure();
    void place(PangoLayoutLine* source);
    void place(PangoLayoutRun* run, double x);
    Bound findBound();
    const StyledText::Icon* iconAt(std::size_t offset) const;
    Fonts::LineExtent extentOf(const PangoLayoutRun* run);
    Fonts::LineExtent extentOf(PangoFont* font);
    Fonts::LineExtent plainExtent();
    void drawMissing(DrawingContext& context, Point topLeft, std::size_t count) const;
};

}  // namespace quorvel
