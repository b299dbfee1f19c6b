#include "Templates/RandomTemplate.h"
#include "Templates/TemplateJSON.h"

#include <functional>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

/// One design that has every kind of record in it.
CardTemplate full() {
    Layer layer("Title", LayerKind::text, {1, 2.5, 30, 4}, "{{title}}");
    layer.fill = RGBA::bytes(1, 2, 3);
    layer.stroke = RGBA::bytes(1, 2, 3, 4);
    layer.rules = {
        StyleRule("type", StyleRule::Match::equals, "Tool", RGBA::black, RGBA::white, RGBA::clear, true),
        StyleRule("cost", StyleRule::Match::isEmpty, "", std::nullopt, std::nullopt, std::nullopt, false),
    };
    Layer bare("Back", LayerKind::image, {}, "back.png");
    return {"Design", CardSize::tarot, {layer, bare}, {bare}};
}

/// Calls `visit` with the path of every key of every object, as failures write it, and the JSON pointer to it.
void forEachKey(const JSON& json, const std::string& path, const JSON::json_pointer& place,
                const std::function<void(const std::string&, const JSON::json_pointer&)>& visit) {
    if (json.is_object()) {
        for (const auto& [key, value] : json.items()) {
            const std::string inner = path.empty() ? key : path + "." + key;
            visit(inner, place / key);
            forEachKey(value, inner, place / key, visit);
        }
    } else if (json.is_array()) {
        for (std::size_t i = 0; i < json.size(); ++i)
            forEachKey(json[i], path + "[" + std::to_string(i) + "]", place / i, visit);
    }
}

std::string lastKey(const JSON::json_pointer& place) {
    return place.back();
}

bool isOptionalColor(const JSON& json, const JSON::json_pointer& place) {
    return (lastKey(place) == "fill" || lastKey(place) == "stroke" || lastKey(place) == "textColor") &&
           json.at(place).is_string();
}

TEST(TemplateJSON, RandomDesignsThereAndBack) {
    std::mt19937_64 random(5);
    for (int round = 0; round < 300; ++round) {
        const CardTemplate design = randomTemplate(random);
        const std::string text = templateFileText(design);
        const auto json = parseJSON(text);
        ASSERT_TRUE(json);
        const auto read = cardTemplateFromJSON(*json);
        ASSERT_TRUE(read) << read.error().description();
        ASSERT_EQ(*read, design) << text;
        ASSERT_EQ(templateFileText(*read), text);
    }
}

TEST(TemplateJSON, AFileGetsANewIdentityAndKeepsTheOthers) {
    const CardTemplate design = full();
    auto read = templateFromFileText(templateFileText(design));
    ASSERT_TRUE(read);
    EXPECT_NE(read->id, design.id);
    EXPECT_NE(read->id, templateFromFileText(templateFileText(design))->id);
    read->id = design.id;
    EXPECT_EQ(*read, design);
}

TEST(TemplateJSON, WritesTheShape) {
    const JSON json = toJSON(full());
    const auto keys = [](const JSON& object) {
        std::string result;
        for (const auto& [key, value] : object.items()) result += (result.empty() ? "" : " ") + key;
        return result;
    };
    EXPECT_EQ(keys(json), "back backBackground background bleedMM cornerRadiusMM front id name safeMM size");
    EXPECT_EQ(keys(json["size"]), "heightMM preset widthMM");
    const JSON& layer = json["front"][0];
    EXPECT_EQ(keys(layer),
              "content cornerRadiusMM fill frame hidden iconSizeMM iconSpacingMM id imageFit kind name opacity rules "
              "shape stroke strokeWidth style");
    EXPECT_EQ(keys(layer["frame"]), "height width x y");
    EXPECT_EQ(keys(layer["style"]), "align bold color colorfulIcons fontFamily italic shrinkToFit size verticalAlign");
    EXPECT_EQ(keys(layer["rules"][0]), "field fill hide id match stroke textColor value");
    EXPECT_EQ(keys(layer["rules"][1]), "field hide id match value");
    EXPECT_EQ(layer["fill"], "#010203");
    EXPECT_EQ(layer["stroke"], "#01020304");
    EXPECT_EQ(json["backBackground"], "#33384D");
    EXPECT_EQ(json["back"][0].count("fill"), 0u);
    EXPECT_EQ(json["back"][0].count("stroke"), 0u);
}

TEST(TemplateJSON, FilesAreSortedAndIndented) {
    const std::string text = templateFileText(full());
    EXPECT_THAT(text, testing::StartsWith("{\n  \"back\": [\n    {\n      \"content\": \"back.png\",\n"));
    EXPECT_THAT(text, testing::EndsWith("}\n"));
}

TEST(TemplateJSON, EveryKeyIsRequiredButTheOptionalColors) {
    const JSON json = toJSON(full());
    int required = 0;
    int optional = 0;
    forEachKey(json, "", JSON::json_pointer(), [&](const std::string& path, const JSON::json_pointer& place) {
        JSON without = json;
        without[place.parent_pointer()].erase(lastKey(place));
        JSON null = json;
        null[place] = nullptr;
        for (const JSON& changed : {without, null}) {
            const auto read = cardTemplateFromJSON(changed);
            if (isOptionalColor(json, place)) {
                ++optional;
                EXPECT_TRUE(read) << path;
            } else {
                ++required;
                ASSERT_FALSE(read) << path;
                EXPECT_EQ(read.error().path, path);
            }
        }
    });
    EXPECT_EQ(optional, 2 * 5);
    EXPECT_EQ(required, 2 * (10 + 3 + 3 * (15 + 4 + 9) + 2 * 5));
}

TEST(TemplateJSON, OptionalColorsThatAreAbsentStayAbsent) {
    JSON json = toJSON(full());
    json["front"][0].erase("fill");
    json["front"][0]["stroke"] = nullptr;
    json["front"][0]["rules"][0]["textColor"] = nullptr;
    const auto read = cardTemplateFromJSON(json);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->front[0].fill, std::nullopt);
    EXPECT_EQ(read->front[0].stroke, std::nullopt);
    EXPECT_EQ(read->front[0].rules[0].textColor, std::nullopt);
    EXPECT_EQ(read->front[0].rules[0].fill, RGBA::black);
}

TEST(TemplateJSON, RefusesEveryWrongType) {
    const JSON json = toJSON(full());
    forEachKey(json, "", JSON::json_pointer(), [&](const std::string& path, const JSON::json_pointer& place) {
        for (const JSON& wrong : {JSON(true), JSON(7), JSON("words"), JSON::array({3}), JSON::object({{"a", 3}})}) {
            if (wrong.type() == json.at(place).type()) continue;
            if (wrong.is_number() && json.at(place).is_number()) continue;
            JSON changed = json;
            changed[place] = wrong;
            const auto read = cardTemplateFromJSON(changed);
            ASSERT_FALSE(read) << path << " " << wrong;
            EXPECT_THAT(read.error().path, testing::StartsWith(path));
        }
    });
    for (const char* text : {"null", "[]", "3", "\"design\"", "{}"})
        EXPECT_FALSE(cardTemplateFromJSON(JSON::parse(text)));
}

TEST(TemplateJSON, RefusesEveryUnknownCaseAndIdentifier) {
    const JSON json = toJSON(full());
    int checked = 0;
    forEachKey(json, "", JSON::json_pointer(), [&](const std::string& path, const JSON::json_pointer& place) {
        for (const char* key : {"preset", "kind", "align", "verticalAlign", "shape", "imageFit", "match", "id"}) {
            if (lastKey(place) != key) continue;
            const auto valid = json.at(place).get<std::string>();
            for (const std::string& wrong : {std::string(), valid + " ", valid + "s", std::string("Custom")}) {
                JSON changed = json;
                changed[place] = wrong;
                const auto read = cardTemplateFromJSON(changed);
                ASSERT_FALSE(read) << path << " " << wrong;
                EXPECT_EQ(read.error().path, path);
                ++checked;
            }
        }
    });
    EXPECT_EQ(checked, 4 * (2 + 3 * 6 + 2 * 2));
}

TEST(TemplateJSON, ABadColorTextIsBlack) {
    JSON json = toJSON(full());
    json["background"] = "red";
    json["front"][0]["fill"] = "#ABC";
    json["front"][0]["style"]["color"] = "";
    const auto read = cardTemplateFromJSON(json);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->background, RGBA::black);
    EXPECT_EQ(read->front[0].fill, RGBA::black);
    EXPECT_EQ(read->front[0].style.color, RGBA::black);
    EXPECT_EQ(toJSON(*read)["background"], "#000000");
}

TEST(TemplateJSON, IgnoresUnknownKeys) {
    const JSON json = toJSON(full());
    JSON more = json;
    more["version"] = 7;
    more["front"][0]["glow"] = JSON::array();
    more["front"][0]["style"]["kerning"] = nullptr;
    more["front"][0]["frame"]["z"] = 1;
    more["size"]["depth"] = "deep";
    const auto read = cardTemplateFromJSON(more);
    ASSERT_TRUE(read);
    EXPECT_EQ(toJSON(*read), json);
}

TEST(TemplateJSON, KeepsWhatIsOutOfRange) {
    JSON json = toJSON(full());
    json["size"] = {{"preset", "poker"}, {"widthMM", 70}, {"heightMM", -1e308}};
    json["bleedMM"] = -4;
    json["front"][0]["opacity"] = 7.5;
    json["front"][0]["frame"]["width"] = -2;
    const auto read = cardTemplateFromJSON(json);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->size, CardSize(CardSize::Preset::poker, 70, -1e308));
    EXPECT_EQ(read->bleedMM, -4);
    EXPECT_EQ(read->front[0].opacity, 7.5);
    EXPECT_EQ(read->front[0].frame.width, -2);
}

TEST(TemplateJSON, WritesIdentifiersInUpperCase) {
    JSON json = toJSON(full());
    json["id"] = "0123abcd-89ab-cdef-0123-456789abcdef";
    const auto read = cardTemplateFromJSON(json);
    ASSERT_TRUE(read);
    EXPECT_EQ(toJSON(*read)["id"], "0123ABCD-89AB-CDEF-0123-456789ABCDEF");
}

TEST(TemplateJSON, RefusesFilesThatAreNoTemplate) {
    const std::string whole = templateFileText(full());
    for (const std::string& text :
         {std::string(), std::string(" \n"), std::string("{}"), std::string("[]"), std::string("\0", 1),
          std::string("Name,Type\nMule,Tool\n"), whole + "x", whole + whole, std::string(100'000, '['),
          std::string("{\"front\": ") + std::string(100'000, '['), std::string("\xff\xfe{\0}\0", 6)})
        EXPECT_FALSE(templateFromFileText(text)) << text.substr(0, 40);
    for (std::size_t length = 0; length + 2 < whole.size(); length += 7)
        EXPECT_FALSE(templateFromFileText(whole.substr(0, length))) << length;
}

TEST(TemplateJSON, HasOneMessage) {
    EXPECT_EQ(notATemplateMessage, "That file isn’t a Quorvel template.");
}

}  // namespace
}  // namespace quorvel
