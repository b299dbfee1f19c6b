#pragma once

#include "Desktop/Scheduler.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// The user defaults, written in the background: a setting goes all the way to the disk, and the main thread waits for
/// none. What was set is read back at once. Destroying it writes what is not yet written. Main thread only.
class StoredDefaults {
public:
    explicit StoredDefaults(Scheduler& scheduler);
    ~StoredDefaults();
    StoredDefaults(const StoredDefaults&) = delete;
    StoredDefaults& operator=(const StoredDefaults&) = delete;

    std::optional<std::string> value(const std::string& key) const;
    void set(const std::string& key, const std::optional<std::string>& value);

private:
    struct Unwritten;

    Scheduler& scheduler_;
    mutable std::map<std::string, std::optional<std::string>> known_;
    std::shared_ptr<Unwritten> unwritten_;
};

}  // namespace quorvel
