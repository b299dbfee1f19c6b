#pragma once

#include "Drawing/Image.h"

#include <gtest/gtest.h>
#include <string_view>

namespace quorvel {

/// How far a picture may lie from its reference picture, in steps of 0 to 255 over all channels. The defaults allow
/// what differs between two versions of a font or drawing library in anti-aliasing, and nothing that a person would
/// see.
struct GoldenTolerance {
    double mean = 0.25;
    int maximum = 64;
};

/// Compares with the reference picture Tests/Golden/`name`.png, where `name` begins with the room ("Rendering/shape").
/// On failure the pictures NAME.actual.png and NAME.difference.png are left under "golden-failures" beside the test
/// program. To promote what is drawn now to the new reference, run the test with QUORVEL_UPDATE_GOLDEN=1 in the
/// environment, look at the picture, and commit it.
///
///     EXPECT_TRUE(matchesGolden(image, "Rendering/shape-ellipse"));
testing::AssertionResult matchesGolden(const Image& actual, std::string_view name, GoldenTolerance tolerance = {});

}  // namespace quorvel
