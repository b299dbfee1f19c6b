#pragma once

#include <cstddef>

namespace quorvel::test {

/// The most heap memory that C++ objects hold at one time while a meter lives, beyond what they held when it was made.
/// Counts every `new` of the program, so one meter at a time and one thread.
class HeapMeter {
public:
    HeapMeter();
    HeapMeter(const HeapMeter&) = delete;
    HeapMeter& operator=(const HeapMeter&) = delete;

    std::size_t peak() const;

private:
    std::size_t before_ = 0;
};

}  // namespace quorvel::test
