#include "Model/FieldNames.h"

#include "Cards/Field.h"
#include "Foundation/Text.h"

#include <algorithm>

namespace quorvel {

std::vector<std::string> knownFieldNames(const DataTable* table) {
    std::vector<std::string> names;
    for (const auto& [field, name] : EnumText<Field>::cases) names.emplace_back(name);
    if (!table) return names;
    // Headers are unique without regard to case already, so only the fields can be met again.
    const auto isField = [](const std::string& header) {
        return std::ranges::any_of(EnumText<Field>::cases,
                                   [&](const auto& each) { return Text::equalsIgnoringCase(each.second, header); });
    };
    for (const std::string& header : table->headers)
        if (!isField(header)) names.push_back(header);
    return names;
}

}  // namespace quorvel
