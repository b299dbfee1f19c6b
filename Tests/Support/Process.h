#pragma once

#include "Foundation/FileDescriptor.h"

#include <filesystem>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quorvel {

/// One run of a program.
struct ProcessCall {
    /// Where standard output goes. `piped` is read line by line while the program runs, and so are its errors then.
    enum class Output { captured, piped, closed, fullDisk, readerGone };

    std::vector<std::string> words;                       ///< the program, a path or a name in PATH, and its arguments
    std::filesystem::path folder = {};                    ///< to run in; empty for the test's own
    std::map<std::string, std::string> environment = {};  ///< added to the test's own
    Output output = Output::captured;
};

struct ProcessEnd {
    int exitCode = -1;  ///< -1 when a signal ended it
    int signal = 0;
    std::string output;  ///< all that was captured, or of a pipe what hadn't been read yet
    std::string errors;
};

/// A program that is running, with nothing to read on standard input; killed at the end of the block if it still is.
/// Throws std::runtime_error where something can't be done.
class RunningProcess {
public:
    explicit RunningProcess(const ProcessCall& call);
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;
    ~RunningProcess();

    void send(int signal);

    /// Waits for the next line of a piped output, given without its end; empty when the program ends before it, or
    /// says nothing for a minute.
    std::string nextLine();
    std::string nextErrorLine();

    /// Waits for its end. Throws when it couldn't be started.
    ProcessEnd wait();

private:
    /// What one stream of the program has written.
    struct Stream {
        FileDescriptor source;
        bool isPipe = false;
        std::string read;  // and not yet handed on
    };

    static std::string lineOf(Stream& stream);
    static std::string restOf(Stream& stream);

    pid_t process_ = -1;
    Stream output_;
    Stream errors_;
};

struct ProcessResult {
    int status = 0;  ///< the exit status, or 128 plus the signal that ended it
    std::string output;
    std::string errors;
};

/// Runs a program (a path, or a name that is looked up in PATH) with its standard input empty, until it ends.
/// Throws std::runtime_error when it can't be started.
ProcessResult runProcess(const std::vector<std::string>& arguments);

/// The words that run a program without the rights of root when they stand before its own; empty when the tests don't
/// run as root anyway.
std::vector<std::string> withoutRoot();

/// `runProcess` by a user who isn't root, for tests of permissions: root may do everything. The program is a path; it
/// is run as a copy, since its own folder may be closed to others. Throws when root can't be dropped, so that such a
/// test never passes without having tested anything.
ProcessResult runWithoutRoot(std::vector<std::string> arguments);

/// The program that runs now.
std::filesystem::path thisProgram();

}  // namespace quorvel
