#include "Drawing/PicturePattern.h"

#include <memory>
#include <new>
#include <string>
#include <utility>

namespace quorvel::PicturePattern {

namespace {

/// Hands a copy of `value` to a function of cairo's that takes a closure with its destroyer.
template <typename Value, typename Attach>
cairo_status_t attach(Value value, Attach attachTo) {
    auto* kept = new (std::nothrow) Value(std::move(value));
    if (!kept) return CAIRO_STATUS_NO_MEMORY;
    const cairo_status_t status = attachTo(kept, [](void* closure) { delete static_cast<Value*>(closure); });
    if (status != CAIRO_STATUS_SUCCESS) delete kept;  // only what is attached gets destroyed by cairo
    return status;
}

cairo_status_t attachBytes(cairo_surface_t* surface, const char* type, std::shared_ptr<const std::string> bytes) {
    return attach(std::move(bytes), [&](auto* kept, cairo_destroy_func_t destroy) {
        return cairo_surface_set_mime_data(surface, type, reinterpret_cast<const unsigned char*>((*kept)->data()),
                                           (*kept)->size(), destroy, kept);
    });
}

cairo_status_t attachId(cairo_surface_t* surface, std::uint64_t id) {
    return attachBytes(surface, CAIRO_MIME_TYPE_UNIQUE_ID, std::make_shared<const std::string>(std::to_string(id)));
}

CairoSurface surfaceOn(const Image& image) {
    // cairo reads the pixels of a source and never writes them.
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels()));
    const cairo_format_t format = image.alpha() == Image::Alpha::opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;
    return CairoSurface(
        cairo_image_surface_create_for_data(bytes, format, image.width(), image.height(), image.width() * 4));
}

cairo_surface_t* lend(cairo_pattern_t*, void* borrowed, cairo_surface_t*, const cairo_rectangle_int_t*) {
    const auto* image = static_cast<const Image*>(borrowed);
    CairoSurface surface = surfaceOn(*image);
    if (attachId(surface.get(), image->id()) != CAIRO_STATUS_SUCCESS) return nullptr;
    return surface.release();
}

void takeBack(cairo_pattern_t*, void*, cairo_surface_t* surface) {
    cairo_surface_destroy(surface);
}

}  // namespace

CairoPattern forBitmap(const Image& image) {
    return CairoPattern(cairo_pattern_create_for_surface(surfaceOn(image).get()));
}

CairoPattern forDocument(const Image* image) {
    // Lends the pixels when they are asked for. Of a surface cairo would make a copy of all pixels, for each page anew.
    const auto content = image->alpha() == Image::Alpha::opaque ? CAIRO_CONTENT_COLOR : CAIRO_CONTENT_COLOR_ALPHA;
    CairoPattern pattern(
        cairo_pattern_create_raster_source(const_cast<Image*>(image), content, image->width(), image->height()));
    cairo_raster_source_pattern_set_acquire(pattern.get(), lend, takeBack);
    return pattern;
}

CairoPattern forDocument(const EncodedPicture& picture) {
    // cairo stores files only for surfaces, and copies the surface's pixels although it never looks at them: so they
    // are of the kind that takes the least memory.
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A1, picture.width, picture.height));
    const auto status = attachBytes(surface.get(), CAIRO_MIME_TYPE_JPEG, picture.jpeg);
    if (status != CAIRO_STATUS_SUCCESS || attachId(surface.get(), picture.id) != CAIRO_STATUS_SUCCESS) surface.reset();
    return CairoPattern(cairo_pattern_create_for_surface(surface.get()));
}

}  // namespace quorvel::PicturePattern
