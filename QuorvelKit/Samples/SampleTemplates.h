#pragma once

#include "Foundation/EnumText.h"
#include "Templates/CardTemplate.h"

#include <string_view>

namespace quorvel::SampleTemplates {

enum class Kind { classic, tarot, mini };

/// "Classic (poker size)", "Tall (tarot size)", "Mini".
std::string_view label(Kind kind);

/// A complete design with new ids; the game's name stands on its back in upper case.
CardTemplate make(Kind kind, std::string_view gameName);

/// The colour of a type of the sample deck; nothing for any other type.
std::optional<RGBA> typeColor(std::string_view type);

}  // namespace quorvel::SampleTemplates

namespace quorvel {

template <>
struct EnumText<SampleTemplates::Kind> {
    using enum SampleTemplates::Kind;
    static constexpr std::array cases{std::pair{classic, std::string_view("classic")},
                                      std::pair{tarot, std::string_view("tarot")},
                                      std::pair{mini, std::string_view("mini")}};
};

}  // namespace quorvel
