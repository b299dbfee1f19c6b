#pragma once

#include "Templates/Frame.h"
#include "Templates/StyleRule.h"
#include "Templates/TextStyle.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvel {

enum class LayerKind { text, image, shape, icons };
enum class ShapeKind { rectangle, ellipse };
enum class ImageFit { fill, fit };

template <>
struct EnumText<LayerKind> {
    static constexpr std::array cases{
        std::pair{LayerKind::text, std::string_view("text")}, std::pair{LayerKind::image, std::string_view("image")},
        std::pair{LayerKind::shape, std::string_view("shape")}, std::pair{LayerKind::icons, std::string_view("icons")}};
};

template <>
struct EnumText<ShapeKind> {
    static constexpr std::array cases{std::pair{ShapeKind::rectangle, std::string_view("rectangle")},
                                      std::pair{ShapeKind::ellipse, std::string_view("ellipse")}};
};

template <>
struct EnumText<ImageFit> {
    static constexpr std::array cases{std::pair{ImageFit::fill, std::string_view("fill")},
                                      std::pair{ImageFit::fit, std::string_view("fit")}};
};

/// One element of a side.
struct Layer {
    UUID id;
    std::string name;
    LayerKind kind = LayerKind::shape;
    Frame frame;
    std::string content;  ///< text with placeholders and markup; a picture's name; a list of icons; unused by shapes
    TextStyle style;
    std::optional<RGBA> fill;  ///< of an image layer: the colour behind the picture
    std::optional<RGBA> stroke;
    double strokeWidth = 1;  ///< in points
    double cornerRadiusMM = 0;
    ShapeKind shape = ShapeKind::rectangle;
    ImageFit imageFit = ImageFit::fill;
    double iconSizeMM = 5;
    double iconSpacingMM = 1;
    double opacity = 1;            ///< 0 to 1, of each mark by itself
    std::vector<StyleRule> rules;  ///< tried in order
    bool hidden = false;

    Layer() = default;

    /// With a new id and the defaults above.
    Layer(std::string name, LayerKind kind, Frame frame, std::string content);

    bool operator==(const Layer&) const = default;

    /// A copy with the rules applied that match `card`; unchanged when `card` is null. Of several matching rules the
    /// first that brings a colour sets it; any of them may hide.
    Layer resolved(const Card* card) const;
};

}  // namespace quorvel
