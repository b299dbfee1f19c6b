#include "Foundation/FileBytes.h"

#include "Foundation/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/stat.h>

namespace quorvel::FileBytes {

namespace {

/// 0 for a regular file, else the errno that says what is wrong with its kind.
int kindError(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return 0;
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

/// Appends up to `room` bytes; the errno of a failure, else 0. `ended` tells whether the file has no more.
int readSome(int descriptor, std::string& bytes, std::size_t room, bool& ended) {
    int error = 0;
    const std::size_t before = bytes.size();
    bytes.resize_and_overwrite(before + room, [&](char* buffer, std::size_t) {
        ssize_t count = 0;
        do {
            count = ::read(descriptor, buffer + before, room);
        } while (count < 0 && errno == EINTR);
        if (count < 0) error = errno;
        ended = count == 0;
        return before + static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    });
    return error;
}

}  // namespace

std::expected<std::string, FileFailure> read(const std::filesystem::path& path, std::uint64_t limit) {
    const auto failure = [&](int code) { return std::unexpected(FileFailure{path, code}); };

    // The kind is looked at before opening, since opening a device can already do something, and again afterwards,
    // since another file may have taken its place.
    struct stat status{};
    if (::stat(path.c_str(), &status) != 0) return failure(errno);
    if (const int error = kindError(status)) return failure(error);
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!file) return failure(errno);
    if (::fstat(file.get(), &status) != 0) return failure(errno);
    if (const int error = kindError(status)) return failure(error);
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > limit) return failure(EFBIG);

    // One byte more than the size finds the end without growing the buffer; a file that grew meanwhile is read on.
    constexpr std::size_t leastRoom = 4096;
    constexpr std::size_t mostRoom = std::size_t{1} << 30;
    std::string bytes;
    try {
        bytes.reserve(size + 1);
        for (bool ended = false; !ended;) {
            const std::size_t left = bytes.size() < size + 1 ? size + 1 - bytes.size() : leastRoom;
            if (const int error = readSome(file.get(), bytes, std::min(left, mostRoom), ended)) return failure(error);
            if (bytes.size() > limit) return failure(EFBIG);
        }
    } catch (const std::bad_alloc&) {
        return failure(ENOMEM);
    } catch (const std::length_error&) {
        return failure(ENOMEM);
    }
    return bytes;
}

std::expected<void, FileFailure> write(const std::filesystem::path& path, std::string_view bytes) {
    const auto failure = [&](int code) {
        return std::unexpected(FileFailure{path, code, FileFailure::Operation::write});
    };
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666));
    if (!file) return failure(errno);
    if (const int error = file.write(bytes)) return failure(error);
    // Some file systems tell only now that the disk was full.
    if (const int error = file.close()) return failure(error);
    return {};
}

bool isRegularFile(const std::filesystem::path& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace quorvel::FileBytes
