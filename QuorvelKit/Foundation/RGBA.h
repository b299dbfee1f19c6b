#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// A colour in sRGB with straight alpha, every channel from 0 to 1.
struct RGBA {
    double r = 0;
    double g = 0;
    double b = 0;
    double a = 1;

    constexpr RGBA() = default;

    /// Quantises every channel to eight bits, so that a colour survives its text form unchanged. Not-a-number becomes
    /// 0.
    constexpr RGBA(double red, double green, double blue, double alpha = 1)
        : r(byteOf(red) / 255.0), g(byteOf(green) / 255.0), b(byteOf(blue) / 255.0), a(byteOf(alpha) / 255.0) {}

    /// From bytes, 0 to 255; what lies outside is capped.
    static constexpr RGBA bytes(int red, int green, int blue, int alpha = 255) {
        return {red / 255.0, green / 255.0, blue / 255.0, alpha / 255.0};
    }

    /// The byte of a channel, halves rounded up: 0 at or below 0 and for not-a-number, 255 from 1 on.
    static constexpr int byteOf(double channel) {
        if (!(channel > 0)) return 0;
        const double scaled = (channel < 1 ? channel : 1) * 255;
        const int whole = static_cast<int>(scaled);
        return scaled - whole < 0.5 ? whole : whole + 1;
    }

    bool operator==(const RGBA&) const = default;

    static const RGBA black;
    static const RGBA white;
    static const RGBA clear;

    /// "#RRGGBB", or "#RRGGBBAA" when alpha is below 1.
    std::string hexString() const;

    /// Reads six or eight hexadecimal digits of either case with an optional "#" in front; blanks and tabs around are
    /// dropped. A sign counts as one of the characters ("+12345" is 0x012345). Anything else gives nothing.
    static std::optional<RGBA> parseHex(std::string_view text);
};

inline constexpr RGBA RGBA::black{0, 0, 0};
inline constexpr RGBA RGBA::white{1, 1, 1};
inline constexpr RGBA RGBA::clear{0, 0, 0, 0};

}  // namespace quorvel
