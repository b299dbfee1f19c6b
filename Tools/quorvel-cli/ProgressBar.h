#pragma once

#include "Options.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace quorvel::CommandLine {

/// A line on standard error that tells how far a long work is, and goes without a trace. Only where standard error is a
/// terminal.
class ProgressBar {
public:
    ProgressBar(std::string text, Talk talk);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// Redraws the line, though not faster than an eye can follow.
    void show(std::size_t done, std::size_t total);

    /// The same as a function, valid as long as this object.
    std::function<void(std::size_t, std::size_t)> function();

private:
    std::string text_;
    bool visible_;
    std::chrono::steady_clock::time_point lastDrawn_;
};

/// The line for a terminal `columns` wide: the text, a bar where there is room for one, and the numbers.
std::string progressLine(const std::string& text, std::size_t done, std::size_t total, std::size_t columns);

}  // namespace quorvel::CommandLine
