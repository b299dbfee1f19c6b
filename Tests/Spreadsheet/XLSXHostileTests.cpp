#include "Spreadsheet/DataLoader.h"
#include "Spreadsheet/HeapMeter.h"
#include "Spreadsheet/XLSX.h"
#include "Support/WorkbookWriter.h"

#include <gtest/gtest.h>
#include <utility>

namespace quorvel {
namespace {

using test::HeapMeter;
using test::workbookBytes;
using test::WorkbookParts;
using test::worksheetXML;
using test::ZipWriter;

constexpr std::size_t mebibyte = std::size_t{1} << 20;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

std::string failureOf(const std::string& bytes) {
    const auto rows = XLSX::rows(bytes, 0);
    return rows ? "read" : rows.error().message;
}

/// A workbook whose one sheet lies in the archive as told.
std::string withSheet(ZipWriter::Member sheet) {
    WorkbookParts parts;
    parts.workbook = "<workbook><sheet name='S'/></workbook>";
    ZipWriter archive = test::workbookArchive(parts);
    sheet.path = "xl/worksheets/sheet1.xml";
    archive.add(std::move(sheet));
    return archive.bytes();
}

TEST(XLSXHostile, refusesAWorksheetOf500MegabytesByItsSize) {
    ZipWriter::Member sheet;
    sheet.packed = test::deflatedRun(500'000'000, ' ');
    sheet.size = 500'000'000;
    const std::string bytes = withSheet(sheet);
    const HeapMeter meter;
    EXPECT_EQ(failureOf(bytes), "“xl/worksheets/sheet1.xml” is damaged.");
    EXPECT_LT(meter.peak(), mebibyte);
}

TEST(XLSXHostile, boundsABombThatLiesAboutItsSize) {
    ZipWriter::Member sheet;
    sheet.packed = test::deflatedRun(500'000'000, ' ');
    sheet.size = 1000;
    const std::string bytes = withSheet(sheet);
    const HeapMeter meter;
    EXPECT_EQ(failureOf(bytes), "“xl/worksheets/sheet1.xml” didn’t check out (the file may be damaged).");
    EXPECT_LT(meter.peak(), mebibyte);
}

TEST(XLSXHostile, readsAWorksheetOf250Megabytes) {
    // Of short numbers, so that there are as many cells to a byte as there can be.
    constexpr std::size_t columns = 500;
    constexpr std::size_t rows = 30'000;
    const std::string row = "<row>" + repeated("<c><v>1</v></c>", columns) + "</row>";
    ZipWriter::Member sheet;
    sheet.content = worksheetXML(repeated(row, rows));
    EXPECT_GT(sheet.content.size(), 220'000'000U);
    EXPECT_LT(sheet.content.size(), 0x10000000U);
    const std::string bytes = withSheet(std::exchange(sheet, {}));
    constexpr std::size_t limit = rows * columns * (64 + 1) + 300 * mebibyte;
    const HeapMeter meter;
    auto grid = XLSX::rows(bytes, 0);
    ASSERT_TRUE(grid) << grid.error().message;
    EXPECT_LT(meter.peak(), limit);
    EXPECT_EQ(grid->cell(rows - 1, columns - 1), "1");
    const DataTable table(std::move(*grid), "a.xlsx");
    EXPECT_EQ(table.rows.rowCount(), rows - 1);
    EXPECT_LT(meter.peak(), limit);
}

TEST(XLSXHostile, readsACellOf250Megabytes) {
    constexpr std::size_t length = 250'000'000;
    ZipWriter::Member sheet;
    sheet.content = worksheetXML("<c r='A1' t='str'><v>" + std::string(length, 'x') + "</v></c>");
    const std::string bytes = withSheet(std::move(sheet));
    const HeapMeter meter;
    const auto rows = XLSX::rows(bytes, 0);
    ASSERT_TRUE(rows) << rows.error().message;
    EXPECT_EQ(rows->cell(0, 0).size(), length);
    EXPECT_LT(meter.peak(), length + 300 * mebibyte);
}

TEST(XLSXHostile, keepsTwoCellsAtOppositeCornersSmall) {
    const std::string bytes = workbookBytes("<c r='A1'><v>1</v></c><c r='SF100000'><v>2</v></c>");
    const HeapMeter meter;
    auto rows = XLSX::rows(bytes, 0);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->rowCount(), 100'000U);
    EXPECT_EQ(rows->cellCount(5), 500U);
    EXPECT_EQ(rows->cell(0, 0), "1");
    EXPECT_EQ(rows->cell(99'999, 499), "2");
    EXPECT_EQ(rows->cell(99'999, 498), "");
    const DataTable table(std::move(*rows), "a.xlsx");
    EXPECT_EQ(table.headers.size(), 500U);
    EXPECT_EQ(table.rows.rowCount(), 1U);
    EXPECT_EQ(table.rows.cell(0, 499), "2");
    EXPECT_LT(meter.peak(), 8 * mebibyte);
}

TEST(XLSXHostile, keepsAColumnAtTheRightSmall) {
    std::string cells;
    for (int row = 1; row <= 100'000; ++row) cells += "<c r='SF" + std::to_string(row) + "'><v>1</v></c>";
    const std::string bytes = workbookBytes(cells);
    const HeapMeter meter;
    auto rows = XLSX::rows(bytes, 0);
    ASSERT_TRUE(rows);
    const DataTable table(std::move(*rows), "a.xlsx");
    EXPECT_EQ(table.rows.rowCount(), 99'999U);
    EXPECT_EQ(table.rows.cell(99'998, 499), "1");
    EXPECT_LT(meter.peak(), 20 * mebibyte);
}

TEST(XLSXHostile, sharesOneLongTextBetweenAllItsCells) {
    WorkbookParts parts;
    parts.sharedStrings = test::sharedStringsXML(
        {"<t>" + std::string(20 * mebibyte, ' ') + "</t>", "<t>" + std::string(20 * mebibyte, 'x') + "&#13;</t>"});
    const std::string blanks = "<row>" + repeated("<c t='s'><v>0</v></c>", 500) + "</row>";
    const std::string texts = "<row>" + repeated("<c t='s'><v>1</v></c>", 500) + "</row>";
    const std::string bytes = workbookBytes(repeated(blanks, 1000) + repeated(texts, 1000), parts);
    const HeapMeter meter;
    const auto table = DataLoader::table(bytes, "a.xlsx", 0);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->rows.rowCount(), 999U);
    EXPECT_EQ(table->rowNumbers.front(), 1002);
    EXPECT_EQ(table->rows.cell(998, 499).size(), 20 * mebibyte + 1);
    EXPECT_EQ(table->rows.cell(998, 499).back(), '\n');
    EXPECT_LT(meter.peak(), 500 * mebibyte);  // most of it the names of 500 columns
}

TEST(XLSXHostile, readsAMillionSheets) {
    std::string list;
    std::string relationships;
    for (int i = 1; i <= 1'000'000; ++i) {
        list += "<sheet name='" + std::to_string(i) + "' r:id='r" + std::to_string(i) + "'/>";
        relationships += "<Relationship Id='r" + std::to_string(i) + "' Target='worksheets/sheet1.xml'/>";
    }
    WorkbookParts parts;
    parts.workbook = "<workbook xmlns:r='r'>" + list + "</workbook>";
    parts.relationships = "<Relationships>" + relationships + "</Relationships>";
    parts.sheets = {{"S", worksheetXML("<c r='A1'><v>7</v></c>")}};
    const std::string bytes = workbookBytes(parts);
    auto workbook = XLSX::Workbook::open(bytes);
    ASSERT_TRUE(workbook);
    EXPECT_EQ(workbook->sheetCount(), 1'000'000U);
    EXPECT_EQ(std::move(*workbook).rows(999'999)->cell(0, 0), "7");
}

TEST(XLSXHostile, keepsTheListOfSheetsSmall) {
    WorkbookParts parts;
    parts.workbook = "<workbook>" + repeated("<sheet name=''/>", 1'000'000) + "</workbook>";
    const std::string bytes = workbookBytes(parts);
    const HeapMeter meter;
    const auto workbook = XLSX::Workbook::open(bytes);
    ASSERT_TRUE(workbook);
    EXPECT_EQ(workbook->sheet(999'999).path, "xl/worksheets/sheet1000000.xml");
    EXPECT_LT(meter.peak(), 48 * mebibyte);  // three times the list
}

TEST(XLSXHostile, sharesOneLongTargetBetweenAllItsSheets) {
    WorkbookParts parts;
    parts.relationships =
        "<Relationships><Relationship Id='r' Target='" + std::string(mebibyte, 'x') + "'/></Relationships>";
    parts.workbook = "<workbook>" + repeated("<sheet name='S' id='r'/>", 100'000) + "</workbook>";
    const std::string bytes = workbookBytes(parts);
    const HeapMeter meter;
    EXPECT_EQ(failureOf(bytes), "The sheet “S” is missing from the file.");
    EXPECT_LT(meter.peak(), 32 * mebibyte);
}

TEST(XLSXHostile, readsAMillionMembers) {
    ZipWriter archive;
    ZipWriter::Member filler;
    filler.method = ZipWriter::Method::stored;
    for (int i = 0; i < 300'000; ++i) {
        filler.path = "xl/workbook.xmL" + std::to_string(i);
        archive.add(filler);
    }
    WorkbookParts parts;
    parts.sheets = {{"S", worksheetXML("<c r='A1'><v>7</v></c>")}};
    archive.add(test::workbookArchive(parts));
    ZipWriter::End end;
    end.zip64 = true;
    EXPECT_EQ(XLSX::rows(archive.bytes(end), 0)->cell(0, 0), "7");
}

TEST(XLSXHostile, readsAMillionSharedStrings) {
    std::vector<std::string> items;
    for (int i = 0; i < 1'000'000; ++i) items.push_back("<t>" + std::to_string(i) + "</t>");
    WorkbookParts parts;
    parts.sharedStrings = test::sharedStringsXML(items);
    const std::string bytes = workbookBytes("<c r='A1' t='s'><v>999999</v></c>", parts);
    const HeapMeter meter;
    EXPECT_EQ(XLSX::rows(bytes, 0)->cell(0, 0), "999999");
    EXPECT_LT(meter.peak(), 64 * mebibyte);
}

TEST(XLSXHostile, trustsNoCountOfSharedStrings) {
    WorkbookParts parts;
    parts.sharedStrings = "<sst count='4000000000' uniqueCount='4294967295'><si><t>only</t></si></sst>";
    const std::string bytes = workbookBytes("<c r='A1' t='s'><v>0</v></c><c t='s'><v>4294967294</v></c>", parts);
    const HeapMeter meter;
    const auto rows = XLSX::rows(bytes, 0);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->cell(0, 0), "only");
    EXPECT_EQ(rows->cellCount(0), 1U);
    EXPECT_LT(meter.peak(), mebibyte);
}

TEST(XLSXHostile, trustsNoIndex) {
    for (const char* index : {"9223372036854775807", "-9223372036854775808", "18446744073709551616", "4294967296"}) {
        WorkbookParts parts;
        parts.sharedStrings = test::sharedStringsXML({"<t>x</t>"});
        parts.styles = test::stylesXML({"0"});
        const std::string number(index);
        const auto rows = XLSX::rows(
            workbookBytes("<c r='A1' t='s'><v>" + number + "</v></c><c r='B1' s='" + number + "'><v>1</v></c>", parts),
            0);
        ASSERT_TRUE(rows);
        EXPECT_EQ(rows->cell(0, 0), "");
        EXPECT_EQ(rows->cell(0, 1), "1");
    }
}

TEST(XLSXHostile, readsCellsBehindEveryLimit) {
    const std::string cells =
        "<row r='1048576'><c r='XFD1048576'><v>1</v></c></row><row r='2000000'><c><v>2</v></c></row>"
        "<row r='2'><c r='ACOG2'><v>3</v></c></row>" +
        repeated("<row/>", 100'000) + "<row r='2000000'/>" + repeated("<row/>", 10) + "<row r='3'>" +
        repeated("<c/>", 100'000) + "<c><v>4</v></c></row>";
    const auto rows = XLSX::rows(workbookBytes(cells), 0);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->rowCount(), 2U);  // the reference to a column past all others is refused, so its cell comes first
    EXPECT_EQ(rows->cell(1, 0), "3");
    EXPECT_EQ(rows->cellCount(1), 1U);
}

TEST(XLSXHostile, sortsAMillionCellsGivenBackwards) {
    std::string cells;
    for (int row = 2000; row > 0; --row)
        cells += "<row r='" + std::to_string(row) + "'>" + repeated("<c><v>1</v></c>", 500) + "</row>";
    const auto rows = XLSX::rows(workbookBytes(cells + cells), 0);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->rowCount(), 2000U);
    EXPECT_EQ(rows->cell(1999, 499), "1");
}

TEST(XLSXHostile, stopsAtNestedEntities) {
    std::string laughs = "<!DOCTYPE sst [<!ENTITY e0 'ha'>";
    for (int i = 1; i < 40; ++i) {
        const std::string before = "&e" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + repeated(before, 10) + "'>";
    }
    WorkbookParts parts;
    parts.sharedStrings = laughs + "]><sst><si><t>&e39;</t></si></sst>";
    const HeapMeter meter;
    EXPECT_EQ(failureOf(workbookBytes("", parts)),
              "Part of the workbook couldn’t be read (a document type declaration).");
    EXPECT_LT(meter.peak(), 4 * mebibyte);
}

TEST(XLSXHostile, stopsAtDeepNesting) {
    EXPECT_EQ(failureOf(workbookBytes(repeated("<c>", 10'000'000))),
              "Part of the workbook couldn’t be read (elements nested too deeply).");
}

TEST(XLSXHostile, boundsWhatPaddingMakesOfNumbers) {
    constexpr std::size_t rows = 4000;
    constexpr std::size_t columns = 500;
    WorkbookParts parts;
    parts.styles = test::stylesXML({std::string(64, '0'), std::string(255, '0')});
    const std::string row =
        "<row>" + repeated("<c s=\"0\"><v>1</v></c><c s=\"1\"><v>1</v></c>", columns / 2) + "</row>";
    const std::string bytes = workbookBytes(repeated(row, rows), parts);
    const HeapMeter meter;
    const auto grid = XLSX::rows(bytes, 0);
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->cell(rows - 1, 0), std::string(63, '0') + "1");
    EXPECT_EQ(grid->cell(rows - 1, 1), "1");
    EXPECT_LT(meter.peak(), rows * columns * (64 + 33));
}

TEST(XLSXHostile, classifiesALongFormatOnce) {
    WorkbookParts parts;
    parts.styles = "<styleSheet><numFmt numFmtId='200' formatCode='" + std::string(4 * mebibyte, '0') + "'/><cellXfs>" +
                   repeated("<xf numFmtId='200'/>", 100'000) + "</cellXfs></styleSheet>";
    const auto rows = XLSX::rows(workbookBytes("<c r='A1' s='99999'><v>7</v></c>", parts), 0);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->cell(0, 0), "7");
}

TEST(XLSXHostile, readsOverlappingMembers) {
    // One local header serves as every part: what is no list of sheets gives none.
    ZipWriter archive;
    for (const char* path : {"xl/workbook.xml", "xl/styles.xml", "xl/sharedStrings.xml", "xl/worksheets/sheet1.xml"}) {
        ZipWriter::Member member;
        member.path = path;
        member.content = "<workbook><sheet name='S'/><si><t>text</t></si><c r='A1' t='s'><v>0</v></c></workbook>";
        member.method = ZipWriter::Method::stored;
        member.headerOffset = 0;
        archive.add(member);
    }
    const auto rows = XLSX::rows(archive.bytes(), 0);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->cell(0, 0), "text");
}

/// Of every kind of part a little.
std::string smallWorkbook() {
    WorkbookParts parts;
    parts.sharedStrings = test::sharedStringsXML(
        {"<t>Name</t>", "<r><t>Cost &amp; </t></r><r><t>more</t></r>", "<t>漢</t><rPh><t>か</t></rPh>"});
    parts.styles = test::stylesXML({"General", "yyyy-mm-dd", "000"});
    parts.relationships = "<Relationships><Relationship Id='rId1' Target='worksheets/sheet1.xml'/></Relationships>";
    parts.workbookProperties = "<workbookPr date1904='0'/>";
    return workbookBytes(
        "<row r='1'><c r='A1' t='s'><v>0</v></c><c r='B1' t='s'><v>1</v></c></row><row r='2'><c r='A2' "
        "t='s'><v>2</v></c>"
        "<c r='B2' s='1'><v>45000</v></c><c r='C2' t='inlineStr'><is><t>inline</t></is></c><c s='2'><v>7</v></c></row>",
        parts);
}

TEST(XLSXHostile, survivesTruncationAtEveryByte) {
    const std::string bytes = smallWorkbook();
    ASSERT_EQ(failureOf(bytes), "read");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const std::string cut = bytes.substr(0, size);
        EXPECT_EQ(failureOf(cut),
                  "It isn’t an Excel workbook (.xlsx). Older .xls files need saving as .xlsx or CSV first.")
            << size;
        EXPECT_FALSE(XLSX::sheetNames(cut)) << size;
    }
}

TEST(XLSXHostile, survivesEveryPartCutShort) {
    for (const char* path : {"xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/sharedStrings.xml", "xl/styles.xml",
                             "xl/worksheets/sheet1.xml"}) {
        const std::string whole = smallWorkbook();
        const std::string part = ZipReader::read(path, whole)->value();
        const std::vector<ZipReader::Entry> entries = ZipReader::entries(whole).value();
        for (std::size_t size = 0; size < part.size(); ++size) {
            ZipWriter archive;
            for (const auto& entry : entries)
                archive.add(entry.path,
                            entry.path == path ? part.substr(0, size) : ZipReader::read(entry, whole).value(),
                            ZipWriter::Method::stored);
            EXPECT_TRUE(failureOf(archive.bytes()).starts_with("Part of the workbook couldn’t be read ("))
                << path << size;
        }
    }
}

TEST(XLSXHostile, survivesEveryChangedByte) {
    const std::string bytes = smallWorkbook();
    for (std::size_t place = 0; place < bytes.size(); ++place)
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::string changed = bytes;
            changed[place] = static_cast<char>(changed[place] ^ change);
            (void)XLSX::rows(changed, 0);
        }
}

}  // namespace
}  // namespace quorvel
