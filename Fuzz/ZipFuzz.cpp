#include "Check.h"
#include "Spreadsheet/ZipMember.h"
#include "Spreadsheet/ZipReader.h"

#include <libdeflate.h>
#include <string>
#include <string_view>

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view archive(reinterpret_cast<const char*>(data), size);
    const auto entries = ZipReader::entries(archive);
    if (!entries) {
        CHECK(!entries.error().message.empty());
        return 0;
    }
    CHECK(entries->size() <= size / 46);
    std::uint64_t budget = std::uint64_t{64} << 20;  // many entries may name one large member
    for (const auto& entry : *entries) {
        const auto* found = ZipReader::find(entry.path, *entries);
        CHECK(found && found->path == entry.path && found <= &entry);
        if (entry.size > budget) continue;
        budget -= entry.size;
        const auto bytes = ZipReader::read(entry, archive);
        if (!bytes) {
            CHECK(!bytes.error().message.empty());
            continue;
        }
        CHECK(bytes->size() == entry.size && entry.size <= ZipReader::largestMember);
        CHECK(libdeflate_crc32(0, bytes->data(), bytes->size()) == entry.crc32);
        // In pieces it is the same.
        auto member = ZipMember::open(entry, archive);
        CHECK(member.has_value());
        std::string pieces;
        char piece[7];
        while (const std::size_t count = member->read(piece, sizeof piece)) {
            pieces.append(piece, count);
            if (pieces.size() > 100'000) return 0;
        }
        CHECK(pieces == *bytes && member->verify().has_value());
    }
    return 0;
}
