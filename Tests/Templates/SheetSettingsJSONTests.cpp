#include "Templates/SheetSettingsJSON.h"

#include <gmock/gmock.h>
#include <random>

namespace quorvel {
namespace {

SheetSettings unusual() {
    SheetSettings settings;
    settings.paper = Paper::a4;
    settings.orientation = Orientation::landscape;
    settings.spacing = Spacing::separated;
    settings.gutterMM = 0.1;
    settings.marginMM = 1.0 / 3;
    settings.includeBleed = true;
    settings.cutMarks = false;
    settings.duplex = true;
    settings.flip = DuplexFlip::shortEdge;
    settings.backOffsetXMM = -1.25;
    settings.backOffsetYMM = 1e-300;
    return settings;
}

TEST(SheetSettingsJSON, WritesEveryKey) {
    EXPECT_EQ(toJSON(SheetSettings()), JSON::parse(R"({
        "paper": "letter", "orientation": "auto", "spacing": "butted", "gutterMM": 0.0, "marginMM": 6.35,
        "includeBleed": false, "cutMarks": true, "duplex": false, "flip": "longEdge",
        "backOffsetXMM": 0.0, "backOffsetYMM": 0.0})"));
    EXPECT_EQ(toJSON(unusual()).size(), 11u);
}

TEST(SheetSettingsJSON, ThereAndBack) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> lengths(-100, 100);
    for (int round = 0; round < 200; ++round) {
        SheetSettings settings;
        settings.paper = EnumText<Paper>::cases[random() % 2].first;
        settings.orientation = EnumText<Orientation>::cases[random() % 3].first;
        settings.spacing = EnumText<Spacing>::cases[random() % 2].first;
        settings.flip = EnumText<DuplexFlip>::cases[random() % 2].first;
        for (double* length :
             {&settings.gutterMM, &settings.marginMM, &settings.backOffsetXMM, &settings.backOffsetYMM})
            *length = lengths(random);
        for (bool* choice : {&settings.includeBleed, &settings.cutMarks, &settings.duplex}) *choice = random() % 2;
        const auto json = parseJSON(prettyJSON(toJSON(settings)));
        ASSERT_TRUE(json);
        const auto read = sheetSettingsFromJSON(*json);
        ASSERT_TRUE(read) << read.error().description();
        EXPECT_EQ(*read, settings);
    }
}

TEST(SheetSettingsJSON, WhatIsMissingOrNullTakesItsDefault) {
    EXPECT_EQ(*sheetSettingsFromJSON(JSON::object()), SheetSettings());
    EXPECT_EQ(*sheetSettingsFromJSON(JSON{{"paper", nullptr}, {"shadow", 3}}), SheetSettings());
    const JSON written = toJSON(unusual());
    const JSON defaults = toJSON(SheetSettings());
    for (const auto& [key, value] : written.items()) {
        JSON expected = written;
        expected[key] = defaults[key];
        JSON missing = written;
        missing.erase(key);
        JSON null = written;
        null[key] = nullptr;
        for (const JSON& json : {missing, null}) {
            const auto read = sheetSettingsFromJSON(json);
            ASSERT_TRUE(read) << key;
            EXPECT_EQ(toJSON(*read), expected) << key;
        }
    }
}

TEST(SheetSettingsJSON, RefusesNonsense) {
    const JSON defaults = toJSON(SheetSettings());
    for (const auto& [key, value] : defaults.items()) {
        for (const JSON& wrong : {JSON(value.is_boolean() ? JSON(1) : JSON(true)), JSON("b5"), JSON(""), JSON("Auto"),
                                  JSON::array(), JSON::object()}) {
            const auto read = sheetSettingsFromJSON(JSON{{key, wrong}});
            ASSERT_FALSE(read) << key << " " << wrong;
            EXPECT_EQ(read.error().path, key);
        }
    }
    for (const char* text : {"[]", "null", "3", "\"letter\""}) EXPECT_FALSE(sheetSettingsFromJSON(JSON::parse(text)));
}

}  // namespace
}  // namespace quorvel
