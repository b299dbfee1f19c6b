#include "Pictures/PDFReader.h"

#include "Drawing/Cairo.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>
#include <poppler.h>

namespace quorvel::PDFReader {
namespace {

struct ObjectDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};
using Document = std::unique_ptr<PopplerDocument, ObjectDeleter>;
using Page = std::unique_ptr<PopplerPage, ObjectDeleter>;

/// The library keeps fonts and settings that all documents share.
std::mutex libraryLock;

Document open(std::string_view bytes) {
    GBytes* borrowed = g_bytes_new_static(bytes.data(), bytes.size());
    Document document(poppler_document_new_from_bytes(borrowed, nullptr, nullptr));
    g_bytes_unref(borrowed);
    return document;
}

/// A page, its scale to pixels, and its size in them.
struct ScaledPage {
    Document document;
    Page page;
    double scale = 0;
    PictureSize size;
};

std::optional<ScaledPage> scaledFirstPage(std::string_view bytes, int longestSide) {
    ScaledPage result;
    result.document = open(bytes);
    if (!result.document || poppler_document_get_n_pages(result.document.get()) < 1) return std::nullopt;
    result.page.reset(poppler_document_get_page(result.document.get(), 0));
    if (!result.page) return std::nullopt;
    double width = 0, height = 0;  // of the crop box, turned as the page is
    poppler_page_get_size(result.page.get(), &width, &height);
    if (!(width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height))) return std::nullopt;
    result.scale = longestSide / std::max(width, height);
    // Truncated, but a side that is whole but for rounding stays whole.
    const auto pixels = [&](double side) { return int(side * result.scale + 1e-9); };
    result.size = {pixels(width), pixels(height)};
    if (result.size.width < 1 || result.size.height < 1) return std::nullopt;
    return result;
}

}  // namespace

std::optional<Image> firstPage(std::string_view bytes, int longestSide) {
    const std::lock_guard lock(libraryLock);
    const auto page = scaledFirstPage(bytes, longestSide);
    if (!page) return std::nullopt;
    const auto [width, height] = page->size;
    auto pixels = allocatePixels(width, height);
    if (!pixels) return std::nullopt;
    const CairoSurface surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.get()),
                                                                   CAIRO_FORMAT_ARGB32, width, height, width * 4));
    const CairoContext cairo(cairo_create(surface.get()));
    cairo_scale(cairo.get(), page->scale, page->scale);
    poppler_page_render(page->page.get(), cairo.get());
    cairo_surface_flush(surface.get());
    cairo_surface_finish(surface.get());
    const bool isOpaque = std::all_of(pixels.get(), pixels.get() + std::size_t(width) * std::size_t(height),
                                      [](std::uint32_t pixel) { return pixel >> 24 == 255; });
    return Image(width, height, std::move(pixels), isOpaque ? Image::Alpha::opaque : Image::Alpha::varying);
}

std::optional<PictureSize> firstPageSize(std::string_view bytes, int longestSide) {
    const std::lock_guard lock(libraryLock);
    const auto page = scaledFirstPage(bytes, longestSide);
    return page ? std::optional(page->size) : std::nullopt;
}

int pageCount(std::string_view bytes) {
    const std::lock_guard lock(libraryLock);
    const Document document = open(bytes);
    return document ? std::max(0, poppler_document_get_n_pages(document.get())) : 0;
}

}  // namespace quorvel::PDFReader
