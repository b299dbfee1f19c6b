#include "Templates/RandomTemplate.h"

#include <bit>
#include <cmath>

namespace quorvel {

namespace {

using Random = std::mt19937_64;

bool coin(Random& random) {
    return random() % 2 == 0;
}

double number(Random& random) {
    switch (random() % 4) {
        case 0:
            return static_cast<double>(random() % 100);
        case 1:
            return std::uniform_real_distribution<double>(-200, 200)(random);
        case 2:
            return 1e308 * (coin(random) ? 1 : -1);
        default:
            break;
    }
    const auto any = std::bit_cast<double>(random());
    return std::isfinite(any) ? any : -0.0;
}

std::string text(Random& random) {
    static const std::string_view pieces[] = {"a",      "{{title}}", "\"",   "\\", "\n", "é", "👩‍👩‍👧",
                                              "\u2028", "/",         "\x01", "ß",  " "};
    std::string result;
    for (auto length = random() % 6; length > 0; --length) result += pieces[random() % std::size(pieces)];
    return result;
}

RGBA color(Random& random) {
    const auto byte = [&] { return static_cast<int>(random() % 256); };
    return coin(random) ? RGBA::bytes(byte(), byte(), byte()) : RGBA::bytes(byte(), byte(), byte(), byte());
}

std::optional<RGBA> maybeColor(Random& random) {
    return coin(random) ? std::optional(color(random)) : std::nullopt;
}

template <class E>
E anyCase(Random& random) {
    const auto& cases = EnumText<E>::cases;
    return cases[random() % cases.size()].first;
}

StyleRule rule(Random& random) {
    return {text(random),       anyCase<StyleRule::Match>(random),
            text(random),       maybeColor(random),
            maybeColor(random), maybeColor(random),
            coin(random)};
}

TextStyle style(Random& random) {
    TextStyle result(text(random), number(random), color(random), anyCase<TextAlign>(random),
                     anyCase<VerticalAlign>(random), coin(random), coin(random));
    result.shrinkToFit = coin(random);
    result.colorfulIcons = coin(random);
    return result;
}

Layer layer(Random& random) {
    Layer result(text(random), anyCase<LayerKind>(random),
                 {number(random), number(random), number(random), number(random)}, text(random));
    result.style = style(random);
    result.fill = maybeColor(random);
    result.stroke = maybeColor(random);
    result.strokeWidth = number(random);
    result.cornerRadiusMM = number(random);
    result.shape = anyCase<ShapeKind>(random);
    result.imageFit = anyCase<ImageFit>(random);
    result.iconSizeMM = number(random);
    result.iconSpacingMM = number(random);
    result.opacity = number(random);
    for (auto count = random() % 3; count > 0; --count) result.rules.push_back(rule(random));
    result.hidden = coin(random);
    return result;
}

std::vector<Layer> layers(Random& random) {
    std::vector<Layer> result;
    for (auto count = random() % 4; count > 0; --count) result.push_back(layer(random));
    return result;
}

}  // namespace

CardTemplate randomTemplate(Random& random) {
    CardTemplate result(text(random), {anyCase<CardSize::Preset>(random), number(random), number(random)},
                        layers(random), layers(random));
    result.bleedMM = number(random);
    result.safeMM = number(random);
    result.cornerRadiusMM = number(random);
    result.background = color(random);
    result.backBackground = color(random);
    return result;
}

}  // namespace quorvel
