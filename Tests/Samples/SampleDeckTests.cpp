#include "Cards/Deck.h"
#include "Foundation/FileBytes.h"
#include "Pictures/PNGWriter.h"
#include "Samples/SampleArt.h"
#include "Samples/SampleDeck.h"
#include "Spreadsheet/CSV.h"
#include "Support/TemporaryFolder.h"

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& file) {
    const auto bytes = FileBytes::read(file);
    EXPECT_TRUE(bytes) << file;
    return bytes.value_or("");
}

std::map<std::string, std::string> contents(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files[fs::relative(entry.path(), folder).string()] = bytesOf(entry.path());
    return files;
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | std::uint8_t(bytes[offset + i]);
    return value;
}

TEST(SampleDeck, HasEightColumnsAndFourteenCards) {
    const TextRows rows = SampleDeck::rows();
    ASSERT_EQ(rows.rowCount(), 15u);
    for (std::size_t row = 0; row < rows.rowCount(); ++row) EXPECT_EQ(rows.cellCount(row), 8u) << row;
    EXPECT_EQ(rows.cell(0, 0), "Name");
    EXPECT_EQ(rows.cell(0, 7), "Flavor");
    for (std::size_t row = 1; row < rows.rowCount(); ++row) EXPECT_EQ(rows.cell(row, 7), "") << row;
    EXPECT_EQ(rows.cell(2, 3), "Deliver one order.\n*Moves fast while the market sleeps.*");
    EXPECT_EQ(rows.cell(6, 3), "Couriers can’t move this round.");
}

TEST(SampleDeck, ReadsAsADeckThatNeedsNoHelp) {
    const DataTable table = SampleDeck::table();
    EXPECT_EQ(table.sourceName, "Orchard Couriers.csv");
    const FieldMapping mapping = FieldMapping::guess(table.headers);
    const std::map<std::string, std::string> expected{{"title", "Name"},  {"text", "Text"}, {"cost", "Cost"},
                                                      {"type", "Type"},   {"art", "Art"},   {"icons", "Icons"},
                                                      {"quantity", "Qty"}};
    EXPECT_EQ(mapping.columns, expected);

    const Deck deck(table, mapping);
    ASSERT_EQ(deck.cards.size(), 14u);
    EXPECT_TRUE(deck.badQuantities.empty());
    EXPECT_EQ(Deck::totalCopies(deck.cards), 20);
    EXPECT_EQ(deck.cards[3].title(), "Lost Map");
    EXPECT_EQ(deck.cards[3].value("cost"), "");
    EXPECT_EQ(deck.cards[13].title(), "Lucky Penny");
    EXPECT_EQ(deck.cards[13].value("cost"), "0");
    EXPECT_EQ(deck.cards[13].rowNumber, 15);
}

TEST(SampleDeck, WritesASpreadsheetThatReadsBack) {
    const TemporaryFolder folder;
    ASSERT_TRUE(SampleDeck::write(folder.path()));
    const std::string bytes = bytesOf(folder / "Orchard Couriers.csv");
    EXPECT_TRUE(bytes.starts_with("Name,Type,Cost,Text,Art,Icons,Qty,Flavor\nRain Barrel,Tool,2,\"Once per turn"));
    EXPECT_TRUE(bytes.ends_with(",2,\n"));
    EXPECT_NE(
        bytes.find(",\"Deliver one order.\n*Moves fast while the market sleeps.*\",art/courier.png,\"moon, arrow\","),
        std::string::npos);
    EXPECT_NE(bytes.find("\nLost Map,Event,,Every player passes one card to the left.,art/map.png,key,1,\n"),
              std::string::npos);
    EXPECT_EQ(CSV::parse(CSV::decode(bytes)), SampleDeck::rows());
}

TEST(SampleDeck, WritesAPictureForEveryCardAndNothingElse) {
    const TemporaryFolder folder;
    ASSERT_TRUE(SampleDeck::write(folder.path()));
    const auto files = contents(folder.path());
    EXPECT_EQ(files.size(), 15u);
    const TextRows rows = SampleDeck::rows();
    for (std::size_t row = 1; row < rows.rowCount(); ++row) {
        const auto found = files.find(std::string(rows.cell(row, 4)));
        ASSERT_NE(found, files.end()) << rows.cell(row, 4);
        const std::string& png = found->second;
        EXPECT_TRUE(png.starts_with("\x89PNG"));
        EXPECT_EQ(bigEndian(png, 16), 900u);
        EXPECT_EQ(bigEndian(png, 20), 620u);
        const auto resolution = png.find("pHYs");
        ASSERT_NE(resolution, std::string::npos);
        EXPECT_EQ(bigEndian(png, resolution + 4), 11811u) << "300 dots per inch";
    }
}

TEST(SampleDeck, PaintsEachCardByItsNameItsTypeAndItsFirstIcon) {
    const struct {
        std::string_view file, name, type, icon;
    } cases[] = {
        {"art/vault.png", "Seed Vault", "Harvest", "leaf"},
        {"art/courier.png", "Night Courier", "Courier", "moon"},
        {"art/penny.png", "Lucky Penny", "Harvest", "coin"},
        {"art/map.png", "Lost Map", "Event", "key"},
    };
    const TemporaryFolder folder;
    ASSERT_TRUE(SampleDeck::write(folder.path()));
    for (const auto& each : cases) {
        const auto picture = SampleArt::draw(each.name, each.type, each.icon, 900, 620);
        ASSERT_TRUE(picture);
        EXPECT_TRUE(bytesOf(folder / each.file) == PNGWriter::encode(*picture, 300)) << each.file;
    }
}

TEST(SampleDeck, WritesTheSameBytesAgainOverWhatIsThere) {
    const TemporaryFolder folder;
    ASSERT_TRUE(SampleDeck::write(folder.path()));
    const auto first = contents(folder.path());
    std::ofstream(folder / "art/map.png") << "something else";
    ASSERT_TRUE(SampleDeck::write(folder.path()));
    EXPECT_EQ(contents(folder.path()), first);
}

TEST(SampleDeck, MakesItsFolderWithParents) {
    const TemporaryFolder folder;
    ASSERT_TRUE(SampleDeck::write(folder / "a/b c/ü"));
    EXPECT_TRUE(fs::exists(folder / "a/b c/ü/art/penny.png"));
}

TEST(SampleDeck, AFileInTheWayOfTheFolderFails) {
    const TemporaryFolder folder;
    std::ofstream(folder / "art") << "a file";
    const auto written = SampleDeck::write(folder.path());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().path, folder / "art");
    EXPECT_EQ(written.error().operation, FileFailure::Operation::makeFolder);
    EXPECT_FALSE(fs::exists(folder / "Orchard Couriers.csv"));
}

TEST(SampleDeck, WhatWasWrittenBeforeAFailureStays) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "art/scale.png");
    const auto written = SampleDeck::write(folder.path());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().path, folder / "art/scale.png");
    EXPECT_EQ(written.error().code, EISDIR);
    EXPECT_TRUE(fs::is_regular_file(folder / "art/map.png")) << "the picture before it";
    EXPECT_FALSE(fs::exists(folder / "art/bell.png")) << "the picture behind it";
    EXPECT_FALSE(fs::exists(folder / "Orchard Couriers.csv"));
}

TEST(SampleDeck, AFailureOfTheSpreadsheetIsTold) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "Orchard Couriers.csv");
    const auto written = SampleDeck::write(folder.path());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().path, folder / "Orchard Couriers.csv");
    EXPECT_TRUE(fs::exists(folder / "art/penny.png"));
}

}  // namespace
}  // namespace quorvel
