#pragma once

#include "Spreadsheet/DataTable.h"

#include <string>
#include <vector>

namespace quorvel {

/// What a placeholder or a rule can name: the fields in their order, then the table's headers from left to right
/// without those that are a field's name in any case. Without a table only the fields.
std::vector<std::string> knownFieldNames(const DataTable* table);

}  // namespace quorvel
