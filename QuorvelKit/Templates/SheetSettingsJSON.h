#pragma once

#include "Foundation/JSON.h"
#include "Templates/SheetSettings.h"

#include <expected>

namespace quorvel {

/// An object with all eleven keys, named like the fields.
JSON toJSON(const SheetSettings& settings);

/// A key that is missing or null takes its default, so that records written before a setting existed still open; a key
/// of the wrong type or an unknown case fails. Keys of no setting are ignored.
std::expected<SheetSettings, JSONFailure> sheetSettingsFromJSON(const JSON& json);

}  // namespace quorvel
