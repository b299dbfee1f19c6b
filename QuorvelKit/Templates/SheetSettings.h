#pragma once

#include "Foundation/EnumText.h"
#include "Foundation/Geometry.h"

namespace quorvel {

enum class Paper { letter, a4 };
enum class Orientation { auto_, portrait, landscape };
enum class Spacing { butted, separated };
enum class DuplexFlip { longEdge, shortEdge };

template <>
struct EnumText<Paper> {
    static constexpr std::array cases{std::pair{Paper::letter, std::string_view("letter")},
                                      std::pair{Paper::a4, std::string_view("a4")}};
};

template <>
struct EnumText<Orientation> {
    static constexpr std::array cases{std::pair{Orientation::auto_, std::string_view("auto")},
                                      std::pair{Orientation::portrait, std::string_view("portrait")},
                                      std::pair{Orientation::landscape, std::string_view("landscape")}};
};

template <>
struct EnumText<Spacing> {
    static constexpr std::array cases{std::pair{Spacing::butted, std::string_view("butted")},
                                      std::pair{Spacing::separated, std::string_view("separated")}};
};

template <>
struct EnumText<DuplexFlip> {
    static constexpr std::array cases{std::pair{DuplexFlip::longEdge, std::string_view("longEdge")},
                                      std::pair{DuplexFlip::shortEdge, std::string_view("shortEdge")}};
};

/// The portrait page in points. A4 is 210 × 297 mm, not rounded.
Size sizePoints(Paper paper);

/// "Letter", "A4".
std::string_view displayName(Paper paper);

/// How cards go on paper.
struct SheetSettings {
    Paper paper = Paper::letter;
    Orientation orientation = Orientation::auto_;  ///< auto_ takes whichever fits more cards
    Spacing spacing = Spacing::butted;             ///< touching, or apart by the gutter
    double gutterMM = 0;                           ///< gap between separated cards
    double marginMM = 6.35;                        ///< page margin, a quarter of an inch
    bool includeBleed = false;                     ///< print the bleed around each card
    bool cutMarks = true;
    bool duplex = false;                     ///< a back page after every front page
    DuplexFlip flip = DuplexFlip::longEdge;  ///< how the printer turns the sheet
    double backOffsetXMM = 0;                ///< measured shift of back pages, right positive
    double backOffsetYMM = 0;                ///< down positive

    bool operator==(const SheetSettings&) const = default;
};

}  // namespace quorvel
