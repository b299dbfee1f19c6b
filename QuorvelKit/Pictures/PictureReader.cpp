#include "Pictures/PictureReader.h"

#include "Foundation/FileBytes.h"
#include "Foundation/Text.h"
#include "Pictures/ColorProfile.h"
#include "Pictures/JPEGFile.h"
#include "Pictures/PDFReader.h"
#include "Pictures/PictureDecoder.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace quorvel::PictureReader {
namespace {

constexpr std::uint64_t largestFile = 1ull << 30;

bool isPDF(const std::filesystem::path& file) {
    return Text::lowercasedExtension(file.native()) == "pdf";
}

bool isAcceptable(PictureSize size) {
    return size.width >= 1 && size.height >= 1 && size.width <= longestEncodedSide &&
           size.height <= longestEncodedSide && std::int64_t(size.width) * size.height <= mostEncodedPixels;
}

PictureSize reducedSize(PictureSize size) {
    const int longest = std::max(size.width, size.height);
    if (longest <= longestSide) return size;
    const auto reduced = [&](int side) { return std::max(1, int(std::lround(double(side) * longestSide / longest))); };
    return {reduced(size.width), reduced(size.height)};
}

/// A file of one of the formats that are decoded, its header read and found acceptable.
struct Opened {
    std::string bytes;
    PictureFormat format;
    PictureDecoder::Header header;
    std::optional<JPEGFile> jpeg;  ///< for a JPEG
};

std::optional<Opened> open(std::string bytes) {
    const auto format = pictureFormatOf(bytes);
    if (!format) return std::nullopt;
    Opened opened{std::move(bytes), *format, {}, std::nullopt};
    if (*format == PictureFormat::jpeg) {
        opened.jpeg = JPEGFile::parse(opened.bytes);
        if (!opened.jpeg) return std::nullopt;
        opened.header = {{opened.jpeg->width, opened.jpeg->height}, opened.jpeg->orientation};
    } else {
        const auto header = PictureDecoder::header(opened.bytes, *format);
        if (!header) return std::nullopt;
        opened.header = *header;
    }
    if (!isAcceptable(opened.header.stored)) return std::nullopt;
    return opened;
}

/// Whether a document can store the JPEG as it is and show the same colours and the same side up.
bool isStorable(const JPEGFile& jpeg) {
    return jpeg.end > 0 && jpeg.baselineOrProgressive && jpeg.plainColor && jpeg.orientation == Orientation::upright &&
           std::max(jpeg.width, jpeg.height) <= longestSide &&
           !ColorProfile::needsConversion(jpeg.profile, jpeg.components);
}

}  // namespace

std::optional<Header> header(const std::filesystem::path& file) try {
    auto bytes = FileBytes::read(file, largestFile);
    if (!bytes) return std::nullopt;
    if (isPDF(file)) {
        const auto size = PDFReader::firstPageSize(*bytes, pdfLongestSide);
        return size ? std::optional(Header{size->width, size->height, false}) : std::nullopt;
    }
    const auto opened = open(std::move(*bytes));
    if (!opened) return std::nullopt;
    PictureSize size = reducedSize(opened->header.stored);
    if (swapsSides(opened->header.orientation)) std::swap(size.width, size.height);
    return Header{size.width, size.height, opened->jpeg && isStorable(*opened->jpeg)};
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::optional<Image> read(const std::filesystem::path& file) try {
    auto bytes = FileBytes::read(file, largestFile);
    if (!bytes) return std::nullopt;
    if (isPDF(file)) return PDFReader::firstPage(*bytes, pdfLongestSide);
    const auto opened = open(std::move(*bytes));
    if (!opened) return std::nullopt;
    return PictureDecoder::decode(opened->bytes, opened->format, opened->header, reducedSize(opened->header.stored));
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::optional<EncodedPicture> encoded(const std::filesystem::path& file) try {
    auto bytes = FileBytes::read(file, largestFile);
    if (!bytes || isPDF(file)) return std::nullopt;
    auto opened = open(std::move(*bytes));
    if (!opened || !opened->jpeg || !isStorable(*opened->jpeg)) return std::nullopt;
    opened->bytes.resize(opened->jpeg->end);  // cameras append further pictures
    return EncodedPicture{std::make_shared<const std::string>(std::move(opened->bytes)), opened->jpeg->width,
                          opened->jpeg->height, nextImageId()};
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

}  // namespace quorvel::PictureReader
