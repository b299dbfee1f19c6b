#include "Templates/CardSize.h"

namespace quorvel {

constinit const CardSize CardSize::poker(Preset::poker, 63.5, 88.9);
constinit const CardSize CardSize::bridge(Preset::bridge, 57.15, 88.9);
constinit const CardSize CardSize::tarot(Preset::tarot, 69.85, 120.65);
constinit const CardSize CardSize::mini(Preset::mini, 44.45, 63.5);
constinit const CardSize CardSize::square(Preset::square, 63.5, 63.5);

namespace {

constexpr double smallestSideMM = 10;

/// Written so that not-a-number counts as too small.
double raised(double sideMM) {
    return sideMM > smallestSideMM ? sideMM : smallestSideMM;
}

}  // namespace

CardSize::CardSize(Preset which) : preset(which) {
    const Size size = dimensions(which).value_or(Size{poker.widthMM, poker.heightMM});
    widthMM = size.width;
    heightMM = size.height;
}

CardSize CardSize::custom(double widthMM, double heightMM) {
    return {Preset::custom, raised(widthMM), raised(heightMM)};
}

std::optional<Size> CardSize::dimensions(Preset preset) {
    for (const CardSize* size : {&poker, &bridge, &tarot, &mini, &square})
        if (size->preset == preset) return Size{size->widthMM, size->heightMM};
    return std::nullopt;
}

std::string_view CardSize::label(Preset preset) {
    switch (preset) {
        case Preset::poker:
            return "Poker, 63.5 × 88.9 mm (2.5 × 3.5 in)";
        case Preset::bridge:
            return "Bridge, 57.2 × 88.9 mm (2.25 × 3.5 in)";
        case Preset::tarot:
            return "Tarot, 69.9 × 120.7 mm (2.75 × 4.75 in)";
        case Preset::mini:
            return "Mini, 44.5 × 63.5 mm (1.75 × 2.5 in)";
        case Preset::square:
            return "Square, 63.5 × 63.5 mm (2.5 in)";
        case Preset::custom:
            return "Custom";
    }
    return {};
}

}  // namespace quorvel
