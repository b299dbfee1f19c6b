#include "Library/DeckProject.h"

namespace quorvel {

double secondsSince2001(std::chrono::system_clock::time_point date) {
    using namespace std::chrono;
    constexpr sys_days start = 2001y / January / 1;
    const auto seconds = floor<std::chrono::seconds>(date - start);
    const nanoseconds rest = date - start - seconds;
    // Apart, because all nanoseconds since 2001 are more than a double holds exactly.
    return static_cast<double>(seconds.count()) + static_cast<double>(rest.count()) / 1e9;
}

}  // namespace quorvel
