#include "QtDesktop/StoredDefaults.h"

#include "QtPlatform/Platform.h"

#include <mutex>
#include <utility>

namespace quorvel {

/// What waits to be written. Shared with the work that writes it.
struct StoredDefaults::Unwritten {
    using Values = std::map<std::string, std::optional<std::string>>;

    std::mutex writing;  // taken first; so that an older value never lands on a newer one
    std::mutex guard;
    Values values;

    void put(const std::string& key, const std::optional<std::string>& value) {
        const std::lock_guard lock(guard);
        values.insert_or_assign(key, value);
    }

    Values take() {
        const std::lock_guard lock(guard);
        return std::exchange(values, {});
    }

    void write() {
        const std::lock_guard lock(writing);
        for (const auto& [key, value] : take()) Platform::setUserDefault(key, value);
    }
};

StoredDefaults::StoredDefaults(Scheduler& scheduler)
    : scheduler_(scheduler), unwritten_(std::make_shared<Unwritten>()) {}

StoredDefaults::~StoredDefaults() {
    unwritten_->write();
}

std::optional<std::string> StoredDefaults::value(const std::string& key) const {
    const auto known = known_.find(key);
    if (known != known_.end()) return known->second;
    return known_.emplace(key, Platform::userDefault(key)).first->second;
}

void StoredDefaults::set(const std::string& key, const std::optional<std::string>& value) {
    if (this->value(key) == value) return;
    known_.insert_or_assign(key, value);
    unwritten_->put(key, value);
    scheduler_
        .inBackground([unwritten = unwritten_]() -> Scheduler::Job {
            unwritten->write();
            return {};
        })
        .detach();
}

}  // namespace quorvel
