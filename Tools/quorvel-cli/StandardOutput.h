#pragma once

#include <expected>
#include <string>
#include <string_view>

namespace quorvel::CommandLine::StandardOutput {

/// Holds the place of each standard stream that was closed when the program began, so that no file that is opened later
/// gets its number and our words with it. To be called first.
void holdPlaces();

/// Writes everything; fails with a sentence.
std::expected<void, std::string> print(std::string_view text);

}  // namespace quorvel::CommandLine::StandardOutput
