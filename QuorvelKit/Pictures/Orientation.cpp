#include "Pictures/Orientation.h"

#include <cstdint>

namespace quorvel {
namespace {

/// Unsigned numbers of a TIFF block in its byte order; 0 beyond its end.
class TIFFNumbers {
public:
    explicit TIFFNumbers(std::string_view bytes) : bytes_(bytes), bigEndian_(bytes.starts_with("MM")) {}

    std::uint32_t number(std::size_t offset, std::size_t size) const {
        if (offset > bytes_.size() || bytes_.size() - offset < size) return 0;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t at = bigEndian_ ? offset + i : offset + size - 1 - i;
            value = value << 8 | std::uint8_t(bytes_[at]);
        }
        return value;
    }

private:
    std::string_view bytes_;
    bool bigEndian_;
};

}  // namespace

Orientation orientationOf(int number) {
    return number >= 1 && number <= 8 ? Orientation(number) : Orientation::upright;
}

Orientation orientationOfExif(std::string_view tiff) {
    constexpr std::uint32_t orientationTag = 0x0112, shortType = 3;
    if (!tiff.starts_with("II") && !tiff.starts_with("MM")) return Orientation::upright;
    const TIFFNumbers numbers(tiff);
    const std::size_t directory = numbers.number(4, 4);
    const std::uint32_t entries = numbers.number(directory, 2);
    for (std::uint32_t i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + std::size_t(i) * 12;
        if (entry >= tiff.size()) break;
        if (numbers.number(entry, 2) == orientationTag && numbers.number(entry + 2, 2) == shortType)
            return orientationOf(int(numbers.number(entry + 8, 2)));
    }
    return Orientation::upright;
}

UprightPlaces::UprightPlaces(Orientation orientation, int width, int height) {
    const std::ptrdiff_t w = width, h = height;
    switch (orientation) {
        case Orientation::upright:
            start = 0, stepX = 1, stepY = w;
            return;
        case Orientation::mirrored:
            start = w - 1, stepX = -1, stepY = w;
            return;
        case Orientation::turned180:
            start = w * h - 1, stepX = -1, stepY = -w;
            return;
        case Orientation::flipped:
            start = w * (h - 1), stepX = 1, stepY = -w;
            return;
        // From here on a row of the upright picture is `h` pixels long.
        case Orientation::transposed:
            start = 0, stepX = h, stepY = 1;
            return;
        case Orientation::turned90:
            start = h - 1, stepX = h, stepY = -1;
            return;
        case Orientation::transversed:
            start = w * h - 1, stepX = -h, stepY = -1;
            return;
        case Orientation::turned270:
            start = h * (w - 1), stepX = -h, stepY = 1;
            return;
    }
}

}  // namespace quorvel
