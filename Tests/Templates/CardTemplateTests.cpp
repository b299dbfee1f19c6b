#include "Templates/CardTemplate.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Layer layer(std::string content, LayerKind kind = LayerKind::text) {
    return {"layer", kind, {}, std::move(content)};
}

Layer ruled(std::string field) {
    Layer result = layer("", LayerKind::shape);
    result.rules = {StyleRule(std::move(field), StyleRule::Match::isEmpty, "", {}, {}, {}, false)};
    return result;
}

CardTemplate design(std::vector<Layer> front, std::vector<Layer> back) {
    return {"Design", CardSize::poker, std::move(front), std::move(back)};
}

TEST(CardTemplate, Defaults) {
    const CardTemplate made = design({layer("a")}, {layer("b")});
    EXPECT_EQ(made.name, "Design");
    EXPECT_EQ(made.size, CardSize::poker);
    EXPECT_EQ(made.bleedMM, 3);
    EXPECT_EQ(made.safeMM, 3);
    EXPECT_EQ(made.cornerRadiusMM, 3);
    EXPECT_EQ(made.background, RGBA::white);
    EXPECT_EQ(made.backBackground, RGBA(0.2, 0.2196078431372549, 0.30196078431372547));
    EXPECT_EQ(made.backBackground.hexString(), "#33384D");
    EXPECT_NE(made.id, design({}, {}).id);
}

TEST(CardTemplate, Sides) {
    const CardTemplate made = design({layer("a")}, {layer("b"), layer("c")});
    EXPECT_EQ(&made.layers(Side::front), &made.front);
    EXPECT_EQ(&made.layers(Side::back), &made.back);
    EXPECT_EQ(made.backgroundColor(Side::front), made.background);
    EXPECT_EQ(made.backgroundColor(Side::back), made.backBackground);
    EXPECT_EQ(textOf(Side::front), "front");
    EXPECT_EQ(textOf(Side::back), "back");
}

TEST(CardTemplate, ABackVariesByPlaceholderOrRule) {
    Layer hidden = layer("{{title}}");
    hidden.hidden = true;
    EXPECT_FALSE(design({layer("{{title}}"), ruled("type")}, {}).hasVaryingBack());
    EXPECT_FALSE(design({}, {layer("fixed"), layer("art/back.png", LayerKind::image)}).hasVaryingBack());
    EXPECT_TRUE(design({}, {layer("fixed"), layer("{{title}}")}).hasVaryingBack());
    EXPECT_TRUE(design({}, {layer("{{", LayerKind::shape)}).hasVaryingBack());
    EXPECT_TRUE(design({}, {hidden}).hasVaryingBack());
    EXPECT_TRUE(design({}, {ruled("type")}).hasVaryingBack());
}

TEST(CardTemplate, GathersTheNamesInUse) {
    EXPECT_THAT(design({}, {}).referencedNames(), IsEmpty());
    EXPECT_THAT(design({layer("{{ Title }} {{cost}}"), ruled(" Kind ")}, {layer("{{TITLE}}{{}}"), ruled("Cost")})
                    .referencedNames(),
                ElementsAre(" kind ", "cost", "title"));
}

}  // namespace
}  // namespace quorvel
