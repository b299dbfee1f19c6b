// An export that is under way: what it takes along, what it tells, and who may go meanwhile.

#include "Model/ExportFlowTest.h"

#include <atomic>
#include <thread>

namespace quorvel {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

using ExportFlowRunTest = ExportFlowTest;

TEST_F(ExportFlowRunTest, WhatIsExportedIsWhatIsOnScreenAfterThePanel) {
    desktop.whileShown = [this] {
        onScreen->project.name = "Meadow";
        onScreen->deck = deckOf(cardsFrom({{"Title"}, {"Newer"}})).deck;
    };
    export_(ExportKind::images, folder.path());
    EXPECT_THAT(listing(folder / "Meadow card images"), ElementsAre("001 Newer.png", "back.png"));
}

TEST_F(ExportFlowRunTest, ADeckThatWentWhileThePanelWasShownIsNotExported) {
    const std::optional<ExportFlow::Input> gone, another = smallDeck();
    for (const auto& afterwards : {gone, another})
        for (const auto& [kind, name] : EnumText<ExportKind>::cases) {
            onScreen = smallDeck();
            desktop.whileShown = [this, &afterwards] { onScreen = afterwards; };
            export_(kind, folder / "a.pdf");
        }
    EXPECT_THAT(said, IsEmpty());
    EXPECT_THAT(listing(folder.path()), IsEmpty());
}

TEST_F(ExportFlowRunTest, CardsThatWentWhileThePanelWasShownAreMissed) {
    for (const auto& [kind, name] : EnumText<ExportKind>::cases) {
        onScreen = smallDeck();
        desktop.whileShown = [this] { onScreen->deck = deckOf({}).deck; };
        export_(kind, folder / "a.pdf");
        EXPECT_THAT(said, ElementsAre("error: There are no cards yet. Choose a spreadsheet first.")) << name;
        said.clear();
    }
    EXPECT_THAT(listing(folder.path()), IsEmpty());
}

TEST_F(ExportFlowRunTest, ARunGoesOnWhenItsDeckIsChangedOrDeleted) {
    onScreen = deckOf(numberedCards(3));
    begin(ExportKind::images, folder.path());
    onScreen->project.name = "Renamed";
    onScreen->project.template_.back.clear();
    onScreen->project.imageDPI = 600;
    onScreen.reset();
    EXPECT_THAT(flow->runs(), SizeIs(1));
    EXPECT_EQ(flow->runs().front().deckName, "Orchard");

    scheduler.settle();
    EXPECT_EQ(said.back(), "notice: Saved 3 card images to “Orchard card images”.");
    EXPECT_THAT(listing(folder / "Orchard card images"), SizeIs(4));
    EXPECT_EQ(sizeOf(folder / "Orchard card images/back.png"), std::pair(90, 60));
}

TEST_F(ExportFlowRunTest, RunsTellWhatIsUnderWay) {
    EXPECT_THAT(flow->runs(), IsEmpty());
    begin(ExportKind::sheets, folder / "a.pdf");
    onScreen = smallDeck();
    onScreen->project.name = "Meadow";
    begin(ExportKind::tts, folder.path());

    const auto& runs = flow->runs();
    ASSERT_THAT(runs, SizeIs(2));
    EXPECT_NE(runs.front().id, runs.back().id);
    EXPECT_EQ(runs.front().kind, ExportKind::sheets);
    EXPECT_EQ(runs.front().deckName, "Orchard");
    EXPECT_EQ(runs.front().busyText, "Making the PDF…");
    EXPECT_EQ(runs.back().kind, ExportKind::tts);
    EXPECT_EQ(runs.back().deckName, "Meadow");
    EXPECT_EQ(runs.back().busyText, "Saving deck sheets…");
    EXPECT_EQ(seen, (std::vector<std::vector<double>>{{0}, {0, 0}}));

    scheduler.settle();
    EXPECT_THAT(flow->runs(), IsEmpty());
    EXPECT_THAT(seen.back(), IsEmpty());
}

TEST_F(ExportFlowRunTest, OfTwoAtOnceTheLaterOneIsTold) {
    begin(ExportKind::sheets, folder / "a.pdf");
    begin(ExportKind::images, folder.path());
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…", "busy: Saving card images…"));

    scheduler.runBackground(1);
    scheduler.deliver();
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…", "busy: Saving card images…", "busy: Saving card images…",
                                  "notice: Saved 1 pages to “a.pdf”."));
    EXPECT_THAT(flow->runs(), SizeIs(1));

    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…", "busy: Saving card images…", "busy: Saving card images…",
                                  "notice: Saved 1 pages to “a.pdf”.", "idle",
                                  "notice: Saved 2 card images to “Orchard card images”."));
}

TEST_F(ExportFlowRunTest, ProgressRisesByPercentsAndStopsAtTheEnd) {
    onScreen = deckOf(numberedCards(230));
    begin(ExportKind::images, folder.path());
    seen.clear();
    scheduler.runBackground();
    EXPECT_THAT(scheduler.tailCount(), AllOf(Ge(90u), Le(101u))) << "one for each percent, and the end";

    scheduler.deliver();
    double last = 0;
    for (std::size_t i = 0; i + 1 < seen.size(); ++i) {
        ASSERT_THAT(seen[i], SizeIs(1));
        EXPECT_GT(seen[i][0], last);
        last = seen[i][0];
    }
    EXPECT_EQ(last, 1);
    EXPECT_THAT(seen.back(), IsEmpty());
    EXPECT_EQ(scheduler.deliver(), 0u);
}

TEST_F(ExportFlowRunTest, TheProgressOfEachKindEndsWithTheWhole) {
    for (const auto& [kind, name] : EnumText<ExportKind>::cases) {
        seen.clear();
        export_(kind, kind == ExportKind::sheets ? folder / "a.pdf" : folder.path());
        ASSERT_GE(seen.size(), 3u) << name;
        EXPECT_THAT(seen.front(), ElementsAre(0)) << name;
        EXPECT_THAT(seen[seen.size() - 2], ElementsAre(1)) << name;
        EXPECT_THAT(seen.back(), IsEmpty()) << name;
    }
}

TEST_F(ExportFlowRunTest, WorkGoesOnInSilenceWhenTheFlowHasGone) {
    begin(ExportKind::images, folder.path());
    begin(ExportKind::sheets, folder / "a.pdf");
    scheduler.runBackground(1);
    const auto before = said;
    seen.clear();
    flow.reset();
    scheduler.settle();
    EXPECT_EQ(said, before);
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_THAT(desktop.revealed, IsEmpty());
    EXPECT_THAT(listing(folder / "Orchard card images"), SizeIs(3));
    EXPECT_TRUE(std::filesystem::exists(folder / "a.pdf"));
}

TEST_F(ExportFlowRunTest, TheFlowMayGoWhileAPanelIsShown) {
    desktop.whileShown = [this] { flow.reset(); };
    desktop.answers = {folder.path(), folder / "a.pdf"};
    flow->export_(ExportKind::images, [this] { return onScreen; });
    flow.emplace(scheduler, desktop, status());
    flow->saveCalibrationPage(onScreen->project);
    scheduler.settle();
    EXPECT_THAT(said, IsEmpty());
    EXPECT_THAT(listing(folder.path()), IsEmpty());
}

TEST_F(ExportFlowRunTest, WorkOnAnotherThreadComesBack) {
    onScreen = deckOf(numberedCards(40), varying);
    std::atomic<bool> ended = false;
    const auto work = [&] {
        scheduler.runBackground();
        ended = true;
    };
    begin(ExportKind::images, folder.path());
    {
        const std::jthread thread(work);
        while (!ended || !flow->runs().empty()) {
            scheduler.deliver();
            std::this_thread::yield();
        }
    }
    EXPECT_EQ(said.back(), "notice: Saved 40 card images to “Orchard card images”.");

    begin(ExportKind::images, folder.path());
    {
        const std::jthread thread(work);
        flow.reset();
    }
    scheduler.deliver();
    EXPECT_EQ(said.back(), "busy: Saving card images…");
    EXPECT_THAT(listing(folder / "Orchard card images 2"), SizeIs(80));
}

}  // namespace
}  // namespace quorvel
