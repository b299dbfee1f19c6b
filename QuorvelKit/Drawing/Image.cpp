#include "Drawing/Image.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

namespace quorvel {

std::uint64_t nextImageId() {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

Image::Image(int width, int height, std::shared_ptr<const std::uint32_t[]> pixels, Alpha alpha)
    : width_(width), height_(height), alpha_(alpha), id_(nextImageId()), pixels_(std::move(pixels)) {}

Image Image::renumbered(std::uint64_t id) const {
    Image same = *this;
    same.id_ = id;
    return same;
}

std::span<const std::uint32_t> Image::row(int y) const {
    return {pixels_.get() + std::size_t(y) * std::size_t(width_), std::size_t(width_)};
}

std::shared_ptr<std::uint32_t[]> allocatePixels(int width, int height) {
    if (width < 1 || height < 1) return nullptr;
    constexpr std::size_t most = std::size_t(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(std::uint32_t);
    if (std::size_t(width) > most / std::size_t(height)) return nullptr;

    // calloc takes large blocks from the system as zero pages, which cost nothing until they are written.
    void* memory = std::calloc(std::size_t(width) * std::size_t(height), sizeof(std::uint32_t));
    if (!memory) return nullptr;
    try {
        return std::shared_ptr<std::uint32_t[]>(static_cast<std::uint32_t*>(memory),
                                                [](std::uint32_t* pixels) { std::free(pixels); });
    } catch (const std::bad_alloc&) {
        return nullptr;  // the constructor has freed the memory
    }
}

}  // namespace quorvel
