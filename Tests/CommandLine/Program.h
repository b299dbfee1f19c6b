#pragma once

#include "Support/Process.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace quorvel {

/// One run of the finished program.
struct ProgramCall {
    using Output = ProcessCall::Output;

    std::vector<std::string> arguments;
    std::filesystem::path folder = {};                    ///< to run in; empty for the test's own
    std::vector<std::string> prefix = {};                 ///< a program that starts ours, with its arguments
    std::map<std::string, std::string> environment = {};  ///< added to the test's own
    Output output = Output::captured;
};

using ProgramEnd = ProcessEnd;

/// Runs the program to its end.
ProgramEnd runProgram(const ProgramCall& call);

/// A program that is running; killed at the end of the block if it still is.
class RunningProgram : public RunningProcess {
public:
    explicit RunningProgram(const ProgramCall& call);
};

}  // namespace quorvel
