#pragma once

#include "Cards/Deck.h"

#include <string_view>
#include <utility>
#include <vector>

namespace quorvel {

using HeaderAndCell = std::pair<std::string_view, std::string_view>;

inline DataTable oneRowTable(const std::vector<HeaderAndCell>& columns) {
    std::vector<std::string> headers;
    TextRows rows;
    for (const auto& [header, cell] : columns) {
        headers.emplace_back(header);
        rows.appendCell(cell);
    }
    rows.endRow();
    return {headers, rows, "cards.csv"};
}

/// The card of a table with one row.
inline Card makeCard(const std::vector<HeaderAndCell>& columns, const FieldMapping& mapping) {
    return Deck(oneRowTable(columns), mapping).cards.at(0);
}

/// The same, with the fields that the headers suggest.
inline Card makeCard(const std::vector<HeaderAndCell>& columns) {
    const DataTable table = oneRowTable(columns);
    return Deck(table, FieldMapping::guess(table.headers)).cards.at(0);
}

}  // namespace quorvel
