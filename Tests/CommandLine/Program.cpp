#include "Program.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvel {
namespace {

int memoryFile(const char* name) {
    const int file = memfd_create(name, MFD_CLOEXEC);
    if (file < 0) throw std::runtime_error("no file in memory");
    return file;
}

std::string contentsOf(int file) {
    std::string text;
    char buffer[65536];
    for (off_t offset = 0;;) {
        const ssize_t count = pread(file, buffer, sizeof buffer, offset);
        if (count <= 0) return text;
        text.append(buffer, std::size_t(count));
        offset += count;
    }
}

/// In the child: makes standard output what the call asks for. What fails shows as exit code 126.
void redirectOutput(ProgramCall::Output output, int captured) {
    switch (output) {
        case ProgramCall::Output::captured:
            if (dup2(captured, STDOUT_FILENO) < 0) _exit(126);
            return;
        case ProgramCall::Output::closed:
            close(STDOUT_FILENO);
            return;
        case ProgramCall::Output::fullDisk: {
            const int full = open("/dev/full", O_WRONLY);
            if (full < 0 || dup2(full, STDOUT_FILENO) < 0) _exit(126);
            return;
        }
        case ProgramCall::Output::readerGone: {
            int ends[2];
            if (pipe(ends) != 0 || dup2(ends[1], STDOUT_FILENO) < 0) _exit(126);
            close(ends[0]);
            close(ends[1]);
            return;
        }
    }
}

}  // namespace

RunningProgram::RunningProgram(const ProgramCall& call) : output_(memoryFile("output")), errors_(memoryFile("errors")) {
    std::vector<std::string> words = call.prefix;
    words.push_back(QUORVEL_CLI);
    words.insert(words.end(), call.arguments.begin(), call.arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    process_ = fork();
    if (process_ < 0) throw std::runtime_error("no process");
    if (process_ > 0) return;

    if (!call.folder.empty() && chdir(call.folder.c_str()) != 0) _exit(126);
    for (const auto& [name, value] : call.environment) setenv(name.c_str(), value.c_str(), 1);
    const int nothing = open("/dev/null", O_RDONLY);
    if (nothing < 0 || dup2(nothing, STDIN_FILENO) < 0 || dup2(errors_, STDERR_FILENO) < 0) _exit(126);
    redirectOutput(call.output, output_);
    execvp(pointers.front(), pointers.data());
    _exit(127);
}

RunningProgram::~RunningProgram() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(output_);
    close(errors_);
}

void RunningProgram::send(int signal) {
    kill(process_, signal);
}

ProgramEnd RunningProgram::wait() {
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    ProgramEnd end;
    end.output = contentsOf(output_);
    end.errors = contentsOf(errors_);
    if (WIFEXITED(status)) end.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
    if (end.exitCode == 126 || end.exitCode == 127) throw std::runtime_error("the program can’t be started");
    return end;
}

ProgramEnd runProgram(const ProgramCall& call) {
    return RunningProgram(call).wait();
}

ProgramEnd runProgram(std::vector<std::string> arguments) {
    return runProgram(ProgramCall{.arguments = std::move(arguments)});
}

std::vector<std::string> withoutRoot() {
    if (geteuid() != 0) return {};
    return {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
}

}  // namespace quorvel
