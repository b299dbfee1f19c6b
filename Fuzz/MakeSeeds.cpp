// MakeSeeds FOLDER: writes a few sound inputs for every fuzz target into FOLDER/TARGET, for the fuzzer to start from.

#include "Foundation/AtomicFile.h"
#include "Library/BookmarkData.h"
#include "Library/DeckProjectJSON.h"
#include "Library/MakeDeck.h"
#include "Samples/SampleDeck.h"
#include "Samples/SampleTemplates.h"
#include "Spreadsheet/CSV.h"
#include "Support/WorkbookWriter.h"
#include "Support/ZipWriter.h"
#include "Templates/TemplateJSON.h"

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>
#include <vips/vips.h>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

bool write(const fs::path& folder, std::initializer_list<std::string_view> texts) {
    fs::create_directories(folder);
    int number = 0;
    for (const auto text : texts)
        if (!AtomicFile::write(folder / std::to_string(++number), text)) return false;
    return true;
}

/// A small picture in every format that the reader takes and the library can write.
bool writePictures(const fs::path& folder) {
    fs::create_directories(folder);
    std::vector<unsigned char> pixels(24 * 16 * 4);
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<unsigned char>(i * 7);
    VipsImage* rgba = vips_image_new_from_memory(pixels.data(), pixels.size(), 24, 16, 4, VIPS_FORMAT_UCHAR);
    VipsImage* rgb = nullptr;
    VipsImage* grey = nullptr;
    VipsImage* deep = nullptr;
    if (!rgba || vips_extract_band(rgba, &rgb, 0, "n", 3, nullptr) || vips_extract_band(rgba, &grey, 0, nullptr) ||
        vips_cast(rgba, &deep, VIPS_FORMAT_USHORT, nullptr))
        return false;
    rgba->Type = rgb->Type = VIPS_INTERPRETATION_sRGB;
    grey->Type = VIPS_INTERPRETATION_B_W;
    deep->Type = VIPS_INTERPRETATION_RGB16;
    bool ok = true;
    for (const char* name : {"rgba.png", "rgba.webp", "rgba.tif"})
        ok &= !vips_image_write_to_file(rgba, (folder / name).c_str(), nullptr);
    for (const char* name : {"rgb.jpg", "rgb.png", "rgb.tif"})
        ok &= !vips_image_write_to_file(rgb, (folder / name).c_str(), nullptr);
    for (const char* name : {"grey.jpg", "grey.png"})
        ok &= !vips_image_write_to_file(grey, (folder / name).c_str(), nullptr);
    for (const char* name : {"deep.png", "deep.tif"})
        ok &= !vips_image_write_to_file(deep, (folder / name).c_str(), nullptr);
    g_object_unref(deep);
    g_object_unref(grey);
    g_object_unref(rgb);
    g_object_unref(rgba);
    return ok;
}

/// A workbook with every type of cell, and its parts as the workbook target takes them: behind a letter each.
bool writeWorkbooks(const fs::path& folder) {
    test::WorkbookParts parts;
    parts.sharedStrings =
        test::sharedStringsXML({"<t>Name</t>", "<r><t>rich </t></r><r><t xml:space=\"preserve\"> text</t></r>",
                                "<t>漢</t><rPh sb=\"0\" eb=\"1\"><t>か</t></rPh>"});
    parts.styles = test::stylesXML({"General", "yyyy-mm-dd", "yyyy-mm-dd hh:mm", "[h]:mm", "0.0%", "\"No. \"000"});
    parts.relationships = R"(<Relationships><Relationship Id="rId1" Target="worksheets/sheet1.xml"/></Relationships>)";
    parts.workbook = R"(<workbook><workbookPr date1904="1"/><sheets><sheet name="S" r:id="rId1"/></sheets></workbook>)";
    const std::string sheet = test::worksheetXML(
        R"(<row r="1" spans="1:4"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" s="1"><v>45000</v></c></row>)"
        R"(<row r="2"><c r="A2" t="inlineStr"><is><t>in &amp; line</t></is></c><c t="b"><v>1</v></c><c t="e"><v>#N/A</v></c></row>)"
        R"(<row><c t="str"><f>A1</f><v>é</v></c><c t="d"><v>2024-02-29T00:00:00</v></c><c s="3"><v>0.5</v></c><c r="$AA$7" s="5"/></row>)");
    parts.sheets = {{"S", sheet}};
    return write(folder, {test::workbookBytes(parts), "s" + sheet, "t" + *parts.sharedStrings, "y" + *parts.styles,
                          "r" + *parts.relationships, "w" + *parts.workbook});
}

bool writeArchives(const fs::path& folder) {
    test::ZipWriter archive;
    archive.add("a.txt", "hello, hello, hello");
    archive.add("caf\xC3\xA9", "stored", test::ZipWriter::Method::stored);
    test::ZipWriter::Member large;
    large.path = "large";
    large.content = "hello";
    large.method = test::ZipWriter::Method::stored;
    large.size = large.compressedSize = 0xFFFFFFFF;
    large.extra = test::little16(1) + test::little16(16) + test::little64(5) + test::little64(5);
    archive.add(large);
    test::ZipWriter::End zip64;
    zip64.zip64 = true;
    zip64.comment = "a comment";
    return write(folder, {archive.bytes(), archive.bytes(zip64), test::ZipWriter().bytes()});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || vips_init(argv[0])) return 2;
    const fs::path top = argv[1];
    bool ok = true;
    ok &= write(top / "CSVFuzz",
                {CSV::write(SampleDeck::rows()), "a;b;c\n1,5;\"x\"\"y\";\r\n", "\xEF\xBB\xBFName\tQty\nAxe\tx3\n",
                 std::string_view("\xFF\xFEN\0a\0\n\0", 8), "caf\xE9,\x92\n", "PK\x03\x04"});
    ok &= write(top / "MarkupFuzz", {"**bold** *it* {icon:coin} \\* \\n", "***x***", "*a **b* c**",
                                     "{ICON:a-b_2}{icon:", "e\xCC\x81\r\n*"});
    ok &= write(top / "IconNamesFuzz",
                {"coin, 2 leaf; star*3 x4 fox", "3×coin coin x100", "{icon:coin}", "99999999999999999999 coin"});
    ok &= write(top / "PlaceholdersFuzz", {"{{title}} {{ GRÖSSE }}", "{{a{{b}}", "{{", "}} {{x"});
    ok &= write(top / "QuantityFuzz", {"3", "x3", "3 ×", "1e2", "2.0", "-1", "inf", "99999999999999999999"});
    ok &= write(top / "HexColorFuzz", {"#5e8c4a", "5E8C4A80", "+12345", " #GGGGGG"});
    ok &= write(top / "TemplateJSONFuzz",
                {templateFileText(SampleTemplates::make(SampleTemplates::Kind::classic, "Game")),
                 templateFileText(SampleTemplates::make(SampleTemplates::Kind::mini, "Game")),
                 R"({"paper":"a4","gutterMM":1.5})"});
    ok &= write(top / "DeckJSONFuzz",
                {prettyJSON(toJSON(makeDeck())), BookmarkData{"/game/cards.csv", FileIdentity{}}.encoded(),
                 BookmarkData{"/game/caf\xE9.csv", {}}.encoded()});
    ok &= writePictures(top / "PictureFuzz");
    ok &= writeWorkbooks(top / "XLSXFuzz");
    ok &= writeArchives(top / "ZipFuzz");
    ok &= write(top / "XMLEventsFuzz",
                {"<?xml version='1.0' encoding='UTF-8'?><x:a xmlns:x='u' r:id='1'><b>t&amp;&#65;</b><c/></x:a>",
                 "<a><!-- c --><![CDATA[<d>]]><?p i?></a>", "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"});
    return ok ? 0 : 1;
}
