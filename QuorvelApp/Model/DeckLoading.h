#pragma once

#include "Cards/Deck.h"
#include "Library/DeckProject.h"
#include "Pictures/Assets.h"
#include "Spreadsheet/DataLoader.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// From a deck's record to its cards: the steps that the open deck and the command line share. No state; any thread.
namespace quorvel::DeckLoading {

/// The files of a deck, found.
struct Files {
    std::optional<std::filesystem::path> source;
    std::vector<std::filesystem::path> pictureFolders;  ///< the art folder before the spreadsheet's own
    std::optional<std::filesystem::path> iconFolder;
    DeckProject refreshed;  ///< the record with the bookmarks that were renewed on the way
};

/// Resolves the record's bookmarks. A folder that can't be found is passed over; a spreadsheet that can't leaves
/// `source` empty.
Files find(const DeckProject& project);

/// What one reading of the spreadsheet gave.
struct Cards {
    std::shared_ptr<const DataTable> table;
    FieldMapping mapping;  ///< guessed, or the old one reconciled with the table's headers
    std::shared_ptr<const Deck> deck;
};
struct Loaded {
    std::optional<std::string> stamp;  ///< taken before the reading, so that a save during it still differs
    bool wasRead = false;              ///< whether the file could be read at all; if not, only `result` counts
    std::vector<std::string> sheetNames;
    std::int64_t sheetIndex = 0;               ///< the worksheet that was read
    std::expected<Cards, std::string> result;  ///< or the sentence for the user
};

/// Reads the file and binds its rows: an empty `mapping` is guessed anew, another one reconciled.
Loaded load(const std::filesystem::path& file, std::int64_t sheetIndex, const FieldMapping& mapping);

/// The mapping that a table with these headers gets.
FieldMapping mappingFor(const FieldMapping& old, const std::vector<std::string>& headers);

/// "“cards.csv” can’t be found. It may have been moved or deleted: choose it again."
std::string notFoundMessage(const std::string& name);

}  // namespace quorvel::DeckLoading
