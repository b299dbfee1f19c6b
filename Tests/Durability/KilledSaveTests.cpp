// Saves that are killed at random moments, inside of system calls too.

#include "Durability/SavedRecord.h"
#include "Durability/Saves.h"
#include "Foundation/AtomicFile.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>
#include <new>
#include <random>
#include <stdexcept>
#include <sys/mman.h>

namespace quorvel {
namespace {

using std::chrono::nanoseconds;

/// How far the saves have come, in memory that parent and child share: it outlives the child.
class SharedCount {
public:
    SharedCount() : page_(::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (page_ == MAP_FAILED) throw std::runtime_error("no memory can be shared");
        count_ = new (page_) std::atomic<std::uint64_t>(0);
    }
    SharedCount(const SharedCount&) = delete;
    SharedCount& operator=(const SharedCount&) = delete;
    ~SharedCount() { ::munmap(page_, size); }

    std::atomic<std::uint64_t>& operator*() { return *count_; }

private:
    static constexpr std::size_t size = sizeof(std::atomic<std::uint64_t>);
    void* page_;
    std::atomic<std::uint64_t>* count_ = nullptr;
};

/// From now on the kernel itself ends this process after `life`, wherever it is then.
bool limitLife(nanoseconds life) {
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer{};
    if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0) return false;
    itimerspec time{};
    time.it_value = {life.count() / 1'000'000'000, life.count() % 1'000'000'000};
    return ::timer_settime(timer, 0, &time, nullptr) == 0;
}

/// Saves the records after `finished` one by one, and counts them, until it is killed; answers only a failure.
int savingLoop(const std::filesystem::path& path, std::atomic<std::uint64_t>& finished, nanoseconds life) {
    if (!limitLife(life)) return 100;
    for (;;) {
        if (const int code = saveStatus(path, savedRecord(finished + 1))) return code;
        ++finished;
    }
}

/// The parts that can run side by side; their number is the seed of their moments.
class KilledSaves : public testing::TestWithParam<unsigned> {};

INSTANTIATE_TEST_SUITE_P(Part, KilledSaves, testing::Range(0u, 4u));

TEST_P(KilledSaves, leaveWholeRecordsOnly) {
    constexpr int lives = 500;
    const SavePlace place(SavePlace::Kind::oldFile);
    SharedCount finished;

    // Lives of up to one and a half saves, however fast this disk is, so that every moment of a save has its turn.
    constexpr int trials = 20;
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < trials; ++i) ASSERT_EQ(saveStatus(place.path(), savedRecord(++*finished)), 0);
    const nanoseconds save = (std::chrono::steady_clock::now() - begin) / trials;
    const auto longest = std::clamp(save * 3 / 2, nanoseconds(500'000), nanoseconds(40'000'000));

    std::mt19937_64 random(GetParam());
    std::uniform_int_distribution<nanoseconds::rep> life(1'000, longest.count());
    int unfinished = 0;
    int cutOff = 0;
    for (int i = 0; i < lives; ++i) {
        const nanoseconds time(life(random));
        ASSERT_EQ(runForked([&] { return savingLoop(place.path(), *finished, time); }), 128 + SIGKILL);
        const std::string text = place.text();
        if (text == savedRecord(*finished + 1)) {
            ++unfinished;
            ++*finished;
        } else {
            ASSERT_TRUE(text == savedRecord(*finished)) << "life " << i;
        }
        const std::size_t neighbours = place.neighbours();
        ASSERT_LE(neighbours, 1u);
        cutOff += static_cast<int>(neighbours);
        AtomicFile::sweep(place.folder());
        ASSERT_EQ(place.neighbours(), 0u);
        if (i % 100 != 0) continue;
        ASSERT_EQ(saveStatus(place.path(), savedRecord(++*finished)), 0);
    }
    RecordProperty("saves", static_cast<int>(*finished));
    RecordProperty("killedWhileWriting", cutOff);
    RecordProperty("killedAfterTheRename", unfinished);
    EXPECT_GT(*finished, static_cast<std::uint64_t>(lives / 20));
    EXPECT_GT(cutOff, lives / 20) << "too few were killed in the midst of writing to prove anything";
    place.expectLaterSaveSucceeds();
}

}  // namespace
}  // namespace quorvel
