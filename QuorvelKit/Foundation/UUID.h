#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// A 128-bit identifier.
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    bool operator==(const UUID&) const = default;
    auto operator<=>(const UUID&) const = default;

    /// A new random one (version 4), from the system's source of randomness. Safe from any thread.
    static UUID random();

    /// Upper-case, hyphenated, 36 characters.
    std::string text() const;

    /// The hyphenated form in either case, or nothing.
    static std::optional<UUID> parse(std::string_view text);
};

}  // namespace quorvel
