#include "Drawing/PDFContext.h"

#include "Drawing/CairoFonts.h"
#include "Drawing/PDFDate.h"
#include "Drawing/PDFResources.h"
#include "Foundation/TextEncoding.h"

#include <cairo-pdf.h>
#include <new>
#include <utility>

namespace quorvel {

namespace {

cairo_status_t appendBytes(void* closure, const unsigned char* data, unsigned int length) {
    try {
        static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::bad_alloc&) {
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

}  // namespace

std::unique_ptr<PDFContext> PDFContext::make(const Info& info) {
    std::unique_ptr<PDFContext> made(new PDFContext);
    made->surface_.reset(cairo_pdf_surface_create_for_stream(appendBytes, &made->bytes_, 1, 1));
    cairo_surface_t* surface = made->surface_.get();
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return nullptr;

    cairo_surface_set_fallback_resolution(surface, 300, 300);
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATOR, info.creator.c_str());
    // Without a date of its own cairo writes the time of making, and no two files would be equal.
    const auto date = PDFDate::fromEnvironment();
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATE_DATE, date ? date->c_str() : nullptr);
    if (!info.title.empty()) {
        const std::string title = TextEncoding::repairedUTF8(info.title);  // anything but UTF-8 would fail the document
        cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_TITLE, title.c_str());
    }
    return made;
}

PDFContext::~PDFContext() {
    // An open page is written even now, and reads the pictures that its context holds.
    const auto held = CairoFonts::hold();
    cairo_surface_finish(surface_.get());
}

DrawingContext& PDFContext::beginPage(const Size& size) {
    if (context_) endPage();
    cairo_pdf_surface_set_size(surface_.get(), size.width, size.height);
    cairo_.reset(cairo_create(surface_.get()));
    context_ = std::make_unique<DrawingContext>(cairo_.get(), DrawingContext::Target::document, size.height);
    return *context_;
}

void PDFContext::endPage() {
    if (!context_) return;
    const auto held = CairoFonts::hold();
    cairo_show_page(cairo_.get());
    failed_ = failed_ || cairo_status(cairo_.get()) != CAIRO_STATUS_SUCCESS;
    cairo_.reset();
    context_.reset();
}

std::optional<std::string> PDFContext::finish() {
    endPage();
    const auto held = CairoFonts::hold();
    cairo_surface_finish(surface_.get());
    failed_ = failed_ || cairo_surface_status(surface_.get()) != CAIRO_STATUS_SUCCESS;
    if (failed_) return {};
    PDFDate::complete(bytes_);
    PDFResources::nameOnce(bytes_);
    return std::move(bytes_);
}

}  // namespace quorvel
