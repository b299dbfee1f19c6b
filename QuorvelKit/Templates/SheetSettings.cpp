#include "Templates/SheetSettings.h"

#include "Foundation/Units.h"

namespace quorvel {

Size sizePoints(Paper paper) {
    switch (paper) {
        case Paper::letter:
            return {612, 792};
        case Paper::a4:
            return {Units::points(210), Units::points(297)};
    }
    return {};
}

std::string_view displayName(Paper paper) {
    switch (paper) {
        case Paper::letter:
            return "Letter";
        case Paper::a4:
            return "A4";
    }
    return {};
}

}  // namespace quorvel
