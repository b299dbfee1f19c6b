#include "Library/FileWatcher.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace quorvel {

namespace {

/// Write and extend; then what can mean that the file is no longer at its path. The removal of a file that another
/// program holds open shows only as a change of its attributes, namely of the number of its names.
constexpr std::uint32_t events = IN_MODIFY | IN_CLOSE_WRITE | IN_MOVE_SELF | IN_DELETE_SELF | IN_ATTRIB;

/// The union of all events that wait, 0 when there are none.
std::uint32_t takeEvents(int source) {
    std::uint32_t all = 0;
    alignas(inotify_event) std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t count = ::read(source, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return all;
        inotify_event event{};
        for (std::size_t at = 0; at + sizeof event <= std::size_t(count); at += sizeof event + event.len) {
            std::memcpy(&event, buffer.data() + at, sizeof event);
            all |= event.mask;
        }
    }
}

std::optional<FileIdentity> identityOfFile(const std::filesystem::path& path) {
    const auto found = findFile(path);
    if (!found || found->isFolder) return std::nullopt;
    return found->identity;
}

}  // namespace

FileWatcher::FileWatcher(Scheduler& scheduler, std::filesystem::path url, std::function<void()> onChange)
    : scheduler_(scheduler), url_(std::move(url)), onChange_(std::move(onChange)) {}

void FileWatcher::start() {
    disarm();
    // A file may take the path's name between the two looks at it, but hardly each time.
    constexpr int attempts = 5;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto before = identityOfFile(url_);
        if (!before) return;
        FileDescriptor source(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
        if (!source || ::inotify_add_watch(source.get(), url_.c_str(), events) < 0) return;
        // The same file again, or the link that leads to it: another link may take its name.
        ::inotify_add_watch(source.get(), url_.c_str(), IN_MOVE_SELF | IN_DELETE_SELF | IN_DONT_FOLLOW | IN_MASK_ADD);
        if (identityOfFile(url_) != before) continue;
        watched_ = *before;
        source_ = std::move(source);
        readable_ = scheduler_.whenReadable(source_.get(), [this] { readEvents(); });
        return;
    }
}

void FileWatcher::stop() {
    pending_.cancel();
    disarm();
}

void FileWatcher::assumeChanged() {
    pending_ = scheduler_.later(delay, [this] { waitIsOver(); });
}

void FileWatcher::readEvents() {
    const std::uint32_t seen = takeEvents(source_.get());
    const bool isGone = (seen & (IN_MOVE_SELF | IN_DELETE_SELF | IN_IGNORED | IN_UNMOUNT)) != 0 ||
                        ((seen & (IN_ATTRIB | IN_Q_OVERFLOW)) != 0 && identityOfFile(url_) != watched_);
    if (isGone) disarm();
    if (isGone || (seen & (IN_MODIFY | IN_CLOSE_WRITE | IN_Q_OVERFLOW)) != 0) assumeChanged();
}

void FileWatcher::disarm() {
    readable_.cancel();
    source_ = FileDescriptor();
}

void FileWatcher::waitIsOver() {
    pending_ = {};
    if (!isArmed()) start();
    // A copy, for it may destroy this.
    const auto onChange = onChange_;
    onChange();
}

}  // namespace quorvel
