#include "Foundation/Text.h"
#include "Spreadsheet/XLSX.h"
#include "Spreadsheet/XLSXPlainCell.h"
#include "Support/WorkbookWriter.h"

#include <gtest/gtest.h>

namespace quorvel::XLSX {
namespace {

/// What was taken, and what is left: "r|s|t|value|rest"; "-" for an attribute that isn't there.
std::string taken(std::string_view bytes) {
    const auto cell = takePlainCell(bytes);
    if (!cell) return "nothing";
    const auto text = [](const auto& attribute) { return std::string(attribute.value_or("-")) + "|"; };
    return text(cell->reference) + text(cell->style) + text(cell->type) + std::string(cell->value) + "|" +
           std::string(bytes);
}

TEST(XLSXPlainCell, takesPlainCells) {
    EXPECT_EQ(taken(R"(<c r="B2" s="1" t="s"><v>12</v></c><c>)"), "B2|1|s|12|<c>");
    EXPECT_EQ(taken(R"(<c t="str" r="A1"><v>two words</v></c></row>)"), "A1|-|str|two words|</row>");
    EXPECT_EQ(taken("<c><v>1</v></c>"), "-|-|-|1|");
    EXPECT_EQ(taken("<c><v></v></c>"), "-|-|-||");
    EXPECT_EQ(taken("<c></c>"), "-|-|-||");
    EXPECT_EQ(taken("<c/>"), "-|-|-||");
    EXPECT_EQ(taken(R"(<c r="" s="3"/>x)"), "|3|-||x");
}

TEST(XLSXPlainCell, leavesEverythingElse) {
    for (const char* other : {"",
                              "<",
                              "<c",
                              "<c ",
                              "<c r",
                              "<c r=",
                              "<c r=\"",
                              "<c r=\"A1",
                              "<c r=\"A1\"",
                              "<c r=\"A1\"/",
                              "<c r=\"A1\">",
                              "<c><v>1</v></",
                              "<c><v>1</v>",
                              "<c><v>1<",
                              "<c><v>",
                              "<c><v/></c>",
                              "<c ><v>1</v></c>",
                              "<c  r=\"A1\"/>",
                              "<c r='A1'/>",
                              "<c r=\"A1\" r=\"A2\"/>",
                              "<c r=\"&#65;1\"/>",
                              "<c r=\"A<1\"/>",
                              "<c r=\"A\t1\"/>",
                              "<c x=\"1\"/>",
                              "<c cm=\"1\"/>",
                              "<c r=\"A1\"s=\"1\"/>",
                              "<c><v>&amp;</v></c>",
                              "<c><v>1>0</v></c>",
                              "<c><v>é</v></c>",
                              "<c><v>1\n2</v></c>",
                              "<c><v>1</v><v>2</v></c>",
                              "<c><f>1</f><v>1</v></c>",
                              "<c><is><t>x</t></is></c>",
                              "<c> <v>1</v></c>",
                              "<c><v>1</v> </c>",
                              "<c><!-- --></c>",
                              "<col/>",
                              "<cols>",
                              "<x:c/>",
                              "</c>",
                              " <c/>",
                              "x",
                              "<c><v>1</v ></c>",
                              "<C/>"})
        EXPECT_EQ(taken(other), "nothing") << other;
}

TEST(XLSXPlainCell, readsNothingBehindTheEnd) {
    const std::string cell = R"(<c r="B2" s="1" t="s"><v>12</v></c>)";
    for (std::size_t size = 0; size < cell.size(); ++size) {
        const std::string cut = cell.substr(0, size);
        EXPECT_EQ(taken(cut), "nothing") << size;
    }
}

/// In this encoding no cell is plain.
std::string utf16(std::string_view text) {
    std::string bytes = "\xFF\xFE";
    for (std::size_t i = 0; i < text.size();) bytes += test::little16(Text::nextScalar(text, i));
    return bytes;
}

std::string outcome(std::string_view sheet) {
    test::WorkbookParts parts;
    parts.sharedStrings = test::sharedStringsXML({"<t>zero</t>", "<t>one</t>"});
    parts.styles = test::stylesXML({"General", "000"});
    parts.sheets = {{"S", std::string(sheet)}};
    const auto rows = XLSX::rows(test::workbookBytes(parts, test::ZipWriter::Method::stored), 0);
    if (!rows) return "failed";
    std::string text;
    for (std::size_t row = 0; row < rows->rowCount(); ++row)
        for (std::size_t column = 0; column < rows->cellCount(row); ++column)
            text += std::string(rows->cell(row, column)) + "|";
    return text;
}

TEST(XLSXPlainCell, readsTheSameAsTheParserDoes) {
    const std::string plain = R"(<c r="B1" s="1"><v>7</v></c><c t="s"><v>1</v></c><c/>)";
    const std::vector<std::string> sheets{
        "<s>" + plain + "</s>",
        "<s><row r='3'>" + plain + "</row><row>" + plain + "</row></s>",
        plain,                           // a document of its own, and then junk
        "<s>" + plain + "</s>" + plain,  // behind the end
        "<s><row>" + plain + "</s>",     // in an element that isn't closed
        "<s>" + plain,                   // in a document that isn't closed
        "<s><!-- " + plain + " --></s>",
        "<s><!-- <row>" + plain + "</row> --></s>",
        "<s><![CDATA[" + plain + "]]></s>",
        "<s><![CDATA[<row>" + plain + "]]></s>",
        "<s><?pi <row>" + plain + "?></s>",
        "<s><row a='" + plain + "'/></s>",
        "<s><row a='>" + plain + "'/></s>",
        "<s><v>5" + plain + "6</v></s>",
        "<s>text" + plain + "text" + plain + "</s>",
        "<s> " + plain + "\n" + plain + "\n</s>",
        "<s><c r='A1'>" + plain + "<v>3</v></c></s>",
        "<s><c r='A1' t='str'>" + plain + "</c></s>",
        "<s><c r='A1' t='inlineStr'><is><t>a</t>" + plain + "<t>b</t></is></c></s>",
        "<s><is>" + plain + "<t>x</t></is></s>",
        "<s>" + plain + "<c r='D4'><f>1</f><v>&#49;</v></c>" + plain + "<c r='é'/>" + plain + "</s>",
        "<s>" + plain + "<c " + plain + "</s>",
        "<s>" + plain + "</c>" + plain + "</s>",
        "<?xml version='1.0'?><s>" + plain + "</s>",
        "\xEF\xBB\xBF<s>" + plain + "</s>",
        "<!DOCTYPE s><s>" + plain + "</s>",
    };
    for (const std::string& sheet : sheets) {
        const std::string_view unmarked = sheet.starts_with("\xEF\xBB\xBF") ? std::string_view(sheet).substr(3) : sheet;
        EXPECT_EQ(outcome(sheet), outcome(utf16(unmarked))) << sheet;
    }
}

TEST(XLSXPlainCell, countsTowardsTheDepthOfElements) {
    for (const int depth : {253, 254, 255, 256}) {
        std::string sheet;
        for (int i = 0; i < depth; ++i) sheet += "<a>";
        sheet += "<c r=\"A1\"><v>1</v></c>";
        for (int i = 0; i < depth; ++i) sheet += "</a>";
        EXPECT_EQ(outcome(sheet), depth <= 254 ? "1|" : "failed") << depth;
    }
}

TEST(XLSXPlainCell, meetsTheEndsOfPiecesAnywhere) {
    // Worksheets are read in pieces. Cells of many lengths, plain ones and others, lie across their ends.
    std::string sheet = "<s>";
    std::string expected;
    for (int i = 0; i < 20'000; ++i) {
        const std::string value = std::to_string(i) + std::string(static_cast<std::size_t>(i % 61), 'x');
        const std::string number = std::to_string(i + 1);
        if (i % 7 == 0) {
            sheet += "<row r=\"" + number + "\"><c r=\"A" + number + "\" t=\"str\"><f>A1&gt;0</f><v>" + value +
                     "</v></c></row>";
        } else if (i % 11 == 0) {
            sheet += "<row r=\"" + number + "\"><!-- <c r=\"A1\"><v>no</v></c> --><c t=\"str\"><v>" + value +
                     "</v></c></row>";
        } else {
            sheet += "<row r=\"" + number + "\"><c r=\"A" + number + "\" t=\"str\"><v>" + value + "</v></c></row>";
        }
        expected += value + "|";
    }
    for (std::size_t shift = 0; shift < 70; ++shift)
        ASSERT_EQ(outcome(std::string(shift, ' ') + sheet + "</s>"), expected) << shift;
}

TEST(XLSXPlainCell, takesCellsInALargeCommentForNone) {
    std::string comment = "<s><c r=\"A1\"><v>1</v></c><!-- ";
    while (comment.size() < (8U << 20)) comment += "<c <c r=\"A1\"><v>2</v></c>";
    EXPECT_EQ(outcome(comment + " --></s>"), "1|");
}

}  // namespace
}  // namespace quorvel::XLSX
