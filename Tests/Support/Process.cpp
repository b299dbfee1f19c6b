#include "Support/Process.h"

#include "Foundation/FileBytes.h"
#include "Foundation/FileDescriptor.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace quorvel {

namespace {

std::string textOfFile(const std::filesystem::path& path) {
    const auto bytes = FileBytes::read(path);
    if (!bytes) throw std::runtime_error(bytes.error().description());
    return *bytes;
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& arguments) {
    // Files instead of pipes: a program can print any amount to both without anyone reading along.
    const TemporaryFolder folder;
    const std::string output = (folder / "output").string();
    const std::string errors = (folder / "errors").string();

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    std::vector<char*> words;
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    pid_t child = 0;
    const int error = posix_spawnp(&child, words[0], &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error(arguments.front() + " can’t be started");

    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) throw std::runtime_error("the end of " + arguments.front() + " can’t be awaited");
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return {code, textOfFile(output), textOfFile(errors)};
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

    std::vector<std::string> dropping{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "--"};
    auto check = dropping;
    check.insert(check.end(), {"id", "-u"});
    if (runProcess(check).output != "65534\n") throw std::runtime_error("setpriv can’t drop root");
    dropping.insert(dropping.end(), arguments.begin(), arguments.end());
    return runProcess(dropping);
}

std::filesystem::path thisProgram() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace quorvel
