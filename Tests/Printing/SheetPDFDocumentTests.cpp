#include "Foundation/AtomicFile.h"
#include "Printing/SheetPDFTest.h"
#include "Support/Images/RenderPDFPage.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <vips/vips.h>

namespace quorvel {
namespace {

using testing::HasSubstr;

/// A JPEG of 60 × 40 pixels that needs no change.
std::string jpegFile() {
    std::vector<unsigned char> samples(60 * 40 * 3);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<unsigned char>(i * 7);
    VipsImage* image = vips_image_new_from_memory(samples.data(), samples.size(), 60, 40, 3, VIPS_FORMAT_UCHAR);
    image->Type = VIPS_INTERPRETATION_sRGB;
    void* bytes = nullptr;
    std::size_t length = 0;
    EXPECT_EQ(vips_jpegsave_buffer(image, &bytes, &length, nullptr), 0);
    std::string file(static_cast<const char*>(bytes), length);
    g_free(bytes);
    g_object_unref(image);
    return file;
}

TEST(SheetPDFDocument, NamesItsCreatorAndItsTitle) {
    const auto pdf = pdfOf(numberedCards(1), plainRenderer(), {}, "Orchard");
    EXPECT_THAT(pdf, HasSubstr("/Creator (Quorvel)"));
    EXPECT_THAT(pdf, HasSubstr("/Title (Orchard)"));
}

TEST(SheetPDFDocument, TextStaysTextInSubsetFonts) {
    const auto pdf = pdfOf(numberedCards(2), titledRenderer(), {});
    EXPECT_THAT(pdfPageText(pdf, 0), HasSubstr("Card 2 front"));
    EXPECT_GT(occurrences(pdf, "/FontFile"), 0u);
    const std::regex name("/FontName\\s*/([^\\s/]+)");
    for (auto found = std::sregex_iterator(pdf.begin(), pdf.end(), name); found != std::sregex_iterator(); ++found)
        EXPECT_TRUE(std::regex_match((*found)[1].str(), std::regex("[A-Z]{6}\\+.+"))) << (*found)[1];
}

TEST(SheetPDFDocument, APictureIsStoredOnce) {
    SheetSettings settings;
    settings.duplex = true;
    auto renderer = plainRenderer();
    renderer.assets->register_(plainImage(300, 200, 0xFF208040), "green");
    for (auto* side : {&renderer.template_.front, &renderer.template_.back})
        side->emplace_back("Art", LayerKind::image, Frame{5, 5, 50, 40}, "green");
    const auto pdf = pdfOf(numberedCards(20), renderer, settings);
    EXPECT_EQ(SheetPDF::pageCount(pdf), 6);
    EXPECT_EQ(occurrences(pdf, "/Subtype /Image"), 1u);
}

TEST(SheetPDFDocument, AJPEGThatNeedsNoChangeIsStoredAsItIs) {
    ASSERT_EQ(vips_init("PrintingTests"), 0);
    const TemporaryFolder folder;
    const std::string jpeg = jpegFile();
    ASSERT_TRUE(AtomicFile::write(folder / "photo.jpg", jpeg));
    auto renderer = plainRenderer();
    renderer.assets = std::make_shared<Assets>(std::vector{folder.path()});
    renderer.template_.front.emplace_back("Art", LayerKind::image, Frame{5, 5, 50, 40}, "photo.jpg");
    const auto pdf = pdfOf(numberedCards(20), renderer, {});
    EXPECT_EQ(SheetPDF::pageCount(pdf), 3);
    EXPECT_EQ(occurrences(pdf, jpeg), 1u);
    EXPECT_EQ(occurrences(pdf, "/Subtype /Image"), 1u);
}

TEST(SheetPDFDocument, TheSameCardsGiveTheSameBytes) {
    SheetSettings settings;
    settings.duplex = true;
    EXPECT_TRUE(pdfOf(numberedCards(20), titledRenderer(), settings) ==
                pdfOf(numberedCards(20), titledRenderer(), settings));
}

}  // namespace
}  // namespace quorvel
