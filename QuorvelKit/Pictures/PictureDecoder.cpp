#include "Pictures/PictureDecoder.h"

#include "Pictures/ColorProfile.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>
#include <vips/vips.h>

namespace quorvel::PictureDecoder {
namespace {

struct ObjectDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};
using Picture = std::unique_ptr<VipsImage, ObjectDeleter>;
using Region = std::unique_ptr<VipsRegion, ObjectDeleter>;

/// Frees what the library keeps for a thread when the thread ends.
struct ThreadEnd {
    ~ThreadEnd() { vips_thread_shutdown(); }
};

void discardLog(const char*, GLogLevelFlags, const char*, void*) {}

bool startLibrary() {
    if (vips_init("quorvel") != 0) return false;
    vips_concurrency_set(1);  // cards are drawn on all cores already
    vips_cache_set_max(0);    // operations on memory blocks must never be found again by their address
    g_log_set_handler("VIPS", GLogLevelFlags(G_LOG_LEVEL_MASK | G_LOG_FLAG_FATAL | G_LOG_FLAG_RECURSION), discardLog,
                      nullptr);
    vips_operation_block_set("VipsForeignLoad", TRUE);
    for (const char* hardened : {"VipsForeignLoadJpeg", "VipsForeignLoadPng", "VipsForeignLoadWebp",
                                 "VipsForeignLoadTiff", "VipsForeignLoadHeif"})
        vips_operation_block_set(hardened, FALSE);
    vips_block_untrusted_set(TRUE);
    return true;
}

bool enterLibrary() {
    static const bool started = startLibrary();
    static thread_local const ThreadEnd end;
    return started;
}

/// The picture as its loader opens it: the header is read, the pixels are not. A JPEG can be reduced on the way by 2, 4
/// or 8, which costs less than decoding it whole.
Picture open(std::string_view bytes, PictureFormat format, int reduction = 1) {
    void* data = const_cast<char*>(bytes.data());  // never written to
    VipsImage* picture = nullptr;
    const auto access = VIPS_ACCESS_SEQUENTIAL;
    const auto failOn = VIPS_FAIL_ON_ERROR;
    int failed = 0;
    switch (format) {
        case PictureFormat::jpeg:
            failed = vips_jpegload_buffer(data, bytes.size(), &picture, "access", access, "fail_on", failOn, "shrink",
                                          reduction, nullptr);
            break;
        case PictureFormat::png:
            failed = vips_pngload_buffer(data, bytes.size(), &picture, "access", access, "fail_on", failOn, nullptr);
            break;
        case PictureFormat::webp:
            failed = vips_webpload_buffer(data, bytes.size(), &picture, "access", access, "fail_on", failOn, nullptr);
            break;
        case PictureFormat::tiff:
            failed = vips_tiffload_buffer(data, bytes.size(), &picture, "access", access, "fail_on", failOn, nullptr);
            break;
        case PictureFormat::heif:
            failed = vips_heifload_buffer(data, bytes.size(), &picture, "access", access, "fail_on", failOn, nullptr);
            break;
    }
    return Picture(failed ? nullptr : picture);
}

std::string_view profileOf(VipsImage* picture) {
    const void* data = nullptr;
    std::size_t size = 0;
    if (!vips_image_get_typeof(picture, VIPS_META_ICC_NAME) ||
        vips_image_get_blob(picture, VIPS_META_ICC_NAME, &data, &size) != 0)
        return {};
    return {static_cast<const char*>(data), size};
}

/// In bytes of sRGB or of grey with sRGB's tone curve, alpha kept.
Picture inSRGB(const Picture& picture) {
    VipsImage* result = nullptr;
    const VipsInterpretation space = vips_image_guess_interpretation(picture.get());
    const bool isBytes = vips_image_get_format(picture.get()) == VIPS_FORMAT_UCHAR;
    const int channels = vips_image_get_bands(picture.get()) - (vips_image_hasalpha(picture.get()) ? 1 : 0);
    if (ColorProfile::needsConversion(profileOf(picture.get()), channels)) {
        const int failed = vips_icc_transform(picture.get(), &result, "srgb", "embedded", TRUE, "intent",
                                              VIPS_INTENT_RELATIVE, "black_point_compensation", TRUE, nullptr);
        if (failed == 0) return Picture(result);  // a broken profile is no reason to miss the picture
    }
    if (isBytes && (space == VIPS_INTERPRETATION_sRGB || space == VIPS_INTERPRETATION_B_W)) {
        g_object_ref(picture.get());
        return Picture(picture.get());
    }
    if (!vips_colourspace_issupported(picture.get())) return nullptr;
    return Picture(vips_colourspace(picture.get(), &result, VIPS_INTERPRETATION_sRGB, nullptr) == 0 ? result : nullptr);
}

/// Bytes in, bytes out, rounded.
Picture premultiplied(const Picture& picture) {
    VipsImage* exact = nullptr;
    if (vips_premultiply(picture.get(), &exact, nullptr) != 0) return nullptr;
    const Picture owned(exact);
    VipsImage* result = nullptr;
    return Picture(vips_linear1(exact, &result, 1.0, 0.5, "uchar", TRUE, nullptr) == 0 ? result : nullptr);
}

Picture reduced(const Picture& picture, PictureSize size) {
    VipsImage* result = nullptr;
    const double scaleX = double(size.width) / vips_image_get_width(picture.get());
    const double scaleY = double(size.height) / vips_image_get_height(picture.get());
    const int failed = vips_resize(picture.get(), &result, scaleX, "vscale", scaleY, nullptr);
    return Picture(failed ? nullptr : result);
}

PictureSize sizeOf(const Picture& picture) {
    return {vips_image_get_width(picture.get()), vips_image_get_height(picture.get())};
}

/// The picture in its final colours and size. `isPremultiplied` is set when its colours are multiplied by alpha
/// already.
Picture prepared(const Picture& source, PictureSize size, bool& isPremultiplied) {
    isPremultiplied = false;
    if (sizeOf(source) == size) return inSRGB(source);
    if (!vips_image_hasalpha(source.get())) {
        // Reducing first leaves fewer pixels to convert.
        const Picture small = reduced(source, size);
        return small ? inSRGB(small) : nullptr;
    }
    // The colour below full transparency is arbitrary and must not bleed into its neighbours.
    isPremultiplied = true;
    const Picture colored = inSRGB(source);
    const Picture multiplied = colored ? premultiplied(colored) : nullptr;
    return multiplied ? reduced(multiplied, size) : nullptr;
}

constexpr std::uint32_t multiply(std::uint32_t channel, std::uint32_t alpha) {
    const std::uint32_t product = channel * alpha + 128;
    return (product + (product >> 8)) >> 8;  // product / 255, rounded
}

/// One row of bytes in 1 to 4 bands (and more, ignored) as premultiplied pixels. Answers the least alpha.
std::uint32_t convertRow(const std::uint8_t* in, int bands, int width, bool isPremultiplied, std::uint32_t* out) {
    const int colors = bands >= 3 ? 3 : 1;
    const int green = colors == 3 ? 1 : 0, blue = colors == 3 ? 2 : 0;
    if (bands == colors) {
        for (int x = 0; x < width; ++x, in += bands)
            out[x] = 0xFF000000u | std::uint32_t(in[0]) << 16 | std::uint32_t(in[green]) << 8 | in[blue];
        return 255;
    }
    std::uint32_t least = 255;
    for (int x = 0; x < width; ++x, in += bands) {
        const std::uint32_t alpha = in[colors];
        least = std::min(least, alpha);
        const auto channel = [&](int index) {
            // Rounding while reducing can lift a channel above its alpha.
            return isPremultiplied ? std::min<std::uint32_t>(in[index], alpha) : multiply(in[index], alpha);
        };
        out[x] = alpha << 24 | channel(0) << 16 | channel(green) << 8 | channel(blue);
    }
    return least;
}

/// Pulls the picture through its pipeline strip by strip on the calling thread, straight into the pixels of the image.
std::optional<Image> uprightImage(const Picture& picture, bool isPremultiplied, Orientation orientation) {
    const auto [width, height] = sizeOf(picture);
    const auto [uprightWidth, uprightHeight] =
        swapsSides(orientation) ? PictureSize{height, width} : PictureSize{width, height};
    auto pixels = allocatePixels(uprightWidth, uprightHeight);
    const Region region(vips_region_new(picture.get()));
    if (!pixels || !region) return std::nullopt;
    const UprightPlaces places(orientation, width, height);
    std::vector<std::uint32_t> row(orientation == Orientation::upright ? 0 : std::size_t(width));
    std::uint32_t leastAlpha = 255;
    constexpr int stripHeight = 16;
    for (int top = 0; top < height; top += stripHeight) {
        const VipsRect strip{0, top, width, std::min(stripHeight, height - top)};
        if (vips_region_prepare(region.get(), &strip) != 0) return std::nullopt;
        for (int y = top; y < top + strip.height; ++y) {
            const std::uint8_t* in = VIPS_REGION_ADDR(region.get(), 0, y);
            std::uint32_t* out = pixels.get() + places.start + y * places.stepY;
            std::uint32_t* converted = row.empty() ? out : row.data();
            leastAlpha = std::min(
                leastAlpha, convertRow(in, vips_image_get_bands(picture.get()), width, isPremultiplied, converted));
            for (std::size_t x = 0; x < row.size(); ++x) out[std::ptrdiff_t(x) * places.stepX] = row[x];
        }
    }
    return Image(uprightWidth, uprightHeight, std::move(pixels),
                 leastAlpha == 255 ? Image::Alpha::opaque : Image::Alpha::varying);
}

/// The largest reduction by 2, 4 or 8 that leaves a picture no smaller than `size`.
int jpegReduction(PictureSize stored, PictureSize size) {
    int reduction = 8;
    while (reduction > 1 && (stored.width / reduction < size.width || stored.height / reduction < size.height))
        reduction /= 2;
    return reduction;
}

}  // namespace

std::optional<Header> header(std::string_view bytes, PictureFormat format) {
    if (!enterLibrary()) return std::nullopt;
    const Picture picture = open(bytes, format);
    vips_error_clear();
    if (!picture) return std::nullopt;
    // The loader of HEIC turns pictures upright itself and leaves the EXIF tag as it was.
    const Orientation orientation =
        format == PictureFormat::heif ? Orientation::upright : orientationOf(vips_image_get_orientation(picture.get()));
    return Header{sizeOf(picture), orientation};
}

std::optional<Image> decode(std::string_view bytes, PictureFormat format, const Header& header, PictureSize size) {
    if (!enterLibrary()) return std::nullopt;
    const int reduction = format == PictureFormat::jpeg ? jpegReduction(header.stored, size) : 1;
    const Picture source = open(bytes, format, reduction);
    bool isPremultiplied = false;
    const Picture picture = source ? prepared(source, size, isPremultiplied) : nullptr;
    std::optional<Image> image;
    if (picture && sizeOf(picture) == size && vips_image_get_format(picture.get()) == VIPS_FORMAT_UCHAR)
        image = uprightImage(picture, isPremultiplied, header.orientation);
    vips_error_clear();
    return image;
}

}  // namespace quorvel::PictureDecoder
