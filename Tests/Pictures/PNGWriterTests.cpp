#include "Drawing/BitmapContext.h"
#include "Drawing/Cairo.h"
#include "Pictures/IconSet.h"
#include "Pictures/PNGWriter.h"
#include "Pictures/PictureReader.h"
#include "Support/Images/ImageDifference.h"
#include "Support/Images/ReadPNG.h"
#include "Support/TemporaryFolder.h"
#include "TestPictures.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <zlib.h>

namespace quorvel {
namespace {

using namespace std::string_view_literals;

Image imageOf(int width, int height, const std::function<std::uint32_t(int, int)>& pixel,
              Image::Alpha alpha = Image::Alpha::varying) {
    auto pixels = allocatePixels(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)] = pixel(x, y);
    return Image(width, height, std::move(pixels), alpha);
}

std::uint32_t premultiplied(std::uint32_t alpha, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    const auto by = [&](std::uint32_t channel) { return (channel * alpha + 127) / 255; };
    return alpha << 24 | by(red) << 16 | by(green) << 8 | by(blue);
}

struct Chunk {
    std::string type;
    std::string data;
    bool operator==(const Chunk&) const = default;
};

std::uint32_t numberAt(std::string_view bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | std::uint8_t(bytes.at(offset + i));
    return value;
}

/// The chunks of a file, their checksums checked.
std::vector<Chunk> chunksOf(const std::string& file) {
    EXPECT_TRUE(file.starts_with("\x89PNG\r\n\x1A\n"));
    std::vector<Chunk> chunks;
    for (std::size_t offset = 8; offset < file.size();) {
        const std::size_t length = numberAt(file, offset);
        chunks.push_back({file.substr(offset + 4, 4), file.substr(offset + 8, length)});
        const auto* start = reinterpret_cast<const Bytef*>(file.data() + offset + 4);
        EXPECT_EQ(numberAt(file, offset + 8 + length), crc32(0, start, uInt(length + 4)));
        offset += length + 12;
    }
    return chunks;
}

int colorTypeOf(const std::string& file) {
    return file.at(25);
}

TEST(PNGWriter, writesTheChunksInOrderWithSizeAndResolution) {
    const auto chunks = chunksOf(*PNGWriter::encode(imageOf(3, 2, [](int, int) { return 0xFF102030u; }), 300));
    ASSERT_EQ(chunks.size(), 5u);
    EXPECT_EQ(chunks[0], (Chunk{"IHDR", std::string("\0\0\0\3\0\0\0\2\10\2\0\0\0"sv)}));
    EXPECT_EQ(chunks[1], (Chunk{"sRGB", std::string("\0"sv)}));
    EXPECT_EQ(chunks[2], (Chunk{"pHYs", std::string("\0\0\x2E\x23\0\0\x2E\x23\1"sv)}));  // 11811 a metre
    EXPECT_EQ(chunks[3].type, "IDAT");
    EXPECT_EQ(chunks[4], (Chunk{"IEND", ""}));
}

TEST(PNGWriter, writesEveryUsualResolutionToTheNearestPixelAMetre) {
    const Image dot = imageOf(1, 1, [](int, int) { return 0xFF000000u; });
    for (const auto& [dpi, perMetre] : {std::pair{72.0, 2835u}, {96.0, 3780u}, {150.0, 5906u}, {600.0, 23622u}})
        EXPECT_EQ(numberAt(chunksOf(*PNGWriter::encode(dot, dpi))[2].data, 0), perMetre) << dpi;
}

TEST(PNGWriter, leavesOutAResolutionThatIsNone) {
    const Image dot = imageOf(1, 1, [](int, int) { return 0xFF000000u; });
    for (const double dpi :
         {0.0, -300.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e12}) {
        const auto chunks = chunksOf(*PNGWriter::encode(dot, dpi));
        ASSERT_EQ(chunks.size(), 4u) << dpi;
        EXPECT_EQ(chunks[2].type, "IDAT");
    }
}

TEST(PNGWriter, choosesTheLeastColourTypeThatHoldsTheImage) {
    constexpr int grey = 0, rgb = 2, rgba = 6;
    struct Case {
        const char* what;
        std::function<std::uint32_t(int, int)> pixel;
        int colorType;
    };
    const Case cases[] = {
        {"grey", [](int x, int y) { return 0xFF000000u | std::uint32_t(x * 13 + y) * 0x010101u; }, grey},
        {"colour", [](int x, int y) { return 0xFF000000u | std::uint32_t(x * 13 + y) * 0x010203u; }, rgb},
        {"one coloured pixel", [](int x, int y) { return x == 6 && y == 4 ? 0xFF000001u : 0xFF000000u; }, rgb},
        {"one clear pixel", [](int x, int y) { return x == 6 && y == 4 ? 0u : 0xFFFFFFFFu; }, rgba},
        {"grey and half clear", [](int, int) { return 0x80404040u; }, rgba},
    };
    for (const Case& each : cases) {
        const Image image = imageOf(7, 5, each.pixel);
        const auto file = PNGWriter::encode(image, 300);
        EXPECT_EQ(colorTypeOf(*file), each.colorType) << each.what;
        EXPECT_EQ(differenceBetween(image, decodePNG(*file)).maximum, 0) << each.what;
    }
}

TEST(PNGWriter, keepsEveryPremultipliedColour) {
    const Image image = imageOf(256, 256, [](int alpha, int channel) {
        const auto a = std::uint32_t(alpha), c = std::min(std::uint32_t(channel), a);
        return a << 24 | c << 16 | (a - c) << 8 | c / 2;
    });
    const auto file = PNGWriter::encode(image, 300);
    EXPECT_EQ(differenceBetween(image, decodePNG(*file)).maximum, 0);

    const TemporaryFolder folder;
    TestPictures::write(folder / "a.png", *file);
    EXPECT_EQ(differenceBetween(image, *PictureReader::read(folder / "a.png")).maximum, 0);
}

TEST(PNGWriter, givesBackRandomImagesOfEverySize) {
    std::mt19937 random(11);
    for (const int width : {1, 2, 3, 5, 15, 16, 17, 21, 22, 63, 64, 65, 300})
        for (const int height : {1, 2, 7}) {
            const bool isOpaque = random() % 2;
            const bool isSmooth = random() % 2;
            const Image image = imageOf(width, height, [&](int x, int y) {
                const std::uint32_t value = isSmooth ? std::uint32_t(x * 3 + y * 5) : std::uint32_t(random());
                return premultiplied(isOpaque ? 255 : random() % 256, value & 255, value / 2 & 255, value / 7 & 255);
            });
            EXPECT_EQ(differenceBetween(image, decodePNG(*PNGWriter::encode(image, 300))).maximum, 0)
                << width << " × " << height;
        }
}

TEST(PNGWriter, givesTheSameBytesForTheSamePixels) {
    const auto pixel = [](int x, int y) { return premultiplied(200, std::uint32_t(x * y) & 255, 7, 9); };
    EXPECT_EQ(*PNGWriter::encode(imageOf(90, 70, pixel), 300), *PNGWriter::encode(imageOf(90, 70, pixel), 300));
}

std::size_t sizeByCairo(const Image& image) {
    auto* data = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels()));
    const CairoSurface surface(cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, image.width(),
                                                                   image.height(), image.width() * 4));
    std::size_t size = 0;
    const auto count = [](void* closure, const unsigned char*, unsigned int length) {
        *static_cast<std::size_t*>(closure) += length;
        return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_write_to_png_stream(surface.get(), count, &size);
    return size;
}

TEST(PNGWriter, makesFilesNoLargerThanTheUsualEncoder) {
    auto flat = BitmapContext::make(300, 420);
    flat->context().fill(Rect{0, 0, 300, 420}, RGBA::bytes(250, 246, 235));
    for (std::size_t i = 0; i < 20; ++i)
        IconSet::draw(IconSet::names[i], IconSet::color(IconSet::names[i]), flat->context(),
                      {10.0 + 70.0 * double(i % 4), 10.0 + 80.0 * double(i / 4), 60, 60});
    std::mt19937 random(5);
    const auto photograph = [&](int x, int y) {
        const double wave = 120 + 60 * std::sin(x * 0.03) + 50 * std::cos(y * 0.02 + x * 0.01);
        return premultiplied(255, std::uint32_t(wave + random() % 5), std::uint32_t(wave * 0.8 + random() % 5),
                             std::uint32_t(200 - wave * 0.5 + random() % 5));
    };
    for (const Image& image : {std::move(*flat).finish(), imageOf(300, 420, photograph)})
        EXPECT_LE(double(PNGWriter::encode(image, 300)->size()), 1.05 * double(sizeByCairo(image)));
}

TEST(PNGWriter, writesAWideDeckSheet) {
    const Image sheet = imageOf(10'000, 40, [](int x, int y) { return 0xFF000000u | std::uint32_t(x * y); });
    EXPECT_EQ(differenceBetween(sheet, decodePNG(*PNGWriter::encode(sheet, 300))).maximum, 0);
}

}  // namespace
}  // namespace quorvel
