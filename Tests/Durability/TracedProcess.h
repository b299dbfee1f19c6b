#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quorvel {

/// What becomes of a system call that is about to begin.
struct Verdict {
    enum class Kind { proceed, fail, kill };

    Kind kind = Kind::proceed;
    int code = 0;  ///< of a failure: the errno that the call answers without having done anything

    static Verdict failure(int code) { return {Kind::fail, code}; }
    static Verdict kill() { return {Kind::kill, 0}; }
};

/// Called in the parent while the child stands still before the system call with the number `call` (`SYS_write` and so
/// on). It may change files meanwhile: whatever another process could have done in this very moment.
using Judge = std::function<Verdict(long call)>;

struct TracedResult {
    int status = 0;           ///< the exit status, or 128 plus the signal that ended it
    std::vector<long> calls;  ///< those that the judge was asked about, in order
};

/// Runs `work` in a child process, a copy of this one that ends with the status which `work` answers (0 to 127), and
/// asks the judge before every system call that can fail for reasons of files and disks; those of memory, signals and
/// the like pass unseen. A write takes at most 16 KB at a time, as a disk that is busy may decide, so that a long one
/// is many calls. Throws std::runtime_error where processes can't be traced, so that no test passes without a test.
TracedResult runTraced(const std::function<int()>& work, const Judge& judge);

/// "openat", "fsync" and so on, for messages of tests; else the number.
std::string callName(long call);

}  // namespace quorvel
