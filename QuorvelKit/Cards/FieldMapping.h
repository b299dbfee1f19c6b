#pragma once

#include "Cards/Field.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// Which column feeds each field. No entries at all means that nothing has been decided yet.
struct FieldMapping {
    std::map<std::string, std::string> columns;  ///< field name to header text

    bool operator==(const FieldMapping&) const = default;

    std::optional<std::string> column(Field field) const;
    void setColumn(Field field, std::optional<std::string> header);

    /// By a table of aliases: fields in order, then the field's aliases in order, then headers from left to right.
    static FieldMapping guess(const std::vector<std::string>& headers);

    /// The entries of `old` whose column still exists, completed by what `guess` finds among the free columns.
    static FieldMapping reconcile(const FieldMapping& old, const std::vector<std::string>& headers);
};

}  // namespace quorvel
