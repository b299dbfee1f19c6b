#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace quorvel {

/// One run of the finished program.
struct ProgramCall {
    /// Where standard output goes.
    enum class Output { captured, closed, fullDisk, readerGone };

    std::vector<std::string> arguments;
    std::filesystem::path folder = {};                    ///< to run in; empty for the test's own
    std::vector<std::string> prefix = {};                 ///< a program that starts ours, with its arguments
    std::map<std::string, std::string> environment = {};  ///< added to the test's own
    Output output = Output::captured;
};

struct ProgramEnd {
    int exitCode = -1;  ///< -1 when a signal ended it
    int signal = 0;
    std::string output;
    std::string errors;
};

/// Runs the program to its end, with nothing to read on standard input. Throws std::runtime_error when it can't be
/// started.
ProgramEnd runProgram(const ProgramCall& call);
ProgramEnd runProgram(std::vector<std::string> arguments);

/// A program that is running; killed at the end of the block if it still is.
class RunningProgram {
public:
    explicit RunningProgram(const ProgramCall& call);
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();

    void send(int signal);
    ProgramEnd wait();

private:
    int process_ = -1;
    int output_ = -1;
    int errors_ = -1;
};

/// The prefix that runs a program without the rights of root; empty when the tests don't run as root anyway.
std::vector<std::string> withoutRoot();

}  // namespace quorvel
