#include "Pictures/PictureFormat.h"

#include <algorithm>
#include <array>

namespace quorvel {
namespace {

using namespace std::string_view_literals;

/// The brands of still pictures and sequences in the family of HEIC, coded by HEVC or AV1.
constexpr std::array heifBrands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv,
                                "hevx"sv, "mif1"sv, "msf1"sv, "avif"sv, "avis"sv};

}  // namespace

std::optional<PictureFormat> pictureFormatOf(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return PictureFormat::jpeg;
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return PictureFormat::png;
    if (bytes.starts_with("RIFF"sv) && bytes.substr(0, 12).ends_with("WEBP"sv) && bytes.size() >= 12)
        return PictureFormat::webp;
    for (const std::string_view mark : {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv})
        if (bytes.starts_with(mark)) return PictureFormat::tiff;
    if (bytes.size() >= 12 && bytes.substr(4, 4) == "ftyp"sv &&
        std::ranges::find(heifBrands, bytes.substr(8, 4)) != heifBrands.end())
        return PictureFormat::heif;
    return std::nullopt;
}

}  // namespace quorvel
