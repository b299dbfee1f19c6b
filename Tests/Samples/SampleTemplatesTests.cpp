#include "Cards/MakeCard.h"
#include "Samples/SampleTemplates.h"
#include "Templates/TemplateJSON.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>
#include <sstream>

namespace quorvel {
namespace {

using SampleTemplates::Kind;
using testing::IsSubsetOf;
using testing::SizeIs;

constexpr Kind kinds[] = {Kind::classic, Kind::tarot, Kind::mini};

/// What a layer is, without what it leaves at its default.
std::string look(const Layer& layer) {
    const Layer plain("", layer.kind, {}, "");
    std::ostringstream out;
    out << textOf(layer.kind) << " " << layer.frame.x << " " << layer.frame.y << " " << layer.frame.width << " "
        << layer.frame.height << " '" << layer.content << "'";
    if (layer.shape != plain.shape) out << " " << textOf(layer.shape);
    if (layer.fill) out << " fill " << layer.fill->hexString();
    if (layer.stroke) out << " stroke " << layer.stroke->hexString();
    if (layer.strokeWidth != plain.strokeWidth) out << " width " << layer.strokeWidth;
    if (layer.cornerRadiusMM != 0) out << " corner " << layer.cornerRadiusMM;
    if (layer.opacity != 1) out << " opacity " << layer.opacity;
    if (layer.iconSizeMM != plain.iconSizeMM) out << " icons of " << layer.iconSizeMM;
    if (layer.kind == LayerKind::text) out << " " << layer.style.fontFamily << " " << layer.style.size;
    if (layer.style.bold) out << " bold";
    if (layer.style.italic) out << " italic";
    if (layer.style.color != RGBA::black) out << " " << layer.style.color.hexString();
    if (layer.style.align != TextAlign::left) out << " " << textOf(layer.style.align);
    if (layer.style.verticalAlign != VerticalAlign::top) out << " " << textOf(layer.style.verticalAlign);
    if (!layer.style.colorfulIcons) out << " tinted";
    for (const StyleRule& rule : layer.rules) {
        out << " [" << rule.field << " " << textOf(rule.match);
        if (!rule.value.empty()) out << " " << rule.value;
        if (rule.fill) out << " " << rule.fill->hexString();
        if (rule.stroke || rule.textColor) out << " more colors";
        if (rule.hide) out << " hide";
        out << "]";
    }
    return out.str();
}

const Layer& layerNamed(const std::vector<Layer>& layers, std::string_view name) {
    return *std::find_if(layers.begin(), layers.end(), [&](const Layer& layer) { return layer.name == name; });
}

void expectLooks(const std::vector<Layer>& layers, const std::vector<std::pair<std::string, std::string>>& expected) {
    for (const auto& [name, text] : expected) {
        const auto count = std::count_if(layers.begin(), layers.end(), [&](const Layer& l) { return l.name == name; });
        ASSERT_EQ(count, 1) << name;
        EXPECT_EQ(look(layerNamed(layers, name)), text) << name;
    }
}

const std::string typeRules =
    " [type equals Harvest #5E8C4A] [type equals Courier #3D6A99] [type equals Tool #8A6D4B]"
    " [type equals Event #8A4F7D]";
const std::string costRule = " [cost isEmpty hide]";

TEST(SampleTemplates, Kinds) {
    const struct {
        Kind kind;
        std::string_view text;
        std::string_view label;
        std::string_view name;
        CardSize size;
        double cornerRadiusMM;
    } cases[] = {
        {Kind::classic, "classic", "Classic (poker size)", "Classic", CardSize::poker, 3},
        {Kind::tarot, "tarot", "Tall (tarot size)", "Tall", CardSize::tarot, 3},
        {Kind::mini, "mini", "Mini", "Mini", CardSize::mini, 2.5},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(textOf(each.kind), each.text);
        EXPECT_EQ(SampleTemplates::label(each.kind), each.label);
        const CardTemplate made = SampleTemplates::make(each.kind, "Game");
        EXPECT_EQ(made.name, each.name);
        EXPECT_EQ(made.size, each.size);
        EXPECT_EQ(made.bleedMM, 3);
        EXPECT_EQ(made.safeMM, 3);
        EXPECT_EQ(made.cornerRadiusMM, each.cornerRadiusMM);
        EXPECT_EQ(made.background, RGBA::white);
        EXPECT_EQ(made.backBackground.hexString(), "#2E3A55");
    }
    EXPECT_THAT(EnumText<Kind>::cases, SizeIs(3));
}

TEST(SampleTemplates, FrontOfClassic) {
    const auto front = SampleTemplates::make(Kind::classic, "Game").front;
    const std::vector<std::pair<std::string, std::string>> layers{
        {"Frame", "shape -3 -3 69.5 94.9 '' fill #545454"},
        {"Panel", "shape 3 3 57.5 82.9 '' fill #FBF6EA corner 2"},
        {"Title bar", "shape 5 4.5 53.5 10 '' fill #FFFFFF stroke #00000033 corner 1.5"},
        {"Title", "text 7 4.5 39.5 10 '{{title}}' Georgia 11 bold #2B2723 middle"},
        {"Cost disc", "shape 48.5 4.5 10 10 '' ellipse fill #E2B33C stroke #00000059" + costRule},
        {"Cost", "text 48.5 4.5 10 10 '{{cost}}' Georgia 13 bold #2B2723 center middle" + costRule},
        {"Art", "image 5 16 53.5 36 '{{art}}' fill #D9D9D9 stroke #0000004D width 0.5"},
        {"Type bar", "shape 5 53.5 53.5 6.5 '' fill #545454" + typeRules},
        {"Type", "text 7 53.5 49.5 6.5 '{{type}}' Helvetica Neue 8 italic #FFFFFF middle"},
        {"Rules text", "text 7 61.5 49.5 16.4 '{{text}}' Helvetica Neue 9 #2B2723"},
        {"Icons", "icons 7 78.4 49.5 5.5 '{{icons}}' icons of 4.6 right middle"},
    };
    ASSERT_EQ(front.size(), layers.size());
    for (std::size_t i = 0; i < layers.size(); ++i) EXPECT_EQ(front[i].name, layers[i].first);
    expectLooks(front, layers);
}

TEST(SampleTemplates, FrontOfTarot) {
    expectLooks(SampleTemplates::make(Kind::tarot, "Game").front,
                {
                    {"Art", "image -3 -3 75.85 78 '{{art}}' fill #D9D9D9"},
                    {"Frame", "shape -3 70 75.85 53.65 '' fill #545454" + typeRules},
                    {"Panel", "shape 3 85.5 63.85 32.15 '' fill #FBF6EA corner 2"},
                    {"Banner", "shape 0 70 69.85 14 '' fill #545454 opacity 0.95" + typeRules},
                    {"Cost disc", "shape 53.85 5 11 11 '' ellipse fill #E2B33C stroke #00000059" + costRule},
                    {"Cost", "text 53.85 5 11 11 '{{cost}}' Georgia 14 bold #2B2723 center middle" + costRule},
                    {"Title", "text 5 70 59.85 9 '{{title}}' Georgia 14 bold #FFFFFF center middle"},
                    {"Type", "text 5 78 59.85 5.5 '{{type}}' Helvetica Neue 8 italic #FBF6EA center middle"},
                    {"Rules text", "text 7 88 55.85 17.65 '{{text}}' Helvetica Neue 10 #2B2723 center"},
                    {"Icons", "icons 6 107.65 57.85 7 '{{icons}}' icons of 6 center middle"},
                });
}

TEST(SampleTemplates, FrontOfMini) {
    expectLooks(SampleTemplates::make(Kind::mini, "Game").front,
                {
                    {"Frame", "shape -3 -3 50.45 69.5 '' fill #545454" + typeRules},
                    {"Panel", "shape 2.5 2.5 39.45 58.5 '' fill #FBF6EA corner 2"},
                    {"Title", "text 4 4 36.45 9 '{{title}}' Georgia 9 bold #2B2723 center middle"},
                    {"Icons", "icons 4 14 36.45 22 '{{icons}}' icons of 9 center middle"},
                    {"Rules text", "text 4.5 38 35.45 21 '{{text}}' Helvetica Neue 7 #2B2723 center"},
                });
}

TEST(SampleTemplates, Backs) {
    for (const Kind kind : kinds) {
        const CardTemplate made = SampleTemplates::make(kind, "Orchard Couriers");
        const double w = made.size.widthMM;
        const double h = made.size.heightMM;
        const double s = w * 0.45;
        ASSERT_EQ(made.back.size(), 4u);
        const auto at = [](double x, double y, double width, double height) {
            std::ostringstream out;
            out << x << " " << y << " " << width << " " << height;
            return out.str();
        };
        std::ostringstream iconSize;
        iconSize << 0.55 * s;
        expectLooks(made.back,
                    {
                        {"Border", "shape " + at(4, 4, w - 8, h - 8) + " '' stroke #E2B33C width 1.2 corner 3"},
                        {"Badge", "shape " + at((w - s) / 2, 0.42 * h - s / 2, s, s) + " '' ellipse fill #E2B33C"},
                        {"Emblem", "icons " + at((w - 0.6 * s) / 2, 0.42 * h - 0.3 * s, 0.6 * s, 0.6 * s) +
                                       " 'star' icons of " + iconSize.str() + " #2E3A55 center middle tinted"},
                        {"Game name", "text " + at(6, 0.68 * h, w - 12, 0.16 * h) +
                                          " 'ORCHARD COURIERS' Georgia 13 bold #FBF6EA center middle"},
                    });
        EXPECT_EQ(made.back[0].name, "Border");
        EXPECT_EQ(made.back[1].name, "Badge");
        EXPECT_EQ(made.back[2].name, "Emblem");
        EXPECT_FALSE(made.hasVaryingBack());
    }
}

TEST(SampleTemplates, TheGameNameIsUpperCaseInAnyScript) {
    EXPECT_EQ(SampleTemplates::make(Kind::mini, "größe ñ").back.back().content, "GRÖSSE Ñ");
    EXPECT_EQ(SampleTemplates::make(Kind::mini, "").back.back().content, "");
}

TEST(SampleTemplates, TwoAreTheSameDesignWithOtherIdentities) {
    const auto ids = [](const CardTemplate& made) {
        std::set<UUID> result{made.id};
        for (const auto* layers : {&made.front, &made.back}) {
            for (const Layer& layer : *layers) {
                result.insert(layer.id);
                for (const StyleRule& rule : layer.rules) result.insert(rule.id);
            }
        }
        return result;
    };
    const auto withoutIds = [](const CardTemplate& made) {
        JSON json = toJSON(made).flatten();
        for (auto& [key, value] : json.items())
            if (key.ends_with("/id")) value = "";
        return json;
    };
    for (const Kind kind : kinds) {
        const CardTemplate first = SampleTemplates::make(kind, "Game");
        const CardTemplate second = SampleTemplates::make(kind, "Game");
        EXPECT_EQ(withoutIds(first), withoutIds(second));
        std::set<UUID> all = ids(first);
        const std::size_t count = all.size();
        all.merge(ids(second));
        EXPECT_EQ(all.size(), 2 * count);
    }
}

TEST(SampleTemplates, SpeakOfFieldsOnly) {
    std::vector<std::string> fields;
    for (const auto& [field, text] : EnumText<Field>::cases) fields.emplace_back(text);
    for (const Kind kind : kinds)
        EXPECT_THAT(SampleTemplates::make(kind, "Game").referencedNames(), IsSubsetOf(fields));
}

TEST(SampleTemplates, StandTheirFileForm) {
    for (const Kind kind : kinds) {
        const CardTemplate made = SampleTemplates::make(kind, "Game");
        const auto read = cardTemplateFromJSON(toJSON(made));
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, made);
    }
}

TEST(SampleTemplates, WordsAndIconsKeepToTheSafeZone) {
    for (const Kind kind : kinds) {
        const CardTemplate made = SampleTemplates::make(kind, "Game");
        for (const auto* layers : {&made.front, &made.back}) {
            for (const Layer& layer : *layers) {
                const bool isRead = layer.kind == LayerKind::text || layer.kind == LayerKind::icons;
                const double inset = isRead ? made.safeMM : -made.bleedMM;
                const Frame& frame = layer.frame;
                constexpr double hair = 1e-9;
                EXPECT_GE(frame.x, inset - hair) << layer.name;
                EXPECT_GE(frame.y, inset - hair) << layer.name;
                EXPECT_LE(frame.x + frame.width, made.size.widthMM - inset + hair) << layer.name;
                EXPECT_LE(frame.y + frame.height, made.size.heightMM - inset + hair) << layer.name;
            }
        }
    }
}

TEST(SampleTemplates, ACardWithoutACostShowsNoDisc) {
    const Card penny = makeCard({{"Name", "Lucky Penny"}, {"Cost", "0"}});
    const Card map = makeCard({{"Name", "Lost Map"}, {"Cost", " "}});
    for (const Kind kind : {Kind::classic, Kind::tarot}) {
        const auto front = SampleTemplates::make(kind, "Game").front;
        for (const char* name : {"Cost disc", "Cost"}) {
            EXPECT_FALSE(layerNamed(front, name).resolved(&penny).hidden);
            EXPECT_TRUE(layerNamed(front, name).resolved(&map).hidden);
        }
    }
}

TEST(SampleTemplates, TheTypeGivesTheBarItsColor) {
    const std::pair<Kind, const char*> bars[] = {
        {Kind::classic, "Type bar"}, {Kind::tarot, "Banner"}, {Kind::mini, "Frame"}};
    for (const auto& [kind, name] : bars) {
        const auto front = SampleTemplates::make(kind, "Game").front;
        const Layer& bar = layerNamed(front, name);
        for (const char* type : {"Harvest", "Courier", "Tool", "Event"}) {
            const Card card = makeCard({{"Type", type}});
            EXPECT_EQ(bar.resolved(&card).fill, SampleTemplates::typeColor(type));
        }
        const Card other = makeCard({{"Type", "Weather"}});
        EXPECT_EQ(bar.resolved(&other).fill, bar.fill);
    }
}

TEST(SampleTemplates, TypeColors) {
    EXPECT_EQ(SampleTemplates::typeColor("Harvest")->hexString(), "#5E8C4A");
    EXPECT_EQ(SampleTemplates::typeColor("Courier")->hexString(), "#3D6A99");
    EXPECT_EQ(SampleTemplates::typeColor("Tool")->hexString(), "#8A6D4B");
    EXPECT_EQ(SampleTemplates::typeColor("Event")->hexString(), "#8A4F7D");
    EXPECT_EQ(SampleTemplates::typeColor("harvest"), std::nullopt);
    EXPECT_EQ(SampleTemplates::typeColor(""), std::nullopt);
}

}  // namespace
}  // namespace quorvel
