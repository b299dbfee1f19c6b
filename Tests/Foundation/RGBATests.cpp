#include "Foundation/RGBA.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

TEST(RGBA, hasThreeConstants) {
    EXPECT_EQ(RGBA::black, RGBA(0, 0, 0, 1));
    EXPECT_EQ(RGBA::white, RGBA(1, 1, 1, 1));
    EXPECT_EQ(RGBA::clear, RGBA(0, 0, 0, 0));
    EXPECT_EQ(RGBA(), RGBA::black);
}

TEST(RGBA, quantisesItsChannels) {
    EXPECT_EQ(RGBA(0.5, 0, 0).r, 128.0 / 255);
    EXPECT_EQ(RGBA(0.2, 0.2196078431372549, 0.30196078431372547).hexString(), "#33384D");
    EXPECT_EQ(RGBA(-1, 2, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()),
              RGBA(0, 1, 0, 1));
    EXPECT_EQ(RGBA(0.5 / 255, 0, 0).r, 1.0 / 255) << "halves away from zero";
    EXPECT_EQ(RGBA(0.4999999 / 255, 0, 0).r, 0.0);
    EXPECT_EQ(RGBA::bytes(300, -5, 128), RGBA(1, 0, 128.0 / 255));
}

TEST(RGBA, writesHex) {
    EXPECT_EQ(RGBA(1, 0, 0.5, 1).hexString(), "#FF0080");
    EXPECT_EQ(RGBA(1, 1, 1, 0.5).hexString(), "#FFFFFF80");
    RGBA raw;
    raw.r = 2;
    raw.g = -1;
    EXPECT_EQ(raw.hexString(), "#FF0000");
    raw.a = 0.999;
    EXPECT_EQ(raw.hexString(), "#FF0000FF") << "the alpha is written when its value is below 1, whatever its byte";
}

TEST(RGBA, readsHex) {
    EXPECT_EQ(RGBA::parseHex("  #5e8c4a"), RGBA::bytes(0x5E, 0x8C, 0x4A));
    EXPECT_EQ(RGBA::parseHex("5E8C4A"), RGBA::bytes(0x5E, 0x8C, 0x4A));
    EXPECT_EQ(RGBA::parseHex("\t#5E8C4A80 \u00A0"), RGBA::bytes(0x5E, 0x8C, 0x4A, 0x80));
    EXPECT_EQ(RGBA::parseHex("+12345"), RGBA::bytes(0x01, 0x23, 0x45));
    EXPECT_EQ(RGBA::parseHex("#+1234567"), RGBA::bytes(0x01, 0x23, 0x45, 0x67));
    EXPECT_EQ(RGBA::parseHex("-00000"), RGBA::black);
    for (const char* text :
         {"", "#", "#ABC", "#GGGGGG", "#5E8C4A\n", "##5E8C4A", "#5E8C4", "5E8C4A8", "0x5E8C", "0x5E8C4A", "5E 8C4",
          "# 5E8C4", "-00001", "+-1234", "-+1234", "++1234", "#5E8C4A8012", "é1234", "red"})
        EXPECT_EQ(RGBA::parseHex(text), std::nullopt) << text;
}

TEST(RGBA, survivesItsTextForm) {
    for (int byte = 0; byte < 256; ++byte) {
        const RGBA colour(byte / 255.0, 1 - byte / 255.0, byte / 300.0, byte / 255.0);
        EXPECT_EQ(RGBA::parseHex(colour.hexString()), colour) << byte;
        EXPECT_EQ(RGBA(colour.r, colour.g, colour.b, colour.a), colour) << byte;
    }
}

}  // namespace
}  // namespace quorvel
