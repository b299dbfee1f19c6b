#include "Support/ZipWriter.h"

#include <algorithm>
#include <cstdlib>
#include <libdeflate.h>
#include <limits>
#include <memory>
#include <utility>
#include <zlib.h>

namespace quorvel::test {

namespace {

std::string little(std::uint64_t value, int width) {
    std::string bytes;
    for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

std::uint32_t crcOf(std::string_view bytes) {
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}

}  // namespace

std::string little16(std::uint64_t value) {
    return little(value, 2);
}

std::string little32(std::uint64_t value) {
    return little(value, 4);
}

std::string little64(std::uint64_t value) {
    return little(value, 8);
}

std::string deflated(std::string_view bytes) {
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
        libdeflate_alloc_compressor(6), libdeflate_free_compressor);
    if (!compressor) std::abort();
    std::string packed(libdeflate_deflate_compress_bound(compressor.get(), bytes.size()), '\0');
    packed.resize(
        libdeflate_deflate_compress(compressor.get(), bytes.data(), bytes.size(), packed.data(), packed.size()));
    return packed;
}

std::string deflatedRun(std::uint64_t count, char byte) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK)
        std::abort();
    std::string piece(1 << 20, byte);
    std::string packed;
    std::string room(1 << 16, '\0');
    int status = Z_OK;
    while (status == Z_OK) {
        if (stream.avail_in == 0) {
            stream.avail_in = static_cast<uInt>(std::min<std::uint64_t>(count, piece.size()));
            stream.next_in = reinterpret_cast<Bytef*>(piece.data());
            count -= stream.avail_in;
        }
        stream.next_out = reinterpret_cast<Bytef*>(room.data());
        stream.avail_out = static_cast<uInt>(room.size());
        status = deflate(&stream, count == 0 ? Z_FINISH : Z_NO_FLUSH);
        packed.append(room, 0, room.size() - stream.avail_out);
    }
    deflateEnd(&stream);
    return packed;
}

void ZipWriter::add(std::string path, std::string content, Method method) {
    Member member;
    member.path = std::move(path);
    member.content = std::move(content);
    member.method = method;
    add(std::move(member));
}

std::string ZipWriter::bytes(const End& end) const {
    std::string archive;
    std::string directory;
    for (const Member& member : members_) {
        const std::uint64_t offset = archive.size();
        const std::string packed =
            member.packed.value_or(member.method == Method::deflated ? deflated(member.content) : member.content);
        const std::uint16_t method = member.methodCode.value_or(static_cast<std::uint16_t>(member.method));
        const std::string sizes = little32(member.crc32.value_or(crcOf(member.content))) +
                                  little32(member.compressedSize.value_or(static_cast<std::uint32_t>(packed.size()))) +
                                  little32(member.size.value_or(static_cast<std::uint32_t>(member.content.size())));
        const std::string common =
            little16(member.flags) + little16(method) + little32(0x00210000) + sizes + little16(member.path.size());
        archive += "PK\x03\x04" + little16(20) + common + little16(member.localExtra.size()) + member.path +
                   member.localExtra + packed;
        directory += "PK\x01\x02" + little16(20) + little16(20) + common + little16(member.extra.size()) +
                     little16(member.comment.size()) + little16(0) + little16(0) + little32(0) +
                     little32(member.headerOffset.value_or(static_cast<std::uint32_t>(offset))) + member.path +
                     member.extra + member.comment;
    }
    const std::uint64_t directoryOffset = end.directoryOffset.value_or(archive.size());
    const std::uint64_t directorySize = end.directorySize.value_or(directory.size());
    const std::uint64_t count = end.count.value_or(members_.size());
    archive += directory;
    if (end.zip64) {
        const std::uint64_t place = end.zip64Offset.value_or(archive.size());
        archive += "PK\x06\x06" + little64(44) + little16(45) + little16(45) + little32(0) + little32(0) +
                   little64(count) + little64(count) + little64(directorySize) + little64(directoryOffset);
        archive += "PK\x06\x07" + little32(0) + little64(place) + little32(1);
    }
    const auto field = [&](std::uint64_t value, std::uint64_t most) {
        return end.zip64 ? most : std::min(value, most);
    };
    constexpr std::uint64_t most16 = std::numeric_limits<std::uint16_t>::max();
    constexpr std::uint64_t most32 = std::numeric_limits<std::uint32_t>::max();
    return archive + "PK\x05\x06" + little16(0) + little16(0) + little16(field(count, most16)) +
           little16(field(count, most16)) + little32(field(directorySize, most32)) +
           little32(field(directoryOffset, most32)) + little16(end.comment.size()) + end.comment;
}

}  // namespace quorvel::test
