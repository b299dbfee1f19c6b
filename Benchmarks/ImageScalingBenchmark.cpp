#include "Drawing/BitmapContext.h"
#include "Drawing/Cairo.h"
#include "Drawing/ImageScaling.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>

// A picture of 2400 × 1600 pixels into the art frame of a card at 300 dpi, against cairo's good filter in the same run.

namespace {

using namespace quorvel;

constexpr int pictureWidth = 2400;
constexpr int pictureHeight = 1600;
constexpr Rect frame{59.0, 188.5, 631.9, 425.2};
constexpr int cardWidth = 750;
constexpr int cardHeight = 1050;

/// Smooth in the large and noisy in the small, as photographs are.
Image photograph(Image::Alpha alpha) {
    const auto pixels = allocatePixels(pictureWidth, pictureHeight);
    std::uint32_t noise = 1;
    for (int y = 0; y < pictureHeight; ++y) {
        for (int x = 0; x < pictureWidth; ++x) {
            noise = noise * 1664525 + 1013904223;
            const auto red = std::uint32_t(x * 200 / pictureWidth) + (noise >> 27);
            const auto green = std::uint32_t(y * 200 / pictureHeight) + (noise >> 28);
            const auto blue = std::uint32_t((x + y) % 200) + (noise >> 29);
            pixels[std::size_t(y) * pictureWidth + std::size_t(x)] = 0xFF000000 | red << 16 | green << 8 | blue;
        }
    }
    return Image(pictureWidth, pictureHeight, pixels, alpha);
}

void drawPlaced(const Image& image, DrawingContext& card) {
    const auto placed = ImageScaling::place(image, card.deviceRect(frame), card.visibleDeviceRect());
    if (placed) card.drawPlaced(*placed);
}

void drawByCairo(cairo_surface_t* picture, cairo_t* cairo) {
    const CairoSave saved(cairo);
    cairo_translate(cairo, frame.minX(), frame.maxY());
    cairo_scale(cairo, frame.width / pictureWidth, -frame.height / pictureHeight);
    cairo_set_source_surface(cairo, picture, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_GOOD);
    cairo_paint(cairo);
}

template <typename Work>
double seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Both ways in turn; the time counted is ours.
void placePicture(benchmark::State& state) {
    const Image image = photograph(Image::Alpha::opaque);
    const CairoSurface picture(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels())), CAIRO_FORMAT_RGB24, pictureWidth,
        pictureHeight, pictureWidth * 4));
    auto bitmap = BitmapContext::make(cardWidth, cardHeight);
    double ours = 0;
    double cairos = 0;
    for (auto _ : state) {
        const double once = seconds([&] { drawPlaced(image, bitmap->context()); });
        ours += once;
        cairos += seconds([&] { drawByCairo(picture.get(), bitmap->context().cairo()); });
        state.SetIterationTime(once);
    }
    state.counters["cairo_ms"] = benchmark::Counter(cairos * 1000, benchmark::Counter::kAvgIterations);
    state.counters["times_as_fast"] = cairos / ours;
}
BENCHMARK(placePicture)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
