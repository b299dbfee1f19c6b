#pragma once

#include <compare>
#include <optional>
#include <pango/pango.h>
#include <string>
#include <string_view>
#include <vector>

/// The fonts of cards: a font configuration of the kit's own, so that a design looks the same on every machine with the
/// same fonts. Families that aren't installed get their nearest relatives from one table; the machine's own rules for
/// fonts play no part. Any thread may call anything.
namespace quorvel::Fonts {

/// The family drawn where a design names none, and where the one it names isn't known.
inline constexpr std::string_view defaultFamily = "Helvetica Neue";

/// The families a designer may choose, sorted without regard to case; the same list that is drawn from. Families that a
/// relative stands in for are offered by their own name.
std::vector<std::string> families();

/// The layout context of the calling thread: one point is one unit, metrics are unhinted, positions aren't rounded, and
/// no language of the surroundings is looked at. Borrowed for the life of the thread; never crosses threads.
PangoContext* context();

enum class Weight { normal, bold };
enum class Slant { upright, italic };

struct Face {
    Weight weight = Weight::normal;
    Slant slant = Slant::upright;
    auto operator<=>(const Face&) const = default;
};

/// Whether the family, or the relative that stands in for it, has a face of its own in this weight and slant.
bool hasFace(std::string_view family, const Face& face);

/// The wanted face, or what the family has of it: bold rather than italic, and plain at last. None is ever made up.
Face nearestFace(std::string_view family, const Face& wanted);

/// The family that is really drawn for a name in any case: itself, its relative, or the default's.
std::string drawnFamily(std::string_view family);

/// How far a line of text reaches above and below its baseline, in parts of the font size, the gap to the next
/// included.
struct LineExtent {
    double ascent = 0;
    double descent = 0;
    bool operator==(const LineExtent&) const = default;
};

/// The line of the family that a name stands for, where a relative is drawn in its place: its lines are set as far
/// apart as the family's own would be. Nothing for a family that is drawn itself.
std::optional<LineExtent> lineOfAbsent(std::string_view family);

/// The line that a font asks for itself.
LineExtent lineOf(PangoFont* font);

}  // namespace quorvel::Fonts
