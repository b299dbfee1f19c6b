#include "Foundation/JSON.h"
#include "StoredDeckTest.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

using DecksTests = StoredDeckTest;

TEST_F(DecksTests, AnEmptyLibraryIsNoFailure) {
    fs::create_directory(*this / "library");
    const auto end = runInLibrary({"decks"});
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_EQ(end.output, "");
    EXPECT_EQ(end.errors, "There are no decks yet.\n");

    const auto json = runInLibrary({"decks", "--json"});
    EXPECT_TRUE(succeeded(json));
    EXPECT_EQ(json.output, "[]\n");
    EXPECT_TRUE(listing("library").empty()) << "nothing is made";
}

TEST_F(DecksTests, TheOldestComesFirstWithIdNameAndSpreadsheet) {
    const DeckProject first = makeDeck("Orchard");
    DeckProject third = makeDeck("Ärger & Zank");
    DeckProject second = makeDeck("A\tname\nof two lines");
    second.source.reset();
    std::swap(second.created, third.created);
    for (const DeckProject& deck : {third, first, second}) save(deck);
    write("library/Decks/broken.json", "{");
    const auto before = contents("library");

    const auto end = runInLibrary({"decks"});
    EXPECT_TRUE(succeeded(end));
    EXPECT_EQ(end.output, first.id.text() + "\tOrchard\t" + first.source->path + "\n" +  //
                              second.id.text() + "\tA name of two lines\tno spreadsheet\n" + third.id.text() +
                              "\tÄrger & Zank\t" + third.source->path + "\n");
    const JSON expected{
        {{"id", first.id.text()}, {"name", "Orchard"}, {"spreadsheet", first.source->path}},
        {{"id", second.id.text()}, {"name", "A\tname\nof two lines"}, {"spreadsheet", nullptr}},
        {{"id", third.id.text()}, {"name", "Ärger & Zank"}, {"spreadsheet", third.source->path}},
    };
    EXPECT_EQ(parseJSON(runInLibrary({"decks", "--json"}).output), expected);
    EXPECT_EQ(contents("library"), before);
}

TEST_F(DecksTests, TheApplicationsOwnLibraryIsTheUsualOne) {
    const DeckProject deck = makeDeck("Orchard");
    save(deck);
    fs::create_directory(*this / "share");
    fs::rename(*this / "library", *this / "share/Quorvel");
    const auto decksIn = [&](const std::string& data) {
        return runProgram({.arguments = {"decks"},
                           .folder = folder_.path(),
                           .environment = {{"XDG_DATA_HOME", (*this / data).string()}}});
    };
    EXPECT_TRUE(decksIn("share").output.starts_with(deck.id.text() + "\t"));
    EXPECT_EQ(decksIn("absent").errors, "There are no decks yet.\n") << "it need not be there";
    EXPECT_FALSE(fs::exists(*this / "absent"));
}

TEST_F(DecksTests, ALibraryThatIsNamedMustBeThere) {
    write("file", "");
    EXPECT_TRUE(failedWith(run({"decks", "--library", "absent"}), "“absent” doesn’t exist."));
    EXPECT_TRUE(failedWith(run({"decks", "--library", "file"}), "“file” is a file, not a folder."));
    EXPECT_TRUE(failedWith(run({"sheets", "--deck", "x", "--library", "absent"}), "“absent” doesn’t exist."));
}

}  // namespace
}  // namespace quorvel
