#include "Library/DeckProjectJSON.h"
#include "Model/Storable.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace quorvel {
namespace {

/// A layer on each side, and every key that may be left out.
DeckProject fullDeck() {
    DeckProject project;
    project.template_.front.emplace_back("Front", LayerKind::text, Frame{}, "");
    project.template_.back.emplace_back("Back", LayerKind::shape, Frame{}, "");
    return project;
}

/// The places of all numbers with a fraction. A number that a record is given later is found here by itself.
void findNumbers(const JSON& json, const JSON::json_pointer& place, std::vector<JSON::json_pointer>& found) {
    if (json.is_number_float()) found.push_back(place);
    if (json.is_object())
        for (const auto& [key, value] : json.items()) findNumbers(value, place / key, found);
    if (json.is_array())
        for (std::size_t i = 0; i < json.size(); ++i) findNumbers(json[i], place / i, found);
}

TEST(Storable, EveryNumberOfARecordMustBeFinite) {
    const JSON json = toJSON(fullDeck());
    std::vector<JSON::json_pointer> numbers;
    findNumbers(json, JSON::json_pointer(), numbers);
    EXPECT_EQ(numbers.size(), 30u);
    ASSERT_TRUE(isStorable(fullDeck()));
    for (const JSON::json_pointer& place : numbers)
        for (const double nonsense : {std::nan(""), std::numeric_limits<double>::infinity(), -HUGE_VAL}) {
            JSON changed = json;
            changed[place] = nonsense;
            const auto project = deckProjectFromJSON(changed);
            ASSERT_TRUE(project) << place;
            EXPECT_FALSE(isStorable(*project)) << place;
            EXPECT_EQ(isStorable(project->template_), !place.to_string().starts_with("/template")) << place;
            // Which is what it is about.
            EXPECT_FALSE(deckProjectFromJSON(parseJSON(prettyJSON(toJSON(*project))).value()) == *project) << place;
        }
}

TEST(Storable, AnyFiniteNumberIsKept) {
    const double numbers[] = {
        0, -1, 1e-320, 1e300, std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (const double number : numbers) {
        DeckProject project = fullDeck();
        project.template_.front[0].frame.x = project.sheet.gutterMM = project.created = number;
        EXPECT_TRUE(isStorable(project)) << number;
        EXPECT_EQ(deckProjectFromJSON(parseJSON(prettyJSON(toJSON(project))).value()), project) << number;
    }
}

}  // namespace
}  // namespace quorvel
