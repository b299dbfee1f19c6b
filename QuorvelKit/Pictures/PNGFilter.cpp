#include "Pictures/PNGFilter.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace quorvel {
namespace {

enum class Type : std::uint8_t { none = 0, sub = 1, up = 2, paeth = 4 };

constexpr std::size_t margin = 16;  ///< zeros in front of a row; at least one pixel

// What follows works on vectors of sixteen bytes, which every compiler of the family turns into one register. Rows are
// long enough for the last vector.
using Vector [[gnu::vector_size(16)]] = std::uint8_t;
constexpr std::size_t lanes = sizeof(Vector);

constexpr std::size_t wholeVectors(std::size_t length) {
    return (length + lanes - 1) / lanes * lanes;
}

Vector load(const std::uint8_t* bytes) {
    Vector vector;
    std::memcpy(&vector, bytes, lanes);
    return vector;
}

void store(std::uint8_t* bytes, Vector vector) {
    std::memcpy(bytes, &vector, lanes);
}

Vector least(Vector a, Vector b) {
    return a < b ? a : b;
}

Vector distance(Vector a, Vector b) {
    return a < b ? b - a : a - b;
}

/// PNG's choice among the pixel to the left, above and in the corner: the one nearest to left + above - corner. When
/// the corner isn't between the two others its distance is the sum of theirs, so that it is never the nearest.
Vector paethOf(Vector left, Vector above, Vector corner) {
    const Vector toLeft = distance(above, corner), toAbove = distance(left, corner);
    const auto between = (least(left, above) <= corner) & (corner <= (left < above ? above : left));
    const Vector toCorner = between ? distance(toLeft, toAbove) : ~Vector{};
    const Vector other = toAbove <= toCorner ? above : corner;
    return toLeft <= least(toAbove, toCorner) ? left : other;
}

/// Sums the distances of bytes from 0, each read as signed.
class Cost {
public:
    void add(Vector bytes) {
        const Vector distances = least(bytes, -bytes);
        even_ += reinterpret_cast<Words>(distances) & 0xFF;
        odd_ += reinterpret_cast<Words>(distances) >> 8;
    }

    /// Moves what was added to the sum. To be called before 511 additions have been made since the last time.
    void settle() {
        for (std::size_t i = 0; i < lanes / 2; ++i) sum_ += std::uint64_t(even_[i]) + odd_[i];
        even_ = odd_ = Words{};
    }

    std::uint64_t sum() const { return sum_; }

private:
    using Words [[gnu::vector_size(16)]] = std::uint16_t;
    Words even_{}, odd_{};
    std::uint64_t sum_ = 0;
};

}  // namespace

PNGFilter::PNGFilter(std::size_t length, std::size_t pixelSize)
    : length_(length),
      pixelSize_(pixelSize),
      rows_(2 * (margin + wholeVectors(length))),
      candidates_(3 * wholeVectors(length)),
      current_(rows_.data() + margin),
      above_(current_ + wholeVectors(length) + margin) {}

void PNGFilter::filter(std::uint8_t* out) {
    std::uint8_t* bySub = candidates_.data();
    std::uint8_t* byUp = bySub + wholeVectors(length_);
    std::uint8_t* byPaeth = byUp + wholeVectors(length_);
    Cost noneCost, subCost, upCost, paethCost;
    constexpr std::size_t most = 511 * lanes;
    for (std::size_t start = 0; start < length_; start += most) {
        for (std::size_t i = start; i < std::min(length_, start + most); i += lanes) {
            const Vector row = load(current_ + i), left = load(current_ + i - pixelSize_);
            const Vector above = load(above_ + i), corner = load(above_ + i - pixelSize_);
            const Vector sub = row - left, up = row - above, paeth = row - paethOf(left, above, corner);
            store(bySub + i, sub);
            store(byUp + i, up);
            store(byPaeth + i, paeth);
            noneCost.add(row);
            subCost.add(sub);
            upCost.add(up);
            paethCost.add(paeth);
        }
        for (Cost* cost : {&noneCost, &subCost, &upCost, &paethCost}) cost->settle();
    }

    struct Candidate {
        Type type;
        const std::uint8_t* bytes;
        std::uint64_t cost;
    };
    // Among equals the first wins: plain copies of the row above are what deflate likes best.
    const std::array candidates{
        Candidate{Type::up, byUp, upCost.sum()}, Candidate{Type::none, current_, noneCost.sum()},
        Candidate{Type::sub, bySub, subCost.sum()}, Candidate{Type::paeth, byPaeth, paethCost.sum()}};
    const Candidate& best = *std::ranges::min_element(candidates, {}, &Candidate::cost);
    out[0] = std::uint8_t(best.type);
    std::memcpy(out + 1, best.bytes, length_);
    std::swap(current_, above_);
}

}  // namespace quorvel
