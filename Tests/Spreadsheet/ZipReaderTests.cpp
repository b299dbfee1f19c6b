#include "Spreadsheet/HeapMeter.h"
#include "Spreadsheet/ZipReader.h"
#include "Support/ZipWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using test::little16;
using test::little32;
using test::little64;
using test::ZipWriter;
using Method = ZipWriter::Method;

constexpr std::size_t mebibyte = 1 << 20;

std::string messageOf(const auto& result) {
    return result ? "read" : result.error().message;
}

/// An archive of this one member.
std::string archiveOf(ZipWriter::Member member, const ZipWriter::End& end = {}) {
    ZipWriter writer;
    writer.add(std::move(member));
    return writer.bytes(end);
}

/// What reading the one member of an archive ends with: its bytes or the message.
std::string outcome(const ZipWriter::Member& member) {
    const std::string archive = archiveOf(member);
    const auto entries = ZipReader::entries(archive);
    if (!entries) return entries.error().message;
    const auto bytes = ZipReader::read(entries->at(0), archive);
    return bytes ? *bytes : bytes.error().message;
}

ZipWriter::Member member(std::string content, Method method = Method::deflated) {
    ZipWriter::Member result;
    result.path = "a.txt";
    result.content = std::move(content);
    result.method = method;
    return result;
}

constexpr std::string_view noArchive = "It isn’t a zip archive.";
constexpr std::string_view cutOff = "The file is damaged (its directory is cut off).";
constexpr std::string_view damagedDirectory = "The file’s directory is damaged.";
constexpr std::string_view damaged = "“a.txt” is damaged.";
constexpr std::string_view failedCheck = "“a.txt” didn’t check out (the file may be damaged).";

TEST(ZipReader, readsStoredAndDeflatedMembers) {
    const std::string large(300'000, 'x');
    for (const Method method : {Method::stored, Method::deflated})
        for (const std::string& content : {std::string("hello"), std::string(), large, std::string("\0\xFF", 2)})
            EXPECT_EQ(outcome(member(content, method)), content);
}

TEST(ZipReader, describesMembersInTheDirectorysOrder) {
    ZipWriter writer;
    writer.add("xl/workbook.xml", "workbook");
    writer.add("b", "same", Method::stored);
    writer.add("b", "twice", Method::stored);
    const std::string archive = writer.bytes();
    const auto entries = ZipReader::entries(archive);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 3U);
    EXPECT_EQ(entries->at(0).path, "xl/workbook.xml");
    EXPECT_EQ(entries->at(0).method, 8);
    EXPECT_EQ(entries->at(0).size, 8U);
    EXPECT_EQ(entries->at(0).headerOffset, 0U);
    EXPECT_EQ(entries->at(2).path, "b");
    EXPECT_EQ(ZipReader::read("b", archive, &*entries)->value(), "same");
}

TEST(ZipReader, knowsTheCheckValueOfItsCRC) {
    const std::string archive = archiveOf(member("123456789"));
    EXPECT_EQ(ZipReader::entries(archive)->at(0).crc32, 0xCBF43926U);
    ZipWriter::Member right = member("123456789");
    right.crc32 = 0xCBF43926;
    EXPECT_EQ(outcome(right), "123456789");
}

TEST(ZipReader, refusesWhatIsNoArchive) {
    const std::string sound = archiveOf(member("hello"));
    const std::string end = ZipWriter().bytes();
    EXPECT_EQ(messageOf(ZipReader::entries("")), noArchive);
    EXPECT_EQ(messageOf(ZipReader::entries("Name,Cost\nAxe,3\n")), noArchive);
    EXPECT_EQ(messageOf(ZipReader::entries(sound + std::string(70'000, 'j'))), noArchive);
    for (std::size_t cut = 1; cut < end.size(); ++cut)
        EXPECT_EQ(messageOf(ZipReader::entries(std::string(100, ' ') + end.substr(0, end.size() - cut))), noArchive);
}

TEST(ZipReader, findsTheEndRecordBehindTheLongestComment) {
    ZipWriter::End end;
    end.comment = std::string(65'535, 'c');
    EXPECT_TRUE(ZipReader::entries(archiveOf(member("hello"), end)));
    EXPECT_EQ(messageOf(ZipReader::entries(archiveOf(member("hello"), end) + "x")), noArchive);
}

TEST(ZipReader, takesTheLastSignatureEvenInAComment) {
    ZipWriter::End misleading;
    misleading.comment = "see PK\x05\x06";
    EXPECT_EQ(messageOf(ZipReader::entries(archiveOf(member("hello"), misleading))), noArchive);
    misleading.comment += std::string(18, '\0');
    const auto entries = ZipReader::entries(archiveOf(member("hello"), misleading));
    ASSERT_TRUE(entries);
    EXPECT_THAT(*entries, testing::IsEmpty());
}

TEST(ZipReader, givesAnEmptyListForAnArchiveWithoutMembers) {
    const auto entries = ZipReader::entries(ZipWriter().bytes());
    ASSERT_TRUE(entries);
    EXPECT_THAT(*entries, testing::IsEmpty());
}

TEST(ZipReader, checksTheDirectorysBounds) {
    const std::string sound = archiveOf(member("hello"));
    const auto with = [](auto change) {
        ZipWriter::End end;
        change(end);
        return messageOf(ZipReader::entries(archiveOf(member("hello"), end)));
    };
    EXPECT_EQ(with([&](auto& end) { end.directoryOffset = sound.size() + 1; }), cutOff);
    EXPECT_EQ(with([&](auto& end) { end.directorySize = sound.size() + 1; }), cutOff);
    EXPECT_EQ(with([&](auto& end) { end.directoryOffset = sound.size() - 10; }), cutOff);
    EXPECT_EQ(with([&](auto& end) { end.directorySize = 0xFFFFFFFF; }), cutOff);
    EXPECT_EQ(with([](auto& end) { end.directorySize = 45; }), damagedDirectory);
    EXPECT_EQ(with([](auto& end) { end.directorySize = 46 + 4; }), damagedDirectory);  // its name runs out of it
    EXPECT_EQ(with([](auto& end) { end.directoryOffset = 1; }), damagedDirectory);
    EXPECT_EQ(with([](auto& end) { end.count = 2; }), damagedDirectory);
    EXPECT_EQ(with([](auto& end) { end.count = 0xFFFF; }), damagedDirectory);  // no locator: the count stands
    EXPECT_EQ(with([](auto& end) { end.count = 0; }), "read");
}

TEST(ZipReader, ignoresEntriesBehindTheCount) {
    ZipWriter writer;
    writer.add("a", "1");
    writer.add("b", "2");
    ZipWriter::End end;
    end.count = 1;
    EXPECT_EQ(ZipReader::entries(writer.bytes(end))->size(), 1U);
}

TEST(ZipReader, skipsCommentsWithoutCheckingThem) {
    ZipWriter writer;
    ZipWriter::Member commented = member("hello");
    commented.comment = "a comment";
    writer.add(commented);
    writer.add("b", "2");
    EXPECT_EQ(ZipReader::entries(writer.bytes())->size(), 2U);

    // A comment that claims to run out of the directory harms only what should follow it.
    std::string archive = archiveOf(member("hello"));
    const std::size_t header = archive.find("PK\x01\x02");
    archive.replace(header + 32, 2, little16(0xFFFF));
    EXPECT_EQ(messageOf(ZipReader::entries(archive)), "read");
}

TEST(ZipReader, readsZIP64) {
    ZipWriter writer;
    ZipWriter::Member large = member("hello");
    large.size = large.compressedSize = large.headerOffset = 0xFFFFFFFF;
    large.extra = little16(0x5455) + little16(5) + std::string(5, 't') + little16(1) + little16(24) + little64(5) +
                  little64(test::deflated("hello").size()) + little64(0);
    writer.add(large);
    ZipWriter::End end;
    end.zip64 = true;
    const std::string archive = writer.bytes(end);
    const auto entries = ZipReader::entries(archive);
    ASSERT_TRUE(entries) << entries.error().message;
    EXPECT_EQ(entries->at(0).size, 5U);
    EXPECT_EQ(ZipReader::read("a.txt", archive)->value(), "hello");
}

TEST(ZipReader, takesFromTheZIP64FieldOnlyWhatTheHeaderLeavesOut) {
    ZipWriter::Member partly = member("hello", Method::stored);
    partly.compressedSize = 0xFFFFFFFF;
    partly.extra = little16(1) + little16(8) + little64(5);
    EXPECT_EQ(outcome(partly), "hello");

    ZipWriter::Member cut = member("hello", Method::stored);
    cut.size = 0xFFFFFFFF;
    cut.extra = little16(1) + little16(7) + std::string(7, '\0');
    EXPECT_EQ(outcome(cut), damaged);
}

TEST(ZipReader, asksTheZIP64RecordWhenAnyFieldLeavesItToIt) {
    ZipWriter writer;
    writer.add(member("hello"));
    ZipWriter::End end;
    end.zip64 = true;
    const std::string sound = writer.bytes(end);
    const std::size_t record = sound.find("PK\x06\x06");
    const std::size_t place = sound.size() - 22;
    const auto numbers = [](std::uint64_t count, std::uint64_t size, std::uint64_t offset) {
        return little16(count) + little32(size) + little32(offset);
    };
    const auto outcomeWith = [&](const std::string& fields, std::string archive) {
        archive.replace(place + 10, 10, fields);
        const auto entries = ZipReader::entries(archive);
        return entries ? std::to_string(entries->size()) + " members" : entries.error().message;
    };
    for (const std::string& fields : {numbers(0xFFFF, 7, 7), numbers(7, 0xFFFFFFFF, 7), numbers(7, 7, 0xFFFFFFFF)})
        EXPECT_EQ(outcomeWith(fields, sound), "1 members");
    EXPECT_EQ(outcomeWith(numbers(0, 46, 52), sound), "0 members");  // it isn't asked
    std::string unasked = sound;
    unasked[record] = 'X';
    EXPECT_EQ(outcomeWith(numbers(0, 0, 0), unasked), "0 members");
    EXPECT_EQ(outcomeWith(numbers(0xFFFF, 0, 0), unasked), "The file’s ZIP64 record is damaged.");
    // Without a locator the fields stand as they are.
    std::string lost = sound;
    lost[place - 20] = 'X';
    EXPECT_EQ(outcomeWith(numbers(1, 0xFFFFFFFF, 0), lost), cutOff);
    EXPECT_EQ(outcomeWith(numbers(1, 0, 0xFFFFFFFF), lost), cutOff);
    EXPECT_EQ(outcomeWith(numbers(0xFFFF, 0, 0), lost), damagedDirectory);
}

TEST(ZipReader, takesZIP64ValuesInTheirOrderFromEveryRecordOfTheirs) {
    const auto with = [](std::string extra) {
        ZipWriter::Member large = member("hello", Method::stored);
        large.size = 0xFFFFFFFF;
        large.extra = std::move(extra);
        return outcome(large);
    };
    EXPECT_EQ(with(little16(1) + little16(8) + little64(5)), "hello");
    EXPECT_EQ(with(little16(1) + little16(8) + little64(4) + little16(1) + little16(8) + little64(5)), "hello");
    EXPECT_EQ(with(little16(1) + little16(0) + little64(5)), "hello");       // there, if not in the record
    EXPECT_EQ(with(little16(1) + little16(0xFFFF) + little64(5)), "hello");  // a record that says it is longer
    EXPECT_EQ(with(little16(2) + little16(8) + little64(5)), damaged);
    EXPECT_EQ(with(little16(2) + little16(0xFFFF) + little16(1) + little16(8) + little64(5)), damaged);
    EXPECT_EQ(with(little16(1) + little16(8) + little64(~std::uint64_t{0})), damaged);
    EXPECT_EQ(with(little16(1)), damaged);
}

TEST(ZipReader, reportsADamagedZIP64Record) {
    const std::string_view message = "The file’s ZIP64 record is damaged.";
    const std::size_t soundSize = archiveOf(member("hello")).size();
    for (const std::uint64_t offset : {std::uint64_t{0}, std::uint64_t{soundSize + 54}, ~std::uint64_t{0}}) {
        ZipWriter::End end;
        end.zip64 = true;
        end.zip64Offset = offset;
        EXPECT_EQ(messageOf(ZipReader::entries(archiveOf(member("hello"), end))), message) << offset;
    }
    ZipWriter::End lying;
    lying.zip64 = true;
    lying.directorySize = ~std::uint64_t{0};
    lying.directoryOffset = 2;
    EXPECT_EQ(messageOf(ZipReader::entries(archiveOf(member("hello"), lying))), cutOff);
    lying.directorySize.reset();
    lying.directoryOffset.reset();
    lying.count = ~std::uint64_t{0};
    EXPECT_EQ(messageOf(ZipReader::entries(archiveOf(member("hello"), lying))), damagedDirectory);
}

TEST(ZipReader, decodesNames) {
    const auto nameOf = [](std::string path, std::uint16_t flags) {
        ZipWriter::Member named = member("x");
        named.path = std::move(path);
        named.flags = flags;
        return ZipReader::entries(archiveOf(named))->at(0).path;
    };
    EXPECT_EQ(nameOf("caf\xE9", 0), "café");
    EXPECT_EQ(nameOf("café", 0x800), "café");
    EXPECT_EQ(nameOf("café", 0), "cafÃ©");
    EXPECT_EQ(nameOf("caf\xE9!", 0x800), "caf\uFFFD!");
    EXPECT_EQ(nameOf("a\\b/c", 0x800), "a\\b/c");
    EXPECT_EQ(nameOf("", 0x800), "");
}

TEST(ZipReader, findsPathsExactlyThenWithoutRegardToCase) {
    ZipWriter writer;
    writer.add("xl/WORKBOOK.xml", "upper");
    writer.add("xl/workbook.xml", "lower");
    writer.add("xl/Übung.xml", "umlaut");
    const std::string archive = writer.bytes();
    const auto text = [&](std::string_view path) {
        const auto found = ZipReader::read(path, archive);
        return found && *found ? **found : "nothing";
    };
    EXPECT_EQ(text("xl/workbook.xml"), "lower");
    EXPECT_EQ(text("XL/Workbook.xml"), "upper");
    EXPECT_EQ(text("XL/ÜBUNG.XML"), "umlaut");
    EXPECT_EQ(text("xl/übung.xml"), "umlaut");
    EXPECT_EQ(text("xl/workbook"), "nothing");
    EXPECT_EQ(text("xl/workbook.xml2"), "nothing");
    EXPECT_EQ(messageOf(ZipReader::read("a", "no archive")), noArchive);
}

TEST(ZipReader, reportsDamagedMembers) {
    const auto with = [](auto change, Method method = Method::deflated) {
        ZipWriter::Member changed = member("hello, hello, hello", method);
        change(changed);
        return outcome(changed);
    };
    EXPECT_EQ(with([](auto& m) { m.headerOffset = 0xFFFFFFF0; }), damaged);
    EXPECT_EQ(with([](auto& m) { m.headerOffset = 1; }), damaged);
    EXPECT_EQ(with([](auto& m) { m.compressedSize = 100'000; }), damaged);
    EXPECT_EQ(with([](auto& m) { m.packed = ""; }), damaged);
    EXPECT_EQ(with([](auto& m) { m.size = 0x10000001; }), damaged);
    EXPECT_EQ(with([](auto& m) { m.size = 0x10000001; }, Method::stored), damaged);
    EXPECT_EQ(with([](auto& m) { m.methodCode = 12; }), "“a.txt” uses a kind of compression that can’t be read.");
    EXPECT_EQ(with([](auto& m) { m.methodCode = 12, m.size = 0x10000001; }), damaged);
    EXPECT_EQ(with([](auto& m) { m.crc32 = 1; }), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.crc32 = 1; }, Method::stored), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.size = 5; }), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.size = 50; }), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.size = 5; }, Method::stored), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.compressedSize = 5; }, Method::stored), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.packed = "\xFF\xFF\xFF\xFF not deflated"; }), failedCheck);
    EXPECT_EQ(with([](auto& m) { m.packed = m.content; }), failedCheck);
}

TEST(ZipReader, decodesNothingForADeflatedMemberWithoutBytes) {
    ZipWriter::Member empty = member("");
    empty.packed = "garbage";
    EXPECT_EQ(outcome(empty), "");
    empty.packed = "";
    EXPECT_EQ(outcome(empty), "");
    empty.crc32 = 7;
    EXPECT_EQ(outcome(empty), failedCheck);
}

TEST(ZipReader, takesLengthsOfNameAndExtraFromTheLocalHeader) {
    ZipWriter::Member different = member("hello");
    different.localExtra = little16(0xCAFE) + little16(3) + "abc";
    EXPECT_EQ(outcome(different), "hello");
}

TEST(ZipReader, cutsAMemberThatIsLongerThanItSays) {
    // The cut member checks out if the directory's sum is that of what is left.
    ZipWriter::Member cut = member("hello, hello, hello");
    cut.size = 5;
    cut.crc32 = 0x3610A686;  // of "hello"
    EXPECT_EQ(outcome(cut), "hello");
}

TEST(ZipReader, letsMembersOverlap) {
    ZipWriter writer;
    ZipWriter::Member first = member("hello", Method::stored);
    ZipWriter::Member second = first;
    second.path = "other";
    second.headerOffset = 0;
    writer.add(first);
    writer.add(second);
    const std::string archive = writer.bytes();
    EXPECT_EQ(ZipReader::read("a.txt", archive)->value(), "hello");
    EXPECT_EQ(ZipReader::read("other", archive)->value(), "hello");
}

TEST(ZipReader, readsTheLargestMember) {
    ZipWriter::Member largest = member("");
    largest.packed = test::deflatedRun(ZipReader::largestMember, '\0');
    largest.size = static_cast<std::uint32_t>(ZipReader::largestMember);
    largest.crc32 = 0x2A0E7DBB;  // of 256 MiB of zeros
    const std::string archive = archiveOf(largest);
    const auto bytes = ZipReader::read("a.txt", archive);
    ASSERT_TRUE(bytes) << bytes.error().message;
    EXPECT_EQ((*bytes)->size(), ZipReader::largestMember);
}

TEST(ZipReader, boundsABombByWhatItSaysOfItself) {
    ZipWriter::Member bomb = member("");
    bomb.packed = test::deflatedRun(3 * ZipReader::largestMember, 'b');
    bomb.crc32 = 1;
    for (const auto& [size, message] :
         {std::pair(std::uint32_t{1000}, failedCheck), std::pair(std::uint32_t{0x10000001}, damaged),
          std::pair(std::uint32_t{0x30000000}, damaged)}) {
        bomb.size = size;
        const std::string archive = archiveOf(bomb);
        const test::HeapMeter meter;
        EXPECT_EQ(messageOf(ZipReader::read("a.txt", archive)), message);
        EXPECT_LT(meter.peak(), mebibyte);
    }
}

TEST(ZipReader, reservesNothingForEntriesThatArentThere) {
    ZipWriter::End end;
    end.zip64 = true;
    end.count = 1'000'000'000'000;
    const std::string archive = archiveOf(member("hello"), end);
    const test::HeapMeter meter;
    EXPECT_EQ(messageOf(ZipReader::entries(archive)), damagedDirectory);
    EXPECT_LT(meter.peak(), mebibyte);
}

TEST(ZipReader, survivesEveryTruncationAndEveryChangedByte) {
    ZipWriter writer;
    writer.add("a.txt", "hello, hello, hello");
    writer.add("b.txt", "stored", Method::stored);
    const std::string archive = writer.bytes();
    const auto readAll = [](std::string_view bytes) {
        const auto entries = ZipReader::entries(bytes);
        if (!entries) return;
        for (const auto& entry : *entries) (void)ZipReader::read(entry, bytes);
    };
    for (std::size_t size = 0; size < archive.size(); ++size) {
        // In a block of its own, so that a look behind the end is noticed.
        const std::string cut = archive.substr(0, size);
        EXPECT_FALSE(ZipReader::entries(cut)) << size;
    }
    for (std::size_t place = 0; place < archive.size(); ++place)
        for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
            std::string changed = archive;
            changed[place] = static_cast<char>(value);
            readAll(changed);
        }
}

}  // namespace
}  // namespace quorvel
