#pragma once

#include <cstdint>
#include <string_view>

namespace quorvel::Quantity {

inline constexpr std::int64_t maximum = 999;

struct Parsed {
    std::int64_t count = 1;
    bool understood = true;  ///< false: the text is no whole number of copies, and one copy stands in

    bool operator==(const Parsed&) const = default;
};

/// Reads the number of copies from a cell: "3", "x3", "3 ×", "2.0", "1e2", "" (one copy). More than the maximum is the
/// maximum, silently. Negative numbers, fractions and what no 64-bit integer holds ("1e30") aren't understood.
Parsed parse(std::string_view text);

}  // namespace quorvel::Quantity
