#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// ZIP archives that lie whole in memory. Trusts nothing in them: every offset, count and size is checked against the
/// bytes that are there. Pure functions, safe on any thread.
namespace quorvel::ZipReader {

/// One member as the central directory describes it.
struct Entry {
    std::string path;                  ///< as stored, separators included, in UTF-8
    std::uint16_t method = 0;          ///< 0 stored, 8 deflated
    std::uint64_t compressedSize = 0;  ///< bytes in the archive
    std::uint64_t size = 0;            ///< bytes after decompression
    std::uint32_t crc32 = 0;           ///< of the decompressed bytes
    std::uint64_t headerOffset = 0;    ///< where the member's local header starts in the archive

    bool operator==(const Entry&) const = default;
};

struct Failure {
    std::string message;  ///< a sentence for the user

    bool operator==(const Failure&) const = default;
};

/// The largest member, decompressed, that is read at all. A member that says it is larger is refused before anything is
/// allocated; one that is larger than it says is cut where it said it ends.
inline constexpr std::uint64_t largestMember = 0x10000000;

/// The members in the order of the directory, duplicates included.
std::expected<std::vector<Entry>, Failure> entries(std::string_view archive);

/// The first entry of that very path, else the first whose path differs in case only, else null.
const Entry* find(std::string_view path, const std::vector<Entry>& entries);

/// A member's bytes, checked for length and CRC-32.
std::expected<std::string, Failure> read(const Entry& entry, std::string_view archive);

/// The same for the member that `find` gives; nothing when there is none. Without a list the directory is read first.
std::expected<std::optional<std::string>, Failure> read(std::string_view path, std::string_view archive,
                                                        const std::vector<Entry>* entries = nullptr);

}  // namespace quorvel::ZipReader
