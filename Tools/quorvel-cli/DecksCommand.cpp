#include "Commands.h"
#include "Foundation/JSON.h"

#include <algorithm>
#include <iostream>

namespace quorvel::CommandLine {
namespace {

/// Without what would break a line or a column; every other byte stays.
std::string oneLine(std::string text) {
    std::ranges::replace_if(text, [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; }, ' ');
    return text;
}

std::string lines(const std::vector<DeckProject>& decks) {
    std::string text;
    for (const DeckProject& deck : decks)
        text += deck.id.text() + "\t" + oneLine(deck.name) + "\t" +
                (deck.source ? oneLine(deck.source->path) : "no spreadsheet") + "\n";
    return text;
}

std::string json(const std::vector<DeckProject>& decks) {
    JSON list = JSON::array();
    for (const DeckProject& deck : decks)
        list.push_back({{"id", deck.id.text()},
                        {"name", deck.name},
                        {"spreadsheet", deck.source ? JSON(deck.source->path) : JSON()}});
    return prettyJSON(list);
}

}  // namespace

Result decksCommand(const Options& options) {
    const auto library = libraryOf(options);
    if (!library) return std::unexpected(library.error());
    const auto decks = library->loadDecks();
    if (options.listForm == ListForm::json) return json(decks);
    // Not on standard output, where each line is a deck.
    if (decks.empty()) std::cerr << "There are no decks yet.\n";
    return lines(decks);
}

}  // namespace quorvel::CommandLine
