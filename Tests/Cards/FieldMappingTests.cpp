#include "Cards/FieldMapping.h"

#include <gmock/gmock.h>
#include <random>
#include <set>

namespace quorvel {
namespace {

using Columns = std::map<std::string, std::string>;

TEST(FieldMapping, GuessesByNormalisedHeaders) {
    const struct {
        std::vector<std::string> headers;
        Columns expected;
    } cases[] = {
        {{}, {}},
        {{"Card Name", "Rules Text", "Qty"}, {{"title", "Card Name"}, {"text", "Rules Text"}, {"quantity", "Qty"}}},
        {{"card_name"}, {{"title", "card_name"}}},
        {{"CARD-NAME"}, {{"title", "CARD-NAME"}}},
        {{" card\tname! "}, {{"title", " card\tname! "}}},
        {{"?!", "-", ""}, {}},
        {{"X"}, {{"quantity", "X"}}},
        {{"Amount"}, {{"quantity", "Amount"}}},
        {{"X", "Amount"}, {{"quantity", "Amount"}}},
        {{"Name", "Title"}, {{"title", "Title"}}},
        {{"Type", "Kind"}, {{"type", "Type"}}},
        {{"Image", "Art"}, {{"art", "Art"}}},
        {{"Title", "title "}, {{"title", "Title"}}},
        {{"Value", "Class", "File", "Symbol", "Body"},
         {{"cost", "Value"}, {"type", "Class"}, {"art", "File"}, {"icons", "Symbol"}, {"text", "Body"}}},
        {{"Titel", "Name2", "Größe"}, {}},
        {{"Na\u0301me"}, {}},
        {{"Title\u0301"}, {}},
        {{"ＴＩＴＬＥ"}, {}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(FieldMapping::guess(each.headers).columns, each.expected) << testing::PrintToString(each.headers);
}

TEST(FieldMapping, EveryAliasFindsItsField) {
    const std::map<Field, std::vector<std::string>> aliases{
        {Field::title, {"title", "name", "cardname", "cardtitle"}},
        {Field::text, {"text", "rules", "rulestext", "body", "description", "effect", "ability"}},
        {Field::cost, {"cost", "price", "value", "points"}},
        {Field::type, {"type", "kind", "category", "class", "suit", "cardtype"}},
        {Field::art, {"art", "image", "picture", "artwork", "illustration", "imagepath", "artpath", "file"}},
        {Field::icons, {"icons", "icon", "symbols", "symbol", "resources"}},
        {Field::quantity, {"quantity", "qty", "count", "copies", "number", "amount", "x"}},
    };
    for (const auto& [field, names] : aliases) {
        // The earlier alias wins wherever the columns stand.
        std::vector<std::string> headers(names.rbegin(), names.rend());
        while (!headers.empty()) {
            EXPECT_EQ(FieldMapping::guess(headers).columns, (Columns{{std::string(textOf(field)), headers.back()}}));
            headers.pop_back();
        }
    }
}

TEST(FieldMapping, AColumnFeedsOneField) {
    std::mt19937 random(7);
    const std::vector<std::string> words{"Title", "name",  "NAME", "Text", "rules", "x",   "X!",    "Art", "image",
                                         "Cost",  "value", "type", "Kind", "icons", "qty", "Notes", ""};
    for (int round = 0; round < 500; ++round) {
        std::vector<std::string> headers;
        std::sample(words.begin(), words.end(), std::back_inserter(headers), random() % words.size(), random);
        std::shuffle(headers.begin(), headers.end(), random);
        std::set<std::string> used;
        for (const auto& [field, header] : FieldMapping::guess(headers).columns) {
            EXPECT_TRUE(parseEnum<Field>(field));
            EXPECT_THAT(headers, testing::Contains(header));
            EXPECT_TRUE(used.insert(header).second) << header;
        }
    }
}

TEST(FieldMapping, ReadsAndSetsColumns) {
    FieldMapping mapping;
    EXPECT_EQ(mapping.column(Field::cost), std::nullopt);
    mapping.setColumn(Field::cost, "Price");
    mapping.setColumn(Field::cost, "Points");
    EXPECT_EQ(mapping.column(Field::cost), "Points");
    EXPECT_EQ(mapping.columns, (Columns{{"cost", "Points"}}));
    mapping.setColumn(Field::cost, std::nullopt);
    mapping.setColumn(Field::art, std::nullopt);
    EXPECT_EQ(mapping, FieldMapping());
}

TEST(FieldMapping, ReconcileKeepsChoicesAndFillsGaps) {
    const struct {
        const char* what;
        Columns old;
        std::vector<std::string> headers;
        Columns expected;
    } cases[] = {
        {"a removed column falls back on the guess", {{"title", "Heading"}}, {"Name"}, {{"title", "Name"}}},
        {"a removed column without a successor",
         {{"title", "Heading"}, {"cost", "Gold"}},
         {"Gold"},
         {{"cost", "Gold"}}},
        {"a choice survives, and its column feeds nothing else",
         {{"title", "Notes"}},
         {"Name", "Notes"},
         {{"title", "Notes"}}},
        {"a chosen column isn't guessed for another field",
         {{"text", "Name"}},
         {"Name", "Kind"},
         {{"text", "Name"}, {"type", "Kind"}}},
        {"case matters for what is kept", {{"title", "notes"}}, {"Notes", "Title"}, {{"title", "Title"}}},
        {"a new column is mapped", {{"title", "Name"}}, {"Name", "Qty"}, {{"title", "Name"}, {"quantity", "Qty"}}},
        {"a renamed column", {{"cost", "Price"}}, {"Cost"}, {{"cost", "Cost"}}},
        {"two fields of one column stay", {{"title", "A"}, {"text", "A"}}, {"A"}, {{"title", "A"}, {"text", "A"}}},
        {"names of no field stay while their column does", {{"flavor", "A"}, {"lore", "B"}}, {"A"}, {{"flavor", "A"}}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(FieldMapping::reconcile(FieldMapping{each.old}, each.headers).columns, each.expected) << each.what;
}

TEST(FieldMapping, ReconcileOfItsOwnGuessChangesNothing) {
    const std::vector<std::string> headers{"Name", "Kind", "Cost", "X", "Image", "Art"};
    const FieldMapping guess = FieldMapping::guess(headers);
    EXPECT_EQ(FieldMapping::reconcile(guess, headers), guess);
    EXPECT_EQ(FieldMapping::reconcile({}, headers), guess);
}

}  // namespace
}  // namespace quorvel
