#include "Cards/MakeCard.h"
#include "Templates/Layer.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

const RGBA red = RGBA::bytes(255, 0, 0);
const RGBA green = RGBA::bytes(0, 255, 0);
const RGBA blue = RGBA::bytes(0, 0, 255);

struct Colors {
    std::optional<RGBA> fill = std::nullopt;
    std::optional<RGBA> stroke = std::nullopt;
    std::optional<RGBA> textColor = std::nullopt;
};

StyleRule onTools(Colors colors, bool hide = false) {
    return StyleRule("type", StyleRule::Match::equals, "tool", colors.fill, colors.stroke, colors.textColor, hide);
}

StyleRule onOthers(Colors colors, bool hide = false) {
    StyleRule rule = onTools(colors, hide);
    rule.value = "event";
    return rule;
}

const Card tool = makeCard({{"Type", "Tool"}});

TEST(Layer, Defaults) {
    const Layer layer("Title", LayerKind::text, {1, 2, 3, 4}, "{{title}}");
    EXPECT_EQ(layer.name, "Title");
    EXPECT_EQ(layer.kind, LayerKind::text);
    EXPECT_EQ(layer.frame, (Frame{1, 2, 3, 4}));
    EXPECT_EQ(layer.content, "{{title}}");
    EXPECT_EQ(layer.style, TextStyle());
    EXPECT_EQ(layer.fill, std::nullopt);
    EXPECT_EQ(layer.stroke, std::nullopt);
    EXPECT_EQ(layer.strokeWidth, 1);
    EXPECT_EQ(layer.cornerRadiusMM, 0);
    EXPECT_EQ(layer.shape, ShapeKind::rectangle);
    EXPECT_EQ(layer.imageFit, ImageFit::fill);
    EXPECT_EQ(layer.iconSizeMM, 5);
    EXPECT_EQ(layer.iconSpacingMM, 1);
    EXPECT_EQ(layer.opacity, 1);
    EXPECT_TRUE(layer.rules.empty());
    EXPECT_FALSE(layer.hidden);
    EXPECT_NE(layer.id, Layer("Title", LayerKind::text, {1, 2, 3, 4}, "{{title}}").id);
}

TEST(Layer, TextStyleDefaults) {
    const TextStyle style;
    EXPECT_EQ(style.fontFamily, "");
    EXPECT_EQ(style.size, 10);
    EXPECT_EQ(style.color, RGBA::black);
    EXPECT_EQ(style.align, TextAlign::left);
    EXPECT_EQ(style.verticalAlign, VerticalAlign::top);
    EXPECT_FALSE(style.bold);
    EXPECT_FALSE(style.italic);
    EXPECT_TRUE(style.shrinkToFit);
    EXPECT_TRUE(style.colorfulIcons);

    const TextStyle made("Georgia", 12, red, TextAlign::right, VerticalAlign::bottom, false, true);
    EXPECT_EQ(made.fontFamily, "Georgia");
    EXPECT_EQ(made.size, 12);
    EXPECT_EQ(made.color, red);
    EXPECT_EQ(made.align, TextAlign::right);
    EXPECT_EQ(made.verticalAlign, VerticalAlign::bottom);
    EXPECT_FALSE(made.bold);
    EXPECT_TRUE(made.italic);
    EXPECT_TRUE(made.shrinkToFit);
    EXPECT_TRUE(made.colorfulIcons);
}

TEST(Layer, RulesNeedACard) {
    Layer layer("a", LayerKind::shape, {}, "");
    layer.rules = {StyleRule("nope", StyleRule::Match::isEmpty, "", red, red, red, true)};
    EXPECT_EQ(layer.resolved(nullptr), layer);
    const Layer resolved = layer.resolved(&tool);
    EXPECT_TRUE(resolved.hidden);
    EXPECT_EQ(resolved.fill, red);
    EXPECT_EQ(resolved.stroke, red);
    EXPECT_EQ(resolved.style.color, red);
    EXPECT_EQ(resolved.rules, layer.rules);
}

TEST(Layer, TheFirstMatchingRuleSetsEachColor) {
    const struct {
        const char* what;
        std::vector<StyleRule> rules;
        Colors expected;
        bool hidden;
    } cases[] = {
        {"none", {}, {green, std::nullopt, RGBA::black}, false},
        {"no match", {onOthers({red, red, red}, true)}, {green, std::nullopt, RGBA::black}, false},
        {"first fill, second stroke",
         {onTools({.fill = red}), onTools({.fill = blue, .stroke = blue})},
         {red, blue, RGBA::black},
         false},
        {"a rule that doesn't match sets nothing",
         {onOthers({.fill = red}), onTools({.fill = blue})},
         {blue, std::nullopt, RGBA::black},
         false},
        {"hide, then fill", {onTools({}, true), onTools({.fill = red})}, {red, std::nullopt, RGBA::black}, true},
        {"fill, then hide",
         {onTools({.fill = red}), onTools({.fill = blue}, true)},
         {red, std::nullopt, RGBA::black},
         true},
        {"text color", {onTools({.textColor = red}), onTools({.textColor = blue})}, {green, std::nullopt, red}, false},
        {"the layer's own color counts as a color",
         {onTools({.fill = green}), onTools({.fill = blue})},
         {green, std::nullopt, RGBA::black},
         false},
    };
    for (const auto& each : cases) {
        Layer layer("a", LayerKind::shape, {}, "");
        layer.fill = green;
        layer.rules = each.rules;
        const Layer resolved = layer.resolved(&tool);
        EXPECT_EQ(resolved.fill, each.expected.fill) << each.what;
        EXPECT_EQ(resolved.stroke, each.expected.stroke) << each.what;
        EXPECT_EQ(resolved.style.color, each.expected.textColor) << each.what;
        EXPECT_EQ(resolved.hidden, each.hidden) << each.what;
    }
}

TEST(Layer, NoRuleShowsAHiddenLayer) {
    Layer layer("a", LayerKind::shape, {}, "");
    layer.hidden = true;
    layer.rules = {onTools({.fill = red})};
    EXPECT_TRUE(layer.resolved(&tool).hidden);
}

}  // namespace
}  // namespace quorvel
