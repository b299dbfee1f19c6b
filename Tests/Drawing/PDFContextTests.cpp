#include "Bitmap.h"
#include "Drawing/PDFContext.h"
#include "JPEGSamples.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <vector>

namespace quorvel {
namespace {

using testing::HasSubstr;
using testing::Not;

const Size a4{210 / 25.4 * 72, 297 / 25.4 * 72};
const RGBA red = RGBA::bytes(255, 0, 0);

std::string document(const PDFContext::Info& info, const std::vector<Size>& pages,
                     const std::function<void(DrawingContext&, std::size_t page)>& draw = {}) {
    const auto pdf = PDFContext::make(info);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        DrawingContext& context = pdf->beginPage(pages[i]);
        if (draw) draw(context, i);
        pdf->endPage();
    }
    const auto bytes = pdf->finish();
    EXPECT_TRUE(bytes);
    return bytes.value_or("");
}

std::string onePage(const std::function<void(DrawingContext&)>& draw) {
    return document({"Test", ""}, {{200, 100}}, [&](DrawingContext& context, std::size_t) { draw(context); });
}

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
}

/// A PDF as a file, for the programs that read one.
class File {
public:
    explicit File(const std::string& bytes) { std::ofstream(folder_ / "x.pdf", std::ios::binary) << bytes; }

    /// What `program`, with its options, prints about it.
    std::string output(const std::string& program) const {
        const std::string command = program + " '" + (folder_ / "x.pdf").string() + "' 2>&1";
        FILE* pipe = popen(command.c_str(), "r");
        std::string text;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) text.push_back(char(c));
        EXPECT_EQ(pclose(pipe), 0) << command << "\n" << text;
        return text;
    }

    /// The pictures in it, as they are stored.
    std::vector<std::string> pictures() const {
        const std::string prefix = (folder_ / "picture").string();
        const std::string command = "pdfimages -all '" + (folder_ / "x.pdf").string() + "' '" + prefix + "'";
        EXPECT_EQ(std::system(command.c_str()), 0);
        std::vector<std::filesystem::path> paths;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
            if (entry.path().filename().string().starts_with("picture")) paths.push_back(entry.path());
        }
        std::sort(paths.begin(), paths.end());
        std::vector<std::string> found;
        for (const auto& path : paths) found.push_back(contentsOf(path));
        return found;
    }

    /// The first page with a pixel a point, each as red, green and blue, from the top.
    struct Pixels {
        int width = 0;
        int height = 0;
        std::string rgb;
        std::array<int, 3> at(int x, int y) const {
            const std::size_t i = (std::size_t(y) * std::size_t(width) + std::size_t(x)) * 3;
            return {std::uint8_t(rgb.at(i)), std::uint8_t(rgb.at(i + 1)), std::uint8_t(rgb.at(i + 2))};
        }
    };
    Pixels rasterised() const {
        std::istringstream ppm(output("pdftoppm -r 72"));
        std::string magic;
        int most = 0;
        Pixels pixels;
        ppm >> magic >> pixels.width >> pixels.height >> most;
        ppm.get();
        pixels.rgb.assign(std::istreambuf_iterator<char>(ppm), {});
        return pixels;
    }

private:
    TemporaryFolder folder_;
};

/// Sets or removes SOURCE_DATE_EPOCH for one test.
class Epoch {
public:
    explicit Epoch(const char* value) {
        if (const char* now = std::getenv("SOURCE_DATE_EPOCH")) before_ = now;
        set(value);
    }
    ~Epoch() { set(before_ ? before_->c_str() : nullptr); }

private:
    static void set(const char* value) {
        value ? setenv("SOURCE_DATE_EPOCH", value, 1) : unsetenv("SOURCE_DATE_EPOCH");
    }
    std::optional<std::string> before_;
};

TEST(PDFContext, StatesCreatorAndTitle) {
    const std::string info = File(document({"Quorvel", "Orchard “Couriers” – Ä"}, {a4})).output("pdfinfo");
    EXPECT_THAT(info, HasSubstr("Creator:         Quorvel\n"));
    EXPECT_THAT(info, HasSubstr("Title:           Orchard “Couriers” – Ä\n"));
    EXPECT_THAT(File(document({"Quorvel", ""}, {a4})).output("pdfinfo"), Not(HasSubstr("Title:")));
}

TEST(PDFContext, ATitleThatIsNotUTF8IsRepaired) {
    EXPECT_THAT(File(document({"Test", "Caf\xE9 (1\\2)"}, {a4})).output("pdfinfo"),
                HasSubstr("Title:           Caf\uFFFD (1\\2)\n"));
}

TEST(PDFContext, ADocumentCanBeGivenUpInTheMiddleOfAPage) {
    const auto pdf = PDFContext::make({"Test", ""});
    pdf->beginPage(a4).drawImage(evenImage(20, 20, 0xFF123456), {0, 0, 50, 50});
    // Its page is open and reads the image when it is gone.
}

TEST(PDFContext, MediaBoxesAreExactForEachPage) {
    const std::string pdf = document({"Test", ""}, {a4, {a4.height, a4.width}, {612, 792}, {100.25, 50.5}});
    EXPECT_THAT(pdf, HasSubstr("/MediaBox [ 0 0 595.275591 841.889764 ]"));
    EXPECT_THAT(pdf, HasSubstr("/MediaBox [ 0 0 841.889764 595.275591 ]"));
    EXPECT_THAT(pdf, HasSubstr("/MediaBox [ 0 0 612 792 ]"));
    EXPECT_THAT(pdf, HasSubstr("/MediaBox [ 0 0 100.25 50.5 ]"));
    EXPECT_THAT(File(pdf).output("pdfinfo"), HasSubstr("Pages:           4\n"));
}

TEST(PDFContext, PagesWithoutMarksArePages) {
    EXPECT_THAT(File(document({"Test", ""}, {a4, a4, a4})).output("pdfinfo"), HasSubstr("Pages:           3\n"));
}

TEST(PDFContext, HasNoDateUnlessOneIsSet) {
    const Epoch epoch(nullptr);
    EXPECT_THAT(document({"Test", ""}, {a4}), Not(HasSubstr("CreationDate")));
}

TEST(PDFContext, TakesItsDateFromTheEnvironment) {
    const Epoch epoch("1700000000");
    const std::string pdf = document({"Test", ""}, {a4});
    EXPECT_THAT(pdf, HasSubstr("/CreationDate (D:20231114221320Z)"));
    EXPECT_THAT(File(pdf).output("TZ=UTC pdfinfo"), HasSubstr("Tue Nov 14 22:13:20 2023"));
}

TEST(PDFContext, IgnoresDatesThatAreNone) {
    for (const char* bad : {"", "today", "-1", "12x", " 12", "253402300800", "99999999999999999999"}) {
        const Epoch epoch(bad);
        EXPECT_THAT(document({"Test", ""}, {a4}), Not(HasSubstr("CreationDate"))) << bad;
    }
    const Epoch last("253402300799");
    EXPECT_THAT(document({"Test", ""}, {a4}), HasSubstr("(D:99991231235959Z)"));
}

TEST(PDFContext, TheSameMarksGiveTheSameBytes) {
    const auto draw = [](DrawingContext& context, std::size_t page) {
        // Other images with other ids, but the same pixels.
        const Image image =
            imageOf(30, 20, [&](int x, int y) { return std::uint32_t(0xFF000000U + unsigned(x * y * 7) + page); });
        context.setAlpha(0.5);
        context.fill(Path().ellipse({10, 10, 50, 30}), red);
        context.drawImage(image, {5, 5, 30, 20});
        context.drawImage(evenImage(4, 4, 0x40102030), {50, 5, 30, 20});
        context.drawEncoded(JPEGSamples::picture(JPEGSamples::color, 16, 8), {20, 20, 16, 8});
    };
    EXPECT_EQ(document({"Test", "Twice"}, {a4, a4}, draw), document({"Test", "Twice"}, {a4, a4}, draw));
}

TEST(PDFContext, AnImageIsStoredOnceForAllPages) {
    const Image image = imageOf(40, 30, [](int x, int y) { return 0xFF000000U | unsigned(x * y * 977); });
    const std::string pdf = document({"Test", ""}, std::vector(20, a4), [&](DrawingContext& context, std::size_t page) {
        for (int i = 0; i < 5; ++i) context.drawImage(image, {10.0 * i, 10.0 * double(page), 40, 30});
    });
    EXPECT_EQ(count(pdf, "/Subtype /Image"), 1U);
    EXPECT_EQ(count(File(pdf).output("pdfimages -list"), "rgb     3   8  image"), 100U);
}

TEST(PDFContext, ImagesKeepTheirPixelsAndOpaqueOnesNeedNoMask) {
    const Image image = imageOf(3, 2, [](int x, int y) { return 0xFF102030U + unsigned(x * 16 + y); });
    const std::string pdf = onePage([&](DrawingContext& context) { context.drawImage(image, {10, 10, 60, 40}); });
    EXPECT_THAT(pdf, Not(HasSubstr("/SMask")));
    EXPECT_THAT(File(pdf).output("pdfimages -list"), HasSubstr("rgb     3   8  image"));

    const std::string clear =
        onePage([](DrawingContext& context) { context.drawImage(evenImage(3, 2, 0x80800000), {10, 10, 60, 40}); });
    EXPECT_THAT(clear, HasSubstr("/SMask"));
}

TEST(PDFContext, ImagesStandUprightInTheirPlace) {
    const Image image = imageOf(2, 2, [](int, int y) { return y == 0 ? 0xFFFF0000U : 0xFF0000FFU; });
    const auto page = File(onePage([&](DrawingContext& context) {
                          context.fill(Rect{0, 0, 200, 100}, RGBA::white);
                          context.drawImage(image, {20, 10, 40, 60});
                      })).rasterised();
    ASSERT_EQ(page.width, 200);
    EXPECT_GT(page.at(40, 32)[0], 200);
    EXPECT_LT(page.at(40, 32)[2], 55);
    EXPECT_GT(page.at(40, 87)[2], 200);
    EXPECT_LT(page.at(40, 87)[0], 55);
    EXPECT_EQ(page.at(18, 50), (std::array{255, 255, 255}));
    EXPECT_EQ(page.at(62, 50), (std::array{255, 255, 255}));
    EXPECT_EQ(page.at(40, 28), (std::array{255, 255, 255}));
    EXPECT_EQ(page.at(40, 92), (std::array{255, 255, 255}));
}

TEST(PDFContext, AJPEGIsStoredByteForByteAndOnce) {
    const EncodedPicture color = JPEGSamples::picture(JPEGSamples::color, 16, 8);
    const EncodedPicture grey = JPEGSamples::picture(JPEGSamples::grey, 8, 8);
    const std::string pdf = document({"Test", ""}, {a4, a4, a4}, [&](DrawingContext& context, std::size_t) {
        context.save();
        context.clip(Path().ellipse({100, 100, 200, 100}));
        context.drawEncoded(color, {100, 100, 200, 100});
        context.restore();
        context.setAlpha(0.5);
        context.drawEncoded(color, {100, 300, 200, 100});
        context.drawEncoded(grey, {100, 500, 200, 100});
    });
    EXPECT_EQ(count(pdf, *color.jpeg), 1U);
    EXPECT_EQ(count(pdf, *grey.jpeg), 1U);
    EXPECT_EQ(count(pdf, "/Subtype /Image"), 2U);

    const File file(pdf);
    const std::string list = file.output("pdfimages -list");
    EXPECT_EQ(count(list, "rgb     3   8  jpeg"), 6U);
    EXPECT_EQ(count(list, "gray    1   8  jpeg"), 3U);
    for (const std::string& picture : file.pictures()) EXPECT_TRUE(picture == *color.jpeg || picture == *grey.jpeg);
}

TEST(PDFContext, AJPEGIsDrawnInItsPlaceWithClipAndAlpha) {
    const EncodedPicture color = JPEGSamples::picture(JPEGSamples::color, 16, 8);
    const auto page = File(onePage([&](DrawingContext& context) {
                          context.fill(Rect{0, 0, 200, 100}, RGBA::white);
                          context.drawEncoded(color, {0, 0, 80, 80});
                          context.clip(Rect{100, 0, 40, 80});
                          context.setAlpha(0.5);
                          context.drawEncoded(color, {100, 0, 80, 80});
                      })).rasterised();
    const auto [topRed, topGreen, topBlue] = page.at(40, 24);
    EXPECT_GT(topRed, 180);
    EXPECT_LT(topBlue, 80);
    const auto [bottomRed, bottomGreen, bottomBlue] = page.at(40, 96);
    EXPECT_GT(bottomBlue, 180);
    EXPECT_LT(bottomRed, 80);
    EXPECT_NEAR(page.at(120, 24)[2], (255 + topBlue) / 2, 6);
    EXPECT_EQ(page.at(150, 24), (std::array{255, 255, 255})) << "beyond the clip";
    EXPECT_EQ(page.at(40, 10), (std::array{255, 255, 255}));
}

TEST(PDFContext, AlphaActsOnEachMarkWithoutPictures) {
    const std::string pdf = onePage([](DrawingContext& context) {
        context.fill(Rect{0, 0, 200, 100}, RGBA::white);
        context.setAlpha(0.5);
        context.fill(Rect{0, 0, 100, 100}, red);
        context.stroke(Path().move({0, 50}).line({200, 50}), RGBA::bytes(0, 0, 255), 20);
    });
    EXPECT_THAT(pdf, Not(HasSubstr("/Image")));
    const auto page = File(pdf).rasterised();
    const auto near = [](std::array<int, 3> a, std::array<int, 3> b) {
        return std::abs(a[0] - b[0]) <= 2 && std::abs(a[1] - b[1]) <= 2 && std::abs(a[2] - b[2]) <= 2;
    };
    EXPECT_TRUE(near(page.at(50, 20), {255, 128, 128}));
    EXPECT_TRUE(near(page.at(50, 50), {128, 64, 191})) << "the fill shows through the stroke";
    EXPECT_TRUE(near(page.at(150, 50), {128, 128, 255}));
}

TEST(PDFContext, HostileMarksLeaveTheRestAlone) {
    const double notANumber = std::nan("");
    const EncodedPicture color = JPEGSamples::picture(JPEGSamples::color, 16, 8);
    const Image image = evenImage(2, 2, 0xFF00FF00);
    const auto page = File(onePage([&](DrawingContext& context) {
                          context.fill(Rect{0, 0, 200, 100}, RGBA::white);
                          for (const Rect& rect : {Rect{notANumber, 0, 5, 5}, Rect{0, 0, -5, 5}, Rect{1e300, 0, 5, 5},
                                                   Rect{0, 0, 1e-300, 1e-300}, Rect{-1e300, -1e300, 1e299, 1e299}}) {
                              context.fill(rect, red);
                              context.drawImage(image, rect);
                              context.drawEncoded(color, rect);
                              context.stroke(Path().rectangle(rect), red, notANumber);
                          }
                          context.drawEncoded({nullptr, 5, 5, nextImageId()}, {0, 0, 5, 5});
                          context.fill(Rect{50, 50, 10, 10}, red);
                      })).rasterised();
    EXPECT_EQ(page.at(55, 45), (std::array{255, 0, 0}));
    EXPECT_EQ(page.at(5, 95), (std::array{255, 255, 255}));
}

/// The most memory that this process has held since the last call, in bytes.
std::size_t peakMemory() {
    std::ifstream status("/proc/self/status");
    std::size_t kibibytes = 0;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) kibibytes = std::stoul(line.substr(6));
    }
    std::ofstream("/proc/self/clear_refs") << 5;
    return kibibytes * 1024;
}

TEST(PDFContext, ALargeJPEGsPixelsAreNeverMade) {
    const EncodedPicture large = JPEGSamples::picture(JPEGSamples::color, 9000, 9000);  // 324 MB of pixels
    peakMemory();
    const std::size_t before = peakMemory();
    document({"Test", ""}, std::vector(3, a4),
             [&](DrawingContext& context, std::size_t) { context.drawEncoded(large, {0, 0, 100, 100}); });
    EXPECT_LT(peakMemory(), before + 100'000'000);
}

TEST(PDFContext, PagesThatAreWrittenKeepNoPixels) {
    peakMemory();
    const std::size_t before = peakMemory();
    document({"Test", ""}, std::vector(120, a4), [&](DrawingContext& context, std::size_t) {
        context.drawImage(evenImage(1000, 1000, 0xFF204060), {0, 0, 100, 100});
    });
    EXPECT_LT(peakMemory(), before + 400'000'000) << "120 pictures of 4 MB";
}

TEST(PDFContext, ReportsAFailureOfAnyPage) {
    const auto pdf = PDFContext::make({"Test", ""});
    DrawingContext& context = pdf->beginPage(a4);
    cairo_restore(context.cairo());  // nothing was saved
    context.fill(Rect{0, 0, 10, 10}, red);
    pdf->endPage();
    pdf->beginPage(a4).fill(Rect{0, 0, 10, 10}, red);
    pdf->endPage();
    EXPECT_FALSE(pdf->finish());
}

TEST(PDFContext, APageThatIsOpenEndsWithTheNextOrTheDocument) {
    const auto pdf = PDFContext::make({"Test", ""});
    pdf->beginPage(a4);
    pdf->beginPage({100, 100}).fill(Rect{0, 0, 10, 10}, red);
    const auto bytes = pdf->finish();
    ASSERT_TRUE(bytes);
    EXPECT_THAT(File(*bytes).output("pdfinfo"), HasSubstr("Pages:           2\n"));
}

}  // namespace
}  // namespace quorvel
