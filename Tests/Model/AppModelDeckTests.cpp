#include "AppModelTest.h"
#include "Foundation/FileBytes.h"
#include "Samples/SampleDeck.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using std::filesystem::exists;
using testing::ElementsAre;
using testing::IsEmpty;

class AppModelDecks : public AppModelTest {
protected:
    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const DeckProject& project : state()._decks) names.push_back(project.name);
        return names;
    }
    std::vector<std::string> savedNames() {
        std::vector<std::string> names;
        for (const DeckProject& project : library().loadDecks()) names.push_back(project.name);
        return names;
    }
    void openSample() {
        model().openSampleDeck(SampleTemplates::Kind::classic);
        settle(Milliseconds(1000));
    }
    Path sampleFolder() { return library().sampleFolder() / state()._selection->text(); }
};

TEST_F(AppModelDecks, ANewDeckAsksForASpreadsheetNext) {
    start();
    model().setShowNewDeck(true);
    model().newDeck(SampleTemplates::Kind::tarot, " \tTales\n");
    EXPECT_EQ(state()._tab, Tab::data);
    const DeckProject& deck = *model().currentProject();
    EXPECT_EQ(deck.name, "Tales");
    EXPECT_EQ(deck.template_.size.preset, CardSize::Preset::tarot);
    EXPECT_TRUE(deck.mapping.columns.empty());
    EXPECT_EQ(deck.sheet, SheetSettings());
    EXPECT_FALSE(deck.source);
    EXPECT_EQ(deck.created, secondsSince2001(scheduler.now()));
    EXPECT_EQ(desktop.defaults["lastDeck"], deck.id.text());
    scheduler.settle();
    EXPECT_THAT(savedNames(), ElementsAre("Tales")) << "at once, without the delay";
}

TEST_F(AppModelDecks, TheSampleDeckComesWithItsCardsAndPictures) {
    start();
    model().openSampleDeck(SampleTemplates::Kind::classic);
    settle(Milliseconds(1000));
    EXPECT_EQ(state()._tab, Tab::cards);
    EXPECT_THAT(names(), ElementsAre(SampleDeck::name));
    EXPECT_EQ(state().open._deck->cards.size(), 14u);
    EXPECT_THAT(state().open._missingArt, IsEmpty());
    EXPECT_EQ(state().open._loadError, std::nullopt);
    const DeckProject& deck = *model().currentProject();
    EXPECT_EQ(deck.source->data, std::nullopt);
    EXPECT_EQ(deck.artFolder->name, "The sample deck’s folder");
    EXPECT_EQ(deck.artFolder->path, sampleFolder());
    EXPECT_TRUE(exists(sampleFolder() / SampleDeck::fileName));
}

TEST_F(AppModelDecks, ASecondClickMakesNoSecondSampleDeck) {
    start();
    model().openSampleDeck(SampleTemplates::Kind::classic);
    model().openSampleDeck(SampleTemplates::Kind::classic);
    settle(Milliseconds(1000));
    EXPECT_EQ(state()._decks.size(), 1u);
    model().openSampleDeck(SampleTemplates::Kind::classic);
    settle(Milliseconds(1000));
    EXPECT_EQ(state()._decks.size(), 2u);
}

TEST_F(AppModelDecks, WithoutPersistingTheSampleGoesToTheTemporaryFolder) {
    start(AppModel::Persist::no);
    openSample();
    EXPECT_EQ(state().open._deck->cards.size(), 14u);
    EXPECT_TRUE(exists(desktop.temporaryFolder() / "Showcase" / state()._selection->text()));
    EXPECT_FALSE(exists(desktop.applicationSupport()));
}

TEST_F(AppModelDecks, RenamingTrimsAndIgnoresBlanks) {
    start();
    model().newDeck(SampleTemplates::Kind::mini, "Old");
    const UUID id = *state()._selection;
    model().renameDeck(id, " \t\n");
    model().renameDeck(UUID::random(), "Stranger");
    EXPECT_THAT(names(), ElementsAre("Old"));
    model().renameDeck(id, "\nNew ");
    scheduler.settle();
    EXPECT_THAT(names(), ElementsAre("New"));
    EXPECT_THAT(savedNames(), ElementsAre("New"));
}

TEST_F(AppModelDecks, ARenameTakesAPendingEditAlong) {
    start();
    model().newDeck(SampleTemplates::Kind::mini, "Deck");
    model().addLayer(LayerKind::text);
    model().renameDeck(*state()._selection, "Renamed");
    settle(Milliseconds(1000));
    EXPECT_EQ(saved()->name, "Renamed");
    EXPECT_EQ(saved()->template_, model().template_());
}

TEST_F(AppModelDecks, ACopyIsAnotherDeckOfTheSameFiles) {
    withSpreadsheet("cards.csv", table({"A"}));
    const DeckProject original = *model().currentProject();
    model().duplicateDeck(original.id);
    const DeckProject& copy = *model().currentProject();
    EXPECT_NE(copy.id, original.id);
    EXPECT_NE(copy.template_.id, original.template_.id);
    EXPECT_EQ(copy.name, "cards copy");
    EXPECT_EQ(copy.mapping, original.mapping);
    EXPECT_EQ(copy.source, original.source);
    settle();
    EXPECT_THAT(titles(), ElementsAre("A"));
    EXPECT_THAT(savedNames(), ElementsAre("cards", "cards copy"));
}

TEST_F(AppModelDecks, DeletingTheOnlyDeckOpensNothing) {
    withSpreadsheet("cards.csv", table({"A"}));
    model().addLayer(LayerKind::text);  // a save waits
    model().deleteDeck(*state()._selection);
    EXPECT_EQ(state()._selection, std::nullopt);
    EXPECT_FALSE(desktop.defaults.contains("lastDeck"));
    settle(Milliseconds(2000));
    EXPECT_THAT(savedNames(), IsEmpty()) << "and the waiting save didn't bring it back";
    EXPECT_TRUE(exists(desktop.folder / "cards.csv"));
}

TEST_F(AppModelDecks, DeletingTheOpenDeckOpensTheFirst) {
    start();
    for (const char* name : {"One", "Two", "Three"}) model().newDeck(SampleTemplates::Kind::mini, name);
    const UUID one = state()._decks[0].id, two = state()._decks[1].id, three = state()._decks[2].id;
    model().deleteDeck(two);
    EXPECT_EQ(state()._selection, three) << "another deck's end leaves the open one alone";
    model().deleteDeck(three);
    EXPECT_EQ(state()._selection, one);
    model().deleteDeck(three);
    EXPECT_THAT(names(), ElementsAre("One"));
}

TEST_F(AppModelDecks, ASampleFolderLastsAsLongAsADeckRefersToIt) {
    start();
    openSample();
    const Path folder = sampleFolder();
    const UUID sample = *state()._selection;
    model().duplicateDeck(sample);
    const UUID copy = *state()._selection;
    model().deleteDeck(sample);
    settle();
    EXPECT_TRUE(exists(folder));
    model().deleteDeck(copy);
    settle();
    EXPECT_FALSE(exists(folder));
    EXPECT_TRUE(exists(library().sampleFolder()));
}

TEST_F(AppModelDecks, ADeletedDeckNeverTakesAFolderOfTheUsersAlong) {
    start();
    DeckProject crafted = deckNamed("Crafted");
    crafted.source = Bookmark::plain(library().sampleFolder() / ".." / "precious" / "cards.csv", "cards.csv");
    std::filesystem::create_directories(desktop.applicationSupport() / "precious");
    ASSERT_TRUE(library().saveDeck(crafted));
    restart();
    model().deleteDeck(crafted.id);
    settle();
    EXPECT_TRUE(exists(desktop.applicationSupport() / "precious"));
}

TEST_F(AppModelDecks, FinishingWritesWhatWaitsAtOnce) {
    start();
    model().newDeck(SampleTemplates::Kind::mini, "Deck");
    settle();
    model().addLayer(LayerKind::text);
    bool done = false;
    model().finishSaving([&] { done = true; });
    EXPECT_FALSE(done);
    scheduler.settle();
    EXPECT_TRUE(done);
    EXPECT_EQ(saved()->template_, model().template_());
    done = false;
    model().finishSaving([&] { done = true; });
    EXPECT_TRUE(done) << "nothing waits";
}

TEST_F(AppModelDecks, EverythingIsThereAgainAfterARestart) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    model().addLayer(LayerKind::shape);
    const AppState before = state();
    restart();
    settle();
    EXPECT_EQ(state()._decks, before._decks);
    EXPECT_EQ(state()._selection, before._selection);
    EXPECT_THAT(titles(), ElementsAre("A", "B"));
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(AppModelDecks, AnExportGoesOnWhenItsDeckIsGone) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    desktop.answers = {desktop.folder.path()};
    model().export_(ExportKind::images);
    EXPECT_EQ(state()._busy, "Saving card images…");
    EXPECT_EQ(model().exports().size(), 1u);
    model().deleteDeck(*state()._selection);
    settle(Milliseconds(100));
    EXPECT_EQ(state()._busy, std::nullopt);
    EXPECT_EQ(state()._notice, "Saved 2 card images to “cards card images”.");
    EXPECT_TRUE(exists(desktop.folder / "cards card images" / "001 A.png"));
    EXPECT_THAT(desktop.revealed, ElementsAre(desktop.folder / "cards card images"));
    EXPECT_TRUE(model().exports().empty());
}

TEST_F(AppModelDecks, AnExportWithoutCardsOnlySaysSo) {
    start();
    model().export_(ExportKind::sheets);
    EXPECT_EQ(state()._error, "There are no cards yet. Choose a spreadsheet first.");
    model().clearError();
    model().newDeck(SampleTemplates::Kind::mini, "Empty");
    model().export_(ExportKind::tts);
    EXPECT_EQ(state()._error, "There are no cards yet. Choose a spreadsheet first.");
    EXPECT_TRUE(desktop.asked.empty());
    model().saveCalibrationPage();
    EXPECT_EQ(std::get<SavePanel>(desktop.asked.back()).fileName, "Duplex calibration.pdf");
    desktop.answers = {desktop.folder / "page.pdf"};
    model().saveCalibrationPage();
    EXPECT_EQ(state()._notice, "Saved the calibration page. Print it double-sided at 100%.");
    EXPECT_TRUE(exists(desktop.folder / "page.pdf"));
}

}  // namespace
}  // namespace quorvel
