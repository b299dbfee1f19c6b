#include "Spreadsheet/ZipReader.h"

#include "Foundation/Text.h"
#include "Foundation/TextEncoding.h"
#include "Spreadsheet/ZipMember.h"

#include <algorithm>
#include <utility>

namespace quorvel::ZipReader {

namespace {

constexpr std::string_view endSignature = "PK\x05\x06";
constexpr std::string_view locatorSignature = "PK\x06\x07";
constexpr std::string_view endSignature64 = "PK\x06\x06";
constexpr std::string_view centralSignature = "PK\x01\x02";

constexpr std::uint64_t endSize = 22;
constexpr std::uint64_t longestComment = 65535;
constexpr std::uint64_t locatorSize = 20;
constexpr std::uint64_t endSize64 = 56;
constexpr std::uint64_t centralSize = 46;
constexpr std::uint16_t utf8Flag = 0x800;
constexpr std::uint32_t inZip64 = 0xFFFFFFFF;  // a field of 32 bits whose value stands in the ZIP64 record

/// A little-endian number; the caller has checked that its bytes are there.
template <class Number>
Number number(std::string_view bytes, std::uint64_t offset) {
    Number value = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        value |= static_cast<Number>(static_cast<Number>(static_cast<unsigned char>(bytes[offset + i])) << (8 * i));
    return value;
}

bool hasSignature(std::string_view bytes, std::uint64_t offset, std::string_view signature) {
    return offset <= bytes.size() && bytes.substr(offset).starts_with(signature);
}

/// Where the directory lies and how many headers it claims to have.
struct Directory {
    std::uint64_t count = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0;
};

std::unexpected<Failure> failure(std::string message) {
    return std::unexpected(Failure{std::move(message)});
}

std::expected<Directory, Failure> findDirectory(std::string_view archive) {
    const std::uint64_t window = std::min<std::uint64_t>(archive.size(), endSize + longestComment);
    const std::uint64_t windowStart = archive.size() - window;
    const std::size_t found = archive.substr(windowStart).rfind(endSignature);
    if (found == std::string_view::npos || windowStart + found + endSize > archive.size())
        return failure("It isn’t a zip archive.");
    const std::uint64_t end = windowStart + found;

    Directory directory{number<std::uint16_t>(archive, end + 10), number<std::uint32_t>(archive, end + 12),
                        number<std::uint32_t>(archive, end + 16)};
    const bool large = directory.offset == inZip64 || directory.size == inZip64 || directory.count == 0xFFFF;
    if (large && end >= locatorSize && hasSignature(archive, end - locatorSize, locatorSignature)) {
        const auto record = number<std::uint64_t>(archive, end - locatorSize + 8);
        if (record >= archive.size() || archive.size() - record < endSize64 ||
            !hasSignature(archive, record, endSignature64))
            return failure("The file’s ZIP64 record is damaged.");
        directory = {number<std::uint64_t>(archive, record + 32), number<std::uint64_t>(archive, record + 40),
                     number<std::uint64_t>(archive, record + 48)};
    }
    if (directory.offset > archive.size() || directory.size > archive.size() - directory.offset)
        return failure("The file is damaged (its directory is cut off).");
    return directory;
}

std::string decodedName(std::string_view bytes, std::uint16_t flags) {
    if (flags & utf8Flag) return TextEncoding::repairedUTF8(bytes);
    std::string name;
    name.reserve(bytes.size());
    for (const char byte : bytes) Text::appendScalar(name, static_cast<unsigned char>(byte));
    return name;
}

/// Takes from the ZIP64 record of the extra field what did not fit the header's fields of 32 bits.
void readExtra(std::string_view extra, Entry& entry) {
    std::vector<std::uint64_t*> elsewhere;
    for (std::uint64_t* field : {&entry.size, &entry.compressedSize, &entry.headerOffset})
        if (*field == inZip64) elsewhere.push_back(field);
    if (elsewhere.empty()) return;
    while (extra.size() >= 4) {
        const auto id = number<std::uint16_t>(extra, 0);
        const std::size_t length = number<std::uint16_t>(extra, 2);
        extra.remove_prefix(4);
        if (id == 1) {
            std::string_view values = extra;
            for (std::uint64_t* field : elsewhere) {
                if (values.size() < 8) break;
                *field = number<std::uint64_t>(values, 0);
                values.remove_prefix(8);
            }
        }
        extra.remove_prefix(std::min(length, extra.size()));
    }
}

/// ASCII letters tell most paths apart without a look at Unicode data.
bool differsPlainly(std::string_view a, std::string_view b) {
    const auto lower = [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[i]);
        if (x >= 0x80 || y >= 0x80) return false;
        if (lower(x) != lower(y)) return true;
    }
    return false;
}

}  // namespace

std::expected<std::vector<Entry>, Failure> entries(std::string_view archive) {
    const auto directory = findDirectory(archive);
    if (!directory) return std::unexpected(directory.error());
    const auto damaged = [] { return failure("The file’s directory is damaged."); };

    const std::string_view bytes = archive.substr(directory->offset, directory->size);
    std::vector<Entry> result;
    result.reserve(std::min<std::uint64_t>(directory->count, bytes.size() / centralSize));
    std::uint64_t place = 0;
    for (std::uint64_t i = 0; i < directory->count; ++i) {
        if (place > bytes.size() || bytes.size() - place < centralSize || !hasSignature(bytes, place, centralSignature))
            return damaged();
        const std::uint64_t nameLength = number<std::uint16_t>(bytes, place + 28);
        const std::uint64_t extraLength = number<std::uint16_t>(bytes, place + 30);
        const std::uint64_t commentLength = number<std::uint16_t>(bytes, place + 32);
        const std::uint64_t nameStart = place + centralSize;
        if (bytes.size() - nameStart < nameLength + extraLength) return damaged();

        Entry& entry = result.emplace_back();
        entry.path = decodedName(bytes.substr(nameStart, nameLength), number<std::uint16_t>(bytes, place + 8));
        entry.method = number<std::uint16_t>(bytes, place + 10);
        entry.crc32 = number<std::uint32_t>(bytes, place + 16);
        entry.compressedSize = number<std::uint32_t>(bytes, place + 20);
        entry.size = number<std::uint32_t>(bytes, place + 24);
        entry.headerOffset = number<std::uint32_t>(bytes, place + 42);
        readExtra(bytes.substr(nameStart + nameLength, extraLength), entry);
        place = nameStart + nameLength + extraLength + commentLength;
    }
    return result;
}

const Entry* find(std::string_view path, const std::vector<Entry>& entries) {
    auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.path == path; });
    if (found == entries.end())
        found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
            return !differsPlainly(entry.path, path) && Text::equalsIgnoringCase(entry.path, path);
        });
    return found == entries.end() ? nullptr : &*found;
}

std::expected<std::string, Failure> read(const Entry& entry, std::string_view archive) {
    auto member = ZipMember::open(entry, archive);
    if (!member) return std::unexpected(member.error());
    std::string result;
    result.resize_and_overwrite(entry.size, [&](char* bytes, std::size_t room) {
        std::size_t written = 0;
        while (const std::size_t count = member->read(bytes + written, room - written)) written += count;
        return written;
    });
    if (const auto verified = member->verify(); !verified) return std::unexpected(verified.error());
    return result;
}

std::expected<std::optional<std::string>, Failure> read(std::string_view path, std::string_view archive,
                                                        const std::vector<Entry>* list) {
    std::vector<Entry> own;
    if (!list) {
        auto all = entries(archive);
        if (!all) return std::unexpected(std::move(all.error()));
        own = std::move(*all);
        list = &own;
    }
    const Entry* entry = find(path, *list);
    if (!entry) return std::nullopt;
    return read(*entry, archive);
}

}  // namespace quorvel::ZipReader
