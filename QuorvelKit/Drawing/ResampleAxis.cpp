#include "Drawing/ResampleAxis.h"

#include <algorithm>
#include <cmath>

namespace quorvel {

namespace {

constexpr double farthest = 1 << 30;          // fits an int with room to round
constexpr int mostPixels = 1 << 16;           // more than any bitmap's side
constexpr double gridTolerance = 1.0 / 1024;  // less than any alpha can show

double onGrid(double edge) {
    const double nearest = std::round(edge);
    return std::abs(edge - nearest) < gridTolerance ? nearest : edge;
}

/// The shares of the picture's pixels in the stretch from `low` to `high`.
ResampleAxis::Tap area(int size, double low, double high, double coverage) {
    const int first = std::clamp(int(std::floor(low)), 0, size - 1);
    const int last = std::clamp(int(std::ceil(high)) - 1, first, size - 1);
    ResampleAxis::Tap tap{first, {}};
    double sum = 0;
    for (int i = first; i <= last; ++i) {
        const double share = std::max(0.0, std::min(high, i + 1.0) - std::max(low, double(i)));
        tap.weights.push_back(share);
        sum += share;
    }
    if (!(sum > 0)) {
        tap.weights.assign(1, 1.0);
        sum = 1;
    }
    for (double& weight : tap.weights) weight *= coverage / sum;
    return tap;
}

/// Between the two pixels whose centres lie around `centre`.
ResampleAxis::Tap linear(int size, double centre, double coverage) {
    const double at = std::clamp(centre - 0.5, 0.0, size - 1.0);
    const int first = int(at);
    const double share = at - first;
    if (share == 0) return {first, {coverage}};
    return {first, {coverage * (1 - share), coverage * share}};
}

}  // namespace

std::size_t ResampleAxis::mostTaps() const {
    std::size_t most = 0;
    for (const Tap& tap : taps) most = std::max(most, tap.weights.size());
    return most;
}

std::optional<ResampleAxis> ResampleAxis::make(int size, double start, double end, double visibleStart,
                                               double visibleEnd) {
    if (!std::isfinite(start) || !std::isfinite(end) || !(end > start)) return {};
    start = onGrid(start);
    end = onGrid(end);
    const double scale = size / (end - start);
    const double from = std::max({start, visibleStart, -farthest});
    const double to = std::min({end, visibleEnd, farthest});
    if (!(to > from) || !std::isfinite(scale)) return {};

    ResampleAxis axis;
    axis.begin = int(std::floor(from));
    const int stop = int(std::ceil(to));
    if (stop - axis.begin > mostPixels) return {};
    axis.sourceBegin = size;
    for (int pixel = axis.begin; pixel < stop; ++pixel) {
        const double low = std::max(double(pixel), start);
        const double high = std::min(pixel + 1.0, end);
        const double coverage = high - low;
        if (coverage < 1) axis.covered = false;
        Tap tap = scale > 1 ? area(size, (low - start) * scale, (high - start) * scale, coverage)
                            : linear(size, ((low + high) / 2 - start) * scale, coverage);
        axis.sourceBegin = std::min(axis.sourceBegin, tap.begin);
        axis.sourceEnd = std::max(axis.sourceEnd, tap.begin + int(tap.weights.size()));
        axis.taps.push_back(std::move(tap));
    }
    return axis;
}

}  // namespace quorvel
