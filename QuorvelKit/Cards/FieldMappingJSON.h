#pragma once

#include "Cards/FieldMapping.h"
#include "Foundation/JSON.h"

#include <expected>

/// {"columns": {"title": "Card Name", …}}. The key is required, every value a text; names of no known field are kept.
namespace quorvel {

JSON toJSON(const FieldMapping& mapping);
std::expected<FieldMapping, JSONFailure> fieldMappingFromJSON(const JSON& json);

}  // namespace quorvel
