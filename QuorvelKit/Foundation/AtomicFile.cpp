#include "Foundation/AtomicFile.h"

#include "Foundation/FileDescriptor.h"
#include "Foundation/UUID.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace quorvel::AtomicFile {

namespace {

using Done = std::expected<void, int>;  // the errno of a failure

/// Where the links that `path` names lead, whether a file is there or not.
std::expected<std::filesystem::path, int> behindLinks(std::filesystem::path path) {
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code error;
        const auto status = std::filesystem::symlink_status(path, error);
        if (status.type() != std::filesystem::file_type::symlink) {
            if (error && status.type() != std::filesystem::file_type::not_found) return std::unexpected(error.value());
            return path;
        }
        const auto target = std::filesystem::read_symlink(path, error);
        if (error) return std::unexpected(error.value());
        path = path.parent_path() / target;  // an absolute target replaces the folder
    }
    return std::unexpected(ELOOP);
}

/// The permissions of the file at `name`, nothing when there is none; fails when it must not be replaced.
std::expected<std::optional<mode_t>, int> replacedMode(int folder, const std::string& name) {
    struct stat status{};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT) return std::nullopt;
        return std::unexpected(errno);
    }
    if (S_ISDIR(status.st_mode)) return std::unexpected(EISDIR);
    if (!S_ISREG(status.st_mode)) return std::unexpected(EINVAL);
    // A rename asks the folder only; a file that its owner made read-only stays as it is all the same.
    if (::faccessat(folder, name.c_str(), W_OK, AT_EACCESS) != 0) return std::unexpected(errno);
    return status.st_mode & 07777;
}

/// The new file until it has its final name; removed when it never gets there.
class Neighbour {
public:
    explicit Neighbour(int folder) : folder_(folder) {}
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour() {
        if (!name_.empty()) ::unlinkat(folder_, name_.c_str(), 0);
    }

    /// Its name doesn't contain the final one, so that it is never too long.
    Done create() {
        std::string name = ".quorvel-" + UUID::random().text() + ".tmp";
        file_ = FileDescriptor(::openat(folder_, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (!file_) return std::unexpected(errno);
        name_ = std::move(name);
        return {};
    }

    Done setMode(mode_t mode) {
        if (::fchmod(file_.get(), mode) != 0) return std::unexpected(errno);
        return {};
    }

    Done append(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return std::unexpected(errno);
            if (count == 0) return std::unexpected(EIO);
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return {};
    }

    /// One sync, whatever interrupts it: only a sync that never failed says that the bytes are on the disk.
    Done finish() {
        if (::fsync(file_.get()) != 0) return std::unexpected(errno);
        if (const int error = file_.close()) return std::unexpected(error);
        return {};
    }

    Done renameTo(const std::string& name) {
        if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return std::unexpected(errno);
        name_.clear();
        return {};
    }

private:
    int folder_;
    std::string name_;
    FileDescriptor file_;
};

/// Some file systems cannot sync a folder and say EINVAL; they have nothing better to offer.
Done syncFolder(int folder) {
    if (::fsync(folder) != 0 && errno != EINVAL) return std::unexpected(errno);
    return {};
}

Done replace(const std::filesystem::path& path, std::string_view bytes) {
    const auto target = behindLinks(path);
    if (!target) return std::unexpected(target.error());
    const std::string name = target->filename();
    if (name.empty() || name == "." || name == "..") return std::unexpected(EISDIR);
    const auto folderPath = target->has_parent_path() ? target->parent_path() : std::filesystem::path(".");

    // Opened before anything is written, since it is synced after the point of no return.
    const FileDescriptor folder(::open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) return std::unexpected(errno);
    const auto mode = replacedMode(folder.get(), name);
    if (!mode) return std::unexpected(mode.error());

    Neighbour neighbour(folder.get());
    if (const Done done = neighbour.create(); !done) return done;
    if (*mode)
        if (const Done done = neighbour.setMode(**mode); !done) return done;
    if (const Done done = neighbour.append(bytes); !done) return done;
    if (const Done done = neighbour.finish(); !done) return done;
    if (const Done done = neighbour.renameTo(name); !done) return done;
    return syncFolder(folder.get());
}

}  // namespace

std::expected<void, FileFailure> write(const std::filesystem::path& path, std::string_view bytes) {
    if (const Done done = replace(path, bytes); !done)
        return std::unexpected(FileFailure{path, done.error(), FileFailure::Operation::write});
    return {};
}

}  // namespace quorvel::AtomicFile
