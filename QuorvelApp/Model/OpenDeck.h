#pragma once

#include "Cards/Deck.h"
#include "Desktop/Scheduler.h"
#include "Pictures/Assets.h"
#include "Spreadsheet/DataTable.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// What is open of a deck besides its record: what the last load gave. Closing a deck assigns an empty one. The table,
/// the deck and the assets are shared with renders in the background and never change.
struct OpenDeck {
    std::shared_ptr<const DataTable> _table;                             ///< the last good one; null before
    std::shared_ptr<const Deck> _deck = std::make_shared<const Deck>();  ///< its cards; never null
    std::vector<std::string> _sheetNames;                                ///< of the workbook; empty for a text file
    std::optional<std::string> _loadError;
    std::optional<Scheduler::Clock::time_point> _lastLoaded;
    std::vector<std::string> _missingArt;                          ///< the pictures' names that no folder holds
    std::shared_ptr<Assets> _assets = std::make_shared<Assets>();  ///< never null
    std::optional<std::filesystem::path> _sourceURL;               ///< the spreadsheet, resolved
    bool _isLoading = false;
};

}  // namespace quorvel
