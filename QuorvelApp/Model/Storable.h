#pragma once

#include "Library/DeckProject.h"

/// Whether a record comes back from the disk as it is. JSON knows neither infinity nor not-a-number: a record that held
/// one would be written, and be no deck at the next start.
namespace quorvel {

bool isStorable(const CardTemplate& template_);
bool isStorable(const DeckProject& project);

}  // namespace quorvel
