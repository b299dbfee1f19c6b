#include "Interruption.h"

#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace quorvel::CommandLine::Interruption {
namespace {

struct State {
    std::mutex mutex;
    std::filesystem::path unfinished;
    bool expected = false;
};

/// Never destroyed: the waiting thread may outlive everything else.
State& state() {
    static State& shared = *new State;
    return shared;
}

bool isIgnored(int signal) {
    struct sigaction action{};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

[[noreturn]] void endBy(int signal) {
    std::signal(signal, SIG_DFL);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    raise(signal);
    std::_Exit(128 + signal);
}

void waitFor(const sigset_t& signals) {
    int signal = 0;
    while (sigwait(&signals, &signal) != 0) {
    }
    [[maybe_unused]] const auto writing = postpone();
    std::error_code ignored;
    if (!state().unfinished.empty()) std::filesystem::remove_all(state().unfinished, ignored);
    if (isatty(STDERR_FILENO)) [[maybe_unused]]
        const auto written = write(STDERR_FILENO, "\n", 1);
    if (state().expected) std::_Exit(0);
    endBy(signal);
}

}  // namespace

void watch() {
    state();
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal)) sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread(waitFor, signals).detach();
}

void expect() {
    const auto lock = postpone();
    state().expected = true;
}

std::unique_lock<std::mutex> postpone() {
    return std::unique_lock(state().mutex);
}

void setUnfinished(std::filesystem::path folder) {
    state().unfinished = std::move(folder);
}

}  // namespace quorvel::CommandLine::Interruption
