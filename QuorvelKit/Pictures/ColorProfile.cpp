#include "Pictures/ColorProfile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>

namespace quorvel::ColorProfile {
namespace {

constexpr std::size_t headerSize = 128;

std::uint32_t number(std::string_view bytes, std::size_t offset, std::size_t size) {
    if (offset > bytes.size() || bytes.size() - offset < size) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value = value << 8 | std::uint8_t(bytes[offset + i]);
    return value;
}

/// A signed number with sixteen fractional bits.
double fixed(std::string_view bytes, std::size_t offset) {
    return double(std::int32_t(number(bytes, offset, 4))) / 65536;
}

/// The bytes of a tag, empty when the profile hasn't got it.
std::string_view tag(std::string_view profile, std::string_view signature) {
    const std::uint32_t count = std::min<std::uint32_t>(number(profile, headerSize, 4), 256);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t entry = headerSize + 4 + std::size_t(i) * 12;
        if (entry + 12 > profile.size()) break;
        if (profile.substr(entry, 4) != signature) continue;
        const std::size_t offset = number(profile, entry + 4, 4), size = number(profile, entry + 8, 4);
        return offset <= profile.size() && profile.size() - offset >= size ? profile.substr(offset, size)
                                                                           : std::string_view();
    }
    return {};
}

double encodedSRGB(double linear) {
    return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

/// The light that a tone curve gives for an encoded value, both 0 to 1.
using ToneCurve = std::function<double(double)>;

std::optional<ToneCurve> tableCurve(std::string_view bytes) {
    const std::size_t count = number(bytes, 8, 4);
    if (count == 0) return [](double x) { return x; };
    if (count > (bytes.size() - std::min<std::size_t>(bytes.size(), 12)) / 2) return std::nullopt;
    if (count == 1) return [gamma = number(bytes, 12, 2) / 256.0](double x) { return std::pow(x, gamma); };
    return [bytes, count](double x) {
        const double place = x * double(count - 1);
        const auto index = std::min(std::size_t(place), count - 2);
        const double low = number(bytes, 12 + 2 * index, 2), high = number(bytes, 14 + 2 * index, 2);
        return (low + (high - low) * (place - double(index))) / 65535;
    };
}

std::optional<ToneCurve> parametricCurve(std::string_view bytes) {
    constexpr std::array<std::size_t, 5> parameters{1, 3, 4, 5, 7};
    const std::size_t kind = number(bytes, 8, 2);
    if (kind >= parameters.size() || bytes.size() < 12 + 4 * parameters[kind]) return std::nullopt;
    std::array<double, 7> p{};
    for (std::size_t i = 0; i < parameters[kind]; ++i) p[i] = fixed(bytes, 12 + 4 * i);
    const auto [g, a, b, c, d, e, f] = p;
    switch (kind) {
        case 0:
            return [g](double x) { return std::pow(x, g); };
        case 1:
            return [g, a, b](double x) { return x >= -b / a ? std::pow(a * x + b, g) : 0; };
        case 2:
            return [g, a, b, c](double x) { return (x >= -b / a ? std::pow(a * x + b, g) : 0) + c; };
        case 3:
            return [g, a, b, c, d](double x) { return x >= d ? std::pow(a * x + b, g) : c * x; };
        default:
            return [g, a, b, c, d, e, f](double x) { return x >= d ? std::pow(a * x + b, g) + e : c * x + f; };
    }
}

std::optional<ToneCurve> toneCurve(std::string_view bytes) {
    if (bytes.starts_with("curv")) return tableCurve(bytes);
    if (bytes.starts_with("para")) return parametricCurve(bytes);
    return std::nullopt;
}

bool hasSRGBCurve(std::string_view profile, std::string_view signature) {
    const auto curve = toneCurve(tag(profile, signature));
    if (!curve) return false;
    for (int step = 0; step <= 255; ++step) {
        const double encoded = step / 255.0;
        const double light = (*curve)(encoded);
        if (!(std::abs(encodedSRGB(light) - encoded) <= 1.0 / 255)) return false;
    }
    return true;
}

bool hasPrimary(std::string_view profile, std::string_view signature, const std::array<double, 3>& expected) {
    const std::string_view bytes = tag(profile, signature);
    if (!bytes.starts_with("XYZ ") || bytes.size() < 20) return false;
    for (std::size_t i = 0; i < 3; ++i)
        if (std::abs(fixed(bytes, 8 + 4 * i) - expected[i]) > 0.002) return false;
    return true;
}

}  // namespace

std::optional<Space> spaceOf(std::string_view profile) {
    if (profile.size() < headerSize + 4 || profile.substr(36, 4) != "acsp") return std::nullopt;
    const std::string_view space = profile.substr(16, 4);
    if (space == "GRAY") return Space::grey;
    if (space == "RGB ") return Space::rgb;
    if (space == "CMYK") return Space::cmyk;
    return std::nullopt;
}

bool isSRGB(std::string_view profile) {
    const auto space = spaceOf(profile);
    if (!space || !tag(profile, "A2B0").empty()) return false;  // a table overrides primaries and curves
    switch (*space) {
        case Space::grey:
            return hasSRGBCurve(profile, "kTRC");
        case Space::cmyk:
            return false;
        case Space::rgb:
            break;
    }
    // sRGB's primaries as every profile gives them: adapted to the white of the connection space.
    return hasPrimary(profile, "rXYZ", {0.4361, 0.2225, 0.0139}) &&
           hasPrimary(profile, "gXYZ", {0.3851, 0.7169, 0.0971}) &&
           hasPrimary(profile, "bXYZ", {0.1431, 0.0606, 0.7141}) && hasSRGBCurve(profile, "rTRC") &&
           hasSRGBCurve(profile, "gTRC") && hasSRGBCurve(profile, "bTRC");
}

bool needsConversion(std::string_view profile, int channels) {
    const auto space = spaceOf(profile);
    if (!space) return false;
    const int described = *space == Space::grey ? 1 : *space == Space::rgb ? 3 : 4;
    return described == channels && !isSRGB(profile);
}

}  // namespace quorvel::ColorProfile
