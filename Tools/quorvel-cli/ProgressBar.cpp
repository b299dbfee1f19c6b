#include "ProgressBar.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace quorvel::CommandLine {
namespace {

constexpr std::size_t longestBar = 30;
constexpr std::size_t shortestBar = 5;
constexpr auto leastPause = std::chrono::milliseconds(60);

std::size_t terminalColumns() {
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

/// A progress that can't be shown is no failure.
void writeToTerminal(const std::string& text) {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    while (count-- > 0) result += text;
    return result;
}

}  // namespace

std::string progressLine(const std::string& text, std::size_t done, std::size_t total, std::size_t columns) {
    const std::string numbers = total > 0 ? std::to_string(done) + " of " + std::to_string(total) : "";
    const std::size_t fixed = Text::characters(text).size() + 1 + numbers.size();
    if (fixed >= columns) return numbers.size() < columns ? numbers : "";
    if (total == 0) return text;
    if (columns < fixed + 2 + shortestBar) return text + " " + numbers;
    const std::size_t length = std::min(longestBar, columns - fixed - 2);
    const std::size_t filled = std::min(length, length * done / total);
    return text + " " + repeated("█", filled) + repeated("░", length - filled) + " " + numbers;
}

ProgressBar::ProgressBar(std::string text, Talk talk)
    : text_(std::move(text)), visible_(talk == Talk::normal && isatty(STDERR_FILENO)) {
    show(0, 0);
}

ProgressBar::~ProgressBar() {
    if (visible_) writeToTerminal("\r\x1b[K");
}

void ProgressBar::show(std::size_t done, std::size_t total) {
    if (!visible_) return;
    const auto now = std::chrono::steady_clock::now();
    if (done < total && now - lastDrawn_ < leastPause) return;
    lastDrawn_ = now;
    writeToTerminal("\r" + progressLine(text_, done, total, terminalColumns()) + "\x1b[K");
}

std::function<void(std::size_t, std::size_t)> ProgressBar::function() {
    return [this](std::size_t done, std::size_t total) { show(done, total); };
}

}  // namespace quorvel::CommandLine
