#include "Pictures/JPEGFile.h"

#include <cstdint>
#include <cstring>
#include <map>

namespace quorvel {
namespace {

using namespace std::string_view_literals;

namespace Marker {
constexpr int startOfImage = 0xD8, endOfImage = 0xD9, startOfScan = 0xDA, temporary = 0x01;
constexpr int application0 = 0xE0, application1 = 0xE1, application2 = 0xE2, application14 = 0xEE;
constexpr int baseline = 0xC0, progressive = 0xC2;

constexpr bool isRestart(int marker) {
    return marker >= 0xD0 && marker <= 0xD7;
}

/// The frame headers, less the tables that lie among them (C4, C8, CC).
constexpr bool isFrame(int marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}
}  // namespace Marker

int byteAt(std::string_view bytes, std::size_t offset) {
    return std::uint8_t(bytes[offset]);
}

int wordAt(std::string_view bytes, std::size_t offset) {
    return byteAt(bytes, offset) << 8 | byteAt(bytes, offset + 1);
}

/// Walks from marker to marker and gathers what they say.
class Walk {
public:
    explicit Walk(std::string_view bytes) : bytes_(bytes) {}

    std::optional<JPEGFile> run() {
        if (!bytes_.starts_with("\xFF\xD8"sv)) return std::nullopt;
        offset_ = 2;
        while (const auto marker = nextMarker()) {
            if (*marker == Marker::endOfImage) {
                file_.end = offset_;
                break;
            }
            if (*marker == Marker::startOfImage || *marker == Marker::temporary || Marker::isRestart(*marker)) continue;
            if (bytes_.size() - offset_ < 2) break;
            const auto length = std::size_t(wordAt(bytes_, offset_));
            if (length < 2 || length > bytes_.size() - offset_) break;
            takeSegment(*marker, bytes_.substr(offset_ + 2, length - 2));
            offset_ += length;
        }
        if (frames_ == 0) return std::nullopt;
        if (frames_ > 1) file_.baselineOrProgressive = false;
        if (!hasScan_) file_.end = 0;
        for (const auto& [number, part] : profileParts_) file_.profile += part;
        file_.plainColor = file_.components == 1 || (file_.components == 3 && isLumaAndChroma());
        return std::move(file_);
    }

private:
    /// The code of the next marker, `offset_` behind it. What lies between (a scan's data, padding) is passed over.
    std::optional<int> nextMarker() {
        while (offset_ < bytes_.size()) {
            const void* found = std::memchr(bytes_.data() + offset_, 0xFF, bytes_.size() - offset_);
            if (!found) break;
            offset_ = std::size_t(static_cast<const char*>(found) - bytes_.data());
            while (offset_ < bytes_.size() && byteAt(bytes_, offset_) == 0xFF) ++offset_;
            if (offset_ == bytes_.size()) break;
            const int code = byteAt(bytes_, offset_++);
            if (code != 0) return code;  // FF 00 is a byte of data
        }
        return std::nullopt;
    }

    void takeSegment(int marker, std::string_view data) {
        if (Marker::isFrame(marker))
            takeFrame(marker, data);
        else if (marker == Marker::startOfScan)
            hasScan_ = true;
        else if (marker == Marker::application0 && data.starts_with("JFIF\0"sv))
            hasJFIF_ = true;
        else if (marker == Marker::application1 && data.starts_with("Exif\0\0"sv) && !hasExif_) {
            hasExif_ = true;
            file_.orientation = orientationOfExif(data.substr(6));
        } else if (marker == Marker::application2 && data.starts_with("ICC_PROFILE\0"sv) && data.size() >= 14)
            profileParts_.emplace(byteAt(data, 12), data.substr(14));
        else if (marker == Marker::application14 && data.starts_with("Adobe"sv) && data.size() >= 12)
            adobeTransform_ = byteAt(data, 11);
    }

    void takeFrame(int marker, std::string_view data) {
        if (data.size() < 6) return;
        ++frames_;
        if (frames_ > 1) return;
        file_.height = wordAt(data, 1);
        file_.width = wordAt(data, 3);
        file_.components = byteAt(data, 5);
        file_.baselineOrProgressive =
            byteAt(data, 0) == 8 && (marker == Marker::baseline || marker == Marker::progressive);
        for (std::size_t i = 0; i < 3 && 6 + 3 * i < data.size(); ++i) componentNames_ += data[6 + 3 * i];
    }

    bool isLumaAndChroma() const {
        if (adobeTransform_) return *adobeTransform_ == 1;
        return hasJFIF_ || componentNames_ == "\x01\x02\x03"sv;
    }

    std::string_view bytes_;
    std::size_t offset_ = 0;
    JPEGFile file_;
    int frames_ = 0;
    bool hasScan_ = false;
    bool hasJFIF_ = false;
    bool hasExif_ = false;
    std::optional<int> adobeTransform_;
    std::string componentNames_;
    std::map<int, std::string_view> profileParts_;  ///< by their number
};

}  // namespace

std::optional<JPEGFile> JPEGFile::parse(std::string_view bytes) {
    return Walk(bytes).run();
}

}  // namespace quorvel
