#include "QtPlatform/QtScheduler.h"

#include "Foundation/Parallel.h"
#include "QtPlatform/MainQueue.h"
#include "QtPlatform/WorkerPool.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimerEvent>
#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace quorvel {

/// The main thread's side: what waits for a time, for a descriptor, or for its work's end. What is no longer listed
/// here doesn't run.
class QtScheduler::Loop : public QObject, public std::enable_shared_from_this<Loop> {
public:
    Loop() : posted_(queue_.descriptor(), QSocketNotifier::Read), pool_(threadCount()) {
        connect(&posted_, &QSocketNotifier::activated, [this] { runOnePosted(); });
    }

    Task later(std::chrono::milliseconds delay, Job job) {
        if (closed_) return {};
        const int timer = startTimer(std::max(delay, std::chrono::milliseconds(0)), Qt::PreciseTimer);
        const std::uint64_t id = nextID_++;
        timers_.emplace(timer, Timer{id, std::move(job)});
        return task([timer, id](Loop& loop) {
            // Qt gives a timer's number to another one as soon as it is free.
            const auto found = loop.timers_.find(timer);
            if (found != loop.timers_.end() && found->second.id == id) loop.takeTimer(timer);
        });
    }

    Task inBackground(std::function<Job()> work) {
        if (closed_) return {};
        const std::uint64_t id = nextID_++;
        working_.insert(id);
        // The pool ends before this does.
        pool_.add(id, [this, id, work = std::move(work)]() mutable {
            Job tail = work();
            work = {};
            queue_.put([this, id, tail = std::move(tail)] {
                if (working_.erase(id) != 0 && tail) tail();
            });
        });
        return task([id](Loop& loop) {
            if (loop.working_.erase(id) != 0) loop.pool_.remove(id);
        });
    }

    Task whenReadable(int descriptor, Job job) {
        if (closed_) return {};
        const std::uint64_t id = nextID_++;
        auto notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        // The job's own end may come while it runs.
        connect(notifier.get(), &QSocketNotifier::activated, [job = std::make_shared<Job>(std::move(job))] {
            const std::shared_ptr<Job> kept = job;
            (*kept)();
        });
        notifiers_.emplace(id, std::move(notifier));
        return task([id](Loop& loop) { loop.notifiers_.extract(id); });
    }

    void post(Job job) { queue_.put(std::move(job)); }

    void close() {
        closed_ = true;
        posted_.setEnabled(false);
        pool_.close();
        working_.clear();
        for (const auto& [timer, job] : timers_) killTimer(timer);
        // What goes now may cancel other tasks, or post.
        std::exchange(timers_, {}).clear();
        std::exchange(notifiers_, {}).clear();
        while (queue_.take()) {
        }
    }

protected:
    void timerEvent(QTimerEvent* event) override {
        if (const Job job = takeTimer(event->timerId())) job();
    }

private:
    struct Timer {
        std::uint64_t id = 0;
        Job job;
    };

    template <class Cancel>
    Task task(Cancel cancel) {
        return Task([loop = weak_from_this(), cancel] {
            if (const auto alive = loop.lock()) cancel(*alive);
        });
    }

    /// One for each turn of the event loop: what the windows have to do is never kept waiting by a row of jobs, and a
    /// job that runs a loop of its own finds the next ones there.
    void runOnePosted() {
        if (const auto job = queue_.take()) (*job)();
    }

    Job takeTimer(int timer) {
        auto found = timers_.extract(timer);
        if (found.empty()) return {};
        killTimer(timer);
        return std::move(found.mapped().job);
    }

    MainQueue queue_;
    QSocketNotifier posted_;
    std::map<int, Timer> timers_;  // by Qt's number
    std::map<std::uint64_t, std::unique_ptr<QSocketNotifier>> notifiers_;
    std::set<std::uint64_t> working_;  // in the background, not cancelled, tail not yet run
    std::uint64_t nextID_ = 0;
    bool closed_ = false;
    WorkerPool pool_;
};

unsigned QtScheduler::threadCount() {
    // An export holds a thread from its start to its end: two of them leave room for what is on screen.
    return std::max(4u, processorCount());
}

QtScheduler::QtScheduler() : loop_(std::make_shared<Loop>()) {}

QtScheduler::~QtScheduler() {
    loop_->close();
}

Scheduler::Task QtScheduler::later(std::chrono::milliseconds delay, Job job) {
    return loop_->later(delay, std::move(job));
}

Scheduler::Task QtScheduler::inBackground(std::function<Job()> work) {
    return loop_->inBackground(std::move(work));
}

Scheduler::Task QtScheduler::whenReadable(int descriptor, Job job) {
    return loop_->whenReadable(descriptor, std::move(job));
}

void QtScheduler::post(Job job) {
    loop_->post(std::move(job));
}

Scheduler::Clock::time_point QtScheduler::now() const {
    return Clock::now();
}

}  // namespace quorvel
