#include "Pictures/PDFReader.h"
#include "TestPictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using namespace TestPictures;
using testing::ElementsAre;

/// A page with a red square from (100, 100) to (150, 150), written by hand. `entries` are further ones of the page.
std::string handWrittenPage(const std::string& entries) {
    const std::string content = "1 0 0 rg 100 100 50 50 re f";
    const std::string objects[] = {
        "<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 400 300]/Contents 4 0 R" + entries + ">>",
        "<</Length " + std::to_string(content.size()) + ">>stream\n" + content + "\nendstream"};
    std::string file = "%PDF-1.4\n", table = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < std::size(objects); ++i) {
        char line[21];
        std::snprintf(line, sizeof line, "%010zu 00000 n \n", file.size());
        table += line;
        file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::size_t start = file.size();
    return file + "xref\n0 5\n" + table + "trailer\n<</Size 5/Root 1 0 R>>\nstartxref\n" + std::to_string(start) +
           "\n%%EOF\n";
}

TEST(PDFReader, makesTheLongerSideWhatIsAskedForAndTruncatesTheOther) {
    const struct {
        double width, height;
        PictureSize expected;
    } cases[] = {{100, 200, {256, 512}}, {200, 100, {512, 256}},   {595.28, 841.89, {362, 512}}, {10, 10, {512, 512}},
                 {3, 7, {219, 512}},     {5000, 2500, {512, 256}}, {841.8897638, 10.1, {512, 6}}};
    for (const auto& each : cases) {
        const std::string bytes = pdfPage(each.width, each.height);
        const auto image = PDFReader::firstPage(bytes, 512);
        ASSERT_TRUE(image) << each.width;
        EXPECT_EQ((PictureSize{image->width(), image->height()}), each.expected);
        EXPECT_EQ(PDFReader::firstPageSize(bytes, 512), each.expected);
    }
    EXPECT_FALSE(PDFReader::firstPage(pdfPage(3000, 1), 512));  // the other side has no pixel
}

TEST(PDFReader, showsTheCropBox) {
    const auto image = PDFReader::firstPage(handWrittenPage("/CropBox[100 50 200 250]"), 400);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 200);
    EXPECT_EQ(image->height(), 400);
    // Two pixels a point; the square stands at the left edge, 50 points above the box's floor.
    EXPECT_THAT(colorAt(*image, 2, 298), ElementsAre(255, 0, 0, 255));
    EXPECT_THAT(colorAt(*image, 97, 202), ElementsAre(255, 0, 0, 255));
    EXPECT_THAT(colorAt(*image, 103, 298), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(colorAt(*image, 2, 303), ElementsAre(0, 0, 0, 0));
}

TEST(PDFReader, showsTheMediaBoxWhereThereIsNoCropBox) {
    const auto image = PDFReader::firstPage(handWrittenPage(""), 400);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 400);
    EXPECT_EQ(image->height(), 300);
    EXPECT_THAT(colorAt(*image, 105, 195), ElementsAre(255, 0, 0, 255));
    EXPECT_THAT(colorAt(*image, 105, 205), ElementsAre(0, 0, 0, 0));
}

TEST(PDFReader, turnsThePageAsItAsks) {
    const auto image = PDFReader::firstPage(handWrittenPage("/Rotate 90"), 400);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 300);
    EXPECT_EQ(image->height(), 400);
    EXPECT_THAT(colorAt(*image, 105, 105), ElementsAre(255, 0, 0, 255));
    EXPECT_THAT(colorAt(*image, 95, 105), ElementsAre(0, 0, 0, 0));
}

TEST(PDFReader, countsPages) {
    EXPECT_EQ(PDFReader::pageCount(pdfPage(10, 10)), 1);
    for (const char* bytes : {"", "%PDF", "hello"}) {
        EXPECT_EQ(PDFReader::pageCount(bytes), 0);
        EXPECT_FALSE(PDFReader::firstPage(bytes, 512));
        EXPECT_FALSE(PDFReader::firstPageSize(bytes, 512));
    }
}

}  // namespace
}  // namespace quorvel
