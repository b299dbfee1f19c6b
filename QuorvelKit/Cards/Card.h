#pragma once

#include "Cards/FieldMapping.h"
#include "Spreadsheet/DataTable.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// What all cards of one load share: the table, and where to find a column by header or by field.
struct CardSource {
    using Columns = std::map<std::string, std::size_t, std::less<>>;

    std::shared_ptr<const DataTable> table;  ///< never null
    Columns fieldColumns;                    ///< by field name; fields whose column doesn't exist are left out
    Columns headerColumns;                   ///< by header, as written
    Columns lowercasedHeaderColumns;         ///< by lower-cased header

    CardSource(std::shared_ptr<const DataTable> table, const FieldMapping& mapping);

    /// Where the value of a placeholder's name stands, if anywhere; the order of looking is that of Card::value.
    std::optional<std::size_t> column(std::string_view name) const;
};

/// One row bound to fields. Copying shares the table; safe to hand to other threads.
struct Card {
    std::int64_t id = 0;         ///< index of the row, from 0: unique within a load, stable only until the next
    std::int64_t rowNumber = 0;  ///< the row as the spreadsheet numbers it
    std::int64_t quantity = 1;   ///< copies to print, 0 to 999
    std::shared_ptr<const CardSource> source;  ///< null for a card without cells

    /// Whether both have the same numbers and the same cells and fields, shared or not.
    bool operator==(const Card& other) const;

    /// The text for a placeholder's name: a field in any case, else a column exactly so named, else one that differs in
    /// case only, else "". Blanks and tabs around the name are ignored. Valid while this card or a copy of it lives.
    std::string_view value(std::string_view name) const;

    std::string_view title() const { return value("title"); }

    /// Header to cell, and field name to cell, written out.
    std::map<std::string, std::string> cells() const;
    std::map<std::string, std::string> fields() const;
};

}  // namespace quorvel
