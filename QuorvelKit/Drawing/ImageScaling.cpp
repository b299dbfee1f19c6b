#include "Drawing/ImageScaling.h"

#include "Drawing/ResampleAxis.h"
#include "Drawing/ResampleSums.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace quorvel::ImageScaling {

namespace {

using ResampleSums::channels;
using ResampleSums::lanes;

/// Whole weights whose sum is that of `weights` to the last unit, so that an even ground stays even. Each is written
/// `copies` times.
template <typename Arithmetic>
void quantise(const std::vector<double>& weights, typename Arithmetic::Weight* out, std::size_t copies) {
    constexpr std::int64_t most = std::numeric_limits<typename Arithmetic::Weight>::max();
    double sum = 0;
    std::int64_t before = 0;
    for (const double weight : weights) {
        sum += weight * Arithmetic::one;
        const auto rounded = std::int64_t(sum + 0.5);
        out = std::fill_n(out, copies, typename Arithmetic::Weight(std::min(rounded - before, most)));
        before = rounded;
    }
}

template <typename Arithmetic>
void resample(const Image& image, const ResampleAxis& across, const ResampleAxis& down, std::uint32_t* pixels) {
    using Weight = typename Arithmetic::Weight;

    const std::size_t width = across.taps.size();
    const std::size_t stride = (across.mostTaps() * channels + lanes - 1) / lanes * lanes;
    std::vector<ResampleSums::Sum> sums(width);
    std::vector<Weight> acrossWeights(width * stride);
    for (std::size_t x = 0; x < width; ++x) {
        const auto& tap = across.taps[x];
        sums[x] = {std::uint32_t(tap.begin - across.sourceBegin), std::uint32_t(tap.weights.size())};
        quantise<Arithmetic>(tap.weights, &acrossWeights[x * stride], channels);
    }

    const std::size_t columnCount = std::size_t(across.sourceEnd - across.sourceBegin) * channels;
    std::vector<std::uint16_t> columns(columnCount + stride);
    std::vector<Weight> downWeights(down.mostTaps());
    std::vector<const std::uint8_t*> rows;
    for (const auto& tap : down.taps) {
        quantise<Arithmetic>(tap.weights, downWeights.data(), 1);
        rows.clear();
        for (std::size_t i = 0; i < tap.weights.size(); ++i) {
            const auto* row = image.row(tap.begin + int(i)).data() + across.sourceBegin;
            rows.push_back(reinterpret_cast<const std::uint8_t*>(row));
        }
        ResampleSums::sumRows(rows, downWeights.data(), columnCount, columns.data());
        ResampleSums::sumAcross(columns.data(), sums, acrossWeights.data(), stride,
                                reinterpret_cast<std::uint8_t*>(pixels));
        pixels += width;
    }
}

}  // namespace

std::optional<PlacedImage> place(const Image& image, const Rect& target, const Rect& visible) {
    const auto across = ResampleAxis::make(image.width(), target.minX(), target.maxX(), visible.minX(), visible.maxX());
    const auto down = ResampleAxis::make(image.height(), target.minY(), target.maxY(), visible.minY(), visible.maxY());
    if (!across || !down) return {};
    auto pixels = allocatePixels(across->count(), down->count());
    if (!pixels) return {};

    if (std::max(across->mostTaps(), down->mostTaps()) <= ResampleSums::Narrow::mostTaps) {
        resample<ResampleSums::Narrow>(image, *across, *down, pixels.get());
    } else {
        resample<ResampleSums::Wide>(image, *across, *down, pixels.get());
    }
    const bool opaque = image.alpha() == Image::Alpha::opaque && across->covered && down->covered;
    const auto alpha = opaque ? Image::Alpha::opaque : Image::Alpha::varying;
    return PlacedImage{Image(across->count(), down->count(), std::move(pixels), alpha), across->begin, down->begin};
}

}  // namespace quorvel::ImageScaling
