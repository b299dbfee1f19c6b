#pragma once

#include "Templates/CardTemplate.h"

#include <cstdint>
#include <vector>

/// What an edit of a design makes of it: pure functions from one template to the next. An edit that has nothing to act
/// on answers an equal template. Lengths in millimetres.
namespace quorvel::TemplateEdits {

/// A new layer of a kind for a card of this size, with a new id and the place, words and style that the kind starts
/// with.
Layer newLayer(LayerKind kind, const CardSize& size);

/// The first layer of the side with this id, in `template_` itself; null when there is none.
const Layer* find(const CardTemplate& template_, Side side, const UUID& id);

/// Puts `layer` in the place of the first layer with its id.
CardTemplate replacing(CardTemplate template_, Side side, Layer layer);

/// `layer` on top of the side.
CardTemplate adding(CardTemplate template_, Side side, Layer layer);

/// Without any layer of the side that has this id.
CardTemplate removing(CardTemplate template_, Side side, const UUID& id);

/// A copy under a new id, its name with " copy" behind, 2 mm to the right and 2 mm down. Its rules keep their ids.
Layer copyOf(const Layer& layer);

/// `copy` directly above the first layer with the id `source`, on top when there is none.
CardTemplate addingAbove(CardTemplate template_, Side side, const UUID& source, Layer copy);

/// The first layer with this id changes places with the one `delta` further up the side's list (down when negative), at
/// most with the last or the first.
CardTemplate moving(CardTemplate template_, Side side, const UUID& id, std::int64_t delta);

/// The first layer with this id moved, right and down positive, neither snapped nor kept on the card.
CardTemplate nudging(CardTemplate template_, Side side, const UUID& id, double dx, double dy);

/// Frames scaled by sx and sy, icon sizes by the smaller of both. Font sizes, lines, corners and gaps stay, and so does
/// a length that would no longer be finite: a design that holds one couldn't be stored.
std::vector<Layer> scaleLayers(std::vector<Layer> layers, double sx, double sy);

/// The design at a preset's size, both sides scaled to it; for `custom` only the preset's name changes.
CardTemplate withPreset(CardTemplate template_, CardSize::Preset preset);

/// The design at a typed size, both sides scaled to it; the preset is `custom`. Each dimension is raised to at least
/// 10; an infinite one counts as not typed.
CardTemplate withSize(CardTemplate template_, double widthMM, double heightMM);

}  // namespace quorvel::TemplateEdits
