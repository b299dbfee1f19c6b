#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::test {

/// Makes ZIP archives for tests, sound ones and lying ones: whatever the directory is to say beside the truth is set.
class ZipWriter {
public:
    enum class Method : std::uint16_t { stored = 0, deflated = 8 };

    struct Member {
        std::string path;
        std::string content;
        Method method = Method::deflated;

        std::uint16_t flags = 0x800;        ///< bit 11: the path is UTF-8
        std::string extra;                  ///< of the central header
        std::string localExtra;             ///< of the local header
        std::string comment;                ///< of the central header
        std::optional<std::string> packed;  ///< the member's data as it is to lie in the archive

        // What the directory says, where that isn't the truth.
        std::optional<std::uint16_t> methodCode;
        std::optional<std::uint32_t> crc32;
        std::optional<std::uint32_t> compressedSize;
        std::optional<std::uint32_t> size;
        std::optional<std::uint32_t> headerOffset;
    };

    struct End {
        std::string comment;
        bool zip64 = false;  ///< the end record refers to one of ZIP64

        // What the end record says, where that isn't the truth; with `zip64` what the record of ZIP64 says.
        std::optional<std::uint64_t> count;
        std::optional<std::uint64_t> directorySize;
        std::optional<std::uint64_t> directoryOffset;
        std::optional<std::uint64_t> zip64Offset;  ///< what the locator says
    };

    void add(Member member) { members_.push_back(std::move(member)); }
    void add(std::string path, std::string content, Method method = Method::deflated);
    void add(const ZipWriter& other) { members_.insert(members_.end(), other.members_.begin(), other.members_.end()); }

    std::string bytes(const End& end) const;
    std::string bytes() const { return bytes(End()); }

private:
    std::vector<Member> members_;
};

/// Raw DEFLATE.
std::string deflated(std::string_view bytes);

/// So many bytes of one kind, deflated, without ever being held whole.
std::string deflatedRun(std::uint64_t count, char byte);

/// Numbers as they lie in an archive.
std::string little16(std::uint64_t value);
std::string little32(std::uint64_t value);
std::string little64(std::uint64_t value);

}  // namespace quorvel::test
