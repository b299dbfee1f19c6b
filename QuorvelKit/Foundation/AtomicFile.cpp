#include "Foundation/AtomicFile.h"

#include "Foundation/FileDescriptor.h"
#include "Foundation/UUID.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <vector>

namespace quorvel::AtomicFile {

namespace {

using Done = std::expected<void, int>;  // the errno of a failure

/// A neighbour's name doesn't contain the final one, so that it is never too long.
constexpr std::string_view neighbourPrefix = ".quorvel-";
constexpr std::string_view neighbourSuffix = ".tmp";

std::string neighbourName() {
    return std::string(neighbourPrefix) + UUID::random().text() + std::string(neighbourSuffix);
}

bool isNeighbourName(std::string_view name) {
    if (!name.starts_with(neighbourPrefix) || !name.ends_with(neighbourSuffix)) return false;
    name.remove_prefix(neighbourPrefix.size());
    if (name.size() < neighbourSuffix.size()) return false;
    name.remove_suffix(neighbourSuffix.size());
    const auto id = UUID::parse(name);
    return id && id->text() == name;
}

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

/// Who may do what with a file.
struct Rights {
    uid_t owner = 0;
    gid_t group = 0;
    mode_t mode = 0;
    /// As the kernel hands it out; empty where the mode says it all, nothing where it can't be known.
    std::optional<std::string> accessList;
};

constexpr const char* accessListAttribute = "system.posix_acl_access";

std::optional<std::string> accessList(const std::filesystem::path& path) {
    constexpr std::size_t longest = 65536;  // of any attribute
    std::string list(longest, '\0');
    const ssize_t size = ::lgetxattr(path.c_str(), accessListAttribute, list.data(), list.size());
    if (size < 0 && errno != ENODATA && errno != EOPNOTSUPP) return std::nullopt;
    list.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return list;
}

/// The rights of the file at `path`, which is `name` in `folder`; nothing when there is none. Fails when it must not be
/// replaced.
std::expected<std::optional<Rights>, int> replacedRights(int folder, const std::string& name,
                                                         const std::filesystem::path& path) {
    struct stat status{};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT) return std::nullopt;
        return std::unexpected(errno);
    }
    if (S_ISDIR(status.st_mode)) return std::unexpected(EISDIR);
    if (!S_ISREG(status.st_mode)) return std::unexpected(EINVAL);
    // A rename asks the folder only; a file that its owner made read-only stays as it is all the same.
    if (::faccessat(folder, name.c_str(), W_OK, AT_EACCESS) != 0) return std::unexpected(errno);
    return Rights{status.st_uid, status.st_gid, status.st_mode & 01777, accessList(path)};
}

/// The new file until it has its final name; removed when it never gets there.
class Neighbour {
public:
    explicit Neighbour(int folder) : folder_(folder) {}
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour() { remove(); }

    /// Makes it and locks it, against `sweep`. A sweeper that comes between the two takes it for a dead one; then there
    /// is another, which costs nothing, since it is still empty.
    Done create(mode_t mode) {
        constexpr int mostAttempts = 20;
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            std::string name = neighbourName();
            file_ = FileDescriptor(::openat(folder_, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            if (!file_) return std::unexpected(errno);
            name_ = std::move(name);
            // Where the file system has no locks, no sweeper can take one either.
            if (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
                struct stat status{};
                if (::fstat(file_.get(), &status) != 0) return std::unexpected(errno);
                if (status.st_nlink > 0) return {};
            }
            remove();
        }
        return std::unexpected(EBUSY);
    }

    /// The access list before the mode, which is its upper bound; the owner last, since the rights of what has become
    /// another's can't be changed any more.
    Done take(const Rights& rights) {
        struct stat status{};
        if (::fstat(file_.get(), &status) != 0) return std::unexpected(errno);
        const bool sameGroup = status.st_gid == rights.group || ::fchown(file_.get(), keepOwner, rights.group) == 0;
        const bool sameList = rights.accessList && takeAccessList(*rights.accessList);
        mode_t mode = rights.mode;
        // Else the group's rights would go to others than those they were meant for.
        if (!sameGroup || !sameList) mode = (mode & ~mode_t{070}) | (mode & 070 & (mode & 007) << 3);
        if (::fchmod(file_.get(), mode) != 0) return std::unexpected(errno);
        if (status.st_uid != rights.owner) {
            [[maybe_unused]] const int rootAloneMay = ::fchown(file_.get(), rights.owner, keepGroup);
        }
        return {};
    }

    Done append(std::string_view bytes) {
        if (const int error = file_.write(bytes)) return std::unexpected(error);
        return {};
    }

    /// One sync, whatever interrupts it: only a sync that never failed says that the bytes are on the disk. Some file
    /// systems keep bad news for the close, which has to be heard before the rename; a second descriptor keeps the
    /// lock meanwhile.
    Done finish() {
        if (::fsync(file_.get()) != 0) return std::unexpected(errno);
        FileDescriptor lock(::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
        if (!lock) return std::unexpected(errno);
        const int error = file_.close();
        file_ = std::move(lock);
        if (error) return std::unexpected(error);
        return {};
    }

    Done renameTo(const std::string& name) {
        if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return std::unexpected(errno);
        name_.clear();
        return {};
    }

private:
    static constexpr uid_t keepOwner = static_cast<uid_t>(-1);
    static constexpr gid_t keepGroup = static_cast<gid_t>(-1);

    /// An empty list also removes the one that a folder with a default list gave the new file.
    bool takeAccessList(const std::string& list) {
        if (!list.empty()) return ::fsetxattr(file_.get(), accessListAttribute, list.data(), list.size(), 0) == 0;
        return ::fremovexattr(file_.get(), accessListAttribute) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
    }

    void remove() {
        if (!name_.empty()) ::unlinkat(folder_, name_.c_str(), 0);
        name_.clear();
    }

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
    const auto rights = replacedRights(folder.get(), name, *target);
    if (!rights) return std::unexpected(rights.error());

    Neighbour neighbour(folder.get());
    // Closed to others until it has the old one's rights: who has opened a file goes on reading, whatever its mode.
    if (const Done done = neighbour.create(*rights ? 0600 : 0666); !done) return done;
    if (*rights)
        if (const Done done = neighbour.take(**rights); !done) return done;
    if (const Done done = neighbour.append(bytes); !done) return done;
    if (const Done done = neighbour.finish(); !done) return done;
    if (const Done done = neighbour.renameTo(name); !done) return done;
    return syncFolder(folder.get());
}

/// Names are never used twice, so this one can only be the file that was locked, or nothing any more.
void removeIfAbandoned(int folder, const std::string& name) {
    struct stat status{};
    // Asked before it is opened, since opening a pipe or a device is no harmless thing.
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode)) return;
    const FileDescriptor file(::openat(folder, name.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) return;
    ::unlinkat(folder, name.c_str(), 0);
}

}  // namespace

std::expected<void, FileFailure> write(const std::filesystem::path& path, std::string_view bytes) {
    if (const Done done = replace(path, bytes); !done)
        return std::unexpected(FileFailure{path, done.error(), FileFailure::Operation::write});
    return {};
}

void sweep(const std::filesystem::path& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor) return;
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (std::string name = entry->path().filename(); isNeighbourName(name)) names.push_back(std::move(name));
    for (const std::string& name : names) removeIfAbandoned(descriptor.get(), name);
}

}  // namespace quorvel::AtomicFile
