#pragma once

#include "Drawing/Image.h"
#include "Foundation/UUID.h"
#include "Library/DeckProject.h"
#include "Model/OpenDeck.h"
#include "Model/Tab.h"
#include "Templates/CardTemplate.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// Everything that views show. `AppModel` alone writes it. A leading underscore marks what is announced when it
/// changes.
struct AppState {
    std::vector<DeckProject> _decks;  ///< oldest first, then in the order they were made
    std::optional<UUID> _selection;   ///< the open deck
    Tab _tab = Tab::cards;
    OpenDeck open;

    Side _side = Side::front;            ///< on the canvas
    std::optional<UUID> _selectedLayer;  ///< on that side; after an undo it may name no layer
    std::int64_t _canvasCard = 0;        ///< index of the card on the canvas
    std::int64_t _sheetPage = 0;         ///< the wanted page of the preview, from 0; it may lie beyond the last
    bool _sheetBack = false;             ///< whether its back is wanted
    std::optional<Image> _canvasImage;
    std::optional<Image> _sheetImage;

    bool _showNewDeck = false;
    bool _isPaintingSample = false;      ///< until the sample deck is there
    std::optional<std::string> _busy;    ///< an export that runs
    std::optional<std::string> _notice;  ///< goes by itself
    std::optional<std::string> _error;   ///< until the user has read it
};

}  // namespace quorvel
