#include "Library/DeckProjectJSON.h"
#include "Library/MakeDeck.h"

#include <cmath>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

const std::vector<std::string> required{"id",      "name",       "template",   "mapping", "sheet",
                                        "created", "sheetIndex", "imageBleed", "imageDPI"};
const std::vector<std::string> optional{"source", "artFolder", "iconFolder"};

/// The text as a file holds it, its template and print settings cut short.
std::string shortText(const DeckProject& project) {
    JSON json = toJSON(project);
    json["template"] = JSON::object();
    json["sheet"] = JSON::object();
    return prettyJSON(json);
}

TEST(DeckProjectJSON, IsWrittenLikeThis) {
    DeckProject project = makeDeck("“Glass”\n");
    project.id = *UUID::parse("01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_EQ(shortText(project), R"({
  "artFolder": {
    "name": "The sample deck’s folder",
    "path": "/game"
  },
  "created": 800712000.125,
  "iconFolder": {
    "name": "icons",
    "path": "/icons"
  },
  "id": "01234567-89AB-CDEF-0123-456789ABCDEF",
  "imageBleed": false,
  "imageDPI": 600,
  "mapping": {
    "columns": {
      "quantity": "Copies",
      "title": "Card Name"
    }
  },
  "name": "“Glass”\n",
  "sheet": {},
  "sheetIndex": 2,
  "source": {
    "data": "Zm9v",
    "name": "cards.csv",
    "path": "/game/cards.csv"
  },
  "template": {}
}
)");
}

TEST(DeckProjectJSON, LeavesOutWhatIsNotThere) {
    DeckProject project = makeDeck();
    project.source.reset();
    project.artFolder.reset();
    project.iconFolder.reset();
    const JSON json = toJSON(project);
    EXPECT_EQ(json.size(), required.size());
    for (const std::string& key : required) EXPECT_TRUE(json.contains(key)) << key;
}

TEST(DeckProjectJSON, ThereAndBack) {
    for (const double created : {0.0, -1.5, 800'712'000.123456, 1e300, 0.1, std::nextafter(800'712'000.0, 1e9)})
        for (const std::int64_t number :
             {std::int64_t{0}, std::int64_t{-1}, std::int64_t{INT64_MAX}, std::int64_t{INT64_MIN}}) {
            DeckProject project = makeDeck("👩‍👩‍👧 \"\\\x01");
            project.created = created;
            project.sheetIndex = number;
            project.imageDPI = number;
            const auto json = parseJSON(prettyJSON(toJSON(project)));
            ASSERT_TRUE(json);
            const auto read = deckProjectFromJSON(*json);
            ASSERT_TRUE(read) << read.error().description();
            EXPECT_EQ(*read, project);
            EXPECT_EQ(prettyJSON(toJSON(*read)), prettyJSON(*json));
        }
    EXPECT_EQ(deckProjectFromJSON(toJSON(DeckProject())), DeckProject());
}

TEST(DeckProjectJSON, EveryOtherKeyIsRequired) {
    const JSON good = toJSON(makeDeck());
    for (const std::string& key : required) {
        JSON without = good;
        without.erase(key);
        JSON null = good;
        null[key] = nullptr;
        for (const JSON& json : {without, null}) {
            const auto read = deckProjectFromJSON(json);
            ASSERT_FALSE(read) << key;
            EXPECT_EQ(read.error().path, key);
        }
    }
}

TEST(DeckProjectJSON, ANullOptionalKeyMeansAbsent) {
    const JSON good = toJSON(makeDeck());
    for (const std::string& key : optional) {
        JSON without = good;
        without.erase(key);
        JSON null = good;
        null[key] = nullptr;
        const auto read = deckProjectFromJSON(null);
        ASSERT_TRUE(read) << key;
        EXPECT_EQ(toJSON(*read), without);
    }
}

TEST(DeckProjectJSON, EveryKeyHasItsType) {
    const JSON good = toJSON(makeDeck());
    const std::vector<JSON> values{1.5, true, "text", JSON::array({1}), JSON::object({{"x", 1}})};
    const auto fits = [](const std::string& key, const JSON& value) {
        if (key == "name") return value.is_string();
        if (key == "created") return value.is_number();
        if (key == "imageBleed") return value.is_boolean();
        if (key == "sheet") return value.is_object();  // its own keys all have defaults
        return false;
    };
    for (const auto& [key, ignored] : good.items())
        for (const JSON& value : values) {
            JSON changed = good;
            changed[key] = value;
            const auto read = deckProjectFromJSON(changed);
            EXPECT_EQ(read.has_value(), fits(key, value)) << key << " " << value;
            const std::string place = read ? key : read.error().path;
            EXPECT_THAT(place, testing::StartsWith(key));
        }
}

TEST(DeckProjectJSON, PointsIntoTheParts) {
    JSON json = toJSON(makeDeck());
    json["template"]["front"][0].erase("hidden");
    EXPECT_EQ(deckProjectFromJSON(json).error().description(), "template.front[0].hidden is missing.");
    json = toJSON(makeDeck());
    json["source"].erase("path");
    EXPECT_EQ(deckProjectFromJSON(json).error().description(), "source.path is missing.");
    json = toJSON(makeDeck());
    json["mapping"]["columns"]["title"] = 3;
    EXPECT_EQ(deckProjectFromJSON(json).error().path, "mapping.columns.title");
}

TEST(DeckProjectJSON, IgnoresUnknownKeysAndTheCaseOfIdentifiers) {
    const DeckProject project = makeDeck();
    JSON json = toJSON(project);
    json["version"] = 7;
    json["source"]["bookmark"] = JSON::array();
    std::string id = project.id.text();
    for (char& c : id) c = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    json["id"] = id;
    EXPECT_EQ(deckProjectFromJSON(json), project);
}

TEST(DeckProjectJSON, NumbersOutOfRangeFail) {
    std::string text = prettyJSON(toJSON(makeDeck()));
    const auto reads = [&](const std::string& from, const std::string& to) {
        std::string changed = text;
        const auto place = changed.find(from);
        EXPECT_NE(place, std::string::npos);
        changed.replace(place, from.size(), to);
        const auto json = parseJSON(changed);
        return json && deckProjectFromJSON(*json);
    };
    for (const char* number : {"1e999", "NaN", "nan", "Infinity", "-Infinity", "1.", "0x10", "\"1\"", "--1", ""})
        EXPECT_FALSE(reads("800712000.125", number)) << number;
    for (const char* number : {"0", "-7", "1e3", "1e300", "18446744073709551616"})
        EXPECT_TRUE(reads("800712000.125", number)) << number;
    for (const char* number : {"9223372036854775808", "1e19", "600.5", "1e999", "NaN"})
        EXPECT_FALSE(reads("\"imageDPI\": 600", std::string("\"imageDPI\": ") + number)) << number;
    EXPECT_TRUE(reads("\"imageDPI\": 600", "\"imageDPI\": 600.0"));
}

TEST(DeckProjectJSON, OnlyAnObjectIsADeck) {
    for (const char* text : {"[]", "{}", "null", "3", "\"deck\""}) EXPECT_FALSE(deckProjectFromJSON(JSON::parse(text)));
}

}  // namespace
}  // namespace quorvel
