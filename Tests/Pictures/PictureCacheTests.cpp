#include "Pictures/PictureCache.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using Kind = PictureCache::Kind;

Image imageOf(int pixels) {
    return Image(pixels, 1, allocatePixels(pixels, 1), Image::Alpha::varying);
}

bool holds(PictureCache& cache, const PictureCache::Key& key) {
    return cache.find(key).has_value();
}

TEST(PictureCache, givesBackWhatWasStored) {
    PictureCache cache(1000);
    const Image image = imageOf(10);
    cache.store({Kind::image, "a"}, image);
    EXPECT_EQ(std::get<Image>(*cache.find({Kind::image, "a"})).id(), image.id());
    EXPECT_FALSE(holds(cache, {Kind::image, "b"}));
    EXPECT_FALSE(holds(cache, {Kind::icon, "a"}));
    EXPECT_EQ(cache.byteCount(), 40u);
}

TEST(PictureCache, countsEveryKindOfPicture) {
    PictureCache cache(1000);
    cache.store({Kind::placed, "a", {0, 0, 1, 1}, {0, 0, 1, 1}}, PlacedImage{imageOf(10), 0, 0});
    EXPECT_EQ(cache.byteCount(), 40u);
    cache.store({Kind::encoded, "a"}, EncodedPicture{std::make_shared<const std::string>(100, 'x'), 1, 1, 1});
    EXPECT_EQ(cache.byteCount(), 140u);
}

TEST(PictureCache, dropsTheLeastRecentlyUsedFirst) {
    PictureCache cache(120);
    for (const char* name : {"a", "b", "c"}) cache.store({Kind::image, name}, imageOf(10));
    EXPECT_TRUE(holds(cache, {Kind::image, "a"}));  // and so b is the oldest
    cache.store({Kind::image, "d"}, imageOf(10));
    EXPECT_FALSE(holds(cache, {Kind::image, "b"}));
    for (const char* name : {"a", "c", "d"}) EXPECT_TRUE(holds(cache, {Kind::image, name})) << name;
    cache.store({Kind::image, "e"}, imageOf(25));  // takes the place of two
    EXPECT_TRUE(holds(cache, {Kind::image, "e"}));
    EXPECT_EQ(cache.byteCount(), 100u);
}

TEST(PictureCache, replacesAndNeverPassesItsBudget) {
    PictureCache cache(100);
    cache.store({Kind::image, "a"}, imageOf(10));
    cache.store({Kind::image, "a"}, imageOf(20));
    EXPECT_EQ(cache.byteCount(), 80u);
    cache.store({Kind::image, "large"}, imageOf(26));
    EXPECT_FALSE(holds(cache, {Kind::image, "large"}));
    EXPECT_TRUE(holds(cache, {Kind::image, "a"}));
    cache.store({Kind::image, "just"}, imageOf(25));
    EXPECT_TRUE(holds(cache, {Kind::image, "just"}));
    EXPECT_EQ(cache.byteCount(), 100u);
}

TEST(PictureCache, keepsPlacesApart) {
    PictureCache cache(1000);
    const Rect target{0.25, 1, 10, 10}, visible{0, 0, 5, 5};
    cache.store({Kind::placed, "a", target, visible}, PlacedImage{imageOf(1), 3, 4});
    EXPECT_EQ(std::get<PlacedImage>(*cache.find({Kind::placed, "a", target, visible})).x, 3);
    EXPECT_FALSE(holds(cache, {Kind::placed, "a", visible, target}));
    Rect near = target;
    near.x = std::nextafter(near.x, 1);
    EXPECT_FALSE(holds(cache, {Kind::placed, "a", near, visible}));
    Rect negativeZero = visible;
    negativeZero.x = -0.0;
    EXPECT_TRUE(holds(cache, {Kind::placed, "a", target, negativeZero}));
}

TEST(PictureCache, dropsThePlacesOfOneName) {
    PictureCache cache(1000);
    cache.store({Kind::placed, "a", {0, 0, 1, 1}, {}}, PlacedImage{imageOf(1), 0, 0});
    cache.store({Kind::placed, "a", {0, 0, 2, 2}, {}}, PlacedImage{imageOf(1), 0, 0});
    cache.store({Kind::placed, "b", {0, 0, 1, 1}, {}}, PlacedImage{imageOf(1), 0, 0});
    cache.store({Kind::image, "a"}, imageOf(1));
    cache.dropPlaced("a");
    EXPECT_FALSE(holds(cache, {Kind::placed, "a", {0, 0, 1, 1}, {}}));
    EXPECT_FALSE(holds(cache, {Kind::placed, "a", {0, 0, 2, 2}, {}}));
    EXPECT_TRUE(holds(cache, {Kind::placed, "b", {0, 0, 1, 1}, {}}));
    EXPECT_TRUE(holds(cache, {Kind::image, "a"}));
    EXPECT_EQ(cache.byteCount(), 8u);
}

}  // namespace
}  // namespace quorvel
