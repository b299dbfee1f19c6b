#pragma once

#include <compare>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>

namespace quorvel {

/// Which file it is, whatever it is called. An inode's number is given to a new file once the old one is gone; only
/// together with the time of birth does it tell them apart for good.
struct FileIdentity {
    struct Time {
        std::int64_t seconds = 0;  ///< since 1970
        std::uint32_t nanoseconds = 0;

        auto operator<=>(const Time&) const = default;
    };

    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::optional<Time> birth;  ///< none where the file system doesn't keep it

    bool operator==(const FileIdentity&) const = default;
};

/// What is at a place now.
struct FoundFile {
    FileIdentity identity;
    bool isFolder = false;
};

/// Links are followed; fails with an errno. A path with a zero byte in it leads nowhere (ENOENT).
std::expected<FoundFile, int> findFile(const std::filesystem::path& path);

/// The entry `name` of an open folder itself, a link included.
std::expected<FoundFile, int> findEntry(int folder, const std::string& name);

}  // namespace quorvel
