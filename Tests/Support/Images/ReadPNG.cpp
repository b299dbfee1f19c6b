#include "Support/Images/ReadPNG.h"

#include "Drawing/Cairo.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

namespace quorvel {
namespace {

cairo_status_t takeBytes(void* closure, unsigned char* data, unsigned int length) {
    auto& rest = *static_cast<std::string_view*>(closure);
    if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, rest.data(), length);
    rest.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

Image decodePNG(std::string_view bytes) {
    CairoSurface surface(cairo_image_surface_create_from_png_stream(takeBytes, &bytes));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) throw std::runtime_error("not a readable PNG");
    const int width = cairo_image_surface_get_width(surface.get());
    const int height = cairo_image_surface_get_height(surface.get());
    const cairo_format_t format = cairo_image_surface_get_format(surface.get());
    if (format != CAIRO_FORMAT_RGB24 && format != CAIRO_FORMAT_ARGB32)
        throw std::runtime_error("not a PNG of eight bits");
    const std::uint32_t filled = format == CAIRO_FORMAT_RGB24 ? 0xFF000000u : 0;
    auto pixels = std::make_shared<std::uint32_t[]>(std::size_t(width) * std::size_t(height));
    const unsigned char* source = cairo_image_surface_get_data(surface.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface.get());
    bool opaque = true;
    for (int y = 0; y < height; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(source + y * stride);
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = row[x] | filled;
            opaque = opaque && pixel >> 24 == 255;
            pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)] = pixel;
        }
    }
    return Image(width, height, std::move(pixels), opaque ? Image::Alpha::opaque : Image::Alpha::varying);
}

Image readPNG(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error(file.string() + " can't be opened");
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    return decodePNG(bytes);
}

void writePNG(const Image& image, const std::filesystem::path& file) {
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width(), image.height()));
    unsigned char* data = cairo_image_surface_get_data(surface.get());
    if (!data) throw std::runtime_error("no memory for a picture");
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(data + std::ptrdiff_t(y) * cairo_image_surface_get_stride(surface.get()), image.row(y).data(),
                    std::size_t(image.width()) * 4);
    cairo_surface_mark_dirty(surface.get());
    if (cairo_surface_write_to_png(surface.get(), file.c_str()) != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(file.string() + " can't be written");
}

}  // namespace quorvel
