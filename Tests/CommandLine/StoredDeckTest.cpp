#include "StoredDeckTest.h"

#include "Samples/SampleTemplates.h"

namespace quorvel {

DeckProject StoredDeckTest::makeDeck(const std::string& name) {
    const auto file = *this / "game" / (name + ".csv");
    write("game/" + name + ".csv", smallDeck);
    DeckProject deck;
    deck.id = UUID::random();
    deck.name = name;
    deck.template_ = SampleTemplates::make(SampleTemplates::Kind::classic, name);
    const auto bookmark = Bookmark::make(file);
    EXPECT_TRUE(bookmark);
    if (bookmark) deck.source = *bookmark;
    deck.created = ++created_;
    return deck;
}

void StoredDeckTest::save(const DeckProject& deck) const {
    EXPECT_TRUE(library_.saveDeck(deck));
}

ProgramEnd StoredDeckTest::runInLibrary(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--library", library_.applicationSupport.string()});
    return run(std::move(arguments));
}

}  // namespace quorvel
