#pragma once

#include "Foundation/EnumText.h"
#include "Foundation/Geometry.h"
#include "Foundation/Units.h"

#include <optional>
#include <string_view>

namespace quorvel {

/// The trim size of a card. Sizes in millimetres.
struct CardSize {
    enum class Preset { poker, bridge, tarot, mini, square, custom };

    Preset preset = Preset::poker;
    double widthMM = 63.5;
    double heightMM = 88.9;

    CardSize() = default;

    /// The preset's size; `custom` starts as poker, the commonest card.
    explicit CardSize(Preset which);

    /// As written, unchecked: what a file holds is kept.
    constexpr CardSize(Preset which, double width, double height) : preset(which), widthMM(width), heightMM(height) {}

    bool operator==(const CardSize&) const = default;

    static const CardSize poker, bridge, tarot, mini, square;

    /// Each side raised to at least 10 mm; not-a-number counts as 10.
    static CardSize custom(double widthMM, double heightMM);

    /// Width and height in millimetres; nothing for `custom`.
    static std::optional<Size> dimensions(Preset preset);

    /// The preset's line in the size menu.
    static std::string_view label(Preset preset);

    double widthPoints() const { return Units::points(widthMM); }
    double heightPoints() const { return Units::points(heightMM); }
};

template <>
struct EnumText<CardSize::Preset> {
    using enum CardSize::Preset;
    static constexpr std::array cases{
        std::pair{poker, std::string_view("poker")},   std::pair{bridge, std::string_view("bridge")},
        std::pair{tarot, std::string_view("tarot")},   std::pair{mini, std::string_view("mini")},
        std::pair{square, std::string_view("square")}, std::pair{custom, std::string_view("custom")},
    };
};

}  // namespace quorvel
