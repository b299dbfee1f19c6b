#include "Pictures/PNGWriter.h"

#include "Pictures/PNGFilter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <libdeflate.h>
#include <limits>
#include <memory>
#include <new>
#include <span>

namespace quorvel::PNGWriter {
namespace {

enum class Color : std::uint8_t { grey = 0, rgb = 2, rgba = 6 };

constexpr std::size_t bytesPerPixel(Color color) {
    return color == Color::grey ? 1 : color == Color::rgb ? 3 : 4;
}

/// Measured on cards with photographs: 2 makes files up to a twentieth larger, 4 takes a tenth longer and gains
/// nothing.
constexpr int compressionLevel = 3;

constexpr std::size_t longestChunk = 0x7FFF'FFFF;

// A pixel is 0xAARRGGBB.
constexpr std::uint32_t alphaOf(std::uint32_t pixel) {
    return pixel >> 24;
}
constexpr std::uint8_t redOf(std::uint32_t pixel) {
    return std::uint8_t(pixel >> 16);
}
constexpr std::uint8_t greenOf(std::uint32_t pixel) {
    return std::uint8_t(pixel >> 8);
}
constexpr std::uint8_t blueOf(std::uint32_t pixel) {
    return std::uint8_t(pixel);
}

Color colorOf(const Image& image) {
    // Bits that stay 0 as long as every pixel is opaque (in the high byte) and grey (below).
    std::uint32_t notOpaque = 0, notGrey = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (const std::uint32_t pixel : image.row(y)) {
            notOpaque |= ~pixel;
            notGrey |= (pixel ^ pixel >> 8) & 0xFFFF;
        }
        if (notOpaque >> 24) return Color::rgba;
    }
    return notGrey ? Color::rgb : Color::grey;
}

/// Straight channels by alpha and premultiplied channel, rounded to nearest. Multiplying by the alpha again, rounded to
/// nearest, gives back the premultiplied channel.
struct StraightTable {
    std::array<std::array<std::uint8_t, 256>, 256> of;

    StraightTable() {
        of[0].fill(0);
        for (unsigned alpha = 1; alpha < 256; ++alpha)
            for (unsigned value = 0; value < 256; ++value)
                of[alpha][value] = std::uint8_t(std::min(255u, (value * 255 + alpha / 2) / alpha));
    }
};

void packRow(std::span<const std::uint32_t> pixels, Color color, std::uint8_t* __restrict out) {
    switch (color) {
        case Color::grey:
            for (std::size_t i = 0; i < pixels.size(); ++i) out[i] = blueOf(pixels[i]);
            return;
        case Color::rgb:
            for (const std::uint32_t pixel : pixels) {
                out[0] = redOf(pixel);
                out[1] = greenOf(pixel);
                out[2] = blueOf(pixel);
                out += 3;
            }
            return;
        case Color::rgba: {
            static const StraightTable straight;
            for (const std::uint32_t pixel : pixels) {
                const auto& row = straight.of[alphaOf(pixel)];
                out[0] = row[redOf(pixel)];
                out[1] = row[greenOf(pixel)];
                out[2] = row[blueOf(pixel)];
                out[3] = std::uint8_t(alphaOf(pixel));
                out += 4;
            }
            return;
        }
    }
}

using Bytes = std::unique_ptr<std::uint8_t[]>;

/// The compressed rows, in a buffer of which only the front is used (and so only the front is real memory).
struct Compressed {
    Bytes bytes;
    std::size_t size = 0;
};

std::optional<Compressed> compress(const Image& image, Color color) {
    const std::size_t length = std::size_t(image.width()) * bytesPerPixel(color);
    const std::size_t total = (length + 1) * std::size_t(image.height());
    const auto filtered = std::make_unique_for_overwrite<std::uint8_t[]>(total);
    PNGFilter filter(length, bytesPerPixel(color));
    std::uint8_t* out = filtered.get();
    for (int y = 0; y < image.height(); ++y, out += length + 1) {
        packRow(image.row(y), color, filter.row());
        filter.filter(out);
    }
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(compressionLevel), libdeflate_free_compressor);
    if (!compressor) return std::nullopt;
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), total);
    Compressed result{std::make_unique_for_overwrite<std::uint8_t[]>(bound)};
    result.size = libdeflate_zlib_compress(compressor.get(), filtered.get(), total, result.bytes.get(), bound);
    if (result.size == 0) return std::nullopt;
    return result;
}

void appendNumber(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out += char(value >> shift & 255);
}

void appendChunk(std::string& out, std::string_view type, std::string_view data) {
    appendNumber(out, std::uint32_t(data.size()));
    const std::size_t start = out.size();
    out += type;
    out += data;
    appendNumber(out, libdeflate_crc32(0, out.data() + start, out.size() - start));
}

std::string headerData(const Image& image, Color color) {
    std::string data;
    appendNumber(data, std::uint32_t(image.width()));
    appendNumber(data, std::uint32_t(image.height()));
    data += {char(8), char(color), 0, 0, 0};
    return data;
}

/// Pixels a metre in both directions, or nothing when the resolution can't be written.
std::optional<std::string> resolutionData(double dpi) {
    const double perMetre = std::round(dpi / 0.0254);
    if (!(perMetre >= 1 && perMetre <= double(longestChunk))) return std::nullopt;
    std::string data;
    appendNumber(data, std::uint32_t(perMetre));
    appendNumber(data, std::uint32_t(perMetre));
    data += char(1);
    return data;
}

}  // namespace

std::optional<std::string> encode(const Image& image, double dpi) try {
    const Color color = colorOf(image);
    const std::optional<Compressed> compressed = compress(image, color);
    if (!compressed) return std::nullopt;

    std::string file;
    file.reserve(compressed->size + 128 + compressed->size / longestChunk * 12);
    file += "\x89PNG\r\n\x1A\n";
    appendChunk(file, "IHDR", headerData(image, color));
    appendChunk(file, "sRGB", std::string_view("\0", 1));
    if (const auto resolution = resolutionData(dpi)) appendChunk(file, "pHYs", *resolution);
    std::string_view rest(reinterpret_cast<const char*>(compressed->bytes.get()), compressed->size);
    while (!rest.empty()) {
        appendChunk(file, "IDAT", rest.substr(0, longestChunk));
        rest.remove_prefix(std::min(rest.size(), longestChunk));
    }
    appendChunk(file, "IEND", {});
    return file;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

}  // namespace quorvel::PNGWriter
