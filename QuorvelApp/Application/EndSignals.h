#pragma once

#include "Desktop/Scheduler.h"
#include "Foundation/FileDescriptor.h"

namespace quorvel {

/// Ctrl-C, a hang-up and a request to end, told on the main thread. A signal that was ignored when the program began
/// stays ignored. One at a time exists; afterwards the signals do what they did before.
class EndSignals {
public:
    /// `asked` runs once for each time that somebody asks; quick repeats may be one.
    EndSignals(Scheduler& scheduler, Scheduler::Job asked);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    FileDescriptor readable_;
    FileDescriptor writable_;
    Scheduler::Task waiting_;
};

}  // namespace quorvel
