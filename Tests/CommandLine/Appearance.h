#pragma once

#include "Foundation/FileDescriptor.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>

namespace quorvel {

/// Waits until something appears in a folder, or until something else happens there.
class Appearance {
public:
    explicit Appearance(const std::filesystem::path& folder, std::uint32_t events = IN_CREATE | IN_MOVED_TO)
        : source_(inotify_init1(IN_CLOEXEC)) {
        inotify_add_watch(source_.get(), folder.c_str(), events);
    }

    /// The name of what it happened to, one after the other; empty when nothing can be told any more.
    std::string next() {
        if (at_ >= count_) {
            at_ = 0;
            count_ = read(source_.get(), buffer_.data(), buffer_.size());
            if (count_ <= 0) return "";
        }
        inotify_event event{};
        std::memcpy(&event, buffer_.data() + at_, sizeof event);
        const std::string name = event.len > 0 ? buffer_.data() + at_ + sizeof event : "";
        at_ += ssize_t(sizeof event + event.len);
        return name;
    }

private:
    FileDescriptor source_;
    std::array<char, 4096> buffer_{};
    ssize_t at_ = 0;
    ssize_t count_ = 0;
};

}  // namespace quorvel
