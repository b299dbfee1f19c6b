#include "Cards/Deck.h"

#include "Cards/Quantity.h"

#include <algorithm>
#include <unordered_set>

namespace quorvel {

Deck::Deck(DataTable table, const FieldMapping& mapping)
    : Deck(std::make_shared<const DataTable>(std::move(table)), mapping) {}

Deck::Deck(std::shared_ptr<const DataTable> table, const FieldMapping& mapping) {
    const auto source = std::make_shared<const CardSource>(std::move(table), mapping);
    const TextRows& rows = source->table->rows;
    const std::vector<std::int64_t>& rowNumbers = source->table->rowNumbers;
    // The field alone: a column that merely has its name counts only when it is mapped.
    const auto quantityColumn = source->fieldColumns.find(textOf(Field::quantity));
    const bool hasQuantities = quantityColumn != source->fieldColumns.end();

    const std::size_t count = rows.rowCount();
    cards.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto id = static_cast<std::int64_t>(i);
        Card card{id, i < rowNumbers.size() ? rowNumbers[i] : id + 2, 1, source};
        const Quantity::Parsed parsed = Quantity::parse(hasQuantities ? rows.cell(i, quantityColumn->second) : "");
        card.quantity = parsed.count;
        if (!parsed.understood) badQuantities.push_back(card.rowNumber);
        cards.push_back(std::move(card));
    }
}

std::int64_t Deck::totalCopies(const std::vector<Card>& cards) {
    std::int64_t total = 0;
    for (const Card& card : cards) total += card.quantity;
    return total;
}

std::vector<Card> Deck::printedCards(const std::vector<Card>& cards) {
    std::vector<Card> printed;
    printed.reserve(static_cast<std::size_t>(std::max<std::int64_t>(totalCopies(cards), 0)));
    for (const Card& card : cards)
        for (std::int64_t copy = 0; copy < card.quantity; ++copy) printed.push_back(card);
    return printed;
}

std::vector<Card> Deck::printedCards(const std::vector<Card>& cards, std::int64_t first, std::int64_t count) {
    std::vector<Card> printed;
    std::int64_t place = 0;  // of the card's first copy
    for (const Card& card : cards) {
        const std::int64_t from = std::max(first, place);
        const std::int64_t to = std::min(first + count, place + card.quantity);
        for (std::int64_t copy = from; copy < to; ++copy) printed.push_back(card);
        place += card.quantity;
        if (place >= first + count) break;
    }
    return printed;
}

std::vector<Card> Deck::uniquePrintedCards(const std::vector<Card>& printed) {
    std::vector<Card> unique;
    std::unordered_set<std::int64_t> seen;
    for (const Card& card : printed)
        if (seen.insert(card.id).second) unique.push_back(card);
    return unique;
}

}  // namespace quorvel
