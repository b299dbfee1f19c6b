#include "Printing/Duplex.h"

#include "Foundation/Units.h"

namespace quorvel::Duplex {

bool mirrorsHorizontally(bool landscape, DuplexFlip flip) {
    return landscape == (flip == DuplexFlip::shortEdge);
}

std::vector<SheetLayout::Slot> backLayout(const SheetLayout& layout, const SheetSettings& settings) {
    const bool horizontally = mirrorsHorizontally(layout.landscape, settings.flip);
    const double offsetX = Units::points(settings.backOffsetXMM);
    const double offsetY = Units::points(settings.backOffsetYMM);

    // The offsets are read with the front facing the viewer, the back's page shining through it. Turning the sheet
    // swaps the direction of one axis, and the page's y grows downward: hence the pair of opposite signs in each case.
    const auto behind = [&](const Rect& rect) {
        if (horizontally)
            return Rect{layout.pageSize.width - rect.maxX() + offsetX, rect.minY() - offsetY, rect.width, rect.height};
        return Rect{rect.minX() - offsetX, layout.pageSize.height - rect.maxY() + offsetY, rect.width, rect.height};
    };

    std::vector<SheetLayout::Slot> backs;
    backs.reserve(layout.slots.size());
    for (const SheetLayout::Slot& front : layout.slots) {
        SheetLayout::Slot back;
        back.column = horizontally ? layout.columns - 1 - front.column : front.column;
        back.row = horizontally ? front.row : layout.rows - 1 - front.row;
        back.trim = behind(front.trim);
        back.art = behind(front.art);
        backs.push_back(back);
    }
    return backs;
}

}  // namespace quorvel::Duplex
