#include "Pictures/PictureFormat.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

using namespace std::string_view_literals;

TEST(PictureFormat, isToldByTheFirstBytes) {
    const std::pair<std::string_view, std::optional<PictureFormat>> cases[] = {
        {"\xFF\xD8\xFF\xE0 and so on"sv, PictureFormat::jpeg},
        {"\x89PNG\r\n\x1A\n"sv, PictureFormat::png},
        {"RIFF\x10\0\0\0WEBPVP8 "sv, PictureFormat::webp},
        {"II*\0\x08\0\0\0"sv, PictureFormat::tiff},
        {"MM\0*\0\0\0\x08"sv, PictureFormat::tiff},
        {"II+\0\x08\0\0\0"sv, PictureFormat::tiff},
        {"\0\0\0\x18"
         "ftypheic\0\0\0\0"sv,
         PictureFormat::heif},
        {"\0\0\0\x18"
         "ftypmif1\0\0\0\0"sv,
         PictureFormat::heif},
        {"\0\0\0\x18"
         "ftypavif\0\0\0\0"sv,
         PictureFormat::heif},
        {""sv, std::nullopt},
        {"\xFF\xD8"sv, std::nullopt},
        {"\x89PNG\n"sv, std::nullopt},
        {"RIFF\x10\0\0\0WAVEfmt "sv, std::nullopt},
        {"RIFF\x10\0\0\0WEB"sv, std::nullopt},
        {"\0\0\0\x18"
         "ftypmp42\0\0\0\0"sv,
         std::nullopt},
        {"GIF89a\1\0\1\0"sv, std::nullopt},
        {"%PDF-1.7"sv, std::nullopt},
        {"<svg xmlns='http://www.w3.org/2000/svg'/>"sv, std::nullopt},
        {"P6 1 1 255 abc"sv, std::nullopt},
    };
    for (const auto& [bytes, format] : cases) EXPECT_EQ(pictureFormatOf(bytes), format) << bytes;
}

}  // namespace
}  // namespace quorvel
