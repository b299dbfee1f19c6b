#pragma once

#include <cstdint>

namespace quorvel::Units {

inline constexpr double millimetresPerInch = 25.4;
inline constexpr double pointsPerInch = 72.0;

/// Points (1/72 inch) of a length in millimetres. Divides first: the order decides the last bit of every layout.
constexpr double points(double millimetres) {
    return millimetres / millimetresPerInch * pointsPerInch;
}

constexpr double millimetres(double points) {
    return points / pointsPerInch * millimetresPerInch;
}

constexpr double inches(double millimetres) {
    return millimetres / millimetresPerInch;
}

/// Whole pixels of a length at `dpi`, halves away from zero. Never by way of points, which can fall on the other side
/// of a half. The result must be finite and fit 64 bits.
std::int64_t pixels(double millimetres, double dpi);

}  // namespace quorvel::Units
