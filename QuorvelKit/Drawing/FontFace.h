#pragma once

#include <hb.h>
#include <memory>
#include <pango/pango.h>

namespace quorvel {

/// A font's file in its own units, whatever the size of the font, to be read by the font's thread.
///
/// The files are read by HarfBuzz: FreeType's faces are shared by all threads that draw with cairo, and outside of
/// cairo's own calls nothing guards them.
class FontFace {
public:
    explicit FontFace(PangoFont* font);

    hb_font_t* get() const { return font_.get(); }
    unsigned unitsPerEm() const { return hb_face_get_upem(hb_font_get_face(font_.get())); }

    /// Whether the glyphs are pictures and not outlines.
    bool hasPictures() const;

private:
    struct Destroy {
        void operator()(hb_font_t* font) const { hb_font_destroy(font); }
    };
    std::unique_ptr<hb_font_t, Destroy> font_;
};

/// The size that a font is made for.
double sizeOf(PangoFont* font);

/// What is kept with a font and released with it; used by the font's thread alone. Made by `make(font)` when first
/// asked.
template <typename T, typename Make>
T& keptWith(PangoFont* font, const char* name, Make make) {
    static const GQuark key = g_quark_from_static_string(name);
    if (auto* known = static_cast<T*>(g_object_get_qdata(G_OBJECT(font), key))) return *known;
    auto made = std::make_unique<T>(make(font));
    g_object_set_qdata_full(G_OBJECT(font), key, made.get(), [](gpointer kept) { delete static_cast<T*>(kept); });
    return *made.release();
}

}  // namespace quorvel
