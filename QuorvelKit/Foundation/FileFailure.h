#pragma once

#include <filesystem>
#include <string>

namespace quorvel {

/// Why a file or folder could not be read or written.
struct FileFailure {
    enum class Operation { read, write, makeFolder };

    std::filesystem::path path;
    int code = 0;  ///< errno of the call that failed
    Operation operation = Operation::read;

    bool operator==(const FileFailure&) const = default;

    /// A sentence for the user that names the file: "You aren’t allowed to read “cards.csv”." and the like.
    std::string description() const;
};

}  // namespace quorvel
