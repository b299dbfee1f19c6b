#pragma once

#include "Library/DeckProject.h"

#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::CommandLine {

/// The deck that `wanted` means: its id in either case; or its name; or, where no deck has exactly this name, its name
/// in another case. Fails with a sentence that lists the ids where several decks have the name, and names like it where
/// none has.
std::expected<DeckProject, std::string> findDeck(const std::vector<DeckProject>& decks, std::string_view wanted);

}  // namespace quorvel::CommandLine
