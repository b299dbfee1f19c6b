#pragma once

#include "Cards/Card.h"
#include "Drawing/DrawingContext.h"
#include "Pictures/Assets.h"
#include "Templates/CardTemplate.h"

#include <memory>
#include <optional>

namespace quorvel {

/// Draws one side of one card. A small value; several may draw at once against the same assets.
struct CardRenderer {
    enum class MissingPictures { leaveBlank, mark };

    CardTemplate template_;
    std::shared_ptr<Assets> assets = std::make_shared<Assets>();
    MissingPictures missingPictures = MissingPictures::leaveBlank;

    /// Draws into `context` in points, y up. `trim` is the card's trim edge and must have its true size in points;
    /// `clip` cuts everything, bleed included; `card` is null for a preview without cards. Leaves the context's state
    /// as it was. Can't fail.
    void draw(const Card* card, Side side, DrawingContext& context, const std::optional<Rect>& clip,
              const Rect& trim) const;
};

}  // namespace quorvel
