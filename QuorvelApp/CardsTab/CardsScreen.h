#pragma once

#include "Library/DeckProject.h"
#include "Model/OpenDeck.h"

namespace quorvel {

/// What the Cards tab shows.
enum class CardsScreen {
    noSpreadsheet,
    error,    ///< the spreadsheet couldn't be read, and there is nothing from before
    loading,  ///< it is being read for the first time
    noCards,
    cards,  ///< with what is wrong above them
};

/// Of the open deck; `project` is null without one.
CardsScreen cardsScreenFor(const DeckProject* project, const OpenDeck& open);

}  // namespace quorvel
