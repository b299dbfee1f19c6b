#pragma once

#include "Foundation/JSON.h"
#include "Spreadsheet/DataTable.h"

namespace quorvel {

/// An object of "headers", "rows" (each as wide as the headers), "sourceName" and "rowNumbers".
JSON toJSON(const DataTable& table);

/// "headers" and "rows" are required; a missing or null "sourceName" is an empty text, missing or null "rowNumbers" are
/// counted anew. Rows are repaired as the table's constructor does.
std::expected<DataTable, JSONFailure> dataTableFromJSON(const JSON& json);

}  // namespace quorvel
