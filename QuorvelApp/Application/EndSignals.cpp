#include "Application/EndSignals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace quorvel {

namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

std::atomic<int> told = -1;  // where the handler writes; hardly anything else may be done within one

void tell(int) {
    const int before = errno;
    [[maybe_unused]] const auto written = ::write(told, "!", 1);
    errno = before;
}

void handle(void (*handler)(int)) {
    for (const int signal : signals) {
        struct sigaction action{};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace

EndSignals::EndSignals(Scheduler& scheduler, Scheduler::Job asked) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    readable_ = FileDescriptor(ends[0]);
    writable_ = FileDescriptor(ends[1]);
    told = ends[1];
    waiting_ = scheduler.whenReadable(ends[0], [asked = std::move(asked), descriptor = ends[0]] {
        std::array<char, 64> bytes{};
        while (::read(descriptor, bytes.data(), bytes.size()) > 0) {
        }
        asked();
    });
    handle(tell);
}

EndSignals::~EndSignals() {
    if (told >= 0) handle(SIG_DFL);
    waiting_.cancel();
    told = -1;
}

}  // namespace quorvel
