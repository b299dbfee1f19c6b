#pragma once

#include "Drawing/DrawingContext.h"
#include "Drawing/Fonts.h"
#include "Templates/TextStyle.h"

#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// The family drawn where a style names none, and the family of the marks.
inline constexpr std::string_view defaultFontFamily = Fonts::defaultFamily;

/// A text with markup, laid out for one width at one font size, in points. Belongs to the thread that made it.
///
/// Lines are set one below the other, each as high as its fonts and icons ask, the fonts' own gaps included. Left,
/// right and centre are those of the paper in every script. A layout is the same at every scale: only the ratio of
/// width and size decides where lines break.
class TextLayout {
public:
    /// A line by its edges measured down from the top of the text, and its extent from the left edge of the width.
    struct Line {
        double top = 0;
        double baseline = 0;
        double bottom = 0;
        double x = 0;
        double width = 0;
    };

    /// The place that an inline icon holds in a line.
    struct Slot {
        std::string icon;
        std::size_t line = 0;
        double x = 0;  ///< from the left edge of the width
        double width = 0;
        double ascent = 0;  ///< above the line's baseline
        double descent = 0;
    };

    /// Text that begins more than `enough` below the top may be left out, so that a cell of a megabyte costs what its
    /// frame can show: a height up to `enough` is exact, and one beyond it only says so much. `size` must be above 0.
    TextLayout(std::string_view text, const TextStyle& style, double size, double width,
               double enough = std::numeric_limits<double>::infinity());
    ~TextLayout();
    TextLayout(TextLayout&&) noexcept;
    TextLayout& operator=(TextLayout&&) noexcept;

    /// Lays the same text out at another size, which costs less than a new layout.
    void resize(double size);

    /// A height that the text can't fall short of at `size`. Costs a layout once, and nothing for every further size.
    double leastHeight(double size) const;

    double height() const;
    const std::vector<Line>& lines() const;
    const std::vector<Slot>& slots() const;

    /// How many lines, from the first, end within `height` below the top.
    std::size_t linesWithin(double height) const;

    /// Paints the first `count` lines with the top-left corner of the text at `topLeft` (y up), in the style's colour.
    /// Icons are the caller's to paint.
    void draw(DrawingContext& context, Point topLeft, std::size_t count) const;

    /// Lines and slots as text, one a line, for comparing.
    std::string dump() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace quorvel
