#include "Program.h"

namespace quorvel {
namespace {

ProcessCall processCall(const ProgramCall& call) {
    std::vector<std::string> words = call.prefix;
    words.push_back(QUORVEL_CLI);
    words.insert(words.end(), call.arguments.begin(), call.arguments.end());
    return {.words = std::move(words), .folder = call.folder, .environment = call.environment, .output = call.output};
}

}  // namespace

RunningProgram::RunningProgram(const ProgramCall& call) : RunningProcess(processCall(call)) {}

ProgramEnd runProgram(const ProgramCall& call) {
    return RunningProgram(call).wait();
}

}  // namespace quorvel
