#include "Bitmap.h"
#include "Drawing/DrawingContext.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::nan("");
const RGBA red = RGBA::bytes(255, 0, 0);
const RGBA blue = RGBA::bytes(0, 0, 255);
constexpr std::uint32_t redPixel = 0xFFFF0000, bluePixel = 0xFF0000FF;

TEST(DrawingContext, YGrowsUpFromTheBottomLeft) {
    const Image image = drawn(4, 3, [](auto& c) { c.fill(Rect{0, 0, 1, 1}, red); });
    EXPECT_EQ(image.row(2)[0], redPixel);
    EXPECT_EQ(image.row(0)[0], 0U);
}

TEST(DrawingContext, TranslatesThenScalesFromTheOriginOfBefore) {
    const Image image = drawn(10, 10, [](auto& c) {
        c.translate(2, 3);
        c.scale(4, 2);
        c.fill(Rect{0, 0, 1, 1}, red);
    });
    EXPECT_TRUE(samePixels(image, drawn(10, 10, [](auto& c) { c.fill(Rect{2, 3, 4, 2}, red); })));
}

TEST(DrawingContext, EdgesWithinAPixelGetTheirShare) {
    const Image image = drawn(4, 4, [](auto& c) { c.fill(Rect{0.5, 1, 2.25, 1.5}, red); });
    EXPECT_NEAR(int(pixelAt(image, 0, 1) >> 24), 128, 1);
    EXPECT_EQ(pixelAt(image, 1, 1), redPixel);
    EXPECT_NEAR(int(pixelAt(image, 2, 1) >> 24), 191, 1);
    EXPECT_NEAR(int(pixelAt(image, 1, 2) >> 24), 128, 1);
    EXPECT_EQ(pixelAt(image, 3, 1), 0U);
}

TEST(DrawingContext, AlphaActsOnEachMarkByItself) {
    const Image image = drawn(10, 10, [](auto& c) {
        c.setAlpha(0.5);
        c.fill(Rect{0, 0, 10, 10}, red);
        c.stroke(Path().move({0, 5}).line({10, 5}), blue, 4);
    });
    const std::uint32_t fillAlone = pixelAt(image, 5, 1);
    const std::uint32_t both = pixelAt(image, 5, 5);
    EXPECT_NEAR(int(fillAlone >> 24), 128, 1);
    EXPECT_NEAR(int(both >> 24), 192, 1);
    EXPECT_NEAR(int(both >> 16 & 0xFF), 64, 1) << "the fill shows through the stroke";
    EXPECT_NEAR(int(both & 0xFF), 128, 1);
}

TEST(DrawingContext, AlphaReplacesTheOneBeforeUntilRestore) {
    drawn(1, 1, [](DrawingContext& c) {
        c.setAlpha(0.5);
        c.save();
        c.setAlpha(0.25);
        EXPECT_EQ(c.alpha(), 0.25);
        c.restore();
        EXPECT_EQ(c.alpha(), 0.5);
        c.restore();
        EXPECT_EQ(c.alpha(), 0.5) << "what wasn't saved isn't restored";
        c.fill(Rect{0, 0, 1, 1}, red);
        EXPECT_EQ(cairo_status(c.cairo()), CAIRO_STATUS_SUCCESS);
    });
}

TEST(DrawingContext, AlphaIsBoundedByZeroAndOne) {
    drawn(1, 1, [](DrawingContext& c) {
        for (const auto& [given, kept] :
             {std::pair{1.5, 1.0}, {-1.0, 0.0}, {infinity, 1.0}, {-infinity, 0.0}, {notANumber, 0.0}}) {
            c.setAlpha(given);
            EXPECT_EQ(c.alpha(), kept);
        }
    });
}

TEST(DrawingContext, AlphaMultipliesThatOfTheColor) {
    const Image image = drawn(1, 1, [](auto& c) {
        c.setAlpha(0.5);
        c.fill(Rect{0, 0, 1, 1}, RGBA::bytes(255, 255, 255, 128));
    });
    EXPECT_NEAR(int(image.row(0)[0] >> 24), 64, 1);
}

TEST(DrawingContext, FillsByBothRules) {
    const Path rings = Path().rectangle({0, 0, 9, 9}).rectangle({3, 3, 3, 3});
    EXPECT_EQ(pixelAt(drawn(9, 9, [&](auto& c) { c.fill(rings, red); }), 4, 4), redPixel);
    EXPECT_EQ(pixelAt(drawn(9, 9, [&](auto& c) { c.fill(rings, red, FillRule::evenOdd); }), 4, 4), 0U);
    const Image clipped = drawn(9, 9, [&](auto& c) {
        c.fill(rings, blue, FillRule::evenOdd);
        c.clip(rings);
        c.fill(Rect{0, 0, 9, 9}, red);
    });
    EXPECT_EQ(pixelAt(clipped, 4, 4), redPixel) << "a clip is by winding";
}

TEST(DrawingContext, StrokesAreCentredOnThePath) {
    const Image image = drawn(12, 12, [](auto& c) { c.stroke(Path().rectangle({3, 3, 6, 6}), red, 2); });
    EXPECT_EQ(pixelAt(image, 2, 6), redPixel);
    EXPECT_EQ(pixelAt(image, 3, 6), redPixel);
    EXPECT_EQ(pixelAt(image, 4, 6), 0U);
    EXPECT_EQ(pixelAt(image, 1, 6), 0U);
    EXPECT_EQ(pixelAt(image, 2, 2), redPixel) << "corners are mitred";
}

TEST(DrawingContext, StrokesOfNoWidthShowNothing) {
    for (const double width : {0.0, -1.0, notANumber}) {
        EXPECT_TRUE(blank(drawn(9, 9, [&](auto& c) { c.stroke(Path().rectangle({2, 2, 4, 4}), red, width); })));
    }
}

TEST(DrawingContext, EmptyClipsHideEverythingUntilRestore) {
    for (const Rect& rect : {Rect{3, 3, 0, 0}, Rect{3, 3, -2, 5}, Rect{20, 20, 5, 5}, Rect{notANumber, 0, 5, 5}}) {
        const Image image = drawn(9, 9, [&](auto& c) {
            c.save();
            c.clip(rect);
            EXPECT_EQ(c.visibleDeviceRect().width * c.visibleDeviceRect().height, 0);
            c.fill(Rect{0, 0, 9, 9}, red);
            c.restore();
            c.fill(Rect{0, 0, 1, 1}, blue);
        });
        EXPECT_EQ(pixelAt(image, 4, 4), 0U);
        EXPECT_EQ(pixelAt(image, 0, 0), bluePixel);
    }
    EXPECT_TRUE(blank(drawn(9, 9, [](auto& c) {
        c.clip(Path());
        c.fill(Rect{0, 0, 9, 9}, red);
    })));
}

TEST(DrawingContext, RectanglesThatTouchLeaveNoSeamWhenClippedToPixels) {
    for (const double edge : {3.1, 3.25, 3.5, 3.75, 3.99}) {
        const Image image = drawn(8, 8, [&](DrawingContext& c) {
            c.scale(1.6, 1.6);
            c.fill(Rect{0, 0, 5, 5}, RGBA::white);
            for (const Rect& half : {Rect{0, 0, edge, 5}, Rect{edge, 0, 5 - edge, 5}}) {
                c.save();
                c.clipToPixels(half);
                c.fill(half.inset(-1, -1), red);
                c.restore();
            }
        });
        for (int x = 0; x < 8; ++x) EXPECT_EQ(pixelAt(image, x, 4), redPixel) << edge << " at " << x;
    }
}

TEST(DrawingContext, ClipsMeet) {
    const Image image = drawn(9, 9, [](auto& c) {
        c.clip(Rect{0, 0, 5, 9});
        c.clip(Path().rectangle({3, 0, 6, 9}));
        EXPECT_EQ(c.visibleDeviceRect(), (Rect{3, 0, 2, 9}));
        c.fill(Rect{0, 0, 9, 9}, red);
    });
    EXPECT_EQ(pixelAt(image, 2, 4), 0U);
    EXPECT_EQ(pixelAt(image, 3, 4), redPixel);
    EXPECT_EQ(pixelAt(image, 5, 4), 0U);
}

class HostileRect : public testing::TestWithParam<Rect> {};

TEST_P(HostileRect, DrawsNothingAndLeavesLaterMarksAlone) {
    const Rect rect = GetParam();
    const Image picture = evenImage(3, 3, 0xFF00FF00);
    const Image image = drawn(9, 9, [&](DrawingContext& c) {
        c.fill(rect, red);
        c.fill(Path().rectangle({rect.x, rect.y, notANumber, rect.height}), red);
        c.drawImage(picture, rect);
        c.deviceRect(rect);
        c.fill(Rect{0, 0, 1, 1}, blue);
        EXPECT_EQ(cairo_status(c.cairo()), CAIRO_STATUS_SUCCESS);
    });
    EXPECT_TRUE(samePixels(image, drawn(9, 9, [](auto& c) { c.fill(Rect{0, 0, 1, 1}, blue); })));
}

INSTANTIATE_TEST_SUITE_P(, HostileRect,
                         testing::Values(Rect{notANumber, 0, 5, 5}, Rect{0, notANumber, 5, 5},
                                         Rect{0, 0, notANumber, 5}, Rect{0, 0, 5, notANumber}, Rect{infinity, 0, 5, 5},
                                         Rect{0, 0, infinity, 5}, Rect{-infinity, 0, infinity, 5},
                                         Rect{1e308, 0, 1e308, 5}, Rect{5, 5, -5, 5}, Rect{5, 5, 5, -5},
                                         Rect{2, 2, 0, 5}, Rect{2, 2, 5, 0}, Rect{1e300, 1e300, 5, 5},
                                         Rect{-1e300, -1e300, 1e299, 1e299}));

TEST(DrawingContext, FarEdgesAreAsGoodAsNearOnes) {
    const Rect far{-1e300, 3, 2e300, 2};
    const Image image = drawn(9, 9, [&](auto& c) { c.fill(far, red); });
    EXPECT_TRUE(samePixels(image, drawn(9, 9, [](auto& c) { c.fill(Rect{0, 3, 9, 2}, red); })));
    EXPECT_TRUE(samePixels(image, drawn(9, 9, [&](auto& c) { c.fill(Path().rectangle(far), red); })));
    EXPECT_TRUE(samePixels(image, drawn(9, 9, [&](auto& c) {
                               c.clip(far);
                               c.fill(Rect{-1e9, -1e9, 2e9, 2e9}, red);
                           })));
}

TEST(DrawingContext, StrokesOfAnyWidthEnd) {
    for (const double width : {1e7, 1e300, infinity}) {
        const Image image = drawn(9, 9, [&](auto& c) {
            c.scale(100, 100);
            c.stroke(Path().move({0, 0.05}).line({0.09, 0.05}), red, width);
            EXPECT_EQ(cairo_status(c.cairo()), CAIRO_STATUS_SUCCESS);
        });
        EXPECT_EQ(pixelAt(image, 4, 8), redPixel);
    }
}

TEST(DrawingContext, TransformsThatLoseEverythingHideUntilRestore) {
    for (const auto& [x, y] : {std::pair{0.0, 1.0}, {1.0, 0.0}, {notANumber, 1.0}, {infinity, 1.0}, {1e-200, 1e-200}}) {
        const Image image = drawn(9, 9, [x = x, y = y](auto& c) {
            c.save();
            c.scale(x, y);
            c.fill(Rect{0, 0, 9, 9}, red);
            c.restore();
            c.save();
            c.translate(x * infinity, y);
            c.fill(Rect{0, 0, 9, 9}, red);
            c.restore();
            c.fill(Rect{0, 0, 1, 1}, blue);
        });
        EXPECT_TRUE(samePixels(image, drawn(9, 9, [](auto& c) { c.fill(Rect{0, 0, 1, 1}, blue); }))) << x << " " << y;
    }
}

TEST(DrawingContext, DeviceRectsHaveYDown) {
    drawn(100, 50, [](DrawingContext& c) {
        c.scale(2, 2);
        c.translate(5, 0);
        EXPECT_EQ(c.deviceRect({0, 0, 10, 5}), (Rect{10, 40, 20, 10}));
        EXPECT_EQ(c.visibleDeviceRect(), (Rect{0, 0, 100, 50}));
        c.clip(Rect{0, 0, 10, 5});
        EXPECT_EQ(c.visibleDeviceRect(), (Rect{10, 40, 20, 10}));
    });
}

TEST(DrawingContext, ImagesStandUpright) {
    const Image picture = imageOf(2, 2, [](int, int y) { return y == 0 ? redPixel : bluePixel; });
    const Image image = drawn(4, 4, [&](auto& c) { c.drawImage(picture, {1, 1, 2, 2}); });
    EXPECT_EQ(pixelAt(image, 1, 2), redPixel);
    EXPECT_EQ(pixelAt(image, 1, 1), bluePixel);
    EXPECT_EQ(pixelAt(image, 0, 0), 0U);
    EXPECT_EQ(pixelAt(image, 3, 3), 0U);
}

TEST(DrawingContext, ImagesAreMirroredByTheTransform) {
    const Image picture = imageOf(2, 1, [](int x, int) { return x == 0 ? redPixel : bluePixel; });
    const Image image = drawn(2, 1, [&](auto& c) {
        c.translate(2, 0);
        c.scale(-1, 1);
        c.drawImage(picture, {0, 0, 2, 1});
    });
    EXPECT_EQ(pixelAt(image, 0, 0), bluePixel);
    EXPECT_EQ(pixelAt(image, 1, 0), redPixel);
}

TEST(DrawingContext, ImagesHonourClipAndAlpha) {
    const Image picture = evenImage(30, 20, redPixel);
    const Image image = drawn(9, 9, [&](auto& c) {
        c.setAlpha(0.5);
        c.clip(Path().ellipse({0, 0, 9, 9}));
        c.drawImage(picture, {0, 0, 9, 9});
    });
    EXPECT_NEAR(int(pixelAt(image, 4, 4) >> 24), 128, 1);
    EXPECT_NEAR(int(pixelAt(image, 4, 4) >> 16 & 0xFF), 128, 1);
    EXPECT_EQ(pixelAt(image, 0, 0), 0U);
}

TEST(DrawingContext, PlacedImagesLiePixelOnPixel) {
    const Image picture = imageOf(3, 2, [](int x, int y) { return 0xFF000000U | unsigned(x * 7 + y * 50); });
    for (const double scale : {1.0, 3.7}) {
        const Image image = drawn(9, 9, [&](auto& c) {
            c.scale(scale, scale);
            c.translate(0.3, 0.4);
            c.drawPlaced({picture, 4, 5});
        });
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 3; ++x) {
                EXPECT_EQ(image.row(5 + y)[std::size_t(4 + x)], picture.row(y)[std::size_t(x)]);
            }
        }
        EXPECT_EQ(image.row(4)[4], 0U);
        EXPECT_EQ(image.row(5)[7], 0U);
    }
}

TEST(DrawingContext, PlacedImagesHonourClipAndAlpha) {
    const Image picture = evenImage(6, 6, redPixel);
    const Image image = drawn(9, 9, [&](auto& c) {
        c.clip(Rect{0, 0, 4, 9});
        c.setAlpha(0.25);
        c.drawPlaced({picture, -2, 3});
    });
    EXPECT_NEAR(int(image.row(3)[0] >> 24), 64, 1);
    EXPECT_EQ(image.row(3)[4], 0U);
    EXPECT_EQ(image.row(2)[0], 0U);
}

TEST(DrawingContext, EncodedPicturesAreForDocumentsAlone) {
    const EncodedPicture picture{std::make_shared<const std::string>("not read"), 3, 3, nextImageId()};
    EXPECT_TRUE(blank(drawn(9, 9, [&](auto& c) { c.drawEncoded(picture, {0, 0, 9, 9}); })));
}

TEST(DrawingContext, SavedStateRestoresAtTheEndOfTheBlock) {
    const Image image = drawn(9, 9, [](auto& c) {
        {
            const SavedState saved(c);
            c.setAlpha(0.1);
            c.translate(100, 0);
        }
        c.fill(Rect{0, 0, 9, 9}, red);
    });
    EXPECT_EQ(pixelAt(image, 0, 0), redPixel);
}

}  // namespace
}  // namespace quorvel
