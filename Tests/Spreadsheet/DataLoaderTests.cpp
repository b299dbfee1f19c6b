#include "Foundation/AtomicFile.h"
#include "Spreadsheet/DataLoader.h"
#include "Spreadsheet/Rows.h"
#include "Support/TemporaryFolder.h"
#include "Support/WorkbookWriter.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quorvel::DataLoader {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view zipStart = "PK\x03\x04 and more";
constexpr std::string_view noWorkbook =
    "It isn’t an Excel workbook (.xlsx). Older .xls files need saving as .xlsx or CSV first.";
constexpr std::string_view pngStart = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x02\xEE\0\0\x04\x1A\x08\x06\0\0\0"sv;

std::string outcome(std::string_view data, const std::string& name) {
    const auto result = table(data, name, 0);
    return result ? "table" : description(result.error());
}

TEST(DataLoader, recognisesFilesByNameAndContent) {
    EXPECT_EQ(outcome("a,b\n1,2\n", "cards.csv"), "table");
    EXPECT_EQ(outcome("a,b\n", "cards.csv"), "table") << "headers alone";
    EXPECT_EQ(outcome("a;b\n", "cards"), "table");
    EXPECT_EQ(outcome("a;b\n", "cards.tab"), "table");
    EXPECT_EQ(outcome("a,b\n", "deck.NUMBERS"),
              "“deck.NUMBERS” is a Numbers file. Export it as CSV first (File › Export To › CSV in Numbers).");
    EXPECT_EQ(outcome(zipStart, "deck.numbers"),
              "“deck.numbers” is a Numbers file. Export it as CSV first (File › Export To › CSV in Numbers).");
    EXPECT_EQ(outcome("a,b\n", "deck.xls"), "“deck.xls” is an older Excel file. Save it as .xlsx or CSV first.");
    EXPECT_EQ(outcome(pngStart, "art.csv"), "“art.csv” doesn’t look like a CSV or Excel file.");
    EXPECT_EQ(outcome("", "cards.csv"), "“cards.csv” is empty.");
    EXPECT_EQ(outcome("\n \n,,\r\n", "cards.csv"), "“cards.csv” is empty.");
    EXPECT_EQ(outcome("a\0,\0b\0\n\0"sv, "cards.csv"), "“cards.csv” doesn’t look like a CSV or Excel file.")
        << "UTF-16 without a mark";
    EXPECT_EQ(outcome("\xFF\xFE"
                      "abc",
                      "cards.csv"),
              "“cards.csv” is empty.");
}

/// Two sheets; the second has a header and a card.
std::string workbook() {
    test::WorkbookParts parts;
    parts.sheets = {
        {"Notes", test::worksheetXML("<row><c t='str'><v>Note</v></c></row>")},
        {"Cards", test::worksheetXML("<row r='2'><c t='str'><v>a&#13;&#10;b</v></c><c t='str'><v>Cost</v></c></row>"
                                     "<row r='4'><c t='str'><v>1&#13;2</v></c><c><v>3.0</v></c></row>")}};
    return test::workbookBytes(parts);
}

TEST(DataLoader, readsWorkbooksByNameAndContent) {
    EXPECT_EQ(outcome(workbook(), "deck.XLSX"), "table");
    EXPECT_EQ(outcome(workbook(), "cards.csv"), "table");
    EXPECT_EQ(outcome(workbook(), "deck"), "table");
    EXPECT_EQ(outcome(workbook(), "deck.numbers"),
              "“deck.numbers” is a Numbers file. Export it as CSV first (File › Export To › CSV in Numbers).");
    EXPECT_EQ(outcome(workbook(), "deck.xls"), "“deck.xls” is an older Excel file. Save it as .xlsx or CSV first.");
    EXPECT_EQ(outcome("a,b\n", "deck.xlsx"), noWorkbook);
    EXPECT_EQ(outcome(zipStart, "cards.csv"), noWorkbook);
    EXPECT_EQ(outcome(test::workbookBytes("<row r='3'><c/></row>"), "deck.xlsx"), "“deck.xlsx” is empty.");
    EXPECT_EQ(description(table(workbook(), "deck.xlsx", 2).error()), "The workbook has no sheet 3.");
}

TEST(DataLoader, makesATableOfAWorksheet) {
    const auto result = table(workbook(), "deck.xlsx", 1);
    ASSERT_TRUE(result);
    EXPECT_THAT(result->headers, ElementsAre("a\nb", "Cost"));
    EXPECT_EQ(result->rows, (TextRows{{"1\n2", "3"}}));
    EXPECT_THAT(result->rowNumbers, ElementsAre(4));
    EXPECT_EQ(result->sourceName, "deck.xlsx");
}

TEST(DataLoader, listsWorksheets) {
    EXPECT_THAT(sheetNames(workbook(), "deck.xlsx"), ElementsAre("Notes", "Cards"));
    EXPECT_THAT(sheetNames(workbook(), "deck"), ElementsAre("Notes", "Cards"));
    EXPECT_THAT(sheetNames(zipStart, "deck.xlsx"), IsEmpty());
    EXPECT_THAT(sheetNames("a,b", "deck.csv"), IsEmpty());
}

TEST(DataLoader, fallsBackOnTheFirstWorksheet) {
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder / "deck.xlsx", workbook()));
    for (const auto& [asked, used] :
         {std::pair(0, 0), std::pair(1, 1), std::pair(2, 0), std::pair(3, 0), std::pair(-1, 0)}) {
        const auto loaded = load(folder / "deck.xlsx", asked);
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->sheet, used) << asked;
        EXPECT_THAT(loaded->sheetNames, ElementsAre("Notes", "Cards"));
        ASSERT_TRUE(loaded->result);
        EXPECT_EQ(loaded->result->headers.size(), used + 1U);
    }
}

TEST(DataLoader, tellsWorkbooks) {
    EXPECT_TRUE(isWorkbook("deck.XLSX", ""));
    EXPECT_TRUE(isWorkbook("deck", zipStart));
    EXPECT_FALSE(isWorkbook("deck.csv", "PK\x03"));
    EXPECT_FALSE(isWorkbook("xlsx", "a"));
}

TEST(DataLoader, takesTabsForTSVFilesOnly) {
    EXPECT_THAT(table("a,b\tc\n", "deck.TSV", 0)->headers, ElementsAre("a,b", "c"));
    EXPECT_THAT(table("a,b\tc\n", "deck.txt", 0)->headers, ElementsAre("a", "b\tc"));
}

TEST(DataLoader, unifiesLineEndsInCells) {
    const auto result = table("\"a\r\nb\",\"a\nb\",\"c\rd\"\r\n\"1\r\n2\r3\r\r\n\",x,y\r\n", "deck.csv", 0);
    ASSERT_TRUE(result);
    EXPECT_THAT(result->headers, ElementsAre("a\nb", "a\nb 2", "c\nd")) << "still unique";
    EXPECT_EQ(result->rows, (TextRows{{"1\n2\n3\n\n", "x", "y"}}));
}

TEST(DataLoader, loadsAFile) {
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder / "deck.csv", "Name\nDon\x92t\n"));
    for (const std::int64_t sheet : {0, 3, -1}) {
        const auto loaded = load(folder / "deck.csv", sheet);
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->sheet, 0) << "there is no other worksheet";
        EXPECT_THAT(loaded->sheetNames, IsEmpty());
        ASSERT_TRUE(loaded->result);
        EXPECT_EQ(loaded->result->sourceName, "deck.csv");
        EXPECT_EQ(loaded->result->rows, (TextRows{{"Don’t"}}));
    }
}

TEST(DataLoader, givesATablesFailureAsAValue) {
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder / "deck.xlsx", "text"));
    const auto loaded = load(folder / "deck.xlsx", 2);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->sheet, 0);
    EXPECT_THAT(loaded->sheetNames, IsEmpty());
    ASSERT_FALSE(loaded->result);
    EXPECT_EQ(description(loaded->result.error()), noWorkbook);

    ASSERT_TRUE(AtomicFile::write(folder / "broken.xlsx", [] {
        test::WorkbookParts parts;
        parts.sheets = {{"Cards", "<worksheet>"}, {"Others", ""}};
        return test::workbookBytes(parts);
    }()));
    const auto broken = load(folder / "broken.xlsx", 1);
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->sheet, 1);
    EXPECT_THAT(broken->sheetNames, ElementsAre("Cards", "Others"));
    EXPECT_EQ(description(broken->result.error()), "Part of the workbook couldn’t be read (no element found).");
}

TEST(DataLoader, failsForWhatCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(load(folder / "none.csv", 0).error().description(), "“none.csv” doesn’t exist.");
    EXPECT_EQ(load(folder.path(), 0).error().code, EISDIR);
    ASSERT_EQ(::mkfifo((folder / "fifo.csv").c_str(), 0600), 0);
    EXPECT_EQ(load(folder / "fifo.csv", 0).error().description(), "“fifo.csv” isn’t a file.");
}

TEST(DataLoader, offersItsExtensions) {
    EXPECT_THAT(spreadsheetExtensions, ElementsAre("csv", "tsv", "txt", "xlsx"));
}

}  // namespace
}  // namespace quorvel::DataLoader
