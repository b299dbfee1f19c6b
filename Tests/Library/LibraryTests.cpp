#include "Foundation/FileBytes.h"
#include "Library/DeckProjectJSON.h"
#include "Library/Library.h"
#include "Library/MakeDeck.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <numeric>
#include <random>
#include <sys/stat.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class LibraryTest : public testing::Test {
protected:
    void put(const std::string& name, std::string_view bytes) const {
        fs::create_directories(library.decksFolder());
        std::ofstream(library.decksFolder() / name, std::ios::binary) << bytes;
    }

    void put(const std::string& name, const DeckProject& project) const { put(name, prettyJSON(toJSON(project))); }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const DeckProject& deck : library.loadDecks()) result.push_back(deck.name);
        return result;
    }

    std::size_t fileCount() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(library.decksFolder()), fs::directory_iterator()));
    }

    TemporaryFolder folder;
    const Library library{folder / "data/Application Support"};
};

TEST_F(LibraryTest, HasItsPlaces) {
    const UUID id = *UUID::parse("01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_EQ(library.deckFile(id),
              folder / "data/Application Support/Decks/01234567-89AB-CDEF-0123-456789ABCDEF.json");
    EXPECT_EQ(library.sampleFolder(), folder / "data/Application Support/Sample Deck");
}

TEST_F(LibraryTest, AFirstStartFindsNothingAndTheFirstSaveMakesTheFolder) {
    EXPECT_TRUE(library.loadDecks().empty());
    EXPECT_FALSE(fs::exists(library.applicationSupport));
    const DeckProject project = makeDeck();
    EXPECT_TRUE(library.saveDeck(project));
    EXPECT_EQ(library.loadDecks(), std::vector{project});
    EXPECT_EQ(FileBytes::read(library.deckFile(project.id)), prettyJSON(toJSON(project)));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(LibraryTest, AClearedSourceLeavesTheFile) {
    DeckProject project = makeDeck();
    ASSERT_TRUE(library.saveDeck(project));
    project.source.reset();
    ASSERT_TRUE(library.saveDeck(project));
    EXPECT_THAT(*FileBytes::read(library.deckFile(project.id)), testing::Not(testing::HasSubstr("\"source\"")));
    EXPECT_EQ(library.loadDecks(), std::vector{project});
}

TEST_F(LibraryTest, OldestFirstAndEqualOnesByTheNamesOfTheirFiles) {
    std::mt19937 random(2);
    std::vector<int> order(60);
    std::iota(order.begin(), order.end(), 0);
    std::ranges::shuffle(order, random);
    for (const int i : order) {
        DeckProject project = makeDeck(std::to_string(i));
        project.created = 3 - i / 20;
        put(std::string(1, static_cast<char>('A' + i % 20)) + std::to_string(i) + ".json", project);
    }
    std::vector<std::string> expected;
    for (int age = 2; age >= 0; --age)
        for (int i = 0; i < 20; ++i) expected.push_back(std::to_string(age * 20 + i));
    EXPECT_EQ(names(), expected);
}

TEST_F(LibraryTest, OnlyTheExactExtensionCounts) {
    for (const char* name :
         {"x.JSON", "x.Json", "x.txt", "x", "json", ".json", "x.json~", "x.json.bak", "x.json ", "xjson"})
        put(name, makeDeck(name));
    EXPECT_TRUE(library.loadDecks().empty());
    put("a.b.json", makeDeck("one"));
    EXPECT_EQ(names(), std::vector<std::string>{"one"});
}

TEST_F(LibraryTest, AFileOfAnotherNameIsADeckAndComesBackDoubled) {
    const DeckProject project = makeDeck();
    put("copy of mine.json", project);
    EXPECT_EQ(library.loadDecks(), std::vector{project});
    ASSERT_TRUE(library.saveDeck(project));
    EXPECT_EQ(library.loadDecks(), (std::vector{project, project}));
}

TEST_F(LibraryTest, BrokenFilesArePassedOverAndStay) {
    const std::string whole = prettyJSON(toJSON(makeDeck("broken")));
    const std::string nested(100'000, '[');
    const std::vector<std::string> texts{"",
                                         "{",
                                         "null",
                                         "[]",
                                         "{}",
                                         "\xff\xfe\x00",
                                         whole.substr(0, whole.size() / 2),
                                         whole + "x",
                                         nested,
                                         std::string(100'000, '\0')};
    for (std::size_t i = 0; i < texts.size(); ++i) put(std::to_string(i) + ".json", texts[i]);
    JSON incomplete = toJSON(makeDeck("incomplete"));
    incomplete.erase("imageDPI");
    put("incomplete.json", prettyJSON(incomplete));
    put("good.json", makeDeck("good"));
    EXPECT_EQ(names(), std::vector<std::string>{"good"});
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(FileBytes::read(library.decksFolder() / (std::to_string(i) + ".json")), texts[i]);
    EXPECT_EQ(fileCount(), texts.size() + 2);
}

TEST_F(LibraryTest, WhatIsNoFileIsPassedOver) {
    put("good.json", makeDeck("good"));
    const fs::path decks = library.decksFolder();
    fs::create_directories(decks / "folder.json");
    ASSERT_EQ(::mkfifo((decks / "pipe.json").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", decks / "endless.json");
    fs::create_symlink("loop.json", decks / "loop.json");
    fs::create_symlink("nowhere", decks / "nowhere.json");
    {
        std::ofstream(decks / "huge.json");
    }
    fs::resize_file(decks / "huge.json", Library::largestRecord + 1);
    EXPECT_EQ(names(), std::vector<std::string>{"good"});
    fs::create_symlink("good.json", decks / "link.json");
    EXPECT_EQ(names(), (std::vector<std::string>{"good", "good"}));
}

TEST_F(LibraryTest, AFolderThatIsNoneHoldsNothing) {
    fs::create_directories(library.applicationSupport);
    std::ofstream(library.decksFolder()) << "a file";
    EXPECT_TRUE(library.loadDecks().empty());
    const auto saved = library.saveDeck(makeDeck());
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().operation, FileFailure::Operation::makeFolder);
    library.deleteDeck(UUID::random());
    EXPECT_EQ(FileBytes::read(library.decksFolder()), "a file");
}

TEST_F(LibraryTest, SweepsWhatAnInterruptedSaveLeft) {
    put(".quorvel-" + UUID::random().text() + ".tmp", "half a rec");
    put("notes.txt", "mine");
    put("good.json", makeDeck("good"));
    EXPECT_EQ(names(), std::vector<std::string>{"good"});
    EXPECT_EQ(fileCount(), 2u);
}

TEST_F(LibraryTest, ALinkedRecordStaysALink) {
    const DeckProject project = makeDeck();
    fs::create_directories(library.decksFolder());
    fs::create_symlink(folder / "elsewhere.json", library.deckFile(project.id));
    ASSERT_TRUE(library.saveDeck(project));
    EXPECT_TRUE(fs::is_symlink(library.deckFile(project.id)));
    EXPECT_TRUE(fs::is_regular_file(folder / "elsewhere.json"));
    EXPECT_EQ(library.loadDecks(), std::vector{project});
}

TEST_F(LibraryTest, DeletesTheDecksFileAndNothingElse) {
    const DeckProject one = makeDeck("one");
    const DeckProject two = makeDeck("two");
    library.deleteDeck(one.id);
    ASSERT_TRUE(library.saveDeck(one));
    ASSERT_TRUE(library.saveDeck(two));
    library.deleteDeck(one.id);
    library.deleteDeck(one.id);
    EXPECT_EQ(library.loadDecks(), std::vector{two});
    fs::create_directories(library.deckFile(one.id));
    library.deleteDeck(one.id);
    EXPECT_TRUE(fs::is_directory(library.deckFile(one.id)));
}

TEST_F(LibraryTest, ManyDecksComeBackAsTheyWere) {
    std::vector<DeckProject> decks;
    for (int i = 0; i < 100; ++i) {
        decks.push_back(makeDeck(std::to_string(i)));
        decks.back().created = i;
        put(decks.back().id.text() + ".json", decks.back());
    }
    EXPECT_EQ(library.loadDecks(), decks);
}

}  // namespace
}  // namespace quorvel
