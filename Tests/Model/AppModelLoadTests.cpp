#include "AppModelTest.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using std::filesystem::path;
using std::filesystem::remove;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class AppModelLoad : public AppModelTest {};

TEST_F(AppModelLoad, AnEmptyLibraryOpensNothing) {
    start();
    EXPECT_EQ(state()._selection, std::nullopt);
    EXPECT_TRUE(state()._decks.empty());
    EXPECT_FALSE(std::filesystem::exists(desktop.applicationSupport()));
    settle(Milliseconds(200));
    EXPECT_TRUE(state()._canvasImage) << "the sample design is shown without a deck";
    EXPECT_FALSE(state()._sheetImage);
    EXPECT_EQ(model().sheetPageCount(), 0);
}

TEST_F(AppModelLoad, WithoutPersistingNothingTouchesTheDisk) {
    ASSERT_TRUE(library().saveDeck(deckNamed("Stored")));
    desktop.defaults["lastDeck"] = "kept";
    start(AppModel::Persist::no);
    EXPECT_TRUE(state()._decks.empty());
    model().newDeck(SampleTemplates::Kind::mini, "Passing");
    settle(Milliseconds(2000));
    EXPECT_EQ(state()._decks.size(), 1u);
    EXPECT_EQ(library().loadDecks().size(), 1u);
    EXPECT_EQ(desktop.defaults["lastDeck"], "kept");
}

TEST_F(AppModelLoad, AReloadBeforeTheEndOfTheFirstLoadStillLeadsToTheCards) {
    start();
    model().newDeck(SampleTemplates::Kind::classic, "Deck");
    ASSERT_EQ(state()._tab, Tab::data);
    model().useSpreadsheet(write("cards.csv", table({"A"})));
    model().reloadSpreadsheet();
    EXPECT_EQ(state()._tab, Tab::data) << "not before the cards are there";
    settle(Milliseconds(100));
    EXPECT_EQ(state()._tab, Tab::cards);
    EXPECT_THAT(titles(), ElementsAre("A"));
    model().setTab(Tab::sheets);
    model().reloadSpreadsheet();
    settle(Milliseconds(100));
    EXPECT_EQ(state()._tab, Tab::sheets) << "once";
}

TEST_F(AppModelLoad, AnotherDeckDoesNotLeadToTheCardsOfTheFirst) {
    start();
    model().newDeck(SampleTemplates::Kind::classic, "First");
    model().useSpreadsheet(write("cards.csv", table({"A"})));
    model().newDeck(SampleTemplates::Kind::classic, "Second");
    settle(Milliseconds(100));
    model().reloadSpreadsheet();
    settle(Milliseconds(100));
    EXPECT_EQ(state()._tab, Tab::data);
}

TEST_F(AppModelLoad, ALastDeckThatIsGoneOpensTheOldest) {
    DeckProject older = deckNamed("Older");
    older.created = 1;
    DeckProject newer = deckNamed("Newer");
    newer.created = 2;
    ASSERT_TRUE(library().saveDeck(newer));
    ASSERT_TRUE(library().saveDeck(older));
    for (const std::string& last : {UUID::random().text(), std::string("no UUID"), std::string()}) {
        desktop.defaults["lastDeck"] = last;
        start();
        EXPECT_EQ(state()._selection, older.id);
        EXPECT_EQ(desktop.defaults["lastDeck"], older.id.text());
    }
    desktop.defaults["lastDeck"] = newer.id.text();
    start();
    EXPECT_EQ(state()._selection, newer.id);
}

TEST_F(AppModelLoad, TheStartDeckIsOpenedTwiceAndTheSecondCounts) {
    withSpreadsheet("cards.csv", table({"Rain Barrel"}));
    restart();
    scheduler.runBackground();  // both have read the file
    int loaded = 0;
    const auto subscription = model().subscribe(
        [&](Changes changes) { loaded += changes.has(Change::openDeck) && state().open._missingArt.empty(); });
    scheduler.deliver();
    EXPECT_EQ(loaded, 1) << "the first is superseded";
    EXPECT_THAT(titles(), ElementsAre("Rain Barrel"));
}

TEST_F(AppModelLoad, ASpreadsheetWithoutADeckMakesOneNamedAfterIt) {
    start();
    const path file = write("Orchard.csv", table({"Apple", "Pear"}));
    model().useSpreadsheet(file);
    ASSERT_NE(model().currentProject(), nullptr);
    EXPECT_EQ(model().currentProject()->name, "Orchard");
    EXPECT_EQ(state()._tab, Tab::data);
    EXPECT_TRUE(state().open._isLoading);
    settle();
    EXPECT_FALSE(state().open._isLoading);
    EXPECT_EQ(state()._tab, Tab::cards);
    EXPECT_THAT(titles(), ElementsAre("Apple", "Pear"));
    EXPECT_EQ(state().open._sourceURL, file);
    EXPECT_EQ(state().open._lastLoaded, scheduler.now());
    EXPECT_EQ(state().open._loadError, std::nullopt);
    EXPECT_EQ(model().currentProject()->mapping.column(Field::title), "Name");
    ASSERT_TRUE(saved()) << "a chosen spreadsheet is saved at once";
    EXPECT_EQ(saved()->source->path, file);
    EXPECT_EQ(saved()->mapping.column(Field::title), std::nullopt) << "the guess is saved later";
    settle(Milliseconds(500));
    EXPECT_EQ(saved()->mapping.column(Field::title), "Name");
}

TEST_F(AppModelLoad, ASecondSpreadsheetStartsOverButKeepsAChosenName) {
    withSpreadsheet("first.csv", table({"A"}));
    model().renameDeck(*state()._selection, "  Mine \n");
    EXPECT_EQ(model().currentProject()->name, "Mine");
    DeckProject project = *model().currentProject();
    project.sheetIndex = 3;
    model().updateProject(project);
    model().useSpreadsheet(write("second.csv", "Title,Power\nB,3\n"));
    EXPECT_EQ(model().currentProject()->sheetIndex, 0);
    EXPECT_TRUE(model().currentProject()->mapping.columns.empty());
    EXPECT_EQ(model().currentProject()->name, "Mine");
    settle();
    EXPECT_THAT(titles(), ElementsAre("B"));

    model().newDeck(SampleTemplates::Kind::classic, " ");
    EXPECT_EQ(model().currentProject()->name, "New Deck");
    model().useSpreadsheet(write("third.csv", table({"C"})));
    EXPECT_EQ(model().currentProject()->name, "third");
}

TEST_F(AppModelLoad, AFileThatIsGoneBeforeItIsKeptIsAnError) {
    start();
    model().useSpreadsheet(desktop.folder / "nowhere.csv");
    EXPECT_EQ(state()._error, "Quorvel couldn’t keep access to “nowhere.csv”.");
    model().clearError();
    EXPECT_EQ(state()._error, std::nullopt);
}

TEST_F(AppModelLoad, WhatCantBeReadIsToldInItsOwnWords) {
    const struct {
        std::string name, text, message;
    } cases[] = {
        {"deck.numbers", "PK",
         "“deck.numbers” is a Numbers file. In Numbers, choose File › Export To › CSV, then use "
         "that file."},
        {"deck.xls", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 binary",
         "“deck.xls” is an older Excel file. Save it as .xlsx or CSV first."},
        {"picture.csv", std::string("\x89PNG\r\n\x1A\n\0\0\0", 11),
         "“picture.csv” doesn’t look like a CSV or Excel file."},
        {"blank.csv", " \n\n", "“blank.csv” is empty."},
    };
    start();
    for (const auto& each : cases) {
        model().useSpreadsheet(write(each.name, each.text));
        model().setTab(Tab::data);
        settle();
        EXPECT_EQ(state().open._loadError, each.message);
        EXPECT_EQ(state()._tab, Tab::data) << "the tab stays where the error is to be met";
        EXPECT_EQ(model().currentProject()->source->name, each.name) << "the error is about the file that was chosen";
        EXPECT_FALSE(state().open._isLoading);
    }
    model().useSpreadsheet(write("broken.xlsx", "PK\x03\x04 not an archive"));
    settle();
    EXPECT_THAT(state().open._loadError.value_or(""), StartsWith("“broken.xlsx” couldn’t be read: "));

    std::filesystem::create_directory(desktop.folder / "folder.csv");
    model().useSpreadsheet(desktop.folder / "folder.csv");
    settle();
    EXPECT_THAT(state().open._loadError.value_or(""), StartsWith("“folder.csv” couldn’t be read: "));
}

TEST_F(AppModelLoad, AMissingSpreadsheetLeavesTheTemplateUsable) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    model().setCanvasCard(1);
    remove(desktop.folder / "cards.csv");
    model().reloadSpreadsheet();
    EXPECT_EQ(state().open._loadError,
              "“cards.csv” can’t be found. It may have been moved or deleted: choose it again.");
    EXPECT_EQ(state().open._table, nullptr);
    EXPECT_THAT(titles(), IsEmpty());
    EXPECT_EQ(model().canvasCardValue(), std::nullopt);
    settle(Milliseconds(100));
    EXPECT_TRUE(state()._canvasImage);
    model().addLayer(LayerKind::text);
    EXPECT_TRUE(undo->canUndo());
}

TEST_F(AppModelLoad, TheArtFolderIsSearchedBeforeTheSpreadsheetsOwn) {
    withSpreadsheet("cards.csv", "Name,Art\nA,one.png\n");
    EXPECT_THAT(state().open._missingArt, ElementsAre("one.png"));
    std::filesystem::create_directory(desktop.folder / "art");
    desktop.answers = {desktop.folder / "art"};
    model().chooseFolder(AppModel::FolderKind::art);
    const auto& panel = std::get<FolderPanel>(desktop.asked.back());
    EXPECT_EQ(panel.title, "Choose the Art Folder");
    EXPECT_EQ(panel.prompt, "Use Folder");
    EXPECT_EQ(panel.start, desktop.folder.path());
    EXPECT_EQ(model().currentProject()->artFolder->name, "art");
    std::filesystem::copy_file(QUORVEL_SOURCE_DIR "/Tests/Golden/Rendering/shapes.png", desktop.folder / "art/one.png");
    EXPECT_TRUE(state().open._isLoading);
    settle(Milliseconds(600));
    EXPECT_THAT(state().open._missingArt, IsEmpty());
    EXPECT_EQ(state().open._assets->resolve("one.png"), desktop.folder / "art/one.png");
    EXPECT_EQ(saved()->artFolder->name, "art");
    // A folder that is gone is passed over in silence.
    std::filesystem::remove_all(desktop.folder / "art");
    model().reloadSpreadsheet();
    settle();
    EXPECT_EQ(state().open._loadError, std::nullopt);
    EXPECT_THAT(state().open._missingArt, ElementsAre("one.png"));
}

TEST_F(AppModelLoad, TheIconsFolderCanBeForgotten) {
    withSpreadsheet("cards.csv", table({"A"}));
    model().chooseFolder(AppModel::FolderKind::icons);
    EXPECT_EQ(model().currentProject()->iconFolder, std::nullopt) << "cancelled";
    std::filesystem::create_directory(desktop.folder / "icons");
    desktop.answers = {desktop.folder / "icons"};
    model().chooseFolder(AppModel::FolderKind::icons);
    EXPECT_EQ(std::get<FolderPanel>(desktop.asked.back()).title, "Choose the Icons Folder");
    ASSERT_TRUE(model().currentProject()->iconFolder);
    model().clearIconFolder();
    EXPECT_EQ(model().currentProject()->iconFolder, std::nullopt);
    EXPECT_TRUE(state().open._isLoading);
}

TEST_F(AppModelLoad, SwitchingDecksDropsWhatTheOldOneWasReading) {
    withSpreadsheet("good.csv", table({"Good"}));
    const UUID good = *state()._selection;
    model().newDeck(SampleTemplates::Kind::classic, "Broken");
    model().useSpreadsheet(write("broken.csv", std::string("\0\1\2\0", 4)));
    scheduler.runBackground();  // read, its result on the way
    model().setSelection(good);
    settle();
    EXPECT_EQ(state().open._loadError, std::nullopt);
    EXPECT_THAT(titles(), ElementsAre("Good"));
    EXPECT_EQ(state().open._sourceURL, desktop.folder / "good.csv");
    EXPECT_EQ(desktop.defaults["lastDeck"], good.text());
}

TEST_F(AppModelLoad, ClosingADeckCleansUpAndDrawsOnce) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    model().cardAppeared(0);
    model().setCanvasCard(1);
    model().setSheetBack(true);
    model().addLayer(LayerKind::shape);
    settle(Milliseconds(200));
    EXPECT_FALSE(model().thumbnails().empty());
    EXPECT_TRUE(state()._sheetImage);
    model().setSelection(std::nullopt);
    EXPECT_FALSE(desktop.defaults.contains("lastDeck"));
    EXPECT_EQ(state().open._table, nullptr);
    EXPECT_TRUE(model().thumbnails().empty());
    EXPECT_FALSE(state()._canvasImage);
    EXPECT_FALSE(state()._sheetImage);
    EXPECT_FALSE(state()._selectedLayer);
    EXPECT_EQ(state()._canvasCard, 0);
    EXPECT_FALSE(state()._sheetBack);
    EXPECT_FALSE(undo->canUndo());
    int drawn = 0;
    const auto subscription = model().subscribe([&](Changes changes) { drawn += changes.has(Change::canvas); });
    settle(Milliseconds(1000));
    EXPECT_EQ(drawn, 1);
    EXPECT_TRUE(state()._canvasImage) << "the sample design";
}

TEST_F(AppModelLoad, AnotherWorksheetStartsItsMappingOver) {
    withSpreadsheet("cards.csv", table({"A"}));
    EXPECT_FALSE(model().currentProject()->mapping.columns.empty());
    model().chooseSheet(0);
    EXPECT_FALSE(state().open._isLoading) << "it is that one already";
    model().chooseSheet(2);
    EXPECT_TRUE(model().currentProject()->mapping.columns.empty());
    EXPECT_TRUE(state().open._isLoading);
    settle();
    EXPECT_EQ(model().currentProject()->sheetIndex, 0) << "a text file has but one";
}

TEST_F(AppModelLoad, TheSpreadsheetPanelOffersWhatCanBeReadAndWhatIsOftenTried) {
    start();
    model().chooseSpreadsheet();
    const auto& panel = std::get<OpenPanel>(desktop.asked.back());
    EXPECT_EQ(panel.title, "Choose the Spreadsheet of Cards");
    EXPECT_EQ(panel.message, "CSV, TSV or Excel (.xlsx). In Numbers, use File › Export To › CSV first.");
    EXPECT_THAT(panel.types.at(0).extensions, testing::IsSupersetOf({"csv", "tsv", "txt", "xlsx", "numbers", "xls"}));
    EXPECT_TRUE(state()._decks.empty()) << "cancelled";
    desktop.answers = {write("cards.csv", table({"A"}))};
    model().chooseSpreadsheet();
    settle();
    EXPECT_THAT(titles(), ElementsAre("A"));
}

}  // namespace
}  // namespace quorvel
