#include "Controls/QtImage.h"

#include <gtest/gtest.h>
#include <optional>

namespace quorvel {
namespace {

Image image(int width, int height, Image::Alpha alpha, std::weak_ptr<const std::uint32_t[]>* pixels = nullptr) {
    std::shared_ptr<std::uint32_t[]> words = allocatePixels(width, height);
    for (int at = 0; at < width * height; ++at) words[at] = 0xFF000000U + std::uint32_t(at);
    if (pixels) *pixels = words;
    return Image(width, height, words, alpha);
}

TEST(QtImage, showsTheSamePixels) {
    const Image source = image(3, 2, Image::Alpha::varying);
    const QImage result = toQImage(source);
    ASSERT_EQ(result.size(), QSize(3, 2));
    EXPECT_EQ(result.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(toQImage(image(1, 1, Image::Alpha::opaque)).format(), QImage::Format_RGB32);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) EXPECT_EQ(result.pixel(x, y), 0xFF000000U + std::uint32_t(y * 3 + x));
}

TEST(QtImage, sharesThem) {
    const Image source = image(3, 2, Image::Alpha::varying);
    const QImage result = toQImage(source);
    EXPECT_EQ(static_cast<const void*>(result.constBits()), static_cast<const void*>(source.pixels()));
}

TEST(QtImage, keepsThemAsLongAsACopyLives) {
    std::weak_ptr<const std::uint32_t[]> pixels;
    std::optional<QImage> copy;
    {
        const QImage result = toQImage(image(2, 2, Image::Alpha::varying, &pixels));
        copy = result;
    }
    EXPECT_FALSE(pixels.expired());
    EXPECT_EQ(copy->pixel(1, 1), 0xFF000003U);
    copy.reset();
    EXPECT_TRUE(pixels.expired());
}

TEST(QtImage, aChangedCopyLeavesTheImage) {
    const Image source = image(2, 1, Image::Alpha::varying);
    QImage result = toQImage(source);
    result.setPixel(0, 0, 0xFF123456);
    EXPECT_EQ(source.row(0)[0], 0xFF000000U);
}

}  // namespace
}  // namespace quorvel
