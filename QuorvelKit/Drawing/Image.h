#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quorvel {

/// An immutable bitmap in sRGB, premultiplied, one 0xAARRGGBB word a pixel, rows from the top without gaps between.
/// Copies share the pixels; safe to draw from several threads at once.
class Image {
public:
    enum class Alpha { opaque, varying };  ///< opaque promises that every pixel's alpha is 255

    /// Takes width × height pixels. Both sides at least 1.
    Image(int width, int height, std::shared_ptr<const std::uint32_t[]> pixels, Alpha alpha);

    int width() const { return width_; }
    int height() const { return height_; }
    Alpha alpha() const { return alpha_; }
    std::span<const std::uint32_t> row(int y) const;
    const std::uint32_t* pixels() const { return pixels_.get(); }
    std::size_t byteCount() const { return std::size_t(width_) * std::size_t(height_) * 4; }

    /// Differs for any two images of a run, and is equal for copies: documents store a picture once by it.
    std::uint64_t id() const { return id_; }

    /// The same pixels under another number: a picture that was decoded anew is still the same picture.
    Image renumbered(std::uint64_t id) const;

private:
    int width_;
    int height_;
    Alpha alpha_;
    std::uint64_t id_;
    std::shared_ptr<const std::uint32_t[]> pixels_;
};

/// The next number of the series that tells pictures apart. Safe from any thread.
std::uint64_t nextImageId();

/// Zeroed pixels for an image of this size, or nothing when there isn't the memory or a side is below 1.
std::shared_ptr<std::uint32_t[]> allocatePixels(int width, int height);

}  // namespace quorvel
