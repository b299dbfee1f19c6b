#include "SheetsTab/SheetSummary.h"

#include "Model/Previews.h"

namespace quorvel {

std::optional<SheetSummary> SheetSummary::make(const CardTemplate& template_, const SheetSettings& settings,
                                               const Deck& deck) {
    const auto layout = Previews::layout(template_, settings);
    if (!layout) return std::nullopt;
    return SheetSummary{.pageSize = layout->pageSize,
                        .landscape = layout->landscape,
                        .columns = layout->columns,
                        .rows = layout->rows,
                        .pages = Previews::pageCount(*layout, deck.cards),
                        .cards = Deck::totalCopies(deck.cards)};
}

}  // namespace quorvel
