#include "Spreadsheet/ZipMember.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#define ZLIB_CONST  // the input is only read
#include <libdeflate.h>
#include <zlib.h>

namespace quorvel {

namespace {

constexpr std::string_view localSignature = "PK\x03\x04";
constexpr std::uint64_t localSize = 30;
constexpr std::uint16_t stored = 0;
constexpr std::uint16_t deflated = 8;

std::unexpected<ZipReader::Failure> failure(std::string_view path, std::string_view words) {
    return std::unexpected(ZipReader::Failure{"“" + std::string(path) + "”" + std::string(words)});
}

std::uint64_t shortNumber(std::string_view bytes, std::uint64_t offset) {
    return static_cast<unsigned char>(bytes[offset]) |
           static_cast<unsigned>(static_cast<unsigned char>(bytes[offset + 1])) << 8;
}

/// The member's bytes as they lie in the archive; nothing when its header or its data isn't there. The lengths of name
/// and extra field are the local header's, which may differ from the directory's; the size is the directory's, which is
/// right even where the local header leaves it to a record behind the data.
std::optional<std::string_view> storedData(const ZipReader::Entry& entry, std::string_view archive) {
    if (entry.headerOffset >= archive.size() || archive.size() - entry.headerOffset < localSize) return std::nullopt;
    const std::string_view header = archive.substr(entry.headerOffset);
    if (!header.starts_with(localSignature)) return std::nullopt;
    const std::uint64_t start = localSize + shortNumber(header, 26) + shortNumber(header, 28);
    if (start > header.size() || entry.compressedSize > header.size() - start) return std::nullopt;
    return header.substr(start, entry.compressedSize);
}

}  // namespace

struct ZipMember::State {
    std::string path;
    std::uint64_t size = 0;
    std::uint32_t expectedCRC = 0;
    bool compressed = false;

    std::string_view input;  // what has not been taken yet
    std::uint64_t given = 0;
    std::uint32_t crc = 0;
    z_stream stream{};  // its own state points back at it, so it never moves

    ~State() {
        if (compressed) inflateEnd(&stream);
    }

    std::size_t inflateInto(char* bytes, std::size_t room);
};

/// Stops for good at the end of the compressed data and at the first damage in it.
std::size_t ZipMember::State::inflateInto(char* bytes, std::size_t room) {
    constexpr std::size_t most = std::numeric_limits<uInt>::max();
    room = std::min(room, most);
    stream.next_out = reinterpret_cast<Bytef*>(bytes);
    stream.avail_out = static_cast<uInt>(room);
    int status = Z_OK;
    while (stream.avail_out > 0 && status == Z_OK) {
        const std::size_t offered = std::min(input.size(), most);
        stream.next_in = reinterpret_cast<const Bytef*>(input.data());
        stream.avail_in = static_cast<uInt>(offered);
        status = inflate(&stream, Z_NO_FLUSH);
        input.remove_prefix(offered - stream.avail_in);
    }
    return room - stream.avail_out;
}

ZipMember::ZipMember(std::unique_ptr<State> state) : state_(std::move(state)) {}
ZipMember::ZipMember(ZipMember&&) noexcept = default;
ZipMember& ZipMember::operator=(ZipMember&&) noexcept = default;
ZipMember::~ZipMember() = default;

std::expected<ZipMember, ZipReader::Failure> ZipMember::open(const ZipReader::Entry& entry, std::string_view archive) {
    const auto data = storedData(entry, archive);
    if (!data || entry.size > ZipReader::largestMember) return failure(entry.path, " is damaged.");
    if (entry.method != stored && entry.method != deflated)
        return failure(entry.path, " uses a kind of compression that can’t be read.");
    if (entry.method == deflated && entry.size > 0 && data->empty()) return failure(entry.path, " is damaged.");

    auto state = std::make_unique<State>();
    state->path = entry.path;
    state->size = entry.size;
    state->expectedCRC = entry.crc32;
    state->input = *data;
    if (entry.method == deflated) {
        state->compressed = inflateInit2(&state->stream, -MAX_WBITS) == Z_OK;
        if (!state->compressed) return failure(entry.path, " is damaged.");
    }
    return ZipMember(std::move(state));
}

std::size_t ZipMember::read(char* bytes, std::size_t room) {
    State& state = *state_;
    std::size_t count = 0;
    if (state.compressed) {
        room = static_cast<std::size_t>(std::min<std::uint64_t>(room, state.size - state.given));
        count = room == 0 ? 0 : state.inflateInto(bytes, room);
    } else {
        count = state.input.copy(bytes, room);
        state.input.remove_prefix(count);
    }
    state.given += count;
    state.crc = libdeflate_crc32(state.crc, bytes, count);
    return count;
}

std::expected<void, ZipReader::Failure> ZipMember::verify() {
    char rest[16384];
    while (read(rest, sizeof rest) > 0) {
    }
    if (state_->given != state_->size || state_->crc != state_->expectedCRC)
        return failure(state_->path, " didn’t check out (the file may be damaged).");
    return {};
}

}  // namespace quorvel
