#pragma once

#include "Cards/Card.h"
#include "Templates/CardTemplate.h"

#include <string>
#include <vector>

/// Which pictures a design asks for.
namespace quorvel::MissingArt {

/// The names in the image layers of the design, hidden ones too, front before back, card by card; repeats and empty
/// names included. `Assets::missing` tells which of them can't be found. Any thread; the work grows with the cards, so
/// it is done in the background.
std::vector<std::string> pictureNames(const CardTemplate& template_, const std::vector<Card>& cards);

}  // namespace quorvel::MissingArt
