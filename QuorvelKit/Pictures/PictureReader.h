#pragma once

#include "Drawing/EncodedPicture.h"
#include "Drawing/Image.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// The one door to every picture decoder: PNG, JPEG, HEIC, TIFF and WebP by their first bytes, PDF by the extension.
/// Only regular files up to 1 GiB are opened; the header's size is checked before anything is allocated; decoders that
/// aren't hardened against hostile files are blocked. Safe from any thread. A failure, a truncated file among them,
/// gives nothing.
namespace quorvel::PictureReader {

inline constexpr int longestSide = 2400;           ///< pixels; larger pictures are reduced to it while decoding
inline constexpr int longestEncodedSide = 30'000;  ///< pixels; a header that says more is refused
inline constexpr std::int64_t mostEncodedPixels = 256LL * 1024 * 1024;
inline constexpr int pdfLongestSide = 512;  ///< pixels of a PDF page's longer side

/// What the header says of a picture: its upright size after reduction, and whether documents can store its bytes.
struct Header {
    int width = 0;
    int height = 0;
    bool storable = false;  ///< `encoded` will give the file as it is
};

std::optional<Header> header(const std::filesystem::path& file);

/// The picture upright, in sRGB, at most `longestSide` a side; the first one where the file holds several. The first
/// page of a PDF by its crop box on clear ground. Its size is that of `header`.
std::optional<Image> read(const std::filesystem::path& file);

/// The file's own bytes for a document, when it is a whole JPEG that needs no change at all. What a camera appends
/// behind the picture is left out.
std::optional<EncodedPicture> encoded(const std::filesystem::path& file);

}  // namespace quorvel::PictureReader
