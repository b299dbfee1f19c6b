#include "Samples/SampleTemplates.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvel::SampleTemplates {

namespace {

constexpr std::string_view titleFont = "Georgia";
constexpr std::string_view textFont = "Helvetica Neue";

RGBA color(std::string_view hex) {
    return RGBA::parseHex(hex).value_or(RGBA::black);
}

struct Palette {
    RGBA gold = color("#E2B33C");
    RGBA ink = color("#2B2723");
    RGBA cream = color("#FBF6EA");
    RGBA navy = color("#2E3A55");
    RGBA slate{0.32941176, 0.32941176, 0.32941176};
    RGBA pictureGrey{0.85098039, 0.85098039, 0.85098039};

    std::array<std::pair<std::string_view, RGBA>, 4> types{{
        {"Harvest", color("#5E8C4A")},
        {"Courier", color("#3D6A99")},
        {"Tool", color("#8A6D4B")},
        {"Event", color("#8A4F7D")},
    }};
};

const Palette& palette() {
    static const Palette made;
    return made;
}

RGBA shade(double alpha) {
    return {0, 0, 0, alpha};
}

/// One rule for each type, which gives its colour to the layer's fill.
std::vector<StyleRule> typeRules() {
    std::vector<StyleRule> rules;
    for (const auto& [type, fill] : palette().types)
        rules.emplace_back("type", StyleRule::Match::equals, std::string(type), fill, std::nullopt, std::nullopt,
                           false);
    return rules;
}

/// Hides what belongs to the cost on cards that have none.
std::vector<StyleRule> costRule() {
    return {StyleRule("cost", StyleRule::Match::isEmpty, "", std::nullopt, std::nullopt, std::nullopt, true)};
}

Layer shape(std::string name, Frame frame, std::optional<RGBA> fill, double cornerRadiusMM = 0) {
    Layer layer(std::move(name), LayerKind::shape, frame, "");
    layer.fill = fill;
    layer.cornerRadiusMM = cornerRadiusMM;
    return layer;
}

/// A shape that takes the colour of the card's type; slate for a type it doesn't know.
Layer typeShape(std::string name, Frame frame) {
    Layer layer = shape(std::move(name), frame, palette().slate);
    layer.rules = typeRules();
    return layer;
}

Layer text(std::string name, Frame frame, std::string content, TextStyle style) {
    Layer layer(std::move(name), LayerKind::text, frame, std::move(content));
    layer.style = std::move(style);
    return layer;
}

TextStyle titleStyle(double size, RGBA color, TextAlign align) {
    return {std::string(titleFont), size, color, align, VerticalAlign::middle, true};
}

TextStyle typeStyle(RGBA color, TextAlign align) {
    return {std::string(textFont), 8, color, align, VerticalAlign::middle, false, true};
}

TextStyle rulesStyle(double size, TextAlign align) {
    return {std::string(textFont), size, palette().ink, align, VerticalAlign::top};
}

Layer art(Frame frame) {
    Layer layer("Art", LayerKind::image, frame, "{{art}}");
    layer.fill = palette().pictureGrey;
    return layer;
}

Layer icons(Frame frame, double sizeMM, TextAlign align) {
    Layer layer("Icons", LayerKind::icons, frame, "{{icons}}");
    layer.iconSizeMM = sizeMM;
    layer.style.align = align;
    layer.style.verticalAlign = VerticalAlign::middle;
    return layer;
}

Layer costDisc(Frame frame) {
    Layer layer = shape("Cost disc", frame, palette().gold);
    layer.shape = ShapeKind::ellipse;
    layer.stroke = shade(0.34901961);
    layer.rules = costRule();
    return layer;
}

Layer cost(Frame frame, double size) {
    Layer layer = text("Cost", frame, "{{cost}}", titleStyle(size, palette().ink, TextAlign::center));
    layer.rules = costRule();
    return layer;
}

std::vector<Layer> classicFront() {
    const Palette& colors = palette();

    Layer titleBar = shape("Title bar", {5, 4.5, 53.5, 10}, RGBA::white, 1.5);
    titleBar.stroke = shade(0.2);
    Layer picture = art({5, 16, 53.5, 36});
    picture.stroke = shade(0.30196078);
    picture.strokeWidth = 0.5;

    return {
        shape("Frame", {-3, -3, 69.5, 94.9}, colors.slate),
        shape("Panel", {3, 3, 57.5, 82.9}, colors.cream, 2),
        titleBar,
        text("Title", {7, 4.5, 39.5, 10}, "{{title}}", titleStyle(11, colors.ink, TextAlign::left)),
        costDisc({48.5, 4.5, 10, 10}),
        cost({48.5, 4.5, 10, 10}, 13),
        picture,
        typeShape("Type bar", {5, 53.5, 53.5, 6.5}),
        text("Type", {7, 53.5, 49.5, 6.5}, "{{type}}", typeStyle(RGBA::white, TextAlign::left)),
        text("Rules text", {7, 61.5, 49.5, 16.4}, "{{text}}", rulesStyle(9, TextAlign::left)),
        icons({7, 78.4, 49.5, 5.5}, 4.6, TextAlign::right),
    };
}

/// The picture bleeds off three sides; a banner in the type's colour lies over its lower edge. The frame in the same
/// colour begins where the banner does, so that the picture's edge doesn't show through it, and reaches into the bleed
/// beside it, so that a cut that is off by a little finds the banner's colour.
std::vector<Layer> tarotFront() {
    const Palette& colors = palette();

    Layer banner = typeShape("Banner", {0, 70, 69.85, 14});
    banner.opacity = 0.95;

    return {
        art({-3, -3, 75.85, 78}),
        typeShape("Frame", {-3, 70, 75.85, 53.65}),
        shape("Panel", {3, 85.5, 63.85, 32.15}, colors.cream, 2),
        banner,
        shape("Banner line", {-3, 69.6, 75.85, 0.8}, colors.gold),
        text("Title", {5, 70, 59.85, 9}, "{{title}}", titleStyle(14, RGBA::white, TextAlign::center)),
        text("Type", {5, 78, 59.85, 5.5}, "{{type}}", typeStyle(colors.cream, TextAlign::center)),
        costDisc({53.85, 5, 11, 11}),
        cost({53.85, 5, 11, 11}, 14),
        text("Rules text", {7, 88, 55.85, 17.65}, "{{text}}", rulesStyle(10, TextAlign::center)),
        icons({6, 107.65, 57.85, 7}, 6, TextAlign::center),
    };
}

/// A card too small for a picture: its icons stand large in the picture's place.
std::vector<Layer> miniFront() {
    const Palette& colors = palette();

    Layer window = shape("Icon panel", {4, 14, 36.45, 22}, RGBA::white, 1.5);
    window.stroke = shade(0.2);

    return {
        typeShape("Frame", {-3, -3, 50.45, 69.5}),
        shape("Panel", {2.5, 2.5, 39.45, 58.5}, colors.cream, 2),
        text("Title", {4, 4, 36.45, 9}, "{{title}}", titleStyle(9, colors.ink, TextAlign::center)),
        window,
        icons({4, 14, 36.45, 22}, 9, TextAlign::center),
        text("Rules text", {4.5, 38, 35.45, 21}, "{{text}}", rulesStyle(7, TextAlign::center)),
    };
}

std::vector<Layer> back(CardSize size, std::string_view gameName) {
    const Palette& colors = palette();
    const double w = size.widthMM;
    const double h = size.heightMM;
    const double badgeSide = std::min(w, h) * 0.45;
    const double emblemSide = 0.6 * badgeSide;

    Layer border = shape("Border", {4, 4, w - 8, h - 8}, std::nullopt, 3);
    border.stroke = colors.gold;
    border.strokeWidth = 1.2;

    Layer badge = shape("Badge", {(w - badgeSide) / 2, 0.42 * h - badgeSide / 2, badgeSide, badgeSide}, colors.gold);
    badge.shape = ShapeKind::ellipse;

    Layer emblem("Emblem", LayerKind::icons, {(w - emblemSide) / 2, 0.42 * h - 0.3 * badgeSide, emblemSide, emblemSide},
                 "star");
    emblem.iconSizeMM = 0.55 * badgeSide;
    emblem.style.color = colors.navy;
    emblem.style.colorfulIcons = false;
    emblem.style.align = TextAlign::center;
    emblem.style.verticalAlign = VerticalAlign::middle;

    return {border, badge, emblem,
            text("Game name", {6, 0.68 * h, w - 12, 0.16 * h}, Text::uppercased(gameName),
                 titleStyle(13, colors.cream, TextAlign::center))};
}

struct Design {
    std::string_view name;
    CardSize size;
    double cornerRadiusMM;
    std::vector<Layer> (*front)();
};

Design design(Kind kind) {
    switch (kind) {
        case Kind::classic:
            break;
        case Kind::tarot:
            return {"Tall", CardSize::tarot, 3, tarotFront};
        case Kind::mini:
            return {"Mini", CardSize::mini, 2.5, miniFront};
    }
    return {"Classic", CardSize::poker, 3, classicFront};
}

}  // namespace

std::string_view label(Kind kind) {
    switch (kind) {
        case Kind::classic:
            return "Classic (poker size)";
        case Kind::tarot:
            return "Tall (tarot size)";
        case Kind::mini:
            return "Mini";
    }
    return {};
}

CardTemplate make(Kind kind, std::string_view gameName) {
    const Design chosen = design(kind);
    CardTemplate result(std::string(chosen.name), chosen.size, chosen.front(), back(chosen.size, gameName));
    result.cornerRadiusMM = chosen.cornerRadiusMM;
    result.backBackground = palette().navy;
    return result;
}

std::optional<RGBA> typeColor(std::string_view type) {
    for (const auto& [each, fill] : palette().types)
        if (each == type) return fill;
    return std::nullopt;
}

}  // namespace quorvel::SampleTemplates
