#pragma once

#include "Drawing/Image.h"
#include "Pictures/PictureFormat.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Picture files of every kind, made as the tests need them.
namespace quorvel::TestPictures {

/// Samples as a file stores them, `bands` a pixel, row by row from the top.
struct Samples {
    int width = 0;
    int height = 0;
    int bands = 3;
    std::vector<std::uint16_t> values;
    bool sixteenBits = false;
};

/// Four fields of colour: red and green above, blue and white below.
Samples fourFields(int width, int height);

/// One colour all over.
Samples plain(int width, int height, std::vector<std::uint16_t> color);

/// Waves of colour without any two equal rows, so that files of it have some length.
Samples waves(int width, int height);

struct Options {
    int orientation = 1;
    std::string profile = {};  ///< ICC bytes to embed
    bool inks = false;         ///< the four bands are CMYK
    bool progressive = false;  ///< progressive JPEG, interlaced PNG
    bool lossless = true;      ///< where the format has both
    std::string extra = {};    ///< further options of the encoder, as in "[tile,compression=lzw]"
};

/// The bytes of a file of this format.
std::string encoded(const Samples& samples, PictureFormat format, const Options& options = {});

/// A chunk of a PNG file with its length and checksum.
std::string pngChunk(const std::string& type, const std::string& data);

/// An EXIF block that says nothing but the orientation.
std::string exifBlock(int orientation);

std::string bigEndian(std::uint32_t value);

void write(const std::filesystem::path& file, std::string_view bytes);

/// The pixel of an image as straight red, green, blue, alpha.
std::vector<int> colorAt(const Image& image, int x, int y);

/// A PDF of one page of this size in points, with a blue square at its bottom left, 20 points a side.
std::string pdfPage(double width, double height);

}  // namespace quorvel::TestPictures
