#include "Foundation/JSONReader.h"

#include <gtest/gtest.h>

namespace quorvel {

enum class Suit { hearts, spades };

template <>
struct EnumText<Suit> {
    static constexpr std::array cases{std::pair{Suit::hearts, std::string_view("hearts")},
                                      std::pair{Suit::spades, std::string_view("spades")}};
};

namespace {

struct Inner {
    double width = 1;
    bool operator==(const Inner&) const = default;
};

struct Outer {
    std::string name;
    std::int64_t count = 7;
    bool flag = false;
    Suit suit = Suit::hearts;
    UUID id;
    std::optional<RGBA> fill;
    Inner frame;
    std::vector<Inner> parts;
    std::vector<std::string> words;
};

std::expected<Inner, JSONFailure> innerFromJSON(const JSON& json) {
    JSONReader reader(json);
    Inner inner;
    reader.read("width", inner.width);
    return reader.finish(inner);
}

std::expected<Outer, JSONFailure> outerFromJSON(const JSON& json) {
    JSONReader reader(json);
    Outer outer;
    reader.read("name", outer.name);
    reader.readIfPresent("count", outer.count);
    reader.read("flag", outer.flag);
    reader.read("suit", outer.suit);
    reader.read("id", outer.id);
    reader.readIfPresent("fill", outer.fill);
    reader.read("frame", outer.frame, innerFromJSON);
    reader.readList("parts", outer.parts, innerFromJSON);
    reader.readListIfPresent("words", outer.words, valueFromJSON<std::string>);
    return reader.finish(std::move(outer));
}

JSON complete() {
    return {{"name", "a"},
            {"count", 3.0},
            {"flag", true},
            {"suit", "spades"},
            {"id", "01234567-89AB-CDEF-0123-456789ABCDEF"},
            {"fill", "#FF0000"},
            {"frame", {{"width", 2}}},
            {"parts", {{{"width", 3.5}}, {{"width", 4}}}},
            {"words", {"x", "y"}},
            {"unknown", nullptr}};
}

std::string failureOf(const JSON& json) {
    const auto outer = outerFromJSON(json);
    return outer ? "none" : outer.error().description();
}

TEST(JSONReader, readsARecord) {
    const auto outer = outerFromJSON(complete());
    ASSERT_TRUE(outer);
    EXPECT_EQ(outer->name, "a");
    EXPECT_EQ(outer->count, 3);
    EXPECT_TRUE(outer->flag);
    EXPECT_EQ(outer->suit, Suit::spades);
    EXPECT_EQ(outer->id.text(), "01234567-89AB-CDEF-0123-456789ABCDEF");
    EXPECT_EQ(outer->fill, RGBA(1, 0, 0));
    EXPECT_EQ(outer->frame, Inner{2});
    EXPECT_EQ(outer->parts, (std::vector<Inner>{{3.5}, {4}}));
    EXPECT_EQ(outer->words, (std::vector<std::string>{"x", "y"}));
}

TEST(JSONReader, leavesWhatIsAbsent) {
    for (const bool null : {false, true}) {
        JSON json = complete();
        for (const char* key : {"count", "fill", "words"}) {
            if (null) {
                json[key] = nullptr;
            } else {
                json.erase(key);
            }
        }
        const auto outer = outerFromJSON(json);
        ASSERT_TRUE(outer);
        EXPECT_EQ(outer->count, 7);
        EXPECT_EQ(outer->fill, std::nullopt);
        EXPECT_TRUE(outer->words.empty());
    }
}

TEST(JSONReader, saysWhatIsWrongAndWhere) {
    const auto with = [](const char* pointer, JSON value) {
        JSON json = complete();
        json[JSON::json_pointer(pointer)] = std::move(value);
        return failureOf(json);
    };
    EXPECT_EQ(with("/name", 1), "name must be a text.");
    EXPECT_EQ(with("/name", nullptr), "name must be a text.");
    EXPECT_EQ(with("/count", 2.5), "count must be a whole number.");
    EXPECT_EQ(with("/count", 1e19), "count must be a whole number.");
    EXPECT_EQ(with("/count", std::uint64_t{1} << 63), "count must be a whole number.");
    EXPECT_EQ(with("/count", true), "count must be a whole number.");
    EXPECT_EQ(with("/flag", 0), "flag must be true or false.");
    EXPECT_EQ(with("/suit", "clubs"), "suit must be one of hearts, spades.");
    EXPECT_EQ(with("/suit", 1), "suit must be one of hearts, spades.");
    EXPECT_EQ(with("/id", "x"), "id must be an identifier such as 01234567-89AB-CDEF-0123-456789ABCDEF.");
    EXPECT_EQ(with("/fill", 3), "fill must be a color such as \"#5E8C4A\".");
    EXPECT_EQ(with("/frame", JSON::array()), "frame must be an object.");
    EXPECT_EQ(with("/frame/width", "2"), "frame.width must be a number.");
    EXPECT_EQ(with("/parts", JSON::object()), "parts must be a list.");
    EXPECT_EQ(with("/parts/1/width", true), "parts[1].width must be a number.");
    EXPECT_EQ(with("/words/1", 1), "words[1] must be a text.");
    EXPECT_EQ(failureOf(JSON::array()), "The JSON must be an object.");
    EXPECT_EQ(failureOf(JSON::object()), "name is missing.") << "the first failure counts";
    JSON json = complete();
    json["frame"].erase("width");
    EXPECT_EQ(failureOf(json), "frame.width is missing.");
}

TEST(JSONReader, readsABadColorAsBlack) {
    JSON json = complete();
    json["fill"] = "red";
    EXPECT_EQ(outerFromJSON(json)->fill, RGBA::black);
}

TEST(JSONReader, readsTheWholeRangeOfIntegers) {
    EXPECT_EQ(valueFromJSON<std::int64_t>(JSON(INT64_MAX)), INT64_MAX);
    EXPECT_EQ(valueFromJSON<std::int64_t>(JSON(INT64_MIN)), INT64_MIN);
    EXPECT_EQ(valueFromJSON<std::int64_t>(JSON(-0x1p63)), INT64_MIN);
    EXPECT_EQ(valueFromJSON<double>(JSON(3)), 3.0);
}

}  // namespace
}  // namespace quorvel
