#include "Drawing/BitmapContext.h"

#include <algorithm>
#include <utility>

namespace quorvel {

namespace {

constexpr int longestSide = 32767;  // cairo's limit for a bitmap

/// A look over all pixels of a row without leaving early, so that it runs over many at once.
bool opaqueRow(std::span<const std::uint32_t> row) {
    std::uint32_t all = 0xFFFFFFFF;
    for (const std::uint32_t pixel : row) all &= pixel;
    return all >= 0xFF000000;
}

}  // namespace

std::optional<BitmapContext> BitmapContext::make(int width, int height) {
    if (std::max(width, height) > longestSide) return {};
    BitmapContext made;
    made.width_ = width;
    made.height_ = height;
    made.pixels_ = allocatePixels(width, height);
    if (!made.pixels_) return {};
    made.surface_.reset(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(made.pixels_.get()),
                                                            CAIRO_FORMAT_ARGB32, width, height, width * 4));
    made.cairo_.reset(cairo_create(made.surface_.get()));
    if (cairo_status(made.cairo_.get()) != CAIRO_STATUS_SUCCESS) return {};
    made.context_ = std::make_unique<DrawingContext>(made.cairo_.get(), DrawingContext::Target::bitmap, height);
    return made;
}

Image BitmapContext::finish() && {
    context_.reset();
    cairo_.reset();
    cairo_surface_finish(surface_.get());
    surface_.reset();

    bool opaque = true;
    for (int y = 0; opaque && y < height_; ++y) {
        opaque = opaqueRow({pixels_.get() + std::size_t(y) * std::size_t(width_), std::size_t(width_)});
    }
    return Image(width_, height_, std::move(pixels_), opaque ? Image::Alpha::opaque : Image::Alpha::varying);
}

}  // namespace quorvel
