#include "Cards/FieldMappingJSON.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(FieldMappingJSON, ThereAndBack) {
    for (const FieldMapping& mapping :
         {FieldMapping(), FieldMapping{{{"title", "Card Name"}}}, FieldMapping{{{"title", "“Größe” \n"}, {"x", ""}}}}) {
        const auto read = fieldMappingFromJSON(toJSON(mapping));
        ASSERT_TRUE(read) << read.error().description();
        EXPECT_EQ(*read, mapping);
    }
}

TEST(FieldMappingJSON, HasOneKey) {
    EXPECT_EQ(toJSON(FieldMapping{{{"title", "Card Name"}}}).dump(), R"({"columns":{"title":"Card Name"}})");
    EXPECT_EQ(toJSON(FieldMapping()).dump(), R"({"columns":{}})");
}

TEST(FieldMappingJSON, RefusesWhatIsNone) {
    const struct {
        const char* json;
        const char* path;
    } cases[] = {
        {"[]", ""},
        {"null", ""},
        {"{}", "columns"},
        {R"({"columns": null})", "columns"},
        {R"({"columns": ["title"]})", "columns"},
        {R"({"columns": {"title": 3}})", "columns.title"},
        {R"({"columns": {"art": "A", "title": null}})", "columns.title"},
    };
    for (const auto& each : cases) {
        const auto read = fieldMappingFromJSON(JSON::parse(each.json));
        ASSERT_FALSE(read) << each.json;
        EXPECT_EQ(read.error().path, each.path) << each.json;
    }
}

}  // namespace
}  // namespace quorvel
