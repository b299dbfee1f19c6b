#include "Drawing/PDFContext.h"
#include "Drawing/PDFResources.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quorvel {
namespace {

/// The lists of pictures in a document, with what was blanked out closed up.
std::vector<std::string> pictureLists(const std::string& pdf) {
    std::vector<std::string> lists;
    for (std::size_t at = pdf.find("/XObject <<"); at != pdf.npos; at = pdf.find("/XObject <<", at + 1)) {
        std::string list;
        for (const char c : pdf.substr(at + 11, pdf.find(">>", at) - at - 11))
            if (c != ' ' || !list.ends_with(' ')) list += c;
        lists.push_back(list);
    }
    return lists;
}

Image square(std::uint32_t pixel) {
    auto pixels = allocatePixels(1, 1);
    pixels[0] = pixel;
    return Image(1, 1, pixels, Image::Alpha::opaque);
}

/// A document of one object and the table that leads to it.
std::string withTable(const std::string& object) {
    const std::string before = "%PDF-1.5\n";
    std::string offset = std::to_string(before.size());
    offset.insert(0, 10 - offset.size(), '0');
    return before + object + "xref\n0 2\n0000000000 65535 f \n" + offset +
           " 00000 n \ntrailer\n<< /Size 2 >>\nstartxref\n" + std::to_string(before.size() + object.size()) +
           "\n%%EOF\n";
}

TEST(PDFResources, APageNamesAPictureOnceHoweverOftenItIsDrawn) {
    const Image red = square(0xFFFF0000), green = square(0xFF00FF00);
    const auto pdf = PDFContext::make({"Test", ""});
    for (int page = 0; page < 2; ++page) {
        DrawingContext& context = pdf->beginPage({200, 100});
        for (int i = 0; i < 5; ++i) {
            context.drawImage(red, {10.0 * i, 0, 9, 9});
            context.drawImage(green, {10.0 * i, 20, 9, 9});
        }
        pdf->endPage();
    }
    const auto bytes = pdf->finish();
    ASSERT_TRUE(bytes);
    const auto lists = pictureLists(*bytes);
    ASSERT_EQ(lists.size(), 2U);
    for (const std::string& list : lists) EXPECT_EQ(std::ranges::count(list, '/'), 2) << list;
}

TEST(PDFResources, BlanksTakeThePlaceOfRepeats) {
    struct Case {
        std::string list, expected;
    };
    const std::string blanks(std::string("/x7 7 0 R ").size(), ' ');
    const std::vector<Case> cases{
        {" /x7 7 0 R ", " /x7 7 0 R "},
        {" /x7 7 0 R /x7 7 0 R ", " /x7 7 0 R " + blanks},
        {" /x7 7 0 R /x70 70 0 R /x7 7 0 R ", " /x7 7 0 R /x70 70 0 R " + blanks},
        {" ", " "},
    };
    for (const auto& [list, expected] : cases) {
        std::string pdf = withTable("1 0 obj\n<<\n   /XObject <<" + list + ">>\n>>\nendobj\n");
        PDFResources::nameOnce(pdf);
        EXPECT_EQ(pdf, withTable("1 0 obj\n<<\n   /XObject <<" + expected + ">>\n>>\nendobj\n"));
    }
}

TEST(PDFResources, TheBytesOfStreamsAndBrokenFilesStayAsTheyAre) {
    const std::string list = "/XObject << /x7 7 0 R /x7 7 0 R >>";
    const std::string whole = withTable("1 0 obj\n<< /Length 34 >>\nstream\n" + list + "\nendstream\nendobj\n");
    std::vector<std::string> files{whole,
                                   "",
                                   "startxref",
                                   "startxref\n99\n",
                                   "startxref\n0\n",
                                   list,
                                   withTable("1 0 obj\n<< /XObject << /x7 7 0 R /x7 7 0 R ")};
    for (std::size_t length = 0; length < whole.size(); ++length) files.push_back(whole.substr(0, length));
    for (const std::string& file : files) {
        std::string pdf = file;
        PDFResources::nameOnce(pdf);
        EXPECT_EQ(pdf, file);
    }
}

}  // namespace
}  // namespace quorvel
