#pragma once

#include <cerrno>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace quorvel {

/// Owns an open file descriptor of the system, or none (-1).
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    explicit operator bool() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

    /// Writes all of `bytes`, however many calls that takes; the errno of a failure, else 0.
    int write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return errno;
            if (count == 0) return EIO;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return 0;
    }

    /// Closes it now; the errno of a failure, else 0. The descriptor is gone either way.
    int close() { return ::close(std::exchange(descriptor_, -1)) == 0 ? 0 : errno; }

private:
    int descriptor_;
};

}  // namespace quorvel
