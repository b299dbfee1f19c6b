#include "Cards/Deck.h"
#include "Model/MissingArt.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Cards with the columns Art and Back, of which the first feeds the field.
std::vector<Card> cards(const std::vector<std::pair<std::string_view, std::string_view>>& rows) {
    TextRows cells;
    for (const auto& [art, back] : rows) {
        cells.appendCell(art);
        cells.appendCell(back);
        cells.endRow();
    }
    const std::vector<std::string> headers{"Art", "Back"};
    return Deck(DataTable(headers, cells, "cards.csv"), FieldMapping::guess(headers)).cards;
}

Layer layer(std::string content, LayerKind kind = LayerKind::image) {
    return {"layer", kind, {}, std::move(content)};
}

CardTemplate design(std::vector<Layer> front, std::vector<Layer> back) {
    return {"Design", CardSize::poker, std::move(front), std::move(back)};
}

TEST(PictureNames, goCardByCardFrontBeforeBack) {
    const CardTemplate two = design({layer("{{art}}"), layer("frames/{{Art}}")}, {layer("{{back}}")});
    EXPECT_THAT(MissingArt::pictureNames(two, cards({{"a", "b"}, {"c", "d"}})),
                ElementsAre("a", "frames/a", "b", "c", "frames/c", "d"));
}

TEST(PictureNames, comeFromImageLayersOnly) {
    const CardTemplate mixed = design({layer("{{art}}", LayerKind::text), layer("{{art}}", LayerKind::shape),
                                       layer("{{art}}", LayerKind::icons), layer("logo.png")},
                                      {layer("{{back}}", LayerKind::text)});
    EXPECT_THAT(MissingArt::pictureNames(mixed, cards({{"a", "b"}})), ElementsAre("logo.png"));
}

TEST(PictureNames, includeRepeatsAndEmptyOnes) {
    const CardTemplate plain = design({layer("{{art}}"), layer("{{nowhere}}"), layer("")}, {layer("back.png")});
    EXPECT_THAT(MissingArt::pictureNames(plain, cards({{"a", ""}, {"", ""}, {"a", ""}})),
                ElementsAre("a", "", "", "back.png", "", "", "", "back.png", "a", "", "", "back.png"));
}

TEST(PictureNames, includeHiddenLayers) {
    Layer hidden = layer("{{art}}");
    hidden.hidden = true;
    Layer ruled = layer("{{back}}");
    ruled.rules = {StyleRule("art", StyleRule::Match::isNotEmpty, "", {}, {}, {}, true)};
    EXPECT_THAT(MissingArt::pictureNames(design({hidden, ruled}, {}), cards({{"a", "b"}})), ElementsAre("a", "b"));
}

TEST(PictureNames, readNoPlaceholdersInCells) {
    EXPECT_THAT(MissingArt::pictureNames(design({layer("{{art}}")}, {}), cards({{"{{back}}", "b"}})),
                ElementsAre("{{back}}"));
}

TEST(PictureNames, needCardsAndLayers) {
    EXPECT_THAT(MissingArt::pictureNames(design({layer("logo.png")}, {}), {}), IsEmpty());
    EXPECT_THAT(MissingArt::pictureNames(design({}, {}), cards({{"a", "b"}})), IsEmpty());
    EXPECT_THAT(MissingArt::pictureNames(design({layer("a{{art}}")}, {}), {Card()}), ElementsAre("a"));
}

}  // namespace
}  // namespace quorvel
