#include "Library/FileIdentity.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace quorvel {

namespace {

std::expected<FoundFile, int> find(int folder, const char* name, int flags) {
    struct statx status{};
    constexpr unsigned wanted = STATX_TYPE | STATX_INO | STATX_BTIME;
    if (::statx(folder, name, flags | AT_NO_AUTOMOUNT, wanted, &status) != 0) return std::unexpected(errno);
    FoundFile found;
    found.identity.device = makedev(status.stx_dev_major, status.stx_dev_minor);
    found.identity.inode = status.stx_ino;
    if (status.stx_mask & STATX_BTIME)
        found.identity.birth = FileIdentity::Time{status.stx_btime.tv_sec, status.stx_btime.tv_nsec};
    found.isFolder = S_ISDIR(status.stx_mode);
    return found;
}

}  // namespace

std::expected<FoundFile, int> findFile(const std::filesystem::path& path) {
    if (path.native().find('\0') != std::string::npos) return std::unexpected(ENOENT);
    return find(AT_FDCWD, path.c_str(), 0);
}

std::expected<FoundFile, int> findEntry(int folder, const std::string& name) {
    return find(folder, name.c_str(), AT_SYMLINK_NOFOLLOW);
}

}  // namespace quorvel
