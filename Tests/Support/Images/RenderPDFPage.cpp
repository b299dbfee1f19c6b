#include "Support/Images/RenderPDFPage.h"

#include "Drawing/Cairo.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <poppler.h>
#include <stdexcept>

namespace quorvel {
namespace {

struct ObjectDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};
using Document = std::unique_ptr<PopplerDocument, ObjectDeleter>;
using Page = std::unique_ptr<PopplerPage, ObjectDeleter>;

Document open(std::string_view bytes) {
    GBytes* shared = g_bytes_new(bytes.data(), bytes.size());
    Document document(poppler_document_new_from_bytes(shared, nullptr, nullptr));
    g_bytes_unref(shared);
    if (!document) throw std::runtime_error("not a readable PDF");
    return document;
}

Page pageOf(const Document& document, int index) {
    Page page(index < poppler_document_get_n_pages(document.get()) ? poppler_document_get_page(document.get(), index)
                                                                   : nullptr);
    if (!page) throw std::runtime_error("the PDF has no page " + std::to_string(index));
    return page;
}

Size sizeOf(const Page& page) {
    Size size;
    poppler_page_get_size(page.get(), &size.width, &size.height);
    return size;
}

}  // namespace

Image renderPDFPage(std::string_view bytes, int index, double dpi) {
    const Document document = open(bytes);
    const Page page = pageOf(document, index);
    const Size size = sizeOf(page);
    const int width = int(std::lround(size.width / 72 * dpi));
    const int height = int(std::lround(size.height / 72 * dpi));
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    CairoContext cairo(cairo_create(surface.get()));
    cairo_set_source_rgb(cairo.get(), 1, 1, 1);
    cairo_paint(cairo.get());
    cairo_scale(cairo.get(), dpi / 72, dpi / 72);
    poppler_page_render(page.get(), cairo.get());
    if (cairo_status(cairo.get()) != CAIRO_STATUS_SUCCESS) throw std::runtime_error("the PDF page can't be drawn");
    cairo_surface_flush(surface.get());
    auto pixels = std::make_shared<std::uint32_t[]>(std::size_t(width) * std::size_t(height));
    for (int y = 0; y < height; ++y)
        std::memcpy(pixels.get() + std::size_t(y) * std::size_t(width),
                    cairo_image_surface_get_data(surface.get()) + y * cairo_image_surface_get_stride(surface.get()),
                    std::size_t(width) * 4);
    return Image(width, height, std::move(pixels), Image::Alpha::opaque);
}

std::vector<Size> pdfPageSizes(std::string_view bytes) {
    const Document document = open(bytes);
    std::vector<Size> sizes;
    for (int i = 0; i < poppler_document_get_n_pages(document.get()); ++i) sizes.push_back(sizeOf(pageOf(document, i)));
    return sizes;
}

std::string pdfPageText(std::string_view bytes, int index) {
    const Document document = open(bytes);
    const Page page = pageOf(document, index);
    char* text = poppler_page_get_text(page.get());
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

}  // namespace quorvel
