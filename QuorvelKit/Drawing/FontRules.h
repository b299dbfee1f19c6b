#pragma once

#include "Drawing/Fonts.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace quorvel::Fonts {

/// A family that designs ask for and that is rarely installed, with the families that may stand in for it, nearest
/// first, and the line of the original: a relative is set on the lines of what it stands for, so that a text takes the
/// same room whichever is drawn.
struct Relative {
    std::string_view family;
    std::array<std::string_view, 3> standIns;
    LineExtent line;
};

std::span<const Relative> relatives();

/// The whole configuration of fonts, in the form that Fontconfig reads: where they lie, which are left out, and what
/// draws the characters that a family lacks.
std::string rules();

}  // namespace quorvel::Fonts
