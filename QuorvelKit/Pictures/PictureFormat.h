#pragma once

#include <optional>
#include <string_view>

namespace quorvel {

/// The picture formats that are decoded: those whose decoders are hardened against hostile files.
enum class PictureFormat { jpeg, png, webp, tiff, heif };

/// The format by a file's first bytes, whatever its name says.
std::optional<PictureFormat> pictureFormatOf(std::string_view bytes);

}  // namespace quorvel
