#pragma once

#include <filesystem>

namespace quorvel {

/// A new empty folder that is removed, with all it holds, at the end of the block.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

}  // namespace quorvel
