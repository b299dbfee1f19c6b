#pragma once

#include <ctime>

namespace quorvel {

/// Of the processor, in ms, by the calling thread: what a busy machine doesn't add to.
inline double processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

}  // namespace quorvel
