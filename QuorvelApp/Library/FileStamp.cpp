#include "Library/FileStamp.h"

#include <cstdint>
#include <sys/stat.h>

namespace quorvel {

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

/// With nine digits behind the point: a double would lose the last of them, and two saves within a moment are two.
std::string decimalSeconds(const timespec& time) {
    std::int64_t seconds = time.tv_sec;
    std::int64_t nanoseconds = time.tv_nsec;
    const bool isNegative = seconds < 0;  // the nanoseconds always count upwards
    if (isNegative && nanoseconds > 0) {
        ++seconds;
        nanoseconds = nanosecondsPerSecond - nanoseconds;
    }
    // A whole second more than the digits, so that the zeros in front of them are written.
    const std::string digits = std::to_string(nanosecondsPerSecond + nanoseconds).substr(1);
    return (isNegative && seconds == 0 ? "-" : "") + std::to_string(seconds) + "." + digits;
}

}  // namespace

std::optional<std::string> fileStamp(const std::filesystem::path& url) {
    struct stat status{};
    if (url.native().find('\0') != std::string::npos || ::stat(url.c_str(), &status) != 0) return std::nullopt;
    return decimalSeconds(status.st_mtim) + "-" + std::to_string(status.st_size);
}

}  // namespace quorvel
