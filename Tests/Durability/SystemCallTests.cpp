// Saves that are killed at each of their system calls in turn, or of which each fails in turn.

#include "Durability/SavedRecord.h"
#include "Durability/Saves.h"
#include "Durability/TracedProcess.h"
#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include <vector>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

const std::string& newText() {
    static const std::string text = savedRecord(1);  // the longest: many writes
    return text;
}

/// The judge that does something to the call with the index `which` (from 0) and to no other.
Judge at(std::size_t which, const std::function<Verdict(long)>& verdict) {
    return [which, verdict, index = std::size_t(0)](long call) mutable {
        return index++ == which ? verdict(call) : Verdict();
    };
}

bool concernsRights(const std::string& call) {
    return call == "fchown" || call.ends_with("xattr");
}

/// A group that can't be kept must not get more than everyone has.
void expectOldPermissions(const SavePlace& place, const std::string& failedCall) {
    const auto permissions = fs::status(place.path()).permissions();
    EXPECT_TRUE(permissions == SavePlace::oldPermissions ||
                (concernsRights(failedCall) && permissions == fs::perms(0644)))
        << std::oct << static_cast<unsigned>(permissions);
}

class SystemCallTest : public testing::TestWithParam<SavePlace::Kind> {};

std::string placeName(const testing::TestParamInfo<SavePlace::Kind>& place) {
    constexpr std::array names{"newFile", "oldFile", "behindLinks"};
    return names[static_cast<std::size_t>(place.param)];
}

INSTANTIATE_TEST_SUITE_P(EachPlace, SystemCallTest, testing::ValuesIn(SavePlace::kinds), placeName);

TEST_P(SystemCallTest, aSaveMakesTheCallsThatKeepItWhole) {
    const SavePlace place(GetParam());
    const auto run = runTraced([&] { return saveStatus(place.path(), newText()); }, [](long) { return Verdict(); });
    ASSERT_EQ(run.status, 0);
    EXPECT_TRUE(place.text() == newText());
    std::vector<std::string> calls;
    for (const long call : run.calls)
        if (const std::string name = callName(call); name == "write" || name == "fsync" || name.starts_with("rename"))
            if (calls.empty() || name != calls.back()) calls.push_back(name.substr(0, 6));
    EXPECT_EQ(calls, (std::vector<std::string>{"write", "fsync", "rename", "fsync"}));
    EXPECT_GT(std::ranges::count(run.calls, "write", callName), 5);
    place.expectLaterSaveSucceeds();
}

TEST_P(SystemCallTest, aSaveKilledAtAnyCallLeavesOldOrNew) {
    bool isNew = false;
    std::size_t which = 0;
    for (int status = 128 + SIGKILL; status != 0; ++which) {
        const SavePlace place(GetParam());
        std::string call;
        status = runTraced([&] { return saveStatus(place.path(), newText()); }, at(which,
                                                                                   [&](long number) {
                                                                                       call = callName(number);
                                                                                       return Verdict::kill();
                                                                                   }))
                     .status;
        SCOPED_TRACE("call " + std::to_string(which) + ", " + call);
        ASSERT_TRUE(status == 0 || status == 128 + SIGKILL) << status;
        const std::string text = place.text();
        ASSERT_TRUE(text == newText() || text == place.oldText()) << text.size() << " bytes";
        EXPECT_TRUE(!isNew || text == newText()) << "what was in place must stay";
        isNew = text == newText();
        EXPECT_LE(place.neighbours(), 1u);
        if (GetParam() == SavePlace::Kind::oldFile) expectOldPermissions(place, "");
        place.expectLaterSaveSucceeds();
        if (HasFailure()) return;
    }
    EXPECT_TRUE(isNew);
    EXPECT_GT(which, 15u);
}

/// What fails without harm: locks and rights that a file system may not have, and closing what has been synced.
bool maySucceedWithout(const std::string& call, int code) {
    return call == "flock" || call == "close" || concernsRights(call) || (call == "write" && code == EINTR);
}

TEST_P(SystemCallTest, aSaveTellsWhichCallFailedAndLeavesNothingHalf) {
    for (const int code : {ENOSPC, EIO, EINTR}) {
        std::set<std::string> failed;
        bool hasEnded = false;
        for (std::size_t which = 0; !hasEnded; ++which) {
            const SavePlace place(GetParam());
            std::string call;
            const auto run = runTraced([&] { return saveStatus(place.path(), newText()); }, at(which, [&](long number) {
                                           call = callName(number);
                                           return Verdict::failure(code);
                                       }));
            SCOPED_TRACE("call " + std::to_string(which) + ", " + call + ", errno " + std::to_string(code));
            hasEnded = call.empty();
            const std::string text = place.text();
            if (run.status == 0) {
                EXPECT_TRUE(hasEnded || maySucceedWithout(call, code));
                EXPECT_TRUE(text == newText());
            } else {
                failed.insert(call);
                EXPECT_EQ(run.status, code);
                // Once the file is in place nothing can take it back; the folder's sync is the only such failure.
                const bool isInPlace =
                    std::ranges::any_of(run.calls, [](long number) { return callName(number).starts_with("rename"); });
                if (isInPlace && call == "fsync")
                    EXPECT_TRUE(text == newText());
                else
                    EXPECT_TRUE(text == place.oldText());
            }
            if (GetParam() == SavePlace::Kind::oldFile) expectOldPermissions(place, call);
            EXPECT_EQ(place.neighbours(), 0u);
            place.expectLaterSaveSucceeds();
            if (HasFailure()) return;
        }
        for (const char* call : {"openat", "fsync", "fcntl", "close"}) EXPECT_TRUE(failed.contains(call)) << call;
        EXPECT_EQ(failed.contains("write"), code != EINTR);
        EXPECT_EQ(failed.contains("fchmod"), GetParam() != SavePlace::Kind::newFile);
        EXPECT_TRUE(failed.contains("renameat") || failed.contains("renameat2"));
    }
}

/// A disk that dies at some moment and stays dead: even the neighbour can't be removed then.
TEST_P(SystemCallTest, aDiskThatDiesLeavesOldOrNew) {
    bool hasEnded = false;
    for (std::size_t which = 0; !hasEnded; ++which) {
        const SavePlace place(GetParam());
        hasEnded = true;
        const auto run = runTraced([&] { return saveStatus(place.path(), newText()); },
                                   [&, index = std::size_t(0)](long) mutable {
                                       if (index++ < which) return Verdict();
                                       hasEnded = false;
                                       return Verdict::failure(EIO);
                                   });
        SCOPED_TRACE("from call " + std::to_string(which));
        EXPECT_TRUE(run.status == EIO || (run.status == 0 && place.text() == newText())) << run.status;
        const std::string text = place.text();
        ASSERT_TRUE(text == newText() || text == place.oldText()) << text.size() << " bytes";
        EXPECT_LE(place.neighbours(), 1u);
        place.expectLaterSaveSucceeds();
        if (HasFailure()) return;
    }
}

/// Whatever a sweeper does, and whenever, it takes nothing from a save that lives.
TEST_P(SystemCallTest, aSaveSurvivesASweepAtAnyCall) {
    bool hasEnded = false;
    std::size_t swept = 0;
    for (std::size_t which = 0; !hasEnded; ++which) {
        const SavePlace place(GetParam());
        hasEnded = true;
        const auto run = runTraced([&] { return saveStatus(place.path(), newText()); }, at(which, [&](long) {
                                       hasEnded = false;
                                       const std::size_t before = place.neighbours();
                                       AtomicFile::sweep(place.folder());
                                       swept += before - place.neighbours();
                                       return Verdict();
                                   }));
        EXPECT_EQ(run.status, 0) << "call " << which;
        EXPECT_TRUE(place.text() == newText()) << "call " << which;
        EXPECT_EQ(place.neighbours(), 0u) << "call " << which;
    }
    EXPECT_EQ(swept, 1u) << "only between its creation and its lock is a neighbour taken for a dead one";
}

/// The other side: a save that goes on, whole, while a sweeper stands at any of its calls.
TEST(SweepCalls, aSaveDuringASweepAtAnyCallSucceeds) {
    bool hasEnded = false;
    for (std::size_t which = 0; !hasEnded; ++which) {
        const SavePlace place(SavePlace::Kind::oldFile);
        const auto dead = place.folder() / ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp";
        std::ofstream(dead) << "half";
        hasEnded = true;
        const auto run = runTraced(
            [&] {
                AtomicFile::sweep(place.folder());
                return 0;
            },
            at(which, [&](long) {
                hasEnded = false;
                EXPECT_EQ(saveStatus(place.path(), newText()), 0);
                return Verdict();
            }));
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(place.text() == (hasEnded ? place.oldText() : newText()));
        EXPECT_FALSE(fs::exists(dead));
    }
}

TEST(SweepCalls, aSweepThatFailsOrIsKilledDoesNoHarm) {
    for (const Verdict verdict : {Verdict::failure(EIO), Verdict::failure(ENOENT), Verdict::kill()}) {
        bool hasEnded = false;
        for (std::size_t which = 0; !hasEnded; ++which) {
            const SavePlace place(SavePlace::Kind::oldFile);
            for (const char* name : {".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp",
                                     ".quorvel-2D1C9A70-91C4-4F6E-8C55-7E0A9B3D6F12.tmp"})
                std::ofstream(place.folder() / name) << "half";
            hasEnded = true;
            const auto run = runTraced(
                [&] {
                    AtomicFile::sweep(place.folder());
                    return 0;
                },
                at(which, [&](long) {
                    hasEnded = false;
                    return verdict;
                }));
            EXPECT_EQ(run.status, hasEnded || verdict.kind != Verdict::Kind::kill ? 0 : 128 + SIGKILL);
            EXPECT_TRUE(place.text() == place.oldText());
            place.expectLaterSaveSucceeds();
        }
    }
}

/// The folder goes away while a save stands at any of its calls.
TEST(VanishingFolder, aSaveIntoIsWholeOrFails) {
    bool hasEnded = false;
    std::set<int> statuses;
    for (std::size_t which = 0; !hasEnded; ++which) {
        const SavePlace place(SavePlace::Kind::oldFile);
        hasEnded = true;
        const auto run = runTraced([&] { return saveStatus(place.path(), newText()); }, at(which, [&](long) {
                                       hasEnded = false;
                                       fs::remove_all(place.folder());
                                       return Verdict();
                                   }));
        SCOPED_TRACE("call " + std::to_string(which));
        statuses.insert(run.status);
        EXPECT_EQ(fs::exists(place.folder()), hasEnded);
        fs::create_directories(place.folder());
        EXPECT_EQ(saveStatus(place.path(), newText()), 0);
        EXPECT_TRUE(place.text() == newText());
    }
    EXPECT_EQ(statuses, (std::set<int>{0, ENOENT}));
}

TEST(VanishingFolder, aSaveFollowsAFolderThatMoves) {
    bool hasEnded = false;
    std::set<std::pair<int, bool>> outcomes;
    for (std::size_t which = 0; !hasEnded; ++which) {
        const SavePlace place(SavePlace::Kind::oldFile);
        const TemporaryFolder elsewhere;
        const fs::path moved = elsewhere / "moved";
        hasEnded = true;
        const auto run = runTraced([&] { return saveStatus(place.path(), newText()); }, at(which, [&](long) {
                                       hasEnded = false;
                                       fs::rename(place.folder(), moved);
                                       return Verdict();
                                   }));
        if (hasEnded) break;
        SCOPED_TRACE("call " + std::to_string(which));
        const auto text = FileBytes::read(moved / "deck.json");
        ASSERT_TRUE(text);
        EXPECT_TRUE(*text == (run.status == 0 ? newText() : place.oldText()));
        EXPECT_EQ(std::distance(fs::directory_iterator(moved), fs::directory_iterator()), 1);
        outcomes.emplace(run.status, fs::exists(place.folder()));
    }
    EXPECT_EQ(outcomes, (std::set<std::pair<int, bool>>{{0, false}, {ENOENT, false}}));
}

}  // namespace
}  // namespace quorvel
