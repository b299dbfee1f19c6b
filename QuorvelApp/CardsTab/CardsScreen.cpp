#include "CardsTab/CardsScreen.h"

namespace quorvel {

CardsScreen cardsScreenFor(const DeckProject* project, const OpenDeck& open) {
    if (!project || !project->source) return CardsScreen::noSpreadsheet;
    // Cards from before are worth more than a screen that says what became of the file.
    if (!open._deck->cards.empty()) return CardsScreen::cards;
    if (open._loadError) return CardsScreen::error;
    // A table without rows, read anew, is still one without rows until it is known better.
    if (open._isLoading && !open._table) return CardsScreen::loading;
    return CardsScreen::noCards;
}

}  // namespace quorvel
