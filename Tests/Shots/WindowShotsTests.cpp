#include "Support/Images/ReadPNG.h"
#include "Support/Process.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <sstream>
#include <string>
#include <vector>

namespace quorvel {
namespace {

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// How many of the pixels have another colour than the first.
double partOfOtherColors(const Image& image) {
    const std::span pixels(image.pixels(), std::size_t(image.width()) * std::size_t(image.height()));
    const auto other = std::ranges::count_if(pixels, [&](auto pixel) { return pixel != pixels.front(); });
    return double(other) / double(pixels.size());
}

TEST(WindowShots, EveryScreenGivesAPicture) {
    const TemporaryFolder folder;
    const auto screens = lines(runProcess({WINDOW_SHOTS, "--list"}).output);
    ASSERT_GT(screens.size(), 30u);
    const ProcessResult run = runProcess({WINDOW_SHOTS, folder.path(), "dark"});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    for (const std::string& screen : screens) {
        SCOPED_TRACE(screen);
        EXPECT_GT(partOfOtherColors(readPNG(folder / (screen + "-dark-1x.png"))), 0.01);
    }
}

}  // namespace
}  // namespace quorvel
