#pragma once

#include "Cards/Deck.h"
#include "Foundation/Geometry.h"
#include "Templates/CardTemplate.h"
#include "Templates/SheetSettings.h"

#include <cstdint>
#include <optional>

namespace quorvel {

/// What the print settings come to for a deck.
struct SheetSummary {
    Size pageSize;  ///< in points, as turned
    bool landscape = false;
    int columns = 0;
    int rows = 0;
    std::int64_t pages = 0;  ///< without backs; 0 for an empty print list
    std::int64_t cards = 0;  ///< copies counted

    /// Nothing when the card doesn't fit inside the margins.
    static std::optional<SheetSummary> make(const CardTemplate& template_, const SheetSettings& settings,
                                            const Deck& deck);
};

}  // namespace quorvel
