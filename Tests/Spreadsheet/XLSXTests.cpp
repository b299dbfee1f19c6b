#include "Spreadsheet/XLSX.h"
#include "Spreadsheet/XLSXWorksheet.h"
#include "Support/WorkbookWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using test::sharedStringsXML;
using test::workbookBytes;
using test::WorkbookParts;
using test::worksheetXML;
using Grid = std::vector<std::vector<std::string>>;

constexpr std::string_view noWorkbookAtAll =
    "It isn’t an Excel workbook (.xlsx). Older .xls files need saving as .xlsx or CSV first.";

/// All rows of a sheet, or one row with the message of its failure.
Grid gridOf(const std::string& bytes, std::int64_t sheet = 0) {
    const auto rows = XLSX::rows(bytes, sheet);
    if (!rows) return {{"failed: " + rows.error().message}};
    Grid grid(rows->rowCount());
    for (std::size_t row = 0; row < grid.size(); ++row)
        for (std::size_t column = 0; column < rows->cellCount(row); ++column)
            grid[row].emplace_back(rows->cell(row, column));
    return grid;
}

std::string failureOf(const std::string& bytes, std::int64_t sheet = 0) {
    const auto rows = XLSX::rows(bytes, sheet);
    return rows ? "read" : rows.error().message;
}

/// The first row of a sheet with these cells in its first row.
std::vector<std::string> row(std::string_view cells, const WorkbookParts& parts = {}) {
    const Grid grid = gridOf(workbookBytes("<row r=\"1\">" + std::string(cells) + "</row>", parts));
    return grid.empty() ? std::vector<std::string>() : grid.front();
}

WorkbookParts withStrings(const std::vector<std::string>& items) {
    WorkbookParts parts;
    parts.sharedStrings = sharedStringsXML(items);
    return parts;
}

WorkbookParts withFormats(const std::vector<std::string>& codes) {
    WorkbookParts parts;
    parts.styles = test::stylesXML(codes);
    return parts;
}

using Cells = std::vector<std::string>;

TEST(XLSX, readsEveryTypeOfCell) {
    const WorkbookParts parts = withStrings({"<t>shared</t>"});
    EXPECT_EQ(row(R"(<c r="A1" t="s"><v>0</v></c>)"
                  R"(<c r="B1" t="inlineStr"><is><t>inline</t></is></c>)"
                  R"(<c r="C1" t="str"><f>1+1</f><v> text </v></c>)"
                  R"(<c r="D1" t="b"><v>1</v></c><c r="E1" t="b"><v>0</v></c><c r="F1" t="b"/>)"
                  R"(<c r="G1" t="e"><v>#REF!</v></c>)"
                  R"(<c r="H1" t="d"><v>2024-02-29T00:00:00</v></c><c r="I1" t="d"><v>2024-02-29T12:30:00</v></c>)"
                  R"(<c r="J1"><v>3.50</v></c><c r="K1" t="n"><v>4</v></c><c r="L1" t="new"><v>5.0</v></c>)",
                  parts),
              (Cells{"shared", "inline", " text ", "TRUE", "FALSE", "FALSE", "#REF!", "2024-02-29",
                     "2024-02-29T12:30:00", "3.5", "4", "5"}));
}

TEST(XLSX, leavesFormulasWithoutAValueEmpty) {
    EXPECT_EQ(row(R"(<c r="A1"><f>NOW()</f></c><c r="B1"><v>1</v></c>)"), (Cells{"", "1"}));
    EXPECT_EQ(row(R"(<c r="A1"><f>NOW()</f></c>)"), Cells{});
}

TEST(XLSX, looksSharedStringsUp) {
    const WorkbookParts parts = withStrings({"<t>zero</t>", "<t/>", "<t>two</t>"});
    EXPECT_EQ(
        row(R"(<c t="s"><v>2</v></c><c t="s"><v>999</v></c><c t="s"><v>-1</v></c><c t="s"><v>x</v></c>)"
            R"(<c t="s"><v>1</v></c><c t="s"/><c t="s"><v> 0</v></c><c t="s"><v>0.0</v></c><c t="s"><v>0</v></c>)",
            parts),
        (Cells{"two", "", "", "", "", "", "", "", "zero"}));
    EXPECT_EQ(row(R"(<c t="s"><v>0</v></c>)"), Cells{});  // no list at all
}

TEST(XLSX, joinsRichTextAndLeavesPhoneticGuidesOut) {
    const WorkbookParts parts = withStrings({
        "<r><rPr><b/></rPr><t>Bold</t></r><r><t xml:space=\"preserve\"> and plain</t></r>",
        "<t>漢字</t><rPh sb=\"0\" eb=\"1\"><t>かん</t></rPh><rPh sb=\"1\" eb=\"2\"><t>じ</t></rPh><phoneticPr/>",
        "<r><t>one</t></r><rPh><t>guide</t></rPh><r><t>two</t></r>",
        "<t>a</t>   <t>b</t>",
    });
    EXPECT_EQ(row(R"(<c t="s"><v>0</v></c><c t="s"><v>1</v></c><c t="s"><v>2</v></c><c t="s"><v>3</v></c>)", parts),
              (Cells{"Bold and plain", "漢字", "onetwo", "ab"}));
}

TEST(XLSX, joinsInlineTextGuidesIncluded) {
    EXPECT_EQ(row("<c t=\"inlineStr\"><is><r><t>one </t></r><r><t>two</t></r><rPh><t>guide</t></rPh></is></c>"
                  "<c t=\"inlineStr\"><t>outside</t></c><c t=\"inlineStr\"><is/></c><c t=\"inlineStr\"><v>1</v></c>"
                  "<c t=\"str\"><is><t>inline</t></is><v>value</v></c>"),
              (Cells{"one twoguide", "", "", "", "value"}));
}

TEST(XLSX, keepsTextAsWritten) {
    const WorkbookParts parts = withStrings({"<t>&lt;b&gt; &amp; “é”\n 😀&#13;&#10;</t>"});
    EXPECT_EQ(row(R"(<c t="s"><v>0</v></c><c t="str"><v>&#9;x &#160;</v></c>)", parts),
              (Cells{"<b> & “é”\n 😀\r\n", "\tx \u00A0"}));
}

TEST(XLSX, formatsNumbersByTheCellsStyle) {
    const WorkbookParts parts = withFormats({"General", "yyyy-mm-dd", "yyyy-mm-dd hh:mm", "hh:mm", "0.0%", "000"});
    EXPECT_EQ(row(R"(<c s="0"><v>45000.5</v></c><c s="1"><v>45000.5</v></c><c s="2"><v>45000.5</v></c>)"
                  R"(<c s="3"><v>45000.5</v></c><c s="4"><v>0.125</v></c><c s="5"><v>7</v></c>)"
                  R"(<c s="6"><v>7</v></c><c s="-1"><v>7</v></c><c s="x"><v>7</v></c><c><v>45000.5</v></c>)",
                  parts),
              (Cells{"45000.5", "2023-03-15", "2023-03-15 12:00", "12:00", "12.5%", "007", "7", "7", "7", "45000.5"}));
}

TEST(XLSX, formatsByBuiltInIdsAndOnlyByCellStyles) {
    WorkbookParts parts;
    parts.styles =
        "<styleSheet><numFmts><numFmt numFmtId='14' formatCode='000'/><numFmt numFmtId='x' formatCode='000'/>"
        "<numFmt numFmtId='170'/><numFmt formatCode='000'/><numFmt numFmtId='171' formatCode='000'/></numFmts>"
        "<cellStyleXfs><xf numFmtId='9'/></cellStyleXfs><cellXfs><xf numFmtId='14'/><xf/><xf numFmtId='x'/>"
        "<xf numFmtId='170'/><xf numFmtId='171'/><xf numFmtId='22'/></cellXfs><dxfs><xf "
        "numFmtId='9'/></dxfs></styleSheet>";
    EXPECT_EQ(row("<c s='0'><v>45000</v></c><c s='1'><v>1</v></c><c s='2'><v>1</v></c><c s='3'><v>1</v></c>"
                  "<c s='4'><v>1</v></c><c s='5'><v>45000.25</v></c><c s='6'><v>1</v></c>",
                  parts),
              (Cells{"2023-03-15", "1", "1", "1", "001", "2023-03-15 06:00", "1"}));
}

TEST(XLSX, takesNoTextOfAStringForANumber) {
    const WorkbookParts parts = withFormats({"yyyy-mm-dd"});
    EXPECT_EQ(
        row(R"(<c s="0" t="str"><v>45000</v></c><c s="0" t="b"><v>1</v></c><c s="0" t="e"><v>#N/A</v></c>)", parts),
        (Cells{"45000", "TRUE", "#N/A"}));
}

TEST(XLSX, countsDatesFrom1904WhereTheWorkbookSaysSo) {
    for (const auto& [flag, expected] :
         {std::pair("date1904=\"1\"", "2027-03-16"), std::pair("date1904=\"true\"", "2027-03-16"),
          std::pair("date1904=\"0\"", "2023-03-15"), std::pair("date1904=\"TRUE\"", "2023-03-15"),
          std::pair("", "2023-03-15")}) {
        WorkbookParts parts = withFormats({"yyyy-mm-dd"});
        parts.workbookProperties = "<workbookPr " + std::string(flag) + "/>";
        EXPECT_EQ(row(R"(<c s="0"><v>45000</v></c>)", parts), Cells{expected}) << flag;
    }
}

TEST(XLSX, placesCellsByTheirReferences) {
    EXPECT_EQ(gridOf(workbookBytes(R"(<row r="2"><c r="B2"><v>1</v></c><c r="$D$4"><v>2</v></c></row>)")),
              (Grid{{"", "", "", ""}, {"", "1", "", ""}, {"", "", "", ""}, {"", "", "", "2"}}));
}

TEST(XLSX, placesCellsWithoutReferencesOneAfterTheOther) {
    EXPECT_EQ(gridOf(workbookBytes("<row><c><v>1</v></c><c r='D1'><v>2</v></c><c><v>3</v></c></row>"
                                   "<row><c/><c><v>4</v></c></row><row r='5'><c r='bad!'><v>5</v></c></row>")),
              (Grid{{"1", "", "", "2", "3"}, {"", "4", "", "", ""}, Cells(5), Cells(5), {"5", "", "", "", ""}}));
}

TEST(XLSX, countsRowsWithoutNumbers) {
    for (const char* odd : {"", "r='0'", "r='-1'", "r='x'", "r='2000001'", "r='1.5'", "r=' 2'", "r=''"})
        EXPECT_EQ(gridOf(workbookBytes("<row r='1'><c><v>1</v></c></row><row " + std::string(odd) +
                                       "><c><v>2</v></c></row>")),
                  (Grid{{"1"}, {"2"}}))
            << odd;
    EXPECT_EQ(gridOf(workbookBytes("<c><v>no row</v></c>")), Grid{});
    EXPECT_EQ(gridOf(workbookBytes("<c r='A1'><v>1</v></c><c><v>2</v></c>")), (Grid{{"1", "2"}}));
}

TEST(XLSX, replacesACellByALaterOneWithText) {
    EXPECT_EQ(row("<c r='A1'><v>1</v></c><c r='A1'><v>2</v></c>"), Cells{"2"});
    EXPECT_EQ(row("<c r='A1'><v>1</v></c><c r='A1'/>"), Cells{"1"});
    EXPECT_EQ(gridOf(workbookBytes("<row r='3'><c><v>c</v></c></row><row r='1'><c><v>a</v></c><c><v>A</v></c></row>"
                                   "<row r='2'><c><v>b</v></c></row><row r='1'><c r='B1'><v>B</v></c></row>")),
              (Grid{{"a", "B"}, {"b", ""}, {"c", ""}}));
}

TEST(XLSX, dropsCellsBeyondTheLimits) {
    EXPECT_EQ(row("<c r='A1'><v>1</v></c><c r='SG1'><v>501</v></c><c r='XFD1'><v>far</v></c>"), Cells{"1"});
    EXPECT_EQ(row("<c r='SF1'><v>500</v></c>").size(), 500U);
    EXPECT_EQ(gridOf(workbookBytes("<row r='1'><c><v>1</v></c></row><row r='100001'><c><v>far</v></c></row>"
                                   "<row r='2000000'><c><v>far</v></c></row><row><c><v>far</v></c></row>"
                                   "<row r='2'><c r='XFD1048576'><v>far</v></c><c r='A2'><v>2</v></c></row>")),
              (Grid{{"1"}, {"2"}}));
    EXPECT_EQ(gridOf(workbookBytes("<row r='100000'><c><v>last</v></c></row>")).size(), 100'000U);
}

TEST(XLSX, ignoresBlankCellsForTheSize) {
    EXPECT_EQ(gridOf(workbookBytes("<row r='1'><c><v>1</v></c><c r='Z1' s='3'/></row><row r='9'><c t='s'/></row>")),
              (Grid{{"1"}}));
    EXPECT_EQ(gridOf(workbookBytes("")), Grid{});
    EXPECT_EQ(row("<c t='str'><v> </v></c>"), Cells{" "});
}

TEST(XLSX, givesEveryRowTheGridsWidth) {
    const auto rows =
        XLSX::rows(workbookBytes("<row r='1'><c><v>1</v></c></row><row r='3'><c r='C3' t='str'><v> </v></c></row>"), 0);
    ASSERT_TRUE(rows);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(rows->cellCount(i), 3U);
    // So a column that has only blanks is a column of the table too.
    EXPECT_EQ(DataTable(*rows, "a.xlsx").headers, (Cells{"1", "Column 2", "Column 3"}));
}

TEST(XLSX, readsPrefixedElements) {
    WorkbookParts parts;
    parts.workbook =
        "<x:workbook xmlns:x='m' xmlns:rel='r'><x:sheets><x:sheet name='Cards' rel:id='R'/></x:sheets></x:workbook>";
    parts.relationships =
        "<p:Relationships xmlns:p='p'><p:Relationship Id='R' Target='worksheets/sheet1.xml'/></p:Relationships>";
    parts.sheets = {{"",
                     "<x:worksheet xmlns:x='m'><x:sheetData><x:row r='1'><x:c r='A1'><x:v>1</x:v></x:c>"
                     "<x:c t='inlineStr'><x:is><x:t>two</x:t></x:is></x:c></x:row></x:sheetData></x:worksheet>"}};
    EXPECT_EQ(gridOf(workbookBytes(parts)), (Grid{{"1", "two"}}));
}

TEST(XLSX, findsSheetsByTheirRelationships) {
    WorkbookParts parts;
    parts.sheets = {{"One", worksheetXML("<row><c><v>1</v></c></row>")},
                    {"Two", worksheetXML("<row><c><v>2</v></c></row>")}};
    parts.relationships =
        "<Relationships><Relationship Id='rId1' Target='worksheets/sheet2.xml' Type='any'/>"
        "<Relationship Id='rId2' Target='/xl/worksheets/sheet1.xml'/><Relationship Id='rId3'/></Relationships>";
    EXPECT_EQ(gridOf(workbookBytes(parts), 0), Grid{{"2"}});
    EXPECT_EQ(gridOf(workbookBytes(parts), 1), Grid{{"1"}});
    parts.relationships.reset();
    EXPECT_EQ(gridOf(workbookBytes(parts), 0), Grid{{"1"}});
    EXPECT_EQ(gridOf(workbookBytes(parts), 1), Grid{{"2"}});
    parts.relationships = "<Relationships><Relationship Id='rId2' Target='worksheets/sheet1.xml'/></Relationships>";
    EXPECT_EQ(gridOf(workbookBytes(parts), 0), Grid{{"1"}});
    EXPECT_EQ(gridOf(workbookBytes(parts), 1), Grid{{"1"}});
    // Of two with one id the last counts.
    parts.relationships =
        "<Relationships><Relationship Id='rId1' Target='gone.xml'/>"
        "<Relationship Id='rId1' Target='worksheets/sheet2.xml'/></Relationships>";
    EXPECT_EQ(gridOf(workbookBytes(parts), 0), Grid{{"2"}});
}

TEST(XLSX, takesAnyAttributeThatEndsInIdForTheRelationship) {
    WorkbookParts parts;
    parts.sheets = {{"", worksheetXML("<row><c><v>1</v></c></row>")}, {"", worksheetXML("<row><c><v>2</v></c></row>")}};
    parts.relationships = "<Relationships><Relationship Id='B' Target='worksheets/sheet2.xml'/></Relationships>";
    for (const char* attribute : {"id='B'", "r:id='B'", "odd:id='B'", "sheetId='1' rid='x' id='B'"}) {
        parts.workbook = "<workbook><sheet name='S' " + std::string(attribute) + "/></workbook>";
        EXPECT_EQ(gridOf(workbookBytes(parts)), Grid{{"2"}}) << attribute;
    }
    parts.workbook = "<workbook><sheet name='S' sheetId='B' rid='B'/></workbook>";
    EXPECT_EQ(gridOf(workbookBytes(parts)), Grid{{"1"}});
}

TEST(XLSX, resolvesTargets) {
    for (const auto& [target, path] :
         std::vector<std::pair<std::string, std::string>>{{"worksheets/sheet2.xml", "xl/worksheets/sheet2.xml"},
                                                          {"../sheets/a.xml", "sheets/a.xml"},
                                                          {"../../../a.xml", "a.xml"},
                                                          {"/xl/a.xml", "xl/a.xml"},
                                                          {"//xl/a.xml", "/xl/a.xml"},
                                                          {"./x//./a.xml", "xl/x/a.xml"},
                                                          {"a/b/../c.xml", "xl/a/c.xml"},
                                                          {"a/..", "xl"},
                                                          {"", "xl"},
                                                          {"..", ""}})
        EXPECT_EQ(XLSX::memberPath(target), path) << target;
}

TEST(XLSX, listsSheetsInTheirOrder) {
    WorkbookParts parts;
    parts.workbook =
        "<workbook><sheets><sheet name='Zwei &amp; Drei'/><sheet sheetId='7'/><sheet name=''/></sheets></workbook>";
    EXPECT_EQ(XLSX::sheetNames(workbookBytes(parts)).value(), (Cells{"Zwei & Drei", ""}));
}

TEST(XLSX, findsMembersWithoutRegardToCase) {
    test::ZipWriter archive;
    archive.add("XL/Workbook.XML", "<workbook><sheet name='S' id='r'/></workbook>");
    archive.add("xl/_RELS/workbook.xml.RELS", "<R><Relationship Id='r' Target='Sheets/A.xml'/></R>");
    archive.add("xl/SharedStrings.xml", sharedStringsXML({"<t>text</t>"}));
    archive.add("xl/sheets/a.xml", worksheetXML("<row><c t='s'><v>0</v></c></row>"));
    EXPECT_EQ(gridOf(archive.bytes()), Grid{{"text"}});
}

TEST(XLSX, saysWhatIsNoWorkbook) {
    EXPECT_EQ(failureOf("Name,Cost\nAxe,3\n"), noWorkbookAtAll);
    EXPECT_EQ(failureOf(""), noWorkbookAtAll);
    EXPECT_EQ(failureOf(workbookBytes("").substr(0, 200)), noWorkbookAtAll);
    test::ZipWriter other;
    other.add("readme.txt", "hello");
    EXPECT_EQ(failureOf(other.bytes()), "It isn’t an Excel workbook (.xlsx).");
    EXPECT_EQ(failureOf(test::ZipWriter().bytes()), "It isn’t an Excel workbook (.xlsx).");
}

TEST(XLSX, saysWhichSheetIsMissing) {
    WorkbookParts parts;
    parts.sheets = {{"Cards", worksheetXML("")}};
    EXPECT_EQ(failureOf(workbookBytes(parts), 1), "The workbook has no sheet 2.");
    EXPECT_EQ(failureOf(workbookBytes(parts), -1), "The workbook has no sheet 0.");
    EXPECT_EQ(failureOf(workbookBytes(parts), -5), "The workbook has no sheet -4.");
    for (const std::int64_t far : {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()})
        EXPECT_TRUE(failureOf(workbookBytes(parts), far).starts_with("The workbook has no sheet ")) << far;
    parts.workbook = "<workbook><sheets/></workbook>";
    EXPECT_EQ(failureOf(workbookBytes(parts)), "The workbook has no sheets.");
    EXPECT_EQ(XLSX::sheetNames(workbookBytes(parts)).error().message, "The workbook has no sheets.");
    parts.workbook = "<workbook><sheet name='Karten “A”' id='r'/></workbook>";
    parts.relationships = "<R><Relationship Id='r' Target='gone.xml'/></R>";
    EXPECT_EQ(failureOf(workbookBytes(parts)), "The sheet “Karten “A”” is missing from the file.");
}

TEST(XLSX, saysWhichPartIsUnreadable) {
    const std::string unreadable = "Part of the workbook couldn’t be read (mismatched tag).";
    WorkbookParts parts;
    parts.sheets = {{"S", "<worksheet><row></worksheet>"}};
    EXPECT_EQ(failureOf(workbookBytes(parts)), unreadable);
    EXPECT_TRUE(XLSX::sheetNames(workbookBytes(parts)));
    parts.sheets = {{"S", worksheetXML("")}};
    for (auto part : {&WorkbookParts::sharedStrings, &WorkbookParts::styles, &WorkbookParts::relationships,
                      &WorkbookParts::workbook}) {
        WorkbookParts broken = parts;
        broken.*part = "<a><b></a>";
        EXPECT_EQ(failureOf(workbookBytes(broken)), unreadable);
        EXPECT_EQ(XLSX::sheetNames(workbookBytes(broken)).error().message, unreadable);
    }
    parts.sheets = {{"S", "<!DOCTYPE worksheet [<!ENTITY x SYSTEM 'file:///etc/hostname'>]>" +
                              worksheetXML("<row><c><v>&x;</v></c></row>").substr(55)}};
    EXPECT_EQ(failureOf(workbookBytes(parts)), "Part of the workbook couldn’t be read (a document type declaration).");
}

TEST(XLSX, passesTheArchivesFailuresOn) {
    const auto with = [](const std::string& path, auto change) {
        WorkbookParts parts = withStrings({"<t>x</t>"});
        parts.styles = test::stylesXML({"0"});
        parts.sheets = {{"S", worksheetXML("<row><c><v>1</v></c></row>")}};
        test::ZipWriter archive = test::workbookArchive(parts);
        test::ZipWriter::Member damaged;
        damaged.path = path;
        damaged.content = "<a/>";
        change(damaged);
        // Of two members with one path the first counts.
        test::ZipWriter both;
        both.add(damaged);
        both.add(archive);
        return failureOf(both.bytes());
    };
    EXPECT_EQ(with("xl/workbook.xml", [](auto& m) { m.crc32 = 1; }),
              "“xl/workbook.xml” didn’t check out (the file may be damaged).");
    EXPECT_EQ(with("xl/sharedStrings.xml", [](auto& m) { m.methodCode = 14; }),
              "“xl/sharedStrings.xml” uses a kind of compression that can’t be read.");
    EXPECT_EQ(with("xl/styles.xml", [](auto& m) { m.size = 0x20000000; }), "“xl/styles.xml” is damaged.");
    EXPECT_EQ(with("xl/worksheets/sheet1.xml", [](auto& m) { m.compressedSize = 0x20000000; }),
              "“xl/worksheets/sheet1.xml” is damaged.");
    // The list of sheets is the first thing read: what is wrong with its relationships shows only if it is sound.
    WorkbookParts parts;
    parts.relationships = "<unreadable>";
    test::ZipWriter::Member list;
    list.path = "xl/workbook.xml";
    list.crc32 = 1;
    test::ZipWriter archive;
    archive.add(list);
    archive.add(test::workbookArchive(parts));
    EXPECT_EQ(failureOf(archive.bytes()), "“xl/workbook.xml” didn’t check out (the file may be damaged).");
    // Damage to the archive is the better word for XML that it broke.
    EXPECT_EQ(with("xl/worksheets/sheet1.xml",
                   [](auto& m) { m.content = "<a>" + std::string(100'000, 'x') + "</a>", m.size = 1000; }),
              "“xl/worksheets/sheet1.xml” didn’t check out (the file may be damaged).");
}

TEST(XLSX, parsesReferences) {
    using XLSX::CellPlace;
    const std::vector<std::pair<std::string, std::optional<CellPlace>>> references{
        {"A1", CellPlace{0, 0}},
        {"B12", CellPlace{11, 1}},
        {"$AA$7", CellPlace{6, 26}},
        {"b12", CellPlace{11, 1}},
        {"aZ3", CellPlace{2, 51}},
        {"A0", std::nullopt},
        {"ACOF1", CellPlace{0, 19'999}},
        {"ACOG1", std::nullopt},
        {"AAAAAAAAAAAAAAAA1", std::nullopt},
        {"A", std::nullopt},
        {"1", std::nullopt},
        {"", std::nullopt},
        {"1A", std::nullopt},
        {"A1B", std::nullopt},
        {"A 1", std::nullopt},
        {"A-1", std::nullopt},
        {"Ä1", std::nullopt},
        {"A1:B2", std::nullopt},
        {"A2000000", CellPlace{1'999'999, 0}},
        {"A2000001", std::nullopt},
        {"A99999999999999999999", std::nullopt},
        {"A001", CellPlace{0, 0}},
        {"$$A$$1$", CellPlace{0, 0}},
        {"XFD1048576", CellPlace{1'048'575, 16'383}},
        {"@1", std::nullopt},
        {"[1", std::nullopt},
    };
    for (const auto& [text, place] : references) EXPECT_EQ(XLSX::parseReference(text), place) << text;
}

TEST(XLSX, makesATable) {
    const auto table = XLSX::table(workbookBytes("<row r='2'><c t='str'><v>Name</v></c><c t='str'><v>Cost</v></c></row>"
                                                 "<row r='5'><c t='str'><v>Axe</v></c><c><v>3</v></c></row>"),
                                   0, "cards.xlsx");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->headers, (Cells{"Name", "Cost"}));
    EXPECT_EQ(table->rows.cell(0, 1), "3");
    EXPECT_EQ(table->rowNumbers, std::vector<std::int64_t>{5});
    EXPECT_EQ(table->sourceName, "cards.xlsx");
}

}  // namespace
}  // namespace quorvel
