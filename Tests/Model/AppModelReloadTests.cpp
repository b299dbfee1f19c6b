// The open deck follows its spreadsheet.

#include "AppModelTest.h"

#include <fstream>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using std::filesystem::path;
using std::filesystem::remove;
using std::filesystem::rename;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class AppModelReload : public AppModelTest {};

TEST_F(AppModelReload, ABadSaveKeepsTheCardsAndARepairHealsBySelf) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    const auto loaded = state().open._lastLoaded;
    write("cards.csv", " ");
    settle(Milliseconds(400));
    EXPECT_EQ(state().open._loadError, "“cards.csv” is empty.");
    EXPECT_THAT(titles(), ElementsAre("A", "B"));
    EXPECT_EQ(state().open._lastLoaded, loaded);
    EXPECT_EQ(state()._notice, "Reloaded “cards.csv”.");
    write("cards.csv", table({"A", "B", "C"}));
    settle(Milliseconds(400));
    EXPECT_EQ(state().open._loadError, std::nullopt);
    EXPECT_THAT(titles(), ElementsAre("A", "B", "C"));
}

TEST_F(AppModelReload, AReloadComes350MillisecondsAfterTheLastWrite) {
    withSpreadsheet("cards.csv", table({"A"}));
    for (int i = 0; i < 10; ++i) {
        write("cards.csv", table({"A", std::to_string(i)}));
        scheduler.pollDescriptors();
        scheduler.advance(Milliseconds(100));
    }
    scheduler.advance(Milliseconds(249));
    EXPECT_FALSE(state().open._isLoading);
    scheduler.advance(Milliseconds(1));
    EXPECT_TRUE(state().open._isLoading);
    EXPECT_THAT(titles(), ElementsAre("A")) << "the old cards stay while the new ones load";
    settle(Milliseconds(1000));
    EXPECT_THAT(titles(), ElementsAre("A", "9"));
}

TEST_F(AppModelReload, AnEventWithoutAChangeReloadsNothing) {
    withSpreadsheet("cards.csv", table({"A"}));
    const auto generation = state().open._lastLoaded;
    // The same bytes with the same date, as a program leaves them that sets the date back.
    const path file = desktop.folder / "cards.csv";
    const auto time = std::filesystem::last_write_time(file);
    {
        std::ofstream(file) << table({"A"});
    }
    std::filesystem::last_write_time(file, time);
    settle(Milliseconds(2000));
    EXPECT_EQ(state().open._lastLoaded, generation);
    EXPECT_EQ(state()._notice, std::nullopt);
}

TEST_F(AppModelReload, AReplacedFileIsFollowedAgainAndAgain) {
    withSpreadsheet("cards.csv", table({"A"}));
    for (const std::string name : {"B", "C", "D"}) {
        rename(write("cards.csv~new", table({name})), desktop.folder / "cards.csv");
        settle(Milliseconds(1000));
        EXPECT_THAT(titles(), ElementsAre(name));
    }
}

TEST_F(AppModelReload, ASaveWhileTheFileIsReadIsNotLost) {
    start();
    model().useSpreadsheet(write("cards.csv", table({"A"})));
    scheduler.runBackground();              // the file is read
    write("cards.csv", table({"A", "B"}));  // and saved before anybody watches it
    settle();
    EXPECT_THAT(titles(), ElementsAre("A"));
    settle(Milliseconds(400));
    EXPECT_THAT(titles(), ElementsAre("A", "B"));
}

TEST_F(AppModelReload, ASaveDuringAReloadSupersedesIt) {
    withSpreadsheet("cards.csv", table({"A"}));
    write("cards.csv", table({"B"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(350));
    scheduler.runBackground();  // "B" is read and on its way
    write("cards.csv", table({"C"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(350));
    int stored = 0;
    const auto subscription = model().subscribe([&](Changes changes) {
        if (changes.has(Change::openDeck) && !state().open._isLoading)
            stored += titles() == std::vector<std::string>{"B"};
    });
    settle(Milliseconds(1000));
    EXPECT_EQ(stored, 0);
    EXPECT_THAT(titles(), ElementsAre("C"));
}

TEST_F(AppModelReload, AFileRestoredTooLateStaysUnwatchedUntilAReload) {
    withSpreadsheet("cards.csv", table({"A"}));
    remove(desktop.folder / "cards.csv");
    settle(Milliseconds(400));
    EXPECT_THAT(state().open._loadError.value_or(""), StartsWith("“cards.csv” can’t be found."));
    write("cards.csv", table({"B"}));
    settle(Milliseconds(5000));
    EXPECT_THAT(titles(), IsEmpty());
    model().reloadSpreadsheet();
    settle(Milliseconds(100));
    EXPECT_THAT(titles(), ElementsAre("B"));
    write("cards.csv", table({"C"}));
    settle(Milliseconds(400));
    EXPECT_THAT(titles(), ElementsAre("C"));
}

TEST_F(AppModelReload, SwitchingDecksDuringTheDelayBringsNoReload) {
    withSpreadsheet("cards.csv", table({"A"}));
    write("cards.csv", table({"B"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(349));
    model().setSelection(std::nullopt);
    settle(Milliseconds(1000));
    EXPECT_EQ(state().open._table, nullptr);
    EXPECT_EQ(state()._notice, std::nullopt);
}

TEST_F(AppModelReload, RenamingTheSpreadsheetLosesNothing) {
    withSpreadsheet("cards.csv", table({"A"}));
    rename(desktop.folder / "cards.csv", desktop.folder / "renamed.csv");
    settle(Milliseconds(400));
    EXPECT_EQ(state().open._loadError, std::nullopt);
    EXPECT_EQ(state().open._sourceURL, desktop.folder / "renamed.csv");
    EXPECT_EQ(model().currentProject()->source->name, "renamed.csv");
    write("renamed.csv", table({"A", "B"}));
    settle(Milliseconds(1000));
    EXPECT_THAT(titles(), ElementsAre("A", "B"));
    EXPECT_EQ(saved()->source->path, desktop.folder / "renamed.csv");
}

TEST_F(AppModelReload, AShorterTableMovesTheCanvasToTheFirstCard) {
    withSpreadsheet("cards.csv", table({"A", "B", "C"}));
    model().setCanvasCard(2);
    for (std::int64_t id = 0; id < 3; ++id) model().cardAppeared(id);
    settle(Milliseconds(200));
    EXPECT_EQ(model().thumbnails().size(), 3u);
    write("cards.csv", table({"A", "B"}));
    settle(Milliseconds(1000));
    EXPECT_EQ(state()._canvasCard, 0);
    EXPECT_EQ(model().thumbnails().size(), 2u);
    write("cards.csv", table({"A", "B", "C"}));
    settle(Milliseconds(1000));
    EXPECT_EQ(model().thumbnails().size(), 2u) << "a lost tile is gone until it appears again";
}

TEST_F(AppModelReload, AnEditDuringALoadIsKept) {
    withSpreadsheet("cards.csv", "Name,Other,Qty\nA,Z,1\n");
    write("cards.csv", "Name,Other,Qty\nB,Y,1\n");
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(350));
    scheduler.runBackground();
    model().setFieldColumn(Field::title, "Other");
    model().addLayer(LayerKind::text);
    const CardTemplate edited = model().template_();
    settle(Milliseconds(1000));
    EXPECT_THAT(titles(), ElementsAre("Y"));
    EXPECT_EQ(model().template_(), edited);
}

TEST_F(AppModelReload, ANoticeGoesAfterFourSeconds) {
    withSpreadsheet("cards.csv", table({"A"}));
    write("cards.csv", table({"B"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(350));
    settle();
    EXPECT_EQ(state()._notice, "Reloaded “cards.csv”.");
    scheduler.advance(Milliseconds(3999));
    EXPECT_TRUE(state()._notice);
    scheduler.advance(Milliseconds(1));
    EXPECT_FALSE(state()._notice);
}

TEST_F(AppModelReload, ALateSaveOfTheOldSpreadsheetIsNoNews) {
    withSpreadsheet("first.csv", table({"A"}));
    write("first.csv", table({"A", "late"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(349));
    model().setTab(Tab::data);
    model().useSpreadsheet(write("second.csv", table({"B"})));
    scheduler.advance(Milliseconds(1));
    settle(Milliseconds(1000));
    EXPECT_THAT(titles(), ElementsAre("B"));
    EXPECT_EQ(state()._tab, Tab::cards) << "the first load counts";
    EXPECT_EQ(state()._notice, std::nullopt);
}

TEST_F(AppModelReload, WatchingEndsWithTheFile) {
    withSpreadsheet("cards.csv", table({"A"}));
    EXPECT_TRUE(model().isWatching());
    bool isWatching = true;
    const auto subscription = model().subscribe([&](Changes changes) {
        if (changes.has(Change::openDeck)) isWatching = model().isWatching();
    });
    remove(desktop.folder / "cards.csv");
    settle(Milliseconds(400));
    EXPECT_FALSE(model().isWatching());
    EXPECT_FALSE(isWatching) << "it is announced";
    write("cards.csv", table({"B"}));
    model().reloadSpreadsheet();
    settle(Milliseconds(100));
    EXPECT_TRUE(model().isWatching());
    EXPECT_TRUE(isWatching);
}

TEST_F(AppModelReload, NoSaveMakesWatchingBlink) {
    withSpreadsheet("cards.csv", table({"A"}));
    bool blinked = false;
    const auto look = [&] { blinked = blinked || !model().isWatching(); };
    const auto subscription = model().subscribe([&](Changes) { look(); });
    const auto saved = [&](auto save) {
        blinked = false;
        save();
        for (int i = 0; i < 600; ++i) {
            look();
            scheduler.pollDescriptors();
            look();
            scheduler.runBackground();
            look();
            scheduler.deliver();
            look();
            scheduler.advance(Milliseconds(1));
        }
        look();
        return !blinked;
    };
    EXPECT_TRUE(saved([&] { write("cards.csv", table({"B"})); })) << "written over";
    EXPECT_TRUE(saved([&] { rename(write("cards.csv~", table({"C"})), desktop.folder / "cards.csv"); })) << "replaced";
    EXPECT_TRUE(saved([&] {
        remove(desktop.folder / "cards.csv");
        write("cards.csv", table({"D"}));
    })) << "removed and written again";
    EXPECT_TRUE(saved([&] { rename(desktop.folder / "cards.csv", desktop.folder / "moved.csv"); })) << "renamed";
    EXPECT_THAT(titles(), ElementsAre("D"));
    EXPECT_EQ(state().open._sourceURL, desktop.folder / "moved.csv");
}

TEST_F(AppModelReload, ADeckWithoutASpreadsheetIsNotWatched) {
    start();
    EXPECT_FALSE(model().isWatching());
    model().newDeck(SampleTemplates::Kind::mini, "New");
    settle(Milliseconds(1000));
    EXPECT_FALSE(model().isWatching());
    model().useSpreadsheet(write("cards.csv", table({"A"})));
    EXPECT_FALSE(model().isWatching()) << "not before it is read";
    settle(Milliseconds(1000));
    EXPECT_TRUE(model().isWatching());
}

TEST_F(AppModelReload, ALoadThatTakesThePlaceOfAReloadTellsOfIt) {
    withSpreadsheet("cards.csv", table({"A"}));
    write("cards.csv", table({"B"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(350));
    ASSERT_TRUE(state().open._isLoading);
    model().reloadSpreadsheet();
    settle(Milliseconds(100));
    EXPECT_THAT(titles(), ElementsAre("B"));
    EXPECT_EQ(state()._notice, "Reloaded “cards.csv”.");
}

TEST_F(AppModelReload, AnotherSpreadsheetIsNoReloadOfTheFirst) {
    withSpreadsheet("first.csv", table({"A"}));
    write("first.csv", table({"B"}));
    scheduler.pollDescriptors();
    scheduler.advance(Milliseconds(350));
    ASSERT_TRUE(state().open._isLoading);
    model().useSpreadsheet(write("second.csv", table({"C"})));
    settle(Milliseconds(1000));
    EXPECT_THAT(titles(), ElementsAre("C"));
    EXPECT_EQ(state()._notice, std::nullopt);
}

}  // namespace
}  // namespace quorvel
