#pragma once

#include <cstddef>
#include <functional>

namespace quorvel {

/// The number of processors this process may use, at least 1.
unsigned processorCount();

/// Runs `produce(i)` for i from 0 to count - 1 on `threads` threads and `consume(i)` for each i in order on the calling
/// thread, as soon as i is produced. At most `inFlight` indices are produced and not yet consumed, so what they hold
/// doesn't grow with `count`. `consume` answers false to stop early: nothing further is produced or consumed.
/// An exception from either ends the loop and is thrown again here, after every thread has ended.
void forEachInOrder(std::size_t count, const std::function<void(std::size_t)>& produce,
                    const std::function<bool(std::size_t)>& consume, unsigned threads, std::size_t inFlight);

}  // namespace quorvel
