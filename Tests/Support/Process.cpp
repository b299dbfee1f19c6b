#include "Support/Process.h"

#include "Support/TemporaryFolder.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace quorvel {

namespace {

// What a child that can't do its part ends with; 127 is the shell's, for a program that isn't there.
constexpr int cannotPrepare = 126;
constexpr int cannotStart = 127;

/// Files in memory instead of pipes: a program can print any amount to both without anyone reading along.
FileDescriptor memoryFile() {
    FileDescriptor file(::memfd_create("captured", MFD_CLOEXEC));
    if (!file) throw std::runtime_error("no file in memory");
    return file;
}

std::pair<FileDescriptor, FileDescriptor> makePipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

std::string contentsOf(int file) {
    std::string text;
    char buffer[65536];
    for (off_t offset = 0;;) {
        const ssize_t count = ::pread(file, buffer, sizeof buffer, offset);
        if (count <= 0) return text;
        text.append(buffer, std::size_t(count));
        offset += count;
    }
}

/// Adds what comes next through a pipe; false at its end, or after a minute of silence.
bool readMore(int pipe, std::string& text) {
    constexpr int patience = 60'000;  // milliseconds
    pollfd ready{pipe, POLLIN, 0};
    if (::poll(&ready, 1, patience) <= 0) return false;
    char buffer[4096];
    const ssize_t count = ::read(pipe, buffer, sizeof buffer);
    if (count > 0) text.append(buffer, std::size_t(count));
    return count > 0;
}

/// In the child: makes standard output what the call asks for.
void redirectOutput(ProcessCall::Output output, int captured) {
    switch (output) {
        case ProcessCall::Output::captured:
        case ProcessCall::Output::piped:
            if (::dup2(captured, STDOUT_FILENO) < 0) ::_exit(cannotPrepare);
            return;
        case ProcessCall::Output::closed:
            ::close(STDOUT_FILENO);
            return;
        case ProcessCall::Output::fullDisk: {
            const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
            if (full < 0 || ::dup2(full, STDOUT_FILENO) < 0) ::_exit(cannotPrepare);
            return;
        }
        case ProcessCall::Output::readerGone: {
            int ends[2];
            if (::pipe2(ends, O_CLOEXEC) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) ::_exit(cannotPrepare);
            return;
        }
    }
}

}  // namespace

RunningProcess::RunningProcess(const ProcessCall& call) {
    const bool piped = call.output == ProcessCall::Output::piped;
    FileDescriptor output;
    FileDescriptor errors;
    for (auto [stream, written] : {std::pair(&output_, &output), std::pair(&errors_, &errors)}) {
        stream->isPipe = piped;
        if (piped)
            std::tie(stream->source, *written) = makePipe();
        else
            stream->source = memoryFile();
    }
    std::vector<std::string> words = call.words;
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("no process");
    if (process_ > 0) return;

    if (!call.folder.empty() && ::chdir(call.folder.c_str()) != 0) ::_exit(cannotPrepare);
    for (const auto& [name, value] : call.environment) ::setenv(name.c_str(), value.c_str(), 1);
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    const int errorsTo = piped ? errors.get() : errors_.source.get();
    if (nothing < 0 || ::dup2(nothing, STDIN_FILENO) < 0 || ::dup2(errorsTo, STDERR_FILENO) < 0) ::_exit(cannotPrepare);
    redirectOutput(call.output, piped ? output.get() : output_.source.get());
    ::execvp(pointers.front(), pointers.data());
    ::_exit(cannotStart);
}

RunningProcess::~RunningProcess() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

void RunningProcess::send(int signal) {
    ::kill(process_, signal);
}

std::string RunningProcess::nextLine() {
    return lineOf(output_);
}

std::string RunningProcess::nextErrorLine() {
    return lineOf(errors_);
}

std::string RunningProcess::lineOf(Stream& stream) {
    std::size_t end = 0;
    while ((end = stream.read.find('\n')) == std::string::npos)
        if (!readMore(stream.source.get(), stream.read)) return "";
    std::string line = stream.read.substr(0, end);
    stream.read.erase(0, end + 1);
    return line;
}

std::string RunningProcess::restOf(Stream& stream) {
    if (!stream.isPipe) return contentsOf(stream.source.get());
    while (readMore(stream.source.get(), stream.read)) {
    }
    return std::exchange(stream.read, {});
}

ProcessEnd RunningProcess::wait() {
    int status = 0;
    while (::waitpid(process_, &status, 0) < 0)
        if (errno != EINTR) throw std::runtime_error("the end of a program can’t be awaited");
    process_ = -1;
    ProcessEnd end;
    end.output = restOf(output_);
    end.errors = restOf(errors_);
    if (WIFEXITED(status)) end.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
    if (end.exitCode == cannotPrepare || end.exitCode == cannotStart)
        throw std::runtime_error("a program can’t be started");
    return end;
}

ProcessResult runProcess(const std::vector<std::string>& arguments) {
    ProcessEnd end = RunningProcess(ProcessCall{.words = arguments}).wait();
    const int status = end.signal != 0 ? 128 + end.signal : end.exitCode;
    return {status, std::move(end.output), std::move(end.errors)};
}

std::vector<std::string> withoutRoot() {
    if (::geteuid() != 0) return {};
    return {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "--"};
}

ProcessResult runWithoutRoot(std::vector<std::string> arguments) {
    if (::geteuid() != 0) return runProcess(arguments);

    const TemporaryFolder folder;
    const auto everyoneReads = std::filesystem::perms(0755);
    std::filesystem::permissions(folder.path(), everyoneReads);
    const auto copy = folder / "program";
    std::filesystem::copy_file(arguments.front(), copy);
    std::filesystem::permissions(copy, everyoneReads);
    arguments.front() = copy.string();

    std::vector<std::string> words = withoutRoot();
    auto check = words;
    check.insert(check.end(), {"id", "-u"});
    if (runProcess(check).output != "65534\n") throw std::runtime_error("setpriv can’t drop root");
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runProcess(words);
}

std::filesystem::path thisProgram() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace quorvel
