#pragma once

#include "Foundation/EnumText.h"
#include "Foundation/RGBA.h"

#include <string>
#include <utility>

namespace quorvel {

enum class TextAlign { left, center, right };
enum class VerticalAlign { top, middle, bottom };

template <>
struct EnumText<TextAlign> {
    static constexpr std::array cases{std::pair{TextAlign::left, std::string_view("left")},
                                      std::pair{TextAlign::center, std::string_view("center")},
                                      std::pair{TextAlign::right, std::string_view("right")}};
};

template <>
struct EnumText<VerticalAlign> {
    static constexpr std::array cases{std::pair{VerticalAlign::top, std::string_view("top")},
                                      std::pair{VerticalAlign::middle, std::string_view("middle")},
                                      std::pair{VerticalAlign::bottom, std::string_view("bottom")}};
};

/// The typography of a text layer; icon rows use its alignment and colour.
struct TextStyle {
    std::string fontFamily;  ///< empty: the default font
    double size = 10;        ///< in points
    RGBA color = RGBA::black;
    TextAlign align = TextAlign::left;
    VerticalAlign verticalAlign = VerticalAlign::top;
    bool bold = false;
    bool italic = false;
    bool shrinkToFit = true;
    bool colorfulIcons = true;  ///< icons keep their own colours; false tints them with `color`

    TextStyle() = default;

    /// Text that shrinks to fit, with icons in their own colours.
    TextStyle(std::string family, double points, RGBA textColor, TextAlign horizontal, VerticalAlign vertical,
              bool isBold = false, bool isItalic = false)
        : fontFamily(std::move(family)),
          size(points),
          color(textColor),
          align(horizontal),
          verticalAlign(vertical),
          bold(isBold),
          italic(isItalic) {}

    bool operator==(const TextStyle&) const = default;
};

}  // namespace quorvel
