#include "StandardOutput.h"

#include "Foundation/FileFailure.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace quorvel::CommandLine::StandardOutput {
namespace {

std::string sentence(int code) {
    if (code == EPIPE) return "The output couldn’t be printed: its reader has gone.";
    if (code == EBADF) return "The output couldn’t be printed: it leads nowhere.";
    return FileFailure{"standard output", code, FileFailure::Operation::write}.description();
}

}  // namespace

void holdPlaces() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        // A new descriptor gets the lowest free number, which is this one. Opened the wrong way round for the streams
        // that are written to, so that writing still fails.
        if (fcntl(stream, F_GETFD) < 0) [[maybe_unused]]
            const int held = open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

std::expected<void, std::string> print(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(std::size_t(count));
        } else if (errno == EAGAIN) {
            pollfd ready{STDOUT_FILENO, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            return std::unexpected(sentence(errno));
        }
    }
    return {};
}

}  // namespace quorvel::CommandLine::StandardOutput
