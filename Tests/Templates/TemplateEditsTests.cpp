#include "Templates/RandomTemplate.h"
#include "Templates/TemplateEdits.h"
#include "Templates/TemplateJSON.h"

#include <cmath>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <set>

namespace quorvel::TemplateEdits {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Layer layer(std::string name, Frame frame = {}) {
    return {std::move(name), LayerKind::text, frame, "words"};
}

CardTemplate design(std::vector<Layer> front, std::vector<Layer> back = {}) {
    return {"Design", CardSize::poker, std::move(front), std::move(back)};
}

/// Four layers in front, one on the back.
CardTemplate five() {
    return design({layer("a"), layer("b"), layer("c"), layer("d")}, {layer("z")});
}

std::vector<std::string> names(const std::vector<Layer>& layers) {
    std::vector<std::string> result;
    for (const Layer& each : layers) result.push_back(each.name);
    return result;
}

TEST(NewLayer, startsAsItsKindDoes) {
    const CardSize size = CardSize::custom(50, 80);
    struct Row {
        LayerKind kind;
        std::string name;
        Frame frame;
        std::string content;
    };
    const Row rows[] = {
        {LayerKind::text, "Text", {0.15 * 50, 0.4 * 80, 0.7 * 50, 0.15 * 80}, "{{title}}"},
        {LayerKind::image, "Picture", {0.1 * 50, 0.2 * 80, 0.8 * 50, 0.35 * 80}, "{{art}}"},
        {LayerKind::shape, "Shape", {0.25 * 50, 0.3 * 80, 0.5 * 50, 0.2 * 80}, ""},
        {LayerKind::icons, "Icons", {0.1 * 50, 0.8 * 80, 0.8 * 50, 6}, "{{icons}}"},
    };
    for (const auto& [kind, name, frame, content] : rows) {
        Layer expected(name, kind, frame, content);
        if (kind == LayerKind::text || kind == LayerKind::icons) {
            expected.style.fontFamily = kind == LayerKind::text ? "Helvetica Neue" : "";
            expected.style.size = 10;
            expected.style.color = RGBA::black;
            expected.style.align = TextAlign::center;
            expected.style.verticalAlign = VerticalAlign::middle;
            expected.style.shrinkToFit = true;
            expected.style.colorfulIcons = true;
        }
        if (kind == LayerKind::shape) {
            expected.fill = RGBA::bytes(217, 191, 128, 255);
            expected.cornerRadiusMM = 1.5;
        }
        const Layer made = newLayer(kind, size);
        expected.id = made.id;
        EXPECT_EQ(made, expected) << name;
        EXPECT_NE(made.id, newLayer(kind, size).id) << name;
    }
}

TEST(Find, takesTheFirstOfTheSide) {
    CardTemplate twice = five();
    twice.front[2].id = twice.front[1].id;
    EXPECT_EQ(find(twice, Side::front, twice.front[1].id), &twice.front[1]);
    EXPECT_EQ(find(twice, Side::back, twice.back[0].id), &twice.back[0]);
    EXPECT_EQ(find(twice, Side::back, twice.front[0].id), nullptr) << "the other side";
    EXPECT_EQ(find(twice, Side::front, UUID::random()), nullptr);
    EXPECT_EQ(find(design({}), Side::front, UUID{}), nullptr);
}

TEST(Replacing, changesTheFirstWithTheId) {
    CardTemplate twice = five();
    twice.front[2].id = twice.front[1].id;
    Layer changed = twice.front[1];
    changed.name = "new";
    const CardTemplate after = replacing(twice, Side::front, changed);
    EXPECT_THAT(names(after.front), ElementsAre("a", "new", "c", "d"));
    EXPECT_EQ(after.back, twice.back);
}

TEST(Replacing, aLayerThatIsGoneChangesNothing) {
    const CardTemplate before = five();
    EXPECT_EQ(replacing(before, Side::front, layer("gone")), before);
    EXPECT_EQ(replacing(before, Side::back, before.front[0]), before);
    EXPECT_EQ(replacing(before, Side::front, before.front[2]), before) << "an equal layer";
}

TEST(Adding, putsItOnTop) {
    EXPECT_THAT(names(adding(five(), Side::front, layer("new")).front), ElementsAre("a", "b", "c", "d", "new"));
    EXPECT_THAT(names(adding(five(), Side::back, layer("new")).back), ElementsAre("z", "new"));
    EXPECT_THAT(names(adding(design({}), Side::front, layer("new")).front), ElementsAre("new"));
}

TEST(Removing, takesEveryLayerWithTheId) {
    CardTemplate twice = five();
    twice.front[3].id = twice.front[1].id;
    twice.back[0].id = twice.front[1].id;
    const CardTemplate after = removing(twice, Side::front, twice.front[1].id);
    EXPECT_THAT(names(after.front), ElementsAre("a", "c"));
    EXPECT_THAT(names(after.back), ElementsAre("z"));
    EXPECT_EQ(removing(twice, Side::front, UUID::random()), twice);
    EXPECT_THAT(removing(after, Side::back, twice.front[1].id).back, IsEmpty());
}

TEST(CopyOf, isTheSameUnderANewIdAndALittleLower) {
    Layer source = layer("Title", {5, 7, 30, 10});
    source.rules = {StyleRule("type", StyleRule::Match::equals, "Tool", RGBA::white, {}, {}, true)};
    const Layer copy = copyOf(source);
    EXPECT_NE(copy.id, source.id);
    Layer expected = source;
    expected.id = copy.id;
    expected.name = "Title copy";
    expected.frame = {7, 9, 30, 10};
    EXPECT_EQ(copy, expected);
    EXPECT_EQ(copy.rules.front().id, source.rules.front().id);
    EXPECT_EQ(copyOf(copy).name, "Title copy copy");
}

TEST(AddingAbove, liesDirectlyAboveItsSource) {
    const CardTemplate before = five();
    const auto above = [&](const UUID& source) {
        return names(addingAbove(before, Side::front, source, layer("new")).front);
    };
    EXPECT_THAT(above(before.front[0].id), ElementsAre("a", "new", "b", "c", "d"));
    EXPECT_THAT(above(before.front[3].id), ElementsAre("a", "b", "c", "d", "new"));
    EXPECT_THAT(above(before.back[0].id), ElementsAre("a", "b", "c", "d", "new")) << "no such source";
    EXPECT_THAT(names(addingAbove(design({}), Side::back, UUID{}, layer("new")).back), ElementsAre("new"));
}

TEST(Moving, changesPlacesWithinTheList) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    struct Row {
        std::size_t index;
        std::int64_t delta;
        std::vector<std::string> after;
    };
    const Row rows[] = {
        {1, 1, {"a", "c", "b", "d"}},     {1, -1, {"b", "a", "c", "d"}},   {1, 0, {"a", "b", "c", "d"}},
        {3, 1, {"a", "b", "c", "d"}},     {0, -1, {"a", "b", "c", "d"}},   {0, 2, {"c", "b", "a", "d"}},
        {1, 99, {"a", "d", "c", "b"}},    {2, -99, {"c", "b", "a", "d"}},  {1, most, {"a", "d", "c", "b"}},
        {2, least, {"c", "b", "a", "d"}}, {3, most, {"a", "b", "c", "d"}}, {0, least, {"a", "b", "c", "d"}},
    };
    const CardTemplate before = five();
    for (const auto& [index, delta, after] : rows) {
        const CardTemplate moved = moving(before, Side::front, before.front[index].id, delta);
        EXPECT_EQ(names(moved.front), after) << index << " by " << delta;
        EXPECT_EQ(moved == before, names(before.front) == after);
    }
    EXPECT_EQ(moving(before, Side::front, before.back[0].id, 1), before);
    EXPECT_EQ(moving(before, Side::back, before.back[0].id, -1), before);
}

TEST(Nudging, addsMillimetres) {
    const CardTemplate before = design({layer("a", {1, 2, 3, 4})});
    const UUID id = before.front[0].id;
    EXPECT_EQ(nudging(before, Side::front, id, 0.5, -1).front[0].frame, (Frame{1.5, 1, 3, 4}));
    EXPECT_EQ(nudging(before, Side::front, id, -1000, 1000).front[0].frame, (Frame{-999, 1002, 3, 4}))
        << "off the card";
    EXPECT_EQ(nudging(before, Side::front, id, 0, 0), before);
    EXPECT_EQ(nudging(before, Side::back, id, 1, 1), before);
}

TEST(ScaleLayers, scalesFramesAndIconSizesOnly) {
    Layer before = layer("a", {1, 2, 3, 4});
    before.style.size = 11;
    before.strokeWidth = 2;
    before.cornerRadiusMM = 3;
    before.iconSpacingMM = 4;
    before.iconSizeMM = 5;
    Layer expected = before;
    expected.frame = {2, 6, 6, 12};
    expected.iconSizeMM = 10;
    EXPECT_THAT(scaleLayers({before}, 2, 3), ElementsAre(expected));
    expected.frame = {3, 4, 9, 8};
    EXPECT_THAT(scaleLayers({before}, 3, 2), ElementsAre(expected)) << "the smaller of both, either way";
    EXPECT_THAT(scaleLayers({before}, 1, 1), ElementsAre(before));
    EXPECT_THAT(scaleLayers({}, 2, 2), IsEmpty());
}

TEST(ScaleLayers, leavesNoLengthInfinite) {
    const Layer huge = layer("a", {1e308, -1e308, 10, 0});
    const Frame scaled = scaleLayers({huge}, 10, 10).front().frame;
    EXPECT_EQ(scaled, (Frame{1e308, -1e308, 100, 0}));
    for (const double factor : {infinity, -infinity, nan})
        EXPECT_THAT(scaleLayers({huge}, factor, factor), ElementsAre(huge));
}

TEST(WithPreset, scalesBothSides) {
    Layer before = layer("a", {1, 2, 30, 40});
    const CardTemplate poker = design({before}, {before});
    const CardTemplate tarot = withPreset(poker, CardSize::Preset::tarot);
    const double sx = 69.85 / 63.5;
    const double sy = 120.65 / 88.9;
    EXPECT_EQ(tarot.size, CardSize::tarot);
    for (const Side side : {Side::front, Side::back}) {
        const Layer& after = tarot.layers(side).front();
        EXPECT_EQ(after.frame, (Frame{1 * sx, 2 * sy, 30 * sx, 40 * sy}));
        EXPECT_EQ(after.iconSizeMM, 5 * std::min(sx, sy));
        EXPECT_EQ(after.style, before.style);
    }
    CardTemplate unscaled = tarot;
    unscaled.size = poker.size;
    unscaled.front = poker.front;
    unscaled.back = poker.back;
    EXPECT_EQ(unscaled, poker) << "bleed, safe zone, corners, name and id stay";
}

TEST(WithPreset, reachesEveryPreset) {
    for (const auto& [preset, name] : EnumText<CardSize::Preset>::cases) {
        const CardTemplate after = withPreset(five(), preset);
        EXPECT_EQ(after.size.preset, preset) << name;
        EXPECT_EQ(after.size, preset == CardSize::Preset::custom ? CardSize(preset, 63.5, 88.9) : CardSize(preset));
    }
}

TEST(WithPreset, customOnlyChangesTheName) {
    const CardTemplate before = design({layer("a", {1, 2, 3, 4})});
    CardTemplate expected = before;
    expected.size.preset = CardSize::Preset::custom;
    EXPECT_EQ(withPreset(before, CardSize::Preset::custom), expected);
    EXPECT_EQ(withPreset(before, CardSize::Preset::poker), before) << "the same preset again";
}

TEST(WithSize, scalesAndRaises) {
    struct Row {
        double width, height;
        CardSize after;
    };
    const Row rows[] = {
        {127, 88.9, {CardSize::Preset::custom, 127, 88.9}},   {63.5, 88.9, {CardSize::Preset::custom, 63.5, 88.9}},
        {4, 88.9, {CardSize::Preset::custom, 10, 88.9}},      {63.5, 9.99, {CardSize::Preset::custom, 63.5, 10}},
        {-5, 0, {CardSize::Preset::custom, 10, 10}},          {nan, 88.9, {CardSize::Preset::custom, 10, 88.9}},
        {infinity, 20, {CardSize::Preset::custom, 63.5, 20}}, {20, -infinity, {CardSize::Preset::custom, 20, 88.9}},
    };
    const CardTemplate before = design({layer("a", {1, 2, 30, 40})}, {layer("b", {5, 6, 7, 8})});
    for (const auto& [width, height, size] : rows) {
        const CardTemplate after = withSize(before, width, height);
        EXPECT_EQ(after.size, size) << width << " x " << height;
        const double sx = size.widthMM / 63.5;
        const double sy = size.heightMM / 88.9;
        EXPECT_EQ(after.front[0].frame, (Frame{1 * sx, 2 * sy, 30 * sx, 40 * sy})) << width << " x " << height;
        EXPECT_EQ(after.back[0].frame, (Frame{5 * sx, 6 * sy, 7 * sx, 8 * sy})) << width << " x " << height;
    }
}

TEST(WithSize, alsoRaisesTheDimensionThatWasNotTyped) {
    CardTemplate before = design({layer("a", {1, 2, 30, 40})});
    before.size = CardSize(CardSize::Preset::custom, 20, 5);
    const CardTemplate after = withSize(before, 40, before.size.heightMM);
    EXPECT_EQ(after.size, CardSize(CardSize::Preset::custom, 40, 10));
    EXPECT_EQ(after.front[0].frame, (Frame{2, 4, 60, 80}));
}

TEST(WithSize, aDesignWithoutASizeKeepsItsLayers) {
    for (const double nothing : {0.0, -0.0, -20.0}) {
        CardTemplate before = design({layer("a", {1, 2, 30, 40})});
        before.size = CardSize(CardSize::Preset::custom, nothing, 88.9);
        const CardTemplate after = withPreset(before, CardSize::Preset::poker);
        EXPECT_EQ(after.size, CardSize::poker);
        EXPECT_EQ(after.front, before.front) << nothing;
    }
}

TEST(TemplateEdits, touchOnlyWhatTheyAreAskedTo) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 300; ++round) {
        const CardTemplate before = randomTemplate(random);
        for (const Side side : {Side::front, Side::back}) {
            const Side other = side == Side::front ? Side::back : Side::front;
            const UUID id = before.layers(side).empty() ? UUID::random() : before.layers(side).back().id;
            const Layer added = newLayer(LayerKind::shape, before.size);
            for (CardTemplate after :
                 {adding(before, side, added), removing(before, side, id), moving(before, side, id, -1),
                  nudging(before, side, id, 1, 1), addingAbove(before, side, id, added)}) {
                EXPECT_EQ(after.layers(other), before.layers(other));
                (side == Side::front ? after.front : after.back) = before.layers(side);
                EXPECT_EQ(after, before);
            }
            EXPECT_EQ(removing(adding(before, side, added), side, added.id), before);
            const auto delta = std::int64_t(random() % 7) - 3;
            const CardTemplate moved = moving(before, side, id, delta);
            EXPECT_TRUE(std::is_permutation(moved.layers(side).begin(), moved.layers(side).end(),
                                            before.layers(side).begin(), before.layers(side).end()));
        }
    }
}

TEST(TemplateEdits, whatHasBeenResizedCanBeReadBack) {
    std::mt19937_64 random(12);
    const double sizes[] = {4, 63.5, 1e9, 1.7e308, infinity, nan};
    for (int round = 0; round < 300; ++round) {
        CardTemplate design = randomTemplate(random);
        for (const double width : sizes) design = withSize(std::move(design), width, sizes[round % 6]);
        design = withPreset(std::move(design), CardSize::Preset::mini);
        const auto read = cardTemplateFromJSON(*parseJSON(prettyJSON(toJSON(design))));
        ASSERT_TRUE(read) << read.error().description();
        EXPECT_EQ(read->front, design.front);
    }
}

}  // namespace
}  // namespace quorvel::TemplateEdits
