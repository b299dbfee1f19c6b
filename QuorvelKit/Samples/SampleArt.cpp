#include "Samples/SampleArt.h"

#include "Drawing/BitmapContext.h"
#include "Drawing/ShadowBlur.h"
#include "Foundation/Text.h"
#include "Pictures/IconSet.h"
#include "Samples/SampleTemplates.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorvel::SampleArt {
namespace {

constexpr double shadowSigma = 9;
constexpr double shadowDrop = 8;
const double shadowOpacity = RGBA(0, 0, 0, 0.35).a;

/// Spreads the titles over 65,536 landscapes.
std::uint32_t seedOf(std::string_view title) {
    std::uint32_t seed = 0;
    for (std::size_t offset = 0; offset < title.size();)
        seed = (seed * 31 + std::uint32_t(Text::nextScalar(title, offset))) % 65536;
    return seed;
}

void fillSky(DrawingContext& context, const Size& size, const RGBA& top, const RGBA& bottom) {
    const CairoPattern gradient(cairo_pattern_create_linear(0, size.height, 0, 0));
    cairo_pattern_add_color_stop_rgb(gradient.get(), 0, top.r, top.g, top.b);
    cairo_pattern_add_color_stop_rgb(gradient.get(), 1, bottom.r, bottom.g, bottom.b);
    const CairoSave saved(context.cairo());
    cairo_set_source(context.cairo(), gradient.get());
    cairo_rectangle(context.cairo(), 0, 0, size.width, size.height);
    cairo_fill(context.cairo());
}

/// What tells the two hills apart; heights and places as shares of the picture.
struct Hill {
    double lift;  ///< of the left end and of the crest's place
    double crest;
    double rightEnd;
};

Path hillPath(const Hill& hill, const Size& size) {
    return Path()
        .move({0, 0})
        .line({0, (0.5 * hill.lift + 0.3) * size.height})
        .curve({size.width, hill.rightEnd * size.height}, {(hill.lift + 0.3) * size.width, hill.crest * size.height},
               {0.7 * size.width, 0.1 * size.height})
        .line({size.width, 0})
        .close();
}

/// The shadow of the icon in `square` as a picture of its own, `margin` pixels larger than `square` on every side.
std::optional<Image> shadowPicture(std::string_view icon, double side, int margin) {
    const int extent = int(std::ceil(side)) + 2 * margin;
    auto shape = BitmapContext::make(extent, extent);
    if (!shape) return std::nullopt;
    IconSet::draw(icon, RGBA::black, shape->context(), {double(margin), double(margin), side, side});
    return ShadowBlur::shadow(std::move(*shape).finish(), shadowSigma, shadowOpacity);
}

}  // namespace

std::optional<Image> draw(std::string_view title, std::string_view type, std::string_view icon, int width, int height) {
    auto bitmap = BitmapContext::make(width, height);
    if (!bitmap) return std::nullopt;
    DrawingContext& context = bitmap->context();

    const Size size{double(width), double(height)};
    const RGBA base = SampleTemplates::typeColor(type).value_or(RGBA(0.4, 0.4, 0.45098039));
    const auto [r, g, b, a] = base;
    const std::uint32_t seed = seedOf(title);

    fillSky(context, size, RGBA(0.6 * r + 0.4, 0.6 * g + 0.4, 0.6 * b + 0.45), RGBA(r + 0.3, g + 0.3, b + 0.25));

    const Rect sun{(double(seed % 60) / 100 + 0.15) * size.width, 0.62 * size.height, 0.2 * size.height,
                   0.2 * size.height};
    context.fill(Path().ellipse(sun), RGBA(1, 0.94901961, 0.8, 0.85098039));

    const Hill far{double(seed % 7) / 20, 0.55, 0.22};
    context.fill(hillPath(far, size), RGBA(0.55 * r, 0.55 * g + 0.05, 0.55 * b));
    const Hill near{double(seed / 8 % 7) / 20, 0.43, 0.3};
    context.fill(hillPath(near, size), RGBA(0.4 * r, 0.4 * g + 0.05, 0.4 * b));

    const double side = 0.5 * size.height;
    const Rect square{size.width / 2 - side / 2, 0.2 * size.height, side, side};
    const int margin = ShadowBlur::reach(shadowSigma) + 1;
    const auto shadow = shadowPicture(icon, side, margin);
    if (!shadow) return std::nullopt;
    context.drawImage(*shadow, {square.x - margin, square.y - margin - shadowDrop, double(shadow->width()),
                                double(shadow->height())});
    IconSet::draw(icon, IconSet::color(icon), context, square);

    return std::move(*bitmap).finish();
}

}  // namespace quorvel::SampleArt
