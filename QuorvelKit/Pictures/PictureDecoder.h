#pragma once

#include "Drawing/Image.h"
#include "Pictures/Orientation.h"
#include "Pictures/PictureFormat.h"
#include "Pictures/PictureSize.h"

#include <optional>
#include <string_view>

namespace quorvel {

/// Calls the decoders on a whole file in memory. Nothing but PictureReader uses it. Safe from any thread.
namespace PictureDecoder {

struct Header {
    PictureSize stored;  ///< as in the file, before turning upright
    Orientation orientation = Orientation::upright;
};

/// What the file's header says, without decoding pixels.
std::optional<Header> header(std::string_view bytes, PictureFormat format);

/// The first picture of the file, reduced to `size` (of the stored picture) while it is decoded, in sRGB, upright. A
/// file that is truncated or corrupt gives nothing.
std::optional<Image> decode(std::string_view bytes, PictureFormat format, const Header& header, PictureSize size);

}  // namespace PictureDecoder
}  // namespace quorvel
