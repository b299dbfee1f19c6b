#include "Model/FieldNames.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;

TEST(FieldNames, AreTheSevenFieldsWithoutATable) {
    EXPECT_THAT(knownFieldNames(nullptr), ElementsAre("title", "text", "cost", "type", "art", "icons", "quantity"));
}

TEST(FieldNames, AreFollowedByTheHeadersThatAreNoFieldInAnyCase) {
    const DataTable table({"Power", "Title", "COST", "Côte", "Schrift"}, TextRows(), "t.csv");
    EXPECT_THAT(knownFieldNames(&table),
                ElementsAre("title", "text", "cost", "type", "art", "icons", "quantity", "Power", "Côte", "Schrift"));
}

}  // namespace
}  // namespace quorvel
