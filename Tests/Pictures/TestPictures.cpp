#include "TestPictures.h"

#include "Drawing/Cairo.h"

#include <algorithm>
#include <array>
#include <cairo-pdf.h>
#include <cmath>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vips/vips.h>
#include <zlib.h>

namespace quorvel::TestPictures {
namespace {

struct ObjectDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};
using Picture = std::unique_ptr<VipsImage, ObjectDeleter>;

void check(int failed) {
    if (!failed) return;
    const std::string reason = vips_error_buffer();
    vips_error_clear();
    throw std::runtime_error(reason);
}

Picture pictureOf(const Samples& samples, const Options& options) {
    if (vips_init("tests") != 0) throw std::runtime_error("no encoders");
    std::vector<std::uint8_t> bytes(samples.values.begin(), samples.values.end());
    const void* data = samples.sixteenBits ? static_cast<const void*>(samples.values.data()) : bytes.data();
    const std::size_t size = samples.values.size() * (samples.sixteenBits ? 2 : 1);
    Picture raw(vips_image_new_from_memory_copy(data, size, samples.width, samples.height, samples.bands,
                                                samples.sixteenBits ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR));
    if (!raw) check(1);
    VipsInterpretation space = samples.bands < 3 ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB;
    if (samples.sixteenBits) space = samples.bands < 3 ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_RGB16;
    if (options.inks) space = VIPS_INTERPRETATION_CMYK;
    VipsImage* tagged = nullptr;
    check(vips_copy(raw.get(), &tagged, "interpretation", space, nullptr));
    Picture picture(tagged);
    if (options.orientation != 1) vips_image_set_int(tagged, VIPS_META_ORIENTATION, options.orientation);
    if (!options.profile.empty())
        vips_image_set_blob_copy(tagged, VIPS_META_ICC_NAME, options.profile.data(), options.profile.size());
    return picture;
}

std::string suffixOf(PictureFormat format, const Options& options) {
    std::string suffix;
    switch (format) {
        case PictureFormat::jpeg:
            suffix = ".jpg[Q=95,subsample-mode=off";
            break;
        case PictureFormat::png:
            suffix = ".png[compression=6";
            break;
        case PictureFormat::webp:
            suffix = ".webp[effort=2";
            break;
        case PictureFormat::tiff:
            suffix = ".tif[pyramid=false";
            break;
        case PictureFormat::heif:
            suffix = ".heic[effort=1";
            break;
    }
    if (format == PictureFormat::webp || format == PictureFormat::heif)
        suffix += options.lossless ? ",lossless" : ",Q=90";
    if (options.progressive) suffix += ",interlace";
    if (!options.extra.empty()) suffix += "," + options.extra;
    return suffix + "]";
}

}  // namespace

Samples fourFields(int width, int height) {
    constexpr std::array<std::array<std::uint16_t, 3>, 4> colors{
        {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}};
    Samples samples{width, height, 3, std::vector<std::uint16_t>(std::size_t(width) * std::size_t(height) * 3)};
    auto out = samples.values.begin();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            out = std::ranges::copy(colors[(y >= height / 2 ? 2u : 0u) + (x >= width / 2 ? 1u : 0u)], out).out;
    return samples;
}

Samples plain(int width, int height, std::vector<std::uint16_t> color) {
    Samples samples{width, height, int(color.size()), {}};
    samples.values.resize(std::size_t(width) * std::size_t(height) * color.size());
    for (std::size_t i = 0; i < samples.values.size(); i += color.size())
        std::ranges::copy(color, samples.values.begin() + std::ptrdiff_t(i));
    return samples;
}

Samples waves(int width, int height) {
    Samples samples{width, height, 3, {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int band = 0; band < 3; ++band)
                samples.values.push_back(std::uint16_t(
                    128 + 120 * std::sin(x * 0.11 * (band + 1) + y * y * 0.003 + std::sin(y * 0.7) * band)));
    return samples;
}

std::string encoded(const Samples& samples, PictureFormat format, const Options& options) {
    const Picture picture = pictureOf(samples, options);
    void* bytes = nullptr;
    std::size_t size = 0;
    check(vips_image_write_to_buffer(picture.get(), suffixOf(format, options).c_str(), &bytes, &size, nullptr));
    std::string result(static_cast<const char*>(bytes), size);
    g_free(bytes);
    // The encoder of PNG leaves the orientation out.
    if (format == PictureFormat::png && options.orientation != 1)
        result.insert(result.find("IDAT") - 4, pngChunk("eXIf", exifBlock(options.orientation)));
    return result;
}

std::string pngChunk(const std::string& type, const std::string& data) {
    const std::string content = type + data;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(content.data()), uInt(content.size()));
    return bigEndian(std::uint32_t(data.size())) + content + bigEndian(std::uint32_t(sum));
}

std::string exifBlock(int orientation) {
    return std::string("II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0", 18) + char(orientation) + std::string(7, '\0');
}

std::string bigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += char(value >> shift & 255);
    return bytes;
}

void write(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

std::vector<int> colorAt(const Image& image, int x, int y) {
    const std::uint32_t pixel = image.row(y)[std::size_t(x)];
    const int alpha = int(pixel >> 24);
    std::vector<int> color;
    for (int shift = 16; shift >= 0; shift -= 8) {
        const int channel = int(pixel >> shift & 255);
        color.push_back(alpha == 0 ? 0 : (channel * 255 + alpha / 2) / alpha);
    }
    color.push_back(alpha);
    return color;
}

std::string pdfPage(double width, double height) {
    std::string bytes;
    const auto append = [](void* closure, const unsigned char* data, unsigned int length) {
        static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    };
    const CairoSurface surface(cairo_pdf_surface_create_for_stream(append, &bytes, width, height));
    {
        const CairoContext cairo(cairo_create(surface.get()));
        cairo_set_source_rgb(cairo.get(), 0, 0, 1);
        cairo_rectangle(cairo.get(), 0, height - 20, 20, 20);
        cairo_fill(cairo.get());
    }
    cairo_surface_finish(surface.get());
    return bytes;
}

}  // namespace quorvel::TestPictures
