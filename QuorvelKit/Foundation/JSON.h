#pragma once

#include <cstddef>
#include <expected>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace quorvel {

using JSON = nlohmann::json;

/// Why a JSON text could not become a record. `path` points at the place ("front[2].frame.width"), empty for the top.
struct JSONFailure {
    std::string path;
    std::string reason;  ///< the rest of a sentence that begins with the place: "must be a number"

    bool operator==(const JSONFailure&) const = default;

    /// "front[2].frame.width must be a number."
    std::string description() const;

    /// The same failure seen from one level further out: from the object or the list that holds the value.
    JSONFailure inside(std::string_view key) const;
    JSONFailure inside(std::size_t index) const;
};

/// The deepest nesting of lists and objects that `parseJSON` takes.
inline constexpr std::size_t deepestJSON = 256;

/// Parses a whole text; never throws. Nesting deeper than 256 levels fails too, so that no text exhausts the stack. Of
/// equal keys in one object the last counts. Records are read from the result with `JSONReader`.
std::expected<JSON, JSONFailure> parseJSON(std::string_view text);

/// Two blanks of indentation, sorted keys, a final line feed. Text that is not UTF-8 is written with U+FFFD.
std::string prettyJSON(const JSON& value);

}  // namespace quorvel
