#include "Foundation/JSON.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JSON, parses) {
    const auto json = parseJSON(R"({"b": [1, 2.5, null, true], "a": "é😀"})");
    ASSERT_TRUE(json);
    EXPECT_EQ((*json)["a"], "é😀");
    EXPECT_EQ((*json)["b"].size(), 4u);
}

TEST(JSON, takesTheLastOfEqualKeys) {
    EXPECT_EQ((*parseJSON(R"({"a": 1, "a": 2})"))["a"], 2);
}

TEST(JSON, pointsAtTheBrokenPlace) {
    const auto json = parseJSON("{\n  \"a\": 1,\n  \"b\" 2\n}");
    ASSERT_FALSE(json);
    EXPECT_EQ(json.error().description(), "The JSON can’t be understood at line 3, column 7.");
}

TEST(JSON, refusesWhatIsNoJSON) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {""sv, " "sv, "{"sv, "]"sv, "{\"a\":}"sv, "[1,]"sv, "nul"sv, "'a'"sv, "1 2"sv,
                                        "\"\xE9\""sv, "\"\xED\xA0\x80\""sv, "\0"sv, "[1e999]"sv, "\"\\ud800\""sv,
                                        "\xFF\xFE[\0]\0"sv, "NaN"sv, "\"\\"sv, "// x\n1"sv})
        EXPECT_FALSE(parseJSON(text)) << text;
}

TEST(JSON, limitsNesting) {
    EXPECT_TRUE(parseJSON(nested(256)));
    const auto deep = parseJSON(nested(257));
    ASSERT_FALSE(deep);
    EXPECT_EQ(deep.error().description(), "The JSON is nested too deep.");
    EXPECT_FALSE(parseJSON(nested(1'000'000)));
    EXPECT_FALSE(parseJSON(std::string(1'000'000, '{')));
}

TEST(JSON, doesNotCountBracketsInTexts) {
    EXPECT_TRUE(parseJSON("[\"" + std::string(300, '[') + "\\\"" + std::string(300, '{') + "\"]"));
    std::string flat = "[";
    for (int i = 0; i < 300; ++i) flat += "[],";
    EXPECT_TRUE(parseJSON(flat + "[]]"));
}

TEST(JSON, writesSortedAndIndented) {
    EXPECT_EQ(prettyJSON({{"b", 1}, {"a", {1.5, "x/y"}}}),
              "{\n  \"a\": [\n    1.5,\n    \"x/y\"\n  ],\n  \"b\": 1\n}\n");
    EXPECT_EQ(prettyJSON("a\xE9"), "\"a\uFFFD\"\n");
}

TEST(JSON, keepsEveryDouble) {
    for (const double value : {0.1, 1.0 / 3, 63.5, 595.2755905511812, 1e300, 5e-324, -0.0, 6.35}) {
        const auto back = parseJSON(prettyJSON(value));
        ASSERT_TRUE(back);
        EXPECT_EQ(back->get<double>(), value);
    }
}

TEST(JSONFailure, collectsItsPath) {
    const JSONFailure failure{"", "must be a number"};
    EXPECT_EQ(failure.inside("width").inside("frame").inside(2).inside("front").description(),
              "front[2].frame.width must be a number.");
    EXPECT_EQ(failure.inside(3).inside(2).inside("rows").path, "rows[2][3]");
}

}  // namespace
}  // namespace quorvel
