#include "DeckLookup.h"

#include "Foundation/Text.h"
#include "Wording.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <optional>
#include <utility>

namespace quorvel::CommandLine {
namespace {

using Found = std::vector<const DeckProject*>;

Found decksNamed(const std::vector<DeckProject>& decks, std::string_view name,
                 const std::function<bool(std::string_view, std::string_view)>& equal) {
    Found found;
    for (const DeckProject& deck : decks)
        if (equal(deck.name, name)) found.push_back(&deck);
    return found;
}

/// How many characters must be put in, taken out or changed to make `b` of `a`.
std::size_t editDistance(std::string_view a, std::string_view b) {
    const auto from = Text::characters(a);
    const auto to = Text::characters(b);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t(0));
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t changed = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

/// A few slips, or a part of the name, in any case.
bool isNear(std::string_view name, std::string_view wanted) {
    constexpr std::size_t longestCompared = 200;
    if (name.empty() || std::max(name.size(), wanted.size()) > longestCompared) return false;
    if (Text::containsIgnoringCaseAndMarks(name, wanted) || Text::containsIgnoringCaseAndMarks(wanted, name))
        return true;
    const std::size_t slips = std::max<std::size_t>(1, Text::characters(wanted).size() / 3);
    return editDistance(Text::lowercased(name), Text::lowercased(wanted)) <= slips;
}

std::string inQuotes(std::string_view name) {
    return "“" + std::string(name) + "”";
}

std::string noneFound(const std::vector<DeckProject>& decks, std::string_view wanted) {
    const std::string none = "There is no deck " + inQuotes(wanted);
    if (decks.empty()) return none + ": the library is empty.";

    constexpr std::size_t mostNames = 5;
    std::vector<std::string> near;
    for (const DeckProject& deck : decks)
        if (near.size() < mostNames && isNear(deck.name, wanted) &&
            std::ranges::find(near, inQuotes(deck.name)) == near.end())
            near.push_back(inQuotes(deck.name));
    if (near.empty()) return none + "; “quorvel-cli decks” lists those there are.";
    return none + ", but there is " + enumeration({near.begin(), near.end()}, "and") + ".";
}

std::string severalFound(const Found& found, std::string_view wanted) {
    std::vector<std::string> ids;
    for (const DeckProject* deck : found) ids.push_back(deck->id.text());
    return "There are " + std::to_string(found.size()) + " decks named " + inQuotes(wanted) +
           "; give the id of the one you mean, " + enumeration({ids.begin(), ids.end()}, "or") + ".";
}

}  // namespace

std::expected<DeckProject, std::string> findDeck(const std::vector<DeckProject>& decks, std::string_view wanted) {
    if (const auto id = UUID::parse(wanted))
        if (const auto found = std::ranges::find(decks, *id, &DeckProject::id); found != decks.end()) return *found;
    Found found = decksNamed(decks, wanted, std::equal_to<>());
    if (found.empty()) found = decksNamed(decks, wanted, Text::equalsIgnoringCase);
    if (found.empty()) return std::unexpected(noneFound(decks, wanted));
    if (found.size() > 1) return std::unexpected(severalFound(found, wanted));
    return *found.front();
}

}  // namespace quorvel::CommandLine
