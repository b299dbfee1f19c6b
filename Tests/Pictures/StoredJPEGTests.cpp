// Which JPEG files a document may store byte for byte.

#include "Pictures/PictureReader.h"
#include "Support/TemporaryFolder.h"
#include "TestPictures.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

using namespace TestPictures;
using namespace TestProfiles;
using namespace std::string_view_literals;

class StoredJPEGTest : public testing::Test {
protected:
    std::optional<EncodedPicture> stored(std::string_view bytes) {
        write(folder_ / "a.jpg", bytes);
        const auto header = PictureReader::header(folder_ / "a.jpg");
        const auto picture = PictureReader::encoded(folder_ / "a.jpg");
        EXPECT_EQ(header && header->storable, picture.has_value());
        return picture;
    }

    std::optional<EncodedPicture> stored(const Samples& samples, const Options& options = {}) {
        return stored(encoded(samples, PictureFormat::jpeg, options));
    }

    TemporaryFolder folder_;
};

TEST_F(StoredJPEGTest, isTheFileItselfWhenNothingNeedsChange) {
    const std::string bytes = encoded(waves(120, 80), PictureFormat::jpeg);
    const auto picture = stored(bytes);
    ASSERT_TRUE(picture);
    EXPECT_EQ(*picture->jpeg, bytes);
    EXPECT_EQ(picture->width, 120);
    EXPECT_EQ(picture->height, 80);
    EXPECT_NE(picture->id, stored(bytes)->id);
}

TEST_F(StoredJPEGTest, isTakenInEveryUsualForm) {
    EXPECT_TRUE(stored(plain(40, 30, {77})));
    EXPECT_TRUE(stored(waves(40, 30), {.progressive = true}));
    EXPECT_TRUE(stored(waves(40, 30), {.profile = rgb(sRGBRed, sRGBGreen, sRGBBlue, sRGBTable(1024))}));
    EXPECT_TRUE(stored(plain(40, 30, {77}), {.profile = grey(sRGBTable(1024))}));
    EXPECT_TRUE(stored(plain(2400, 2400, {1, 2, 3})));
    // A profile that can't mean this picture means nothing.
    EXPECT_TRUE(stored(waves(40, 30), {.profile = grey(power(1.8))}));
    EXPECT_TRUE(stored(waves(40, 30), {.extra = "subsample_mode=on"}));
}

TEST_F(StoredJPEGTest, isNotTakenWhereItWouldShowOtherwise) {
    for (int orientation = 2; orientation <= 8; ++orientation)
        EXPECT_FALSE(stored(waves(40, 30), {.orientation = orientation})) << orientation;
    EXPECT_FALSE(stored(waves(40, 30), {.profile = rgb(adobeRed, adobeGreen, adobeBlue, power(2.2))}));
    EXPECT_FALSE(stored(plain(40, 30, {77}), {.profile = grey(power(1.8))}));
    EXPECT_FALSE(stored(plain(40, 30, {1, 2, 3, 4}), {.inks = true}));
    EXPECT_FALSE(stored(plain(2401, 10, {1, 2, 3})));
    EXPECT_FALSE(stored(plain(10, 2401, {1, 2, 3})));
}

TEST_F(StoredJPEGTest, isWhole) {
    const std::string bytes = encoded(waves(100, 80), PictureFormat::jpeg);
    for (std::size_t length = 0; length < bytes.size(); length += 61)
        EXPECT_FALSE(stored(std::string_view(bytes).substr(0, length))) << length;
    EXPECT_FALSE(stored(std::string_view(bytes).substr(0, bytes.size() - 1)));
}

TEST_F(StoredJPEGTest, endsWithThePictureThoughTheFileGoesOn) {
    const std::string bytes = encoded(waves(60, 40), PictureFormat::jpeg);
    EXPECT_EQ(*stored(bytes + encoded(waves(30, 20), PictureFormat::jpeg))->jpeg, bytes);
    EXPECT_EQ(*stored(bytes + std::string(100, '\0'))->jpeg, bytes);
}

TEST_F(StoredJPEGTest, isAJPEG) {
    EXPECT_FALSE(stored(encoded(waves(40, 30), PictureFormat::png)));
    EXPECT_FALSE(stored(""));
    EXPECT_FALSE(PictureReader::encoded(folder_ / "absent.jpg"));
    EXPECT_FALSE(PictureReader::encoded(folder_.path()));
}

}  // namespace
}  // namespace quorvel
