#pragma once

#include "Foundation/JSON.h"
#include "Library/DeckProject.h"

namespace quorvel {

/// The JSON form of a deck record: keys are the field names (`template_` is "template"), optional ones are left out
/// when there is nothing, `data` is base64. Reading: every other key is required, unknown keys are ignored, null for an
/// optional key means nothing, UUIDs are taken in either case.
JSON toJSON(const DeckProject& project);
std::expected<DeckProject, JSONFailure> deckProjectFromJSON(const JSON& json);

}  // namespace quorvel
