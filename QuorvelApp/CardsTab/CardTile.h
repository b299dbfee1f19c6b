#pragma once

#include "Cards/Card.h"
#include "Drawing/Image.h"

#include <QString>
#include <cstdint>
#include <optional>

namespace quorvel {

/// What one tile of the grid shows, and its words.
struct CardTile {
    Card card;
    std::optional<Image> image;  ///< its thumbnail; none while it is being drawn
    double aspect = 1;           ///< card width by card height
    std::int64_t printed = 1;    ///< the card's copies

    /// The title without its marks, on one line; without a title the number of the row.
    QString caption() const;

    /// What stands on the badge; empty for a card that prints once, which has none.
    QString badge() const;

    /// What a screen reader says of it, and how to go on from there.
    QString accessibleLabel() const;
    static QString accessibleHint();
};

}  // namespace quorvel
