#include "Foundation/FileBytes.h"
#include "Model/AppModel.h"
#include "QtPlatform/QtScheduler.h"
#include "Samples/SampleDeck.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/FakeDesktop.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <memory>

// The model as the window drives it, with the real clock, real threads, real files and a real watcher.
namespace quorvel {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Not;

class DayInTheLife : public testing::Test {
protected:
    QtScheduler scheduler;
    FakeDesktop desktop;
    std::shared_ptr<UndoStack> undo;
    std::unique_ptr<AppModel> owned;

    AppModel& model() { return *owned; }
    const AppState& state() { return owned->state(); }

    void start() {
        undo = std::make_shared<UndoStack>();
        owned = std::make_unique<AppModel>(scheduler, desktop, AppModel::Persist::yes);
        owned->setUndoManager(undo);
    }

    void finishSaving() {
        bool finished = false;
        owned->finishSaving([&] { finished = true; });
        ASSERT_TRUE(runUntil([&] { return finished; }));
    }

    void quit() {
        finishSaving();
        owned.reset();
    }

    std::size_t cardCount() { return state().open._deck->cards.size(); }
    std::string title(std::size_t card) { return std::string(state().open._deck->cards.at(card).title()); }
    bool isAtRest() { return !state().open._isLoading && model().exports().empty(); }

    /// The spreadsheet saved as most programs do it: beside, then into its place.
    static void save(const fs::path& file, std::string_view text) {
        const fs::path beside = file.string() + ".new";
        ASSERT_TRUE(FileBytes::write(beside, text));
        fs::rename(beside, file);
    }

    /// Exports and waits for the end; what was made.
    fs::path export_(ExportKind kind, const fs::path& answer) {
        desktop.answers = {answer};
        desktop.revealed.clear();
        model().export_(kind);
        EXPECT_TRUE(state()._busy);
        EXPECT_TRUE(runUntil([&] { return isAtRest(); }));
        EXPECT_EQ(state()._error, std::nullopt);
        EXPECT_EQ(desktop.revealed.size(), 1u);
        return desktop.revealed.empty() ? fs::path() : desktop.revealed.front();
    }

    static std::size_t filesIn(const fs::path& folder) {
        return std::size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
};

TEST_F(DayInTheLife, FromTheSampleDeckToTheNextMorning) {
    start();
    ASSERT_EQ(model().currentProject(), nullptr);

    // Opens the sample, and sees every card.
    model().openSampleDeck(SampleTemplates::Kind::classic);
    ASSERT_TRUE(runUntil([&] { return cardCount() == 14 && !state().open._isLoading; }));
    EXPECT_EQ(state()._tab, Tab::cards);
    for (std::int64_t id = 0; id < 14; ++id) model().cardAppeared(id);
    ASSERT_TRUE(runUntil([&] { return model().thumbnails().size() == 14; }));
    ASSERT_TRUE(runUntil([&] { return state()._canvasImage && state()._sheetImage; }));
    EXPECT_TRUE(state().open._missingArt.empty());
    const UUID sample = *state()._selection;
    const fs::path sampleFile = *state().open._sourceURL;

    // Edits, drags, undoes.
    model().setTab(Tab::template_);
    const CardTemplate original = model().template_();
    model().addLayer(LayerKind::text);
    model().beginLayerDrag();
    for (int i = 0; i < 10; ++i) model().nudgeSelectedLayer(1, 0.5);
    model().endLayerDrag();
    const CardTemplate dragged = model().template_();
    model().undo();
    model().undo();
    EXPECT_EQ(model().template_(), original);
    model().redo();
    model().redo();
    EXPECT_EQ(model().template_(), dragged);
    const Image before = model().thumbnails().at(0);
    ASSERT_TRUE(runUntil([&] { return model().thumbnails().at(0).pixels() != before.pixels(); }));

    // Saves the spreadsheet with one card less.
    TextRows rows = SampleDeck::rows();
    std::string text = "Name,Text,Cost,Type,Art,Icons,Qty\n";
    for (int i = 0; i < 13; ++i) text += "Card " + std::to_string(i) + ",Words,1,Courier,,coin,2\n";
    save(sampleFile, text);
    ASSERT_TRUE(runUntil([&] { return cardCount() == 13; }));
    EXPECT_EQ(title(12), "Card 12");
    ASSERT_TRUE(runUntil([&] { return state()._notice.has_value(); }));
    EXPECT_EQ(state()._notice, "Reloaded “Orchard Couriers.csv”.");

    // Saves it broken: the cards stay. Repairs it: the error goes.
    save(sampleFile, "  \n");
    ASSERT_TRUE(runUntil([&] { return state().open._loadError.has_value(); }));
    EXPECT_EQ(cardCount(), 13u);
    save(sampleFile, text + "Last,Words,0,Courier,,,1\n");
    ASSERT_TRUE(runUntil([&] { return cardCount() == 14; }));
    EXPECT_EQ(state().open._loadError, std::nullopt);

    // Another deck of an own file, which is renamed while it is open.
    const fs::path own = desktop.folder / "Own cards.csv";
    save(own, "Name,Qty\nA,3\nB,0\nC,3\n");
    model().newDeck(SampleTemplates::Kind::mini, "Own");
    const UUID ownDeck = *state()._selection;
    model().useSpreadsheet(own);
    ASSERT_TRUE(runUntil([&] { return cardCount() == 3; }));
    const fs::path renamed = desktop.folder / "Renamed cards.csv";
    fs::rename(own, renamed);
    ASSERT_TRUE(runUntil([&] { return state().open._sourceURL == renamed && !state().open._isLoading; }));
    EXPECT_EQ(state().open._loadError, std::nullopt);
    save(renamed, "Name,Qty\nA,3\nB,0\nD,3\n");
    ASSERT_TRUE(runUntil([&] { return cardCount() == 3 && title(2) == "D"; }));

    // Switches to and fro faster than anything loads.
    for (int i = 0; i < 20; ++i) model().setSelection(i % 2 ? ownDeck : sample);
    ASSERT_TRUE(runUntil([&] { return isAtRest(); }));
    EXPECT_EQ(cardCount(), 3u);
    EXPECT_EQ(title(2), "D");

    // Exports all three.
    const fs::path pdf = export_(ExportKind::sheets, desktop.folder / "Own print sheets.pdf");
    EXPECT_TRUE(FileBytes::read(pdf).value_or("").starts_with("%PDF"));
    const fs::path images = export_(ExportKind::images, desktop.folder.path());
    EXPECT_EQ(images.filename(), "Own card images");
    EXPECT_TRUE(fs::exists(images / "002 D.png"));
    EXPECT_EQ(state()._notice, "Saved 2 card images to “Own card images”.");
    const fs::path deckSheets = export_(ExportKind::tts, desktop.folder.path());
    EXPECT_TRUE(fs::exists(deckSheets / "Deck sheet 1.png"));
    EXPECT_TRUE(fs::exists(deckSheets / "README.txt"));
    EXPECT_EQ(export_(ExportKind::images, desktop.folder.path()).filename(), "Own card images 2");
    EXPECT_EQ(filesIn(images), filesIn(desktop.folder / "Own card images 2"));

    // An export runs on while its deck is deleted.
    desktop.answers = {desktop.folder.path()};
    desktop.revealed.clear();
    model().duplicateDeck(ownDeck);
    const UUID copy = *state()._selection;
    ASSERT_TRUE(runUntil([&] { return cardCount() == 3; }));
    model().export_(ExportKind::images);
    model().deleteDeck(copy);
    EXPECT_EQ(state()._selection, sample);
    ASSERT_TRUE(runUntil([&] { return isAtRest(); }));
    EXPECT_THAT(desktop.revealed, ElementsAre(desktop.folder / "Own copy card images"));
    EXPECT_TRUE(fs::exists(desktop.folder / "Own copy card images" / "001 A.png"));

    // Deletes the sample; its folder goes, the user's files stay.
    model().deleteDeck(sample);
    ASSERT_TRUE(runUntil([&] { return !fs::exists(sampleFile.parent_path()); }));
    EXPECT_TRUE(fs::exists(renamed));
    EXPECT_EQ(state()._selection, ownDeck);

    // Quits right after an edit. Next morning it is all there.
    ASSERT_TRUE(runUntil([&] { return isAtRest(); }));
    model().addLayer(LayerKind::shape);
    const DeckProject evening = *model().currentProject();
    quit();
    start();
    ASSERT_NE(model().currentProject(), nullptr);
    EXPECT_EQ(model().currentProject()->template_, evening.template_);
    ASSERT_TRUE(runUntil([&] { return cardCount() == 3; }));
    EXPECT_EQ(title(2), "D");
    EXPECT_EQ(state()._decks.size(), 1u);
    EXPECT_FALSE(undo->canUndo());
    save(renamed, "Name,Qty\nNext morning,1\n");
    ASSERT_TRUE(runUntil([&] { return cardCount() == 1; }));
    quit();
}

TEST_F(DayInTheLife, QuittingInTheMiddleOfEverythingIsSafe) {
    start();
    model().openSampleDeck(SampleTemplates::Kind::tarot);
    ASSERT_TRUE(runUntil([&] { return cardCount() == 14; }));
    // The record is written beside the reading of the cards, and on a slow disk later than they are seen.
    finishSaving();
    const UUID deck = *state()._selection;
    for (std::int64_t id = 0; id < 14; ++id) model().cardAppeared(id);
    desktop.answers = {desktop.folder.path()};
    model().export_(ExportKind::tts);
    model().addLayer(LayerKind::icons);
    model().openSampleDeck(SampleTemplates::Kind::mini);
    model().reloadSpreadsheet();
    owned.reset();
    start();
    ASSERT_EQ(state()._selection, deck);
    ASSERT_TRUE(runUntil([&] { return cardCount() == 14; }));
    quit();
}

}  // namespace
}  // namespace quorvel
