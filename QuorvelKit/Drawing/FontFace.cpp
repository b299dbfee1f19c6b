#include "Drawing/FontFace.h"

#include <hb-ot.h>

namespace quorvel {

FontFace::FontFace(PangoFont* font) {
    hb_font_t* sized = pango_font_get_hb_font(font);
    font_.reset(hb_font_create(hb_font_get_face(sized)));
    unsigned axes = 0;
    const int* coordinates = hb_font_get_var_coords_normalized(sized, &axes);
    hb_font_set_var_coords_normalized(font_.get(), coordinates, axes);
}

bool FontFace::hasPictures() const {
    return hb_ot_color_has_png(hb_font_get_face(font_.get()));
}

double sizeOf(PangoFont* font) {
    int x = 0, y = 0;
    hb_font_get_scale(pango_font_get_hb_font(font), &x, &y);
    return double(x) / PANGO_SCALE;
}

}  // namespace quorvel
