// Encoding one card as PNG, beside the usual encoder on the same pixels. The counters of each run: how many times as
// fast as that encoder, and the size of the file as a share of that encoder's.

#include "Drawing/BitmapContext.h"
#include "Drawing/Cairo.h"
#include "Pictures/IconSet.h"
#include "Pictures/PNGWriter.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>

using namespace quorvel;

namespace {

constexpr int width = 750, height = 1050;

/// Smooth hills of noise with a little grain: what a photograph is to an encoder.
Image photograph(int columns, int rows) {
    std::mt19937 random(7);
    constexpr int cells = 64;
    std::vector<double> lattice(cells * cells * 3);
    for (double& value : lattice) value = double(random() % 1000) / 1000;
    const auto smooth = [&](double x, double y, int channel) {
        const int column = int(x), row = int(y);
        const auto ease = [](double t) { return t * t * (3 - 2 * t); };
        const double u = ease(x - column), v = ease(y - row);
        const auto at = [&](int c, int r) {
            return lattice[std::size_t(((r % cells) * cells + c % cells) * 3 + channel)];
        };
        return (at(column, row) * (1 - u) + at(column + 1, row) * u) * (1 - v) +
               (at(column, row + 1) * (1 - u) + at(column + 1, row + 1) * u) * v;
    };
    auto pixels = allocatePixels(columns, rows);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) {
            std::uint32_t pixel = 0xFF;
            const double grain = double(random() % 1000) / 1000 - 0.5;
            for (int channel = 0; channel < 3; ++channel) {
                double value = 0, weight = 0.5;
                for (double scale = 1.0 / 160; scale < 0.3; scale *= 2.2, weight /= 2.2)
                    value += weight * smooth(x * scale, y * scale, channel);
                pixel = pixel << 8 | std::uint32_t(std::clamp(value * 260 + grain * 6, 0.0, 255.0));
            }
            pixels[std::size_t(y) * std::size_t(columns) + std::size_t(x)] = pixel;
        }
    return Image(columns, rows, std::move(pixels), Image::Alpha::opaque);
}

/// Bands, icons and rows of small marks as text leaves them, with `art` or a flat ground above.
Image card(bool hasArt, const RGBA& ground) {
    auto bitmap = BitmapContext::make(width, height);
    DrawingContext& context = bitmap->context();
    context.fill(Rect{0, 0, width, height}, ground);
    if (hasArt)
        context.drawImage(photograph(660, 470), {45, 440, 660, 470});
    else
        context.fill(Rect{45, 440, 660, 470}, RGBA::bytes(206, 222, 214));
    context.fill(Rect{45, 940, 660, 70}, RGBA::bytes(28, 43, 77));
    for (std::size_t i = 0; i < 6; ++i)
        IconSet::draw(IconSet::names[i], IconSet::color(IconSet::names[i]), context,
                      {60.0 + 100.0 * double(i), 40, 70, 70});
    std::mt19937 random(3);
    for (int line = 0; line < 6; ++line)
        for (double x = 60; x < 680; x += 9 + double(random() % 10)) {
            Path letter;
            letter.ellipse({x, 390 - 42.0 * line, 5 + double(random() % 8), 18});
            context.fill(letter, RGBA::bytes(40, 40, 46), FillRule::evenOdd);
        }
    return std::move(*bitmap).finish();
}

Image photographicCard() {
    return card(true, RGBA::bytes(250, 246, 235));
}
Image flatCard() {
    return card(false, RGBA::bytes(250, 246, 235));
}
Image clearCard() {
    return card(true, RGBA(1, 1, 1, 0.5));
}

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

std::string encodedByCairo(const Image& image) {
    auto* data = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels()));
    const CairoSurface surface(cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, image.width(),
                                                                   image.height(), image.width() * 4));
    std::string bytes;
    cairo_surface_write_to_png_stream(surface.get(), append, &bytes);
    return bytes;
}

/// The time that this thread has had a processor, so that other work on the machine counts for nothing.
double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

double leastSeconds(int rounds, const std::function<void()>& work) {
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < rounds; ++i) {
        const double start = processorSeconds();
        work();
        least = std::min(least, processorSeconds() - start);
    }
    return least;
}

void encode(benchmark::State& state, Image (*make)()) {
    const Image image = make();
    std::string ours;
    for (auto _ : state) ours = *PNGWriter::encode(image, 300);

    std::string usual;
    const double usualTime = leastSeconds(8, [&] { usual = encodedByCairo(image); });
    const double ourTime = leastSeconds(15, [&] { ours = *PNGWriter::encode(image, 300); });
    state.counters["times_as_fast"] = usualTime / ourTime;
    state.counters["share_of_size"] = double(ours.size()) / double(usual.size());
    state.counters["least_ms"] = ourTime * 1000;
    state.counters["KiB"] = double(ours.size()) / 1024;
}

BENCHMARK_CAPTURE(encode, photographic, photographicCard)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encode, flat, flatCard)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encode, translucent, clearCard)->Unit(benchmark::kMillisecond);

}  // namespace
