#pragma once

#include <filesystem>
#include <mutex>

/// Ctrl-C, a hang-up and a request to end: the program ends by that signal, but never in the middle of a file, and
/// never leaving its unfinished folder behind. A thread of its own waits for the signals, since hardly anything may be
/// done within a handler. A signal that was ignored when the program began stays ignored.
namespace quorvel::CommandLine::Interruption {

/// To be called first, while there is one thread.
void watch();

/// From now on a signal is the way the program is meant to end, with exit code 0.
void expect();

/// While the result lives a signal waits. For the time of writing, renaming and removing.
[[nodiscard]] std::unique_lock<std::mutex> postpone();

/// Names the one folder to be removed, with all it holds, when a signal ends the program; an empty path for none. To be
/// called while signals are postponed.
void setUnfinished(std::filesystem::path folder);

}  // namespace quorvel::CommandLine::Interruption
