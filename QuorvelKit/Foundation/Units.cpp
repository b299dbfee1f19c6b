#include "Foundation/Units.h"

#include <cassert>
#include <cmath>

namespace quorvel::Units {

std::int64_t pixels(double millimetres, double dpi) {
    const double rounded = std::round(millimetres / millimetresPerInch * dpi);
    assert(std::isfinite(rounded) && rounded >= -0x1p63 && rounded < 0x1p63);
    return static_cast<std::int64_t>(rounded);
}

}  // namespace quorvel::Units
