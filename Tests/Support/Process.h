#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quorvel {

struct ProcessResult {
    int status = 0;  ///< the exit status, or 128 plus the signal that ended it
    std::string output;
    std::string errors;
};

/// Runs a program (a path, or a name that is looked up in PATH) with its standard input empty, until it ends.
/// Throws std::runtime_error when it can't be started.
ProcessResult runProcess(const std::vector<std::string>& arguments);

/// The same by a user who isn't root, for tests of permissions: root may do everything. The program is a path; it is
/// run as a copy, since its own folder may be closed to others. Throws when root can't be dropped, so that such a test
/// never passes without having tested anything.
ProcessResult runWithoutRoot(std::vector<std::string> arguments);

/// The program that runs now.
std::filesystem::path thisProgram();

}  // namespace quorvel
