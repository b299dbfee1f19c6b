#include "Pictures/Assets.h"
#include "Support/Images/ImageDifference.h"
#include "Support/TemporaryFolder.h"
#include "TestPictures.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>
#include <thread>

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using namespace TestPictures;
using testing::ElementsAre;
using testing::IsEmpty;

class AssetsTest : public testing::Test {
protected:
    AssetsTest() {
        for (const char* name : {"art", "sheet", "icons"}) fs::create_directory(folder_ / name);
    }

    fs::path picture(const std::string& name, std::uint16_t shade = 100, int width = 6, int height = 4) {
        const PictureFormat format = name.ends_with(".jpg") ? PictureFormat::jpeg : PictureFormat::png;
        return file(name, encoded(plain(width, height, {shade, 0, 0}), format));
    }

    fs::path file(const std::string& name, std::string_view bytes) {
        const fs::path path = folder_ / name;
        fs::create_directories(path.parent_path());
        write(path, bytes);
        return path;
    }

    static int shadeOf(const std::optional<Image>& image) { return image ? colorAt(*image, 0, 0).at(0) : -1; }

    Assets make() { return Assets({folder_ / "art", folder_ / "sheet"}, folder_ / "icons"); }

    TemporaryFolder folder_;
};

TEST_F(AssetsTest, findsAPictureOnceAndRemembersIt) {
    picture("art/barrel.png", 50);
    Assets assets = make();
    const auto first = assets.image("barrel.png");
    ASSERT_TRUE(first);
    EXPECT_EQ(shadeOf(first), 50);
    for (const char* name : {"barrel.png", "  barrel.png\n", "\tbarrel.png\r\n"})
        EXPECT_EQ(assets.image(name)->id(), first->id()) << name;
    fs::remove(folder_ / "art/barrel.png");
    EXPECT_EQ(assets.image("barrel.png")->id(), first->id());
}

TEST_F(AssetsTest, givesNothingForNoName) {
    Assets assets = make();
    for (const char* name : {"", "  ", "\n"}) {
        EXPECT_FALSE(assets.image(name));
        EXPECT_FALSE(assets.size(name));
        EXPECT_FALSE(assets.encoded(name));
        EXPECT_FALSE(assets.placed(name, {0, 0, 5, 5}, {0, 0, 5, 5}));
        EXPECT_FALSE(assets.resolve(name));
    }
    EXPECT_THAT(assets.missing({"", "  ", "\n"}), IsEmpty());
}

TEST_F(AssetsTest, remembersAMissForItsLife) {
    Assets assets = make();
    EXPECT_FALSE(assets.image("late.png"));
    picture("art/late.png");
    EXPECT_FALSE(assets.image("late.png"));
    EXPECT_FALSE(assets.size("late.png"));
    EXPECT_THAT(assets.missing({"late.png"}), ElementsAre("late.png"));
    EXPECT_TRUE(assets.resolve("late.png"));  // which looks anew
    EXPECT_TRUE(make().image("late.png"));
}

TEST_F(AssetsTest, tellsCasesApart) {
    picture("art/barrel.png", 1);
    picture("art/Barrel.png", 2);
    Assets assets = make();
    EXPECT_EQ(shadeOf(assets.image("barrel.png")), 1);
    EXPECT_EQ(shadeOf(assets.image("Barrel.png")), 2);
}

TEST_F(AssetsTest, findsNamesInTheirManyForms) {
    picture("art/art/barrel.png", 1);
    picture("art/flat.png", 2);
    const fs::path elsewhere = picture("elsewhere/a b.png", 3);
    Assets assets = make();
    EXPECT_EQ(shadeOf(assets.image("art\\barrel.png")), 1);
    EXPECT_EQ(shadeOf(assets.image("art/barrel.png")), 1);
    EXPECT_EQ(shadeOf(assets.image("art/flat.png")), 2);
    EXPECT_EQ(shadeOf(assets.image(elsewhere.native())), 3);
    EXPECT_EQ(shadeOf(assets.image("file://" + (folder_ / "elsewhere").native() + "/a%20b.png")), 3);
    picture("art/flat/flat.png", 4);
    EXPECT_EQ(shadeOf(make().image("flat/flat.png")), 4);
}

TEST_F(AssetsTest, searchesTheFirstFolderByTheLastComponentBeforeTheSecondByTheWholePath) {
    picture("sheet/art/barrel.png", 1);
    picture("art/barrel.png", 2);
    EXPECT_EQ(shadeOf(make().image("art/barrel.png")), 2);
}

TEST_F(AssetsTest, givesNothingWhereTheFirstPathThatExistsIsNoPicture) {
    fs::create_directory(folder_ / "art/barrel.png");
    picture("sheet/barrel.png");
    ASSERT_EQ(::mkfifo((folder_ / "art/pipe.png").c_str(), 0600), 0);
    Assets assets = make();
    EXPECT_EQ(assets.resolve("barrel.png"), folder_ / "art/barrel.png");
    EXPECT_FALSE(assets.image("barrel.png"));
    EXPECT_FALSE(assets.image("pipe.png"));
    EXPECT_THAT(assets.missing({"barrel.png", "pipe.png"}), ElementsAre("barrel.png", "pipe.png"));
}

TEST_F(AssetsTest, readsPDFArt) {
    file("art/page.pdf", pdfPage(100, 200));
    Assets assets = make();
    EXPECT_EQ(assets.size("page.pdf"), (PictureSize{256, 512}));
    const auto image = assets.image("page.pdf");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 256);
    EXPECT_EQ(image->height(), 512);
    EXPECT_EQ(image->alpha(), Image::Alpha::varying);
    EXPECT_FALSE(assets.encoded("page.pdf"));
}

TEST_F(AssetsTest, listsMissingNamesOnceAsTheyStand) {
    picture("art/here.png");
    file("art/broken.png", "no picture");
    Assets assets = make();
    EXPECT_THAT(assets.missing(
                    {" gone.png", "here.png", "", "gone.png ", "gone.png", "broken.png", "here.png", "Gone.png", "  "}),
                ElementsAre(" gone.png", "broken.png", "Gone.png"));
    EXPECT_THAT(assets.missing({"gone.png"}), ElementsAre("gone.png"));
    EXPECT_THAT(assets.missing({}), IsEmpty());
}

TEST_F(AssetsTest, addsWhatFailsToDecodeToTheMisses) {
    const std::string bytes = encoded(waves(300, 200), PictureFormat::png);
    file("art/half.png", std::string_view(bytes).substr(0, bytes.size() / 2));
    Assets assets = make();
    EXPECT_THAT(assets.missing({"half.png"}), IsEmpty());
    EXPECT_TRUE(assets.size("half.png"));
    EXPECT_FALSE(assets.image("half.png"));
    EXPECT_THAT(assets.missing({"half.png"}), ElementsAre("half.png"));
    EXPECT_FALSE(assets.size("half.png"));
}

TEST_F(AssetsTest, tellsTheSizeThatTheImageHas) {
    picture("art/wide.jpg", 10, 3000, 200);
    picture("art/small.png", 10, 7, 9);
    Assets assets = make();
    for (const char* name : {"wide.jpg", "small.png"}) {
        const auto size = assets.size(name);
        const auto image = assets.image(name);
        EXPECT_EQ(size, (PictureSize{image->width(), image->height()})) << name;
    }
    EXPECT_EQ(assets.size("wide.jpg"), (PictureSize{2400, 160}));
}

TEST_F(AssetsTest, givesTheBytesOfAJPEGThatNeedsNoChange) {
    const fs::path path = picture("art/photo.jpg");
    picture("art/drawing.png");
    file("art/turned.jpg", encoded(waves(20, 10), PictureFormat::jpeg, {.orientation = 3}));
    Assets assets = make();
    const auto stored = assets.encoded(" photo.jpg");
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->jpeg->size(), fs::file_size(path));
    EXPECT_EQ(assets.encoded("photo.jpg")->id, stored->id);
    for (const char* name : {"drawing.png", "turned.jpg", "absent.jpg"}) EXPECT_FALSE(assets.encoded(name)) << name;
}

TEST_F(AssetsTest, keepsPicturesAsTheyAreToBePlaced) {
    file("art/a.png", encoded(waves(100, 80), PictureFormat::png));
    Assets assets = make();
    const Rect target{3.5, 4.25, 50, 40}, visible{0, 0, 40, 40};
    const auto placed = assets.placed("a.png", target, visible);
    ASSERT_TRUE(placed);
    const auto expected = ImageScaling::place(*assets.image("a.png"), target, visible);
    EXPECT_EQ(placed->x, expected->x);
    EXPECT_EQ(placed->y, expected->y);
    EXPECT_EQ(differenceBetween(placed->image, expected->image).maximum, 0);
    EXPECT_EQ(assets.placed(" a.png\n", target, visible)->image.id(), placed->image.id());
    EXPECT_NE(assets.placed("a.png", {3.5, 4.25, 50, 41}, visible)->image.id(), placed->image.id());
    EXPECT_NE(assets.placed("a.png", target, {0, 0, 41, 40})->image.id(), placed->image.id());
    EXPECT_FALSE(assets.placed("a.png", {500, 500, 10, 10}, visible));
    EXPECT_FALSE(assets.placed("a.png", {0, 0, std::numeric_limits<double>::quiet_NaN(), 1}, visible));
    EXPECT_FALSE(assets.placed("absent.png", target, visible));
}

TEST_F(AssetsTest, findsIconsByTheirNameInAnyCase) {
    picture("icons/coin.png", 40);
    Assets assets = make();
    const auto icon = assets.icon("coin");
    ASSERT_TRUE(icon);
    EXPECT_EQ(shadeOf(icon), 40);
    EXPECT_EQ(assets.icon("COIN")->id(), icon->id());
    EXPECT_FALSE(assets.icon("coin.png"));
    picture("icons/Gem.png");
    EXPECT_FALSE(assets.icon("Gem"));  // only the lower-case name is tried
}

TEST_F(AssetsTest, triesTheExtensionsInOrder) {
    const std::pair<const char*, PictureFormat> files[] = {{"tiff", PictureFormat::tiff}, {"tif", PictureFormat::tiff},
                                                           {"heic", PictureFormat::heif}, {"pdf", PictureFormat::png},
                                                           {"jpeg", PictureFormat::jpeg}, {"jpg", PictureFormat::jpeg},
                                                           {"png", PictureFormat::png}};
    int width = 64;
    for (const auto& [extension, format] : files) {
        const bool isPDF = std::string_view(extension) == "pdf";
        width += 2;
        file("icons/coin." + std::string(extension), isPDF ? pdfPage(80, 40) : encoded(waves(width, 64), format));
        const auto icon = make().icon("coin");
        ASSERT_TRUE(icon) << extension;
        EXPECT_EQ(icon->width(), isPDF ? 512 : width) << extension;
    }
    file("icons/gem.gif", "GIF89a");
    EXPECT_FALSE(make().icon("gem"));
}

TEST_F(AssetsTest, passesOverIconFilesThatCannotBeDecoded) {
    file("icons/coin.png", "no picture");
    fs::create_directory(folder_ / "icons/coin.jpg");
    file("icons/coin.pdf", pdfPage(80, 40));
    EXPECT_EQ(make().icon("coin")->width(), 512);
}

TEST_F(AssetsTest, remembersMissingIconsOnlyWithAnIconFolder) {
    Assets assets = make();
    EXPECT_FALSE(assets.icon("coin"));
    picture("icons/coin.png");
    EXPECT_FALSE(assets.icon("coin"));
    Assets without({folder_ / "art"});
    EXPECT_FALSE(without.icon("coin"));
}

TEST_F(AssetsTest, takesIconsFromTheFolderItselfOnly) {
    picture("outside.png");
    picture("icons/deep/coin.png");
    Assets assets = make();
    for (const std::string& name : {std::string("../outside"), std::string("deep/coin"), std::string("/etc/x"),
                                    std::string("coin\0x", 6), std::string()})
        EXPECT_FALSE(assets.icon(name)) << name;
}

TEST_F(AssetsTest, prefersRegisteredImages) {
    picture("art/a.png", 10, 6, 4);
    picture("icons/coin.png", 10);
    Assets assets = make();
    EXPECT_EQ(shadeOf(assets.image("a.png")), 10);
    EXPECT_EQ(shadeOf(Image(assets.placed("a.png", {0, 0, 6, 4}, {0, 0, 6, 4})->image)), 10);
    auto pixels = allocatePixels(2, 2);
    std::fill_n(pixels.get(), 4, 0xFFC80000u);
    const Image image(2, 2, pixels, Image::Alpha::opaque);
    assets.register_(image, "a.png");
    assets.register_(image, "icon:coin");
    assets.register_(image, "absent.png");
    EXPECT_EQ(assets.image(" a.png ")->id(), image.id());
    EXPECT_EQ(assets.icon("Coin")->id(), image.id());
    EXPECT_EQ(assets.size("a.png"), (PictureSize{2, 2}));
    EXPECT_FALSE(assets.encoded("a.png"));
    EXPECT_EQ(shadeOf(Image(assets.placed("a.png", {0, 0, 6, 4}, {0, 0, 6, 4})->image)), 200);
    EXPECT_THAT(assets.missing({"absent.png", "a.png"}), IsEmpty());
    Assets without;
    without.register_(image, "icon:gem");
    EXPECT_EQ(without.icon("gem")->id(), image.id());
}

TEST_F(AssetsTest, placesWhatWasRegisteredAfterAMiss) {
    Assets assets = make();
    const Rect place{0, 0, 2, 2};
    EXPECT_FALSE(assets.placed("a.png", place, place));
    assets.register_(Image(2, 2, allocatePixels(2, 2), Image::Alpha::varying), "a.png");
    EXPECT_TRUE(assets.placed("a.png", place, place));
}

TEST_F(AssetsTest, keepsDecodedPixelsToABudgetAndDecodesAnew) {
    constexpr int side = 2400;
    constexpr std::size_t held = Assets::pixelBudget / (std::size_t(side) * side * 4);
    for (std::size_t i = 0; i <= held; ++i) picture("art/" + std::to_string(i) + ".jpg", std::uint16_t(i), side, side);
    Assets assets = make();
    const auto read = [&](std::size_t i) { return *assets.image(std::to_string(i) + ".jpg"); };
    const Image first = read(0), second = read(1), third = read(2);
    for (std::size_t i = 3; i < held; ++i) read(i);
    EXPECT_EQ(read(0).pixels(), first.pixels());
    read(held);  // one too many: the least recently used, 1, goes
    EXPECT_EQ(read(0).pixels(), first.pixels());
    EXPECT_EQ(read(2).pixels(), third.pixels());
    const Image anew = read(1);
    EXPECT_NE(anew.pixels(), second.pixels());
    EXPECT_EQ(anew.id(), second.id()) << "a document would store it twice";
}

TEST_F(AssetsTest, decodesAPictureOnceForAllThreads) {
    for (int i = 0; i < 4; ++i) file("art/" + std::to_string(i) + ".png", encoded(waves(900, 600), PictureFormat::png));
    picture("icons/coin.png");
    Assets assets = make();
    std::vector<std::vector<std::uint64_t>> ids(4);
    {
        std::vector<std::jthread> threads;
        for (auto& own : ids)
            threads.emplace_back([&assets, &own] {
                for (int round = 0; round < 3; ++round)
                    for (const char* name : {"0.png", "1.png", "2.png", "3.png"}) {
                        own.push_back(assets.image(name)->id());
                        own.push_back(assets.placed(name, {0.5, 0, 90, 60}, {0, 0, 80, 60})->image.id());
                        own.push_back(assets.icon("coin")->id());
                        own.push_back(std::uint64_t(assets.size(name)->width));
                        own.push_back(assets.image("absent.png").has_value());
                        own.push_back(assets.missing({"absent.png", name}).size());
                    }
            });
    }
    for (const auto& own : ids) EXPECT_EQ(own, ids[0]);
}

}  // namespace
}  // namespace quorvel
