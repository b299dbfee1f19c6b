#include "Cards/FieldMappingJSON.h"
#include "Commands.h"
#include "DeckInput.h"
#include "Foundation/JSON.h"

namespace quorvel::CommandLine {
namespace {

JSON cardJSON(const Card& card) {
    return {{"id", card.id}, {"rowNumber", card.rowNumber}, {"fields", card.fields()}, {"quantity", card.quantity}};
}

}  // namespace

Result cardsCommand(const Options& options) {
    const auto source = DeckSource::find(options);
    if (!source) return std::unexpected(source.error());
    const auto input = DeckInput::read(options, *source);
    if (!input) return std::unexpected(input.error());

    JSON cards = JSON::array();
    for (const Card& card : input->deck->cards) cards.push_back(cardJSON(card));
    return prettyJSON({{"mapping", toJSON(input->mapping)},
                       {"cards", std::move(cards)},
                       {"badQuantities", input->deck->badQuantities},
                       {"missingPictures", input->renderer.assets->missing(input->pictureNames())},
                       {"totalCopies", Deck::totalCopies(input->deck->cards)}});
}

}  // namespace quorvel::CommandLine
