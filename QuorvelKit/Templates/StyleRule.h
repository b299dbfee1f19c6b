#pragma once

#include "Cards/Card.h"
#include "Foundation/EnumText.h"
#include "Foundation/RGBA.h"
#include "Foundation/UUID.h"

#include <optional>
#include <string>

namespace quorvel {

/// One conditional change of a layer, for the cards that match.
struct StyleRule {
    enum class Match { equals, contains, isEmpty, isNotEmpty };

    UUID id;
    std::string field;  ///< a column or a field name
    Match match = Match::equals;
    std::string value;  ///< what equals and contains compare with
    std::optional<RGBA> fill;
    std::optional<RGBA> stroke;
    std::optional<RGBA> textColor;
    bool hide = false;

    StyleRule() = default;

    /// With a new id.
    StyleRule(std::string field, Match match, std::string value, std::optional<RGBA> fill, std::optional<RGBA> stroke,
              std::optional<RGBA> textColor, bool hide);

    bool operator==(const StyleRule&) const = default;

    /// Compares without regard to case and diacritics. `equals` trims its value, `contains` takes it as written, and an
    /// empty value is contained in nothing.
    bool matches(const Card& card) const;
};

template <>
struct EnumText<StyleRule::Match> {
    using enum StyleRule::Match;
    static constexpr std::array cases{
        std::pair{equals, std::string_view("equals")}, std::pair{contains, std::string_view("contains")},
        std::pair{isEmpty, std::string_view("isEmpty")}, std::pair{isNotEmpty, std::string_view("isNotEmpty")}};
};

}  // namespace quorvel
