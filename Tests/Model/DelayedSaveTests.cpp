#include "Model/DelayedSave.h"
#include "Support/Desktop/ManualScheduler.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

UUID idOf(char letter) {
    UUID id;
    id.bytes[0] = std::uint8_t(letter);
    return id;
}

DeckProject deck(char id, std::string name) {
    DeckProject result;
    result.id = idOf(id);
    result.name = std::move(name);
    return result;
}

class DelayedSaveTest : public testing::Test {
protected:
    ManualScheduler scheduler;
    std::vector<std::string> written;
    DelayedSave save{scheduler, [this](const DeckProject& project) { written.push_back(project.name); }};

    void advance(int time) { scheduler.advance(milliseconds(time)); }
};

TEST_F(DelayedSaveTest, writesHalfASecondAfterTheLastChange) {
    EXPECT_FALSE(save.isPending());
    save.schedule(deck('A', "1"));
    EXPECT_TRUE(save.isPending());
    advance(499);
    EXPECT_THAT(written, IsEmpty());
    advance(1);
    EXPECT_THAT(written, ElementsAre("1"));
    EXPECT_FALSE(save.isPending());
    advance(10'000);
    EXPECT_THAT(written, ElementsAre("1"));
}

TEST_F(DelayedSaveTest, joinsARunOfChanges) {
    for (int change = 1; change <= 100; ++change) {
        save.schedule(deck('A', std::to_string(change)));
        advance(499);
        EXPECT_THAT(written, IsEmpty());
    }
    advance(1);
    EXPECT_THAT(written, ElementsAre("100"));
    EXPECT_EQ(scheduler.timerCount(), 0u);
}

TEST_F(DelayedSaveTest, changesFartherApartAreWrittenEach) {
    save.schedule(deck('A', "1"));
    advance(500);
    save.schedule(deck('A', "2"));
    advance(499);
    EXPECT_THAT(written, ElementsAre("1"));
    advance(1);
    EXPECT_THAT(written, ElementsAre("1", "2"));
}

TEST_F(DelayedSaveTest, writesTheRecordAsItWasScheduled) {
    DeckProject whole = deck('A', "1");
    whole.sheetIndex = 3;
    whole.source = Bookmark{"data", "cards.csv", "/decks/cards.csv"};
    std::vector<DeckProject> records;
    DelayedSave keeping(scheduler, [&](DeckProject project) { records.push_back(std::move(project)); });
    keeping.schedule(whole);
    advance(500);
    EXPECT_THAT(records, ElementsAre(whole));
}

TEST_F(DelayedSaveTest, anotherDecksRecordIsWrittenAtOnce) {
    save.schedule(deck('A', "a"));
    advance(300);
    save.schedule(deck('B', "b"));
    EXPECT_THAT(written, ElementsAre("a"));
    EXPECT_TRUE(save.isPending());
    advance(200);
    EXPECT_THAT(written, ElementsAre("a")) << "the wait of the first has ended with it";
    advance(299);
    EXPECT_THAT(written, ElementsAre("a"));
    advance(1);
    EXPECT_THAT(written, ElementsAre("a", "b"));
}

TEST_F(DelayedSaveTest, decksInTurnLoseNothing) {
    for (const char* name : {"1", "2", "3", "4"}) save.schedule(deck(name[0] % 2 ? 'A' : 'B', name));
    EXPECT_THAT(written, ElementsAre("1", "2", "3"));
    advance(500);
    EXPECT_THAT(written, ElementsAre("1", "2", "3", "4"));
}

TEST_F(DelayedSaveTest, flushesOnce) {
    save.flush();
    EXPECT_THAT(written, IsEmpty());
    save.schedule(deck('A', "1"));
    advance(10);
    save.flush();
    EXPECT_THAT(written, ElementsAre("1"));
    EXPECT_FALSE(save.isPending());
    save.flush();
    advance(1000);
    EXPECT_THAT(written, ElementsAre("1"));
}

TEST_F(DelayedSaveTest, waitsAnewAfterAFlush) {
    save.schedule(deck('A', "1"));
    advance(400);
    save.flush();
    save.schedule(deck('A', "2"));
    advance(499);
    EXPECT_THAT(written, ElementsAre("1"));
    advance(1);
    EXPECT_THAT(written, ElementsAre("1", "2"));
}

TEST_F(DelayedSaveTest, forgetsOnlyTheDeckThatIsNamed) {
    save.forget(idOf('A'));
    save.schedule(deck('A', "1"));
    save.forget(idOf('B'));
    EXPECT_TRUE(save.isPending());
    save.forget(idOf('A'));
    EXPECT_FALSE(save.isPending());
    EXPECT_EQ(scheduler.timerCount(), 0u);
    save.flush();
    advance(1000);
    EXPECT_THAT(written, IsEmpty());
    save.schedule(deck('A', "2"));
    advance(500);
    EXPECT_THAT(written, ElementsAre("2"));
}

TEST_F(DelayedSaveTest, isNoLongerPendingWhileItWrites) {
    std::vector<bool> pending;
    DelayedSave* self = nullptr;
    DelayedSave watched(scheduler, [&](const DeckProject&) {
        pending.push_back(self->isPending());
        self->flush();
    });
    self = &watched;
    watched.schedule(deck('A', "1"));
    advance(500);
    watched.schedule(deck('A', "2"));
    watched.flush();
    EXPECT_THAT(pending, ElementsAre(false, false));
}

TEST_F(DelayedSaveTest, nothingIsWrittenOnceItIsGone) {
    {
        DelayedSave gone(scheduler, [this](const DeckProject& project) { written.push_back(project.name); });
        gone.schedule(deck('A', "1"));
    }
    EXPECT_EQ(scheduler.timerCount(), 0u);
    advance(1000);
    EXPECT_THAT(written, IsEmpty());
}

}  // namespace
}  // namespace quorvel
