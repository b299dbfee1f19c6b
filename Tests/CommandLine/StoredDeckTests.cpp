#include "Foundation/Text.h"
#include "Samples/SampleTemplates.h"
#include "StoredDeckTest.h"
#include "Support/WorkbookWriter.h"
#include "Templates/SheetSettingsJSON.h"
#include "Templates/TemplateJSON.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

using StoredDeckTests = StoredDeckTest;

TEST_F(StoredDeckTests, ADeckIsFoundByIdOrName) {
    const DeckProject deck = makeDeck("Orchard");
    save(deck);
    save(makeDeck("Émile"));
    const std::string id = deck.id.text();
    for (const std::string& name : {id, Text::lowercased(id), std::string("Orchard"), std::string("oRCHARD")}) {
        const auto end = runInLibrary({"sheets", "--deck", name, "-o", "x.pdf"});
        EXPECT_TRUE(succeeded(end)) << name;
        EXPECT_EQ(end.output, "Saved 1 pages to “x.pdf”.\n");
    }
    EXPECT_TRUE(succeeded(runInLibrary({"sheets", "--deck=ÉMILE", "-o", "x.pdf"})));
}

TEST_F(StoredDeckTests, AnExactNameGoesBeforeTheSameInAnotherCase) {
    save(makeDeck("Orchard"));
    DeckProject other = makeDeck("ORCHARD");
    other.imageDPI = 36;
    save(other);
    EXPECT_EQ(runInLibrary({"images", "--deck", "ORCHARD"}).output, "Saved 2 card images to “ORCHARD card images”.\n");
    EXPECT_TRUE(failedWith(runInLibrary({"images", "--deck", "orchard"}), "There are 2 decks named “orchard”"));
}

TEST_F(StoredDeckTests, SeveralOfANameAreListedByTheirIds) {
    const DeckProject first = makeDeck("Orchard");
    const DeckProject second = makeDeck("Orchard");
    save(first);
    save(second);
    EXPECT_TRUE(failedWith(runInLibrary({"sheets", "--deck", "Orchard"}),
                           "There are 2 decks named “Orchard”; give the id of the one you mean, " + first.id.text() +
                               " or " + second.id.text() + "."));
}

TEST_F(StoredDeckTests, NamesLikeTheWantedOneAreNamed) {
    const auto failure = [&](const std::string& name) { return runInLibrary({"sheets", "--deck", name}).errors; };
    fs::create_directory(*this / "library");
    EXPECT_EQ(failure("Orchard"), "There is no deck “Orchard”: the library is empty.\n");
    for (const std::string name : {"Orchard", "Orchard Couriers", "Winter Émigrés", "Sea"}) save(makeDeck(name));
    const struct {
        std::string wanted, sentence;
    } cases[] = {
        {"Orchad", "There is no deck “Orchad”, but there is “Orchard”.\n"},
        {"ORCHARDS", "There is no deck “ORCHARDS”, but there is “Orchard”.\n"},
        {"courier", "There is no deck “courier”, but there is “Orchard Couriers”.\n"},
        {"orch", "There is no deck “orch”, but there is “Orchard” and “Orchard Couriers”.\n"},
        {"emigres", "There is no deck “emigres”, but there is “Winter Émigrés”.\n"},
        {"Tea", "There is no deck “Tea”, but there is “Sea”.\n"},
        {"Volcano", "There is no deck “Volcano”; “quorvel-cli decks” lists those there are.\n"},
        {"6f0c3a0e-0000-4000-8000-000000000000",
         "There is no deck “6f0c3a0e-0000-4000-8000-000000000000”; “quorvel-cli decks” lists those there are.\n"},
        {std::string(100'000, 'x'),
         "There is no deck “" + std::string(100'000, 'x') + "”; “quorvel-cli decks” lists those there are.\n"},
    };
    for (const auto& each : cases) EXPECT_EQ(failure(each.wanted), each.sentence);
}

TEST_F(StoredDeckTests, TheDecksOwnDesignSettingsAndFoldersApply) {
    DeckProject deck = makeDeck("Game");
    write("game/Game.csv", "Name,Other name,Art\nOwl,Hoot,owl.png\nFox,Bark,fox.png\n");
    writePicture("art/owl.png");
    writePicture("game/fox.png");
    writePicture("icons/coin.png");
    deck.template_ = SampleTemplates::make(SampleTemplates::Kind::tarot, "Back");
    deck.mapping.columns = {{"title", "Other name"}, {"art", "Art"}};
    deck.sheet = {.paper = Paper::a4, .duplex = true};
    deck.artFolder = *Bookmark::make(*this / "art");
    deck.iconFolder = *Bookmark::make(*this / "icons");
    deck.imageBleed = false;
    deck.imageDPI = 72;
    save(deck);
    const auto before = contents("library");

    // The same from files, the columns by their usual names.
    write("plain/Game.csv", "Title,Art\nHoot,owl.png\nBark,fox.png\n");
    writePicture("plain/fox.png");
    write("design.json", templateFileText(deck.template_));
    write("settings.json", prettyJSON(toJSON(deck.sheet)));
    const auto fromFile = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin() + 1, {"plain/Game.csv", "--template", "design.json", "--art", "art",
                                                 "--icons", "icons", "-o", "expected"});
        EXPECT_TRUE(succeeded(run(arguments)));
    };
    EXPECT_TRUE(succeeded(runInLibrary({"sheets", "--deck", "Game"})));
    fromFile({"sheets", "--settings", "settings.json"});
    EXPECT_EQ(read("Game print sheets.pdf"), read("expected"));
    fs::remove(*this / "expected");

    EXPECT_TRUE(succeeded(runInLibrary({"images", "--deck", "Game"})));
    fromFile({"images", "--dpi", "72", "--no-bleed"});
    EXPECT_EQ(contents("Game card images"), contents("expected"));
    EXPECT_EQ(listing("expected").front(), "001 Hoot.png");
    fs::remove_all(*this / "expected");

    EXPECT_TRUE(succeeded(runInLibrary({"tts", "--deck", "Game"})));
    fromFile({"tts"});
    EXPECT_EQ(contents("Game Tabletop Simulator"), contents("expected"));
    EXPECT_EQ(contents("library"), before);
}

TEST_F(StoredDeckTests, OptionsGoBeforeWhatTheDeckSays) {
    DeckProject deck = makeDeck("Game");
    deck.imageBleed = false;
    deck.imageDPI = 600;
    deck.sheet = {.paper = Paper::a4, .duplex = true};
    save(deck);
    const auto same = [&](const std::string& command, const std::vector<std::string>& options,
                          const std::vector<std::string>& forFile) {
        std::vector<std::string> stored{command, "--deck", "Game", "-o", "stored"};
        stored.insert(stored.end(), options.begin(), options.end());
        std::vector<std::string> plain{command, "game/Game.csv", "-o", "plain"};
        plain.insert(plain.end(), forFile.begin(), forFile.end());
        EXPECT_TRUE(succeeded(runInLibrary(stored)));
        EXPECT_TRUE(succeeded(run(plain)));
        if (fs::is_directory(*this / "plain"))
            EXPECT_EQ(contents("stored"), contents("plain"));
        else
            EXPECT_EQ(read("stored"), read("plain"));
        fs::remove_all(*this / "stored");
        fs::remove_all(*this / "plain");
    };
    same("images", {"--bleed", "--dpi", "40"}, {"--dpi", "40"});
    same("sheets", {"--set", "duplex=false"}, {"--set", "paper=a4"});
    write("letter.json", "{}");
    same("sheets", {"--settings", "letter.json"}, {});
    same("sheets", {"--settings", "letter.json", "--kind", "mini", "--name", "New"},
         {"--kind", "mini", "--name", "New"});

    EXPECT_EQ(runInLibrary({"images", "--deck", "Game", "--name", "a/b", "--dpi", "40"}).output,
              "Saved 2 card images to “a b card images”.\n");
    EXPECT_TRUE(failedWith(runInLibrary({"images", "--deck", "Game", "--sheet", "2"}),
                           "There is no sheet 2 in “Game.csv”: it has only one."));
    EXPECT_TRUE(failedWith(runInLibrary({"images", "--deck", "Game", "--art", "absent"}), "“absent” doesn’t exist."));
}

TEST_F(StoredDeckTests, TheDecksWorksheetIsRead) {
    test::WorkbookParts parts;
    const auto sheet = [](std::string_view title) {
        return test::worksheetXML(
            "<row><c t=\"inlineStr\"><is><t>Name</t></is></c></row><row><c t=\"inlineStr\"><is><t>" +
            std::string(title) + "</t></is></c></row>");
    };
    parts.sheets = {{"One", sheet("Owl")}, {"Two", sheet("Fox")}};
    write("game/deck.xlsx", test::workbookBytes(parts));
    DeckProject deck = makeDeck("Game");
    deck.source = *Bookmark::make(*this / "game/deck.xlsx");
    deck.sheetIndex = 1;
    deck.imageDPI = 36;
    save(deck);
    EXPECT_TRUE(succeeded(runInLibrary({"images", "--deck", "Game", "-o", "own"})));
    EXPECT_EQ(listing("own").front(), "001 Fox.png");
    EXPECT_TRUE(succeeded(runInLibrary({"images", "--deck", "Game", "-o", "named", "--sheet", "1"})));
    EXPECT_EQ(listing("named").front(), "001 Owl.png");
}

TEST_F(StoredDeckTests, ARenamedSpreadsheetIsFoundAndTheLibraryNotWrittenTo) {
    save(makeDeck("Game"));
    fs::rename(*this / "game/Game.csv", *this / "game/renamed.csv");
    const auto before = contents("library");
    EXPECT_TRUE(succeeded(runInLibrary({"sheets", "--deck", "Game"})));
    EXPECT_EQ(contents("library"), before);
}

TEST_F(StoredDeckTests, ADeckWithoutASpreadsheetIsAFailure) {
    DeckProject lost = makeDeck("Lost");
    save(lost);
    fs::remove(*this / "game/Lost.csv");
    DeckProject none = makeDeck("None");
    none.source.reset();
    save(none);
    EXPECT_TRUE(failedWith(runInLibrary({"sheets", "--deck", "Lost"}),
                           "“Lost.csv” can’t be found. It may have been moved or deleted: choose it again."));
    EXPECT_TRUE(failedWith(runInLibrary({"sheets", "--deck", "None"}), "The deck “None” has no spreadsheet yet."));
    EXPECT_FALSE(fs::exists(*this / "Lost print sheets.pdf"));
}

TEST_F(StoredDeckTests, TheLibraryIsNeverWrittenOverOrSweptAway) {
    const DeckProject deck = makeDeck("Game");
    save(deck);
    write("all/notes.txt", "keep");
    fs::rename(*this / "library", *this / "all/library");
    const auto before = contents("all");
    const auto run = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--deck", "Game", "--library", "all/library"});
        return CommandLineTest::run(arguments);
    };
    EXPECT_TRUE(
        failedWith(run({"images", "-o", "all", "--replace"}), "“all” holds “library”, which the command reads"));
    EXPECT_TRUE(failedWith(run({"tts", "-o", "all/library", "--replace"}), "“library” holds “library”"));
    EXPECT_TRUE(failedWith(run({"tts", "-o", "all/library/Decks", "--replace"}), "“Decks” holds"));
    EXPECT_TRUE(
        failedWith(run({"sheets", "-o", "all/library/Decks/" + deck.id.text() + ".json"}), "can’t write over it."));
    EXPECT_TRUE(failedWith(run({"sheets", "-o", "game/Game.csv"}), "The command reads “Game.csv”"));
    EXPECT_EQ(contents("all"), before);
}

TEST_F(StoredDeckTests, AProposedFolderThatIsThereIsNotWrittenInto) {
    DeckProject deck = makeDeck("Game");
    deck.imageDPI = 36;
    save(deck);
    EXPECT_TRUE(succeeded(runInLibrary({"images", "--deck", "Game"})));
    EXPECT_TRUE(failedWith(runInLibrary({"images", "--deck", "Game"}), "“Game card images” isn’t empty"));
    EXPECT_TRUE(succeeded(runInLibrary({"images", "--deck", "Game", "--replace"})));
}

}  // namespace
}  // namespace quorvel
