#pragma once

#include "Cards/Card.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quorvel {

/// The cards of one load in table order, those with quantity 0 included.
struct Deck {
    std::vector<Card> cards;
    std::vector<std::int64_t> badQuantities;  ///< row numbers whose quantity wasn't a number, in table order

    Deck() = default;

    /// One card for each row of `table`, which they share. Entries of the mapping whose column doesn't exist are passed
    /// over.
    Deck(std::shared_ptr<const DataTable> table, const FieldMapping& mapping);
    Deck(DataTable table, const FieldMapping& mapping);

    bool operator==(const Deck&) const = default;

    static std::int64_t totalCopies(const std::vector<Card>& cards);

    /// The print list: each card `quantity` times, copies side by side.
    static std::vector<Card> printedCards(const std::vector<Card>& cards);

    /// `count` cards of the print list from place `first` on, fewer at its end, without writing the whole list out.
    static std::vector<Card> printedCards(const std::vector<Card>& cards, std::int64_t first, std::int64_t count);

    /// The print list with each card (by `id`) at its first place only.
    static std::vector<Card> uniquePrintedCards(const std::vector<Card>& printed);
};

}  // namespace quorvel
