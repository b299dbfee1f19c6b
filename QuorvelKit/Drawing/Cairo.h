#pragma once

#include <cairo.h>
#include <memory>

namespace quorvel {

/// Owning handles for cairo's counted objects.
struct CairoDeleter {
    void operator()(cairo_t* p) const { cairo_destroy(p); }
    void operator()(cairo_surface_t* p) const { cairo_surface_destroy(p); }
    void operator()(cairo_pattern_t* p) const { cairo_pattern_destroy(p); }
    void operator()(cairo_font_options_t* p) const { cairo_font_options_destroy(p); }
};

using CairoContext = std::unique_ptr<cairo_t, CairoDeleter>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoDeleter>;
using CairoFontOptions = std::unique_ptr<cairo_font_options_t, CairoDeleter>;

/// Saves a context's state and restores it at the end of the block.
class CairoSave {
public:
    explicit CairoSave(cairo_t* context) : context_(context) { cairo_save(context_); }
    ~CairoSave() { cairo_restore(context_); }
    CairoSave(const CairoSave&) = delete;
    CairoSave& operator=(const CairoSave&) = delete;

private:
    cairo_t* context_;
};

}  // namespace quorvel
