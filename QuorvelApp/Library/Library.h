#pragma once

#include "Foundation/FileFailure.h"
#include "Library/DeckProject.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <vector>

namespace quorvel {

/// The decks on disk: one JSON file each in a folder of the application's own. A small value; no state beyond the path.
/// Safe from any thread, but two writes of one deck at once are the caller's to keep apart (`LibraryWriter` does).
struct Library {
    std::filesystem::path applicationSupport;

    /// A record has some tens of kilobytes; what is larger than this in bytes is none.
    static constexpr std::uint64_t largestRecord = std::uint64_t{32} << 20;

    std::filesystem::path decksFolder() const { return applicationSupport / "Decks"; }
    std::filesystem::path deckFile(const UUID& id) const;

    /// Below it each sample deck has a folder named after its id.
    std::filesystem::path sampleFolder() const { return applicationSupport / "Sample Deck"; }

    /// All that can be read, oldest first, those of equal age in the order of the folder's listing by name. A file that
    /// can't be read or isn't a deck is passed over and stays. Sweeps what an interrupted save has left behind. Uses
    /// all cores; never throws.
    std::vector<DeckProject> loadDecks() const;

    /// Writes the record, whole or not at all, and makes the folder where it is missing.
    std::expected<void, FileFailure> saveDeck(const DeckProject& project) const;

    /// Removes the deck's file; that there is none is no failure.
    void deleteDeck(const UUID& id) const;
};

}  // namespace quorvel
