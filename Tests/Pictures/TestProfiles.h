#pragma once

#include <array>
#include <string>
#include <vector>

/// Colour profiles for tests, written byte by byte.
namespace quorvel::TestProfiles {

/// A primary in the connection space (XYZ, adapted to D50).
using Primary = std::array<double, 3>;

constexpr Primary sRGBRed{0.4361, 0.2225, 0.0139}, sRGBGreen{0.3851, 0.7169, 0.0971}, sRGBBlue{0.1431, 0.0606, 0.7141};
constexpr Primary adobeRed{0.6097, 0.3111, 0.0195}, adobeGreen{0.2053, 0.6257, 0.0609},
    adobeBlue{0.1492, 0.0632, 0.7446};

/// A tone curve tag: sRGB's as a table of `entries`, as a formula, or a plain power.
std::string sRGBTable(int entries);
std::string sRGBFormula();
std::string power(double exponent);

/// A profile of a display with these primaries and one tone curve.
std::string rgb(const Primary& red, const Primary& green, const Primary& blue, const std::string& curve);

/// A profile of grey.
std::string grey(const std::string& curve);

}  // namespace quorvel::TestProfiles
