#pragma once

#include "Foundation/Geometry.h"
#include "Templates/SheetSettings.h"

#include <optional>
#include <vector>

namespace quorvel {

/// Where cards lie on one page: points from the top left of the page, y growing downward. Has at least one slot.
struct SheetLayout {
    struct Slot {
        int column = 0;  ///< 0 at the left
        int row = 0;     ///< 0 at the top
        Rect trim;       ///< where the card's trim edge lies
        Rect art;        ///< what may be printed of the card: the trim and the bleed that this slot shows

        bool operator==(const Slot&) const = default;
    };

    Size pageSize;  ///< as turned
    bool landscape = false;
    int columns = 0;
    int rows = 0;
    std::vector<Slot> slots;   ///< row by row from the top, left to right in a row
    std::vector<double> cutX;  ///< of the vertical cut lines, ascending
    std::vector<double> cutY;  ///< of the horizontal cut lines, ascending
    Rect grid;                 ///< all the art, centred on the page

    bool operator==(const SheetLayout&) const = default;

    /// The layout in the orientation that the settings ask for; with `auto_` the one with more cards, portrait on a
    /// tie. Nothing when not even one card fits.
    static std::optional<SheetLayout> make(const SheetSettings& settings, double widthMM, double heightMM,
                                           double bleedMM);

    static std::optional<SheetLayout> compute(const SheetSettings& settings, bool landscape, double widthMM,
                                              double heightMM, double bleedMM);
};

}  // namespace quorvel
