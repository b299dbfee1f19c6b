#include "Support/Desktop/ManualScheduler.h"

#include <algorithm>
#include <iterator>
#include <poll.h>
#include <utility>

namespace quorvel {

Scheduler::Task ManualScheduler::taskFor(std::shared_ptr<bool> alive) {
    return Task([alive = std::move(alive)] { *alive = false; });
}

Scheduler::Task ManualScheduler::later(Milliseconds delay, Job job) {
    auto alive = std::make_shared<bool>(true);
    timers_.emplace(elapsed_ + delay, Timer{alive, std::move(job)});
    return taskFor(std::move(alive));
}

Scheduler::Task ManualScheduler::inBackground(std::function<Job()> work) {
    auto alive = std::make_shared<bool>(true);
    background_.push_back({alive, std::move(work)});
    return taskFor(std::move(alive));
}

Scheduler::Task ManualScheduler::whenReadable(int descriptor, Job job) {
    auto alive = std::make_shared<bool>(true);
    watches_.push_back({alive, descriptor, std::move(job)});
    return taskFor(std::move(alive));
}

void ManualScheduler::post(Job job) {
    const std::lock_guard lock(posting_);
    tails_.push_back({std::make_shared<bool>(true), std::move(job)});
}

std::deque<ManualScheduler::Tail> ManualScheduler::takeTails(std::size_t count) {
    const std::lock_guard lock(posting_);
    const auto end = tails_.begin() + std::ptrdiff_t(std::min(count, tails_.size()));
    std::deque<Tail> taken(std::make_move_iterator(tails_.begin()), std::make_move_iterator(end));
    tails_.erase(tails_.begin(), end);
    return taken;
}

void ManualScheduler::advance(Milliseconds time) {
    const Milliseconds end = elapsed_ + time;
    while (!timers_.empty() && timers_.begin()->first <= end) {
        const auto first = timers_.begin();
        elapsed_ = std::max(elapsed_, first->first);
        const Timer timer = std::move(first->second);
        timers_.erase(first);
        if (*timer.alive) timer.job();
    }
    elapsed_ = end;
}

std::size_t ManualScheduler::runBackground(std::size_t count) {
    std::size_t ran = 0;
    for (; ran < count && !background_.empty(); ++ran) {
        Work work = std::move(background_.front());
        background_.pop_front();
        // A real pool may have begun it before it was cancelled: the work runs, its tail doesn't.
        Job tail = work.work();
        const std::lock_guard lock(posting_);
        tails_.push_back({work.alive, std::move(tail)});
    }
    return ran;
}

std::size_t ManualScheduler::deliver(std::size_t count) {
    std::deque<Tail> tails = takeTails(count);
    for (Tail& tail : tails)
        if (*tail.alive && tail.job) tail.job();
    return tails.size();
}

std::size_t ManualScheduler::pollDescriptors() {
    std::size_t ran = 0;
    const std::deque<Watch> watches = watches_;
    for (const Watch& watch : watches) {
        if (!*watch.alive) continue;
        pollfd one{watch.descriptor, POLLIN, 0};
        if (::poll(&one, 1, 0) <= 0) continue;
        watch.job();
        ++ran;
    }
    std::erase_if(watches_, [](const Watch& watch) { return !*watch.alive; });
    return ran;
}

void ManualScheduler::settle() {
    while (runBackground() + deliver() > 0) {
    }
}

void ManualScheduler::settle(Milliseconds time) {
    const Milliseconds end = elapsed_ + time;
    settle();
    while (!timers_.empty() && timers_.begin()->first <= end) {
        advance(std::max(timers_.begin()->first - elapsed_, Milliseconds(0)));
        settle();
    }
    elapsed_ = end;
}

std::size_t ManualScheduler::backgroundCount() const {
    return std::size_t(std::ranges::count_if(background_, [](const Work& each) { return *each.alive; }));
}

std::size_t ManualScheduler::tailCount() const {
    return std::size_t(std::ranges::count_if(tails_, [](const Tail& each) { return *each.alive; }));
}

std::size_t ManualScheduler::timerCount() const {
    return std::size_t(std::ranges::count_if(timers_, [](const auto& each) { return *each.second.alive; }));
}

}  // namespace quorvel
