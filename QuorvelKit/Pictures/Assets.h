#pragma once

#include "Drawing/EncodedPicture.h"
#include "Drawing/Image.h"
#include "Drawing/ImageScaling.h"
#include "Foundation/Geometry.h"
#include "Pictures/PictureReader.h"
#include "Pictures/PictureSize.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Finds and decodes the pictures that cards name, for all renders of a deck at once. What was found and what was
/// missed is remembered for the life of the object, so a picture that is added later is found by a new one only;
/// decoded pixels are kept up to a budget, least recently used out first, and decoded anew on demand.
///
/// Any thread may call anything. The lock is held around table lookups only, never around files and decoders. A thread
/// that wants what another one is just decoding waits for it instead of decoding the same picture twice.
///
/// A name is taken as a spreadsheet holds it: a path, a bare name, a file URL, with white space around. Failures give
/// nothing.
class Assets {
public:
    static constexpr std::size_t pixelBudget = 256u << 20;  ///< bytes of decoded, resampled and encoded pictures kept

    /// `folders` are searched in order for relative names; `iconFolder` for icons.
    explicit Assets(std::vector<std::filesystem::path> folders = {},
                    std::optional<std::filesystem::path> iconFolder = std::nullopt);
    ~Assets();

    /// The picture of a name, upright, in sRGB, at most PictureReader::longestSide a side.
    std::optional<Image> image(std::string_view name);

    /// The pixel size that `image` has, from the file's header alone.
    using PixelSize = PictureSize;
    std::optional<PixelSize> size(std::string_view name);

    /// The file's own bytes, for documents, when it is a JPEG that needs no change.
    std::optional<EncodedPicture> encoded(std::string_view name);

    /// The picture resampled for one place on a bitmap (see ImageScaling::place). Kept too, by name and exact place.
    std::optional<PlacedImage> placed(std::string_view name, const Rect& target, const Rect& visible);

    /// The icon file of a name in the icon folder. The name is taken in any case; the file's is in lower case.
    std::optional<Image> icon(std::string_view name);

    /// Where a name leads, for files that exist (of whatever kind: a folder is found, too, but is no picture).
    std::optional<std::filesystem::path> resolve(std::string_view name) const;

    /// The names that can't be found, as they stand in the list, each once. Opens every picture and reads its header;
    /// one that fails to decode later joins them then.
    std::vector<std::string> missing(const std::vector<std::string>& names);

    /// Puts an image in directly, ahead of files; an icon under "icon:" and its lower-case name.
    void register_(Image image, std::string_view name);

private:
    struct Tables;

    std::optional<std::filesystem::path> locate(const std::string& name);
    std::optional<PictureReader::Header> header(const std::string& name);
    std::optional<Image> registered(const std::string& name) const;

    std::vector<std::filesystem::path> folders_;
    std::optional<std::filesystem::path> iconFolder_;
    std::unique_ptr<Tables> tables_;
};

}  // namespace quorvel
