#include "Appearance.h"
#include "StoredDeckTest.h"
#include "Support/Desktop/SaveManners.h"

#include <algorithm>
#include <csignal>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::MatchesRegex;

class WatchTests : public StoredDeckTest {
protected:
    WatchTests() { write("deck.csv", deckOf(2)); }

    /// Waits for lines of what it prints instead of for any time.
    ProgramCall watching(std::vector<std::string> arguments) const {
        arguments.emplace_back("--watch");
        return {.arguments = std::move(arguments), .folder = folder_.path(), .output = ProgramCall::Output::piped};
    }

    /// Another program's save: a new file takes the name.
    void replace(const fs::path& name, std::string_view text) const {
        write("saved.tmp", text);
        fs::rename(*this / "saved.tmp", *this / name);
    }

    static void expectCalmEnd(RunningProgram& program, int signal = SIGINT) {
        program.send(signal);
        const auto end = program.wait();
        EXPECT_TRUE(succeeded(end));
        EXPECT_EQ(end.output, "");
    }
};

TEST_F(WatchTests, SheetsAreMadeAgainAfterEveryMannerOfSaving) {
    RunningProgram program(watching({"sheets", "deck.csv", "-o", "out.pdf"}));
    EXPECT_THAT(program.nextLine(), MatchesRegex("[0-2][0-9]:[0-5][0-9]:[0-6][0-9] Saved 1 pages to “out.pdf”."));
    int cards = 3;
    for (const SaveManner& manner : saveManners()) {
        manner.save(*this / "deck.csv", deckOf(cards++));
        EXPECT_THAT(program.nextLine(), EndsWith(" pages to “out.pdf”.")) << manner.name;
        ASSERT_TRUE(succeeded(run({"sheets", "deck.csv", "-o", "once.pdf"})));
        EXPECT_EQ(read("out.pdf"), read("once.pdf")) << manner.name;
    }
    expectCalmEnd(program);
}

TEST_F(WatchTests, ABadSaveIsToldAndWhatWasMadeStays) {
    RunningProgram program(watching({"sheets", "deck.csv", "-o", "out.pdf"}));
    EXPECT_THAT(program.nextLine(), EndsWith("“out.pdf”."));
    const std::string good = read("out.pdf");
    write("deck.csv", "");
    EXPECT_THAT(program.nextErrorLine(), MatchesRegex("[0-9:]+ “deck.csv” is empty."));
    replace("deck.csv", "Name\n");
    EXPECT_THAT(program.nextErrorLine(),
                EndsWith(" There are no cards in “deck.csv”: nothing stands below its headers."));
    EXPECT_EQ(read("out.pdf"), good);

    write("deck.csv", deckOf(20));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 3 pages to “out.pdf”."));
    EXPECT_NE(read("out.pdf"), good);
    expectCalmEnd(program);
}

TEST_F(WatchTests, ASpreadsheetThatGoesIsTakenUpWhenItIsBack) {
    RunningProgram program(watching({"sheets", "deck.csv", "-o", "out.pdf"}));
    EXPECT_THAT(program.nextLine(), EndsWith("“out.pdf”."));
    fs::remove(*this / "deck.csv");
    EXPECT_THAT(program.nextErrorLine(), EndsWith(" “deck.csv” doesn’t exist."));
    write("deck.csv", deckOf(10));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 2 pages to “out.pdf”."));
    expectCalmEnd(program);
}

TEST_F(WatchTests, AFolderIsRefreshedAndKeepsWhatIsNotOfThisRun) {
    RunningProgram program(watching({"images", "deck.csv", "-o", "out", "--dpi", "36"}));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 2 card images to “out”."));
    write("out/notes.txt", "mine");
    write("out/below/deep.txt", "mine");
    const auto folder = fs::status(*this / "out").permissions();

    write("deck.csv", "Name\nOwl\nFox\nElk\n");
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 3 card images to “out”."));
    EXPECT_EQ(listing("out"), (std::vector<std::string>{"001 Owl.png", "002 Fox.png", "003 Elk.png", "back.png",
                                                        "below/", "below/deep.txt", "notes.txt"}));
    replace("deck.csv", "Name\nElk\n");
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 1 card images to “out”."));
    EXPECT_EQ(listing("out"),
              (std::vector<std::string>{"001 Elk.png", "back.png", "below/", "below/deep.txt", "notes.txt"}));
    EXPECT_EQ(fs::status(*this / "out").permissions(), folder);
    ASSERT_TRUE(succeeded(run({"images", "deck.csv", "-o", "once", "--dpi", "36"})));
    EXPECT_EQ(read("out/001 Elk.png"), read("once/001 Elk.png"));
    expectCalmEnd(program);
    EXPECT_EQ(std::ranges::count_if(listing(), [](const std::string& name) { return name.starts_with("."); }), 0);
}

TEST_F(WatchTests, AFileOfSomeoneElseIsNotReplaced) {
    RunningProgram program(watching({"images", "deck.csv", "-o", "out", "--dpi", "36"}));
    EXPECT_THAT(program.nextLine(), EndsWith("“out”."));
    write("out/001 Owl.png", "mine");
    const auto before = contents("out");
    write("deck.csv", "Name\nOwl\n");
    EXPECT_THAT(program.nextErrorLine(), EndsWith(" “out” holds a “001 Owl.png” that this run hasn’t made; move it "
                                                  "elsewhere, or export to another folder."));
    EXPECT_EQ(contents("out"), before);
    fs::remove(*this / "out/001 Owl.png");
    write("deck.csv", "Name\nOwl\nFox\n");
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 2 card images to “out”."));
    EXPECT_EQ(listing("out"), (std::vector<std::string>{"001 Owl.png", "002 Fox.png", "back.png"}));
    expectCalmEnd(program);
}

TEST_F(WatchTests, AFolderThatGoesIsMadeAgainAndAnOldOneReplacedOnlyWhenAsked) {
    write("out/old.txt", "old");
    EXPECT_TRUE(failedWith(run({"tts", "deck.csv", "-o", "out", "--watch"}), "“out” isn’t empty"));
    RunningProgram program(watching({"tts", "deck.csv", "-o", "out", "--replace"}));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 1 deck sheets to “out”."));
    const std::vector<std::string> files{"Back.png", "Deck sheet 1.png", "README.txt"};
    EXPECT_EQ(listing("out"), files);
    fs::remove_all(*this / "out");
    write("deck.csv", deckOf(3));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 1 deck sheets to “out”."));
    EXPECT_EQ(listing("out"), files);
    expectCalmEnd(program);
}

TEST_F(WatchTests, ASignalInTheMiddleOfAnExportLeavesTheLastOne) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        write("deck.csv", deckOf(1));
        RunningProgram program(watching({"images", "deck.csv", "-o", "out", "--dpi", "36", "--replace"}));
        EXPECT_THAT(program.nextLine(), EndsWith("“out”."));
        const auto made = contents("out");
        Appearance appearance(folder_.path());
        replace("deck.csv", deckOf(3000));
        // First the save itself, then the hidden folder in which the next export is made.
        std::string name;
        do name = appearance.next();
        while (!name.empty() && !name.starts_with(".quorvel-"));
        EXPECT_NE(name, "");
        expectCalmEnd(program, signal);
        EXPECT_EQ(contents("out"), made);
        EXPECT_EQ(std::ranges::count_if(listing(), [](const std::string& each) { return each.starts_with("."); }), 0);
    }
}

TEST_F(WatchTests, AFirstExportThatFailsEndsTheProgram) {
    write("empty.csv", "");
    EXPECT_TRUE(failedWith(run({"sheets", "empty.csv", "-o", "x.pdf", "--watch"}), "“empty.csv” is empty."));
    EXPECT_TRUE(failedWith(run({"sheets", "absent.csv", "-o", "x.pdf", "--watch"}), "“absent.csv” doesn’t exist."));
    EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "deck.csv", "--watch"}), "can’t write over it."));
    EXPECT_FALSE(fs::exists(*this / "x.pdf"));
}

TEST_F(WatchTests, AReaderThatLeavesEndsTheProgram) {
    const auto end = runProgram({.arguments = {"sheets", "deck.csv", "-o", "x.pdf", "--watch"},
                                 .folder = folder_.path(),
                                 .output = ProgramCall::Output::readerGone});
    EXPECT_TRUE(failedWith(end, "its reader has gone."));
}

TEST_F(WatchTests, AnUnusualLocaleIsNothingToTalkAbout) {
    auto call = watching({"sheets", "deck.csv", "-o", "out.pdf"});
    call.environment = {{"LC_ALL", "C"}};
    RunningProgram program(call);
    EXPECT_THAT(program.nextLine(), EndsWith("“out.pdf”."));
    expectCalmEnd(program);
}

TEST_F(WatchTests, AStoredDeckIsFollowedWithItsDesignAndItsSpreadsheet) {
    DeckProject deck = makeDeck("Game");
    deck.imageDPI = 36;
    save(deck);
    RunningProgram program(watching({"images", "--deck", "game", "--library", library_.applicationSupport.string()}));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 2 card images to “Game card images”."));

    // The record changes as well, another deck gets its name, and the spreadsheet another one.
    deck.name = "Renamed";
    deck.imageBleed = false;
    save(deck);
    DeckProject other = makeDeck("Game");
    save(other);
    const auto before = contents("library");
    replace("game/Game.csv", "Name\nOwl\n");
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 1 card images to “Game card images”."));
    EXPECT_TRUE(succeeded(runInLibrary({"images", "--deck", deck.id.text(), "-o", "once"})));
    EXPECT_EQ(contents("Game card images"), contents("once"));
    EXPECT_EQ(contents("library"), before);
    expectCalmEnd(program);
}

TEST_F(WatchTests, ASpreadsheetOfAStoredDeckThatIsRenamedIsFollowed) {
    save(makeDeck("Game"));
    RunningProgram program(watching({"sheets", "--deck", "Game", "--library", library_.applicationSupport.string()}));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 1 pages to “Game print sheets.pdf”."));
    fs::rename(*this / "game/Game.csv", *this / "game/other.csv");
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 1 pages to “Game print sheets.pdf”."));
    write("game/other.csv", deckOf(10));
    EXPECT_THAT(program.nextLine(), EndsWith(" Saved 2 pages to “Game print sheets.pdf”."));
    expectCalmEnd(program);
}

}  // namespace
}  // namespace quorvel
