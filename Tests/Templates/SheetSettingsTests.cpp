#include "Templates/SheetSettings.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

template <class E>
std::string texts() {
    std::string result;
    for (const auto& [value, text] : EnumText<E>::cases) result += (result.empty() ? "" : " ") + std::string(text);
    return result;
}

TEST(SheetSettings, Papers) {
    EXPECT_EQ(sizePoints(Paper::letter), (Size{612, 792}));
    EXPECT_EQ(sizePoints(Paper::a4), (Size{595.2755905511812, 841.8897637795276}));
    EXPECT_EQ(displayName(Paper::letter), "Letter");
    EXPECT_EQ(displayName(Paper::a4), "A4");
}

TEST(SheetSettings, CasesInOrder) {
    EXPECT_EQ(texts<Paper>(), "letter a4");
    EXPECT_EQ(texts<Orientation>(), "auto portrait landscape");
    EXPECT_EQ(texts<Spacing>(), "butted separated");
    EXPECT_EQ(texts<DuplexFlip>(), "longEdge shortEdge");
}

TEST(SheetSettings, Defaults) {
    const SheetSettings settings;
    EXPECT_EQ(settings.paper, Paper::letter);
    EXPECT_EQ(settings.orientation, Orientation::auto_);
    EXPECT_EQ(settings.spacing, Spacing::butted);
    EXPECT_EQ(settings.gutterMM, 0);
    EXPECT_EQ(settings.marginMM, 6.35);
    EXPECT_FALSE(settings.includeBleed);
    EXPECT_TRUE(settings.cutMarks);
    EXPECT_FALSE(settings.duplex);
    EXPECT_EQ(settings.flip, DuplexFlip::longEdge);
    EXPECT_EQ(settings.backOffsetXMM, 0);
    EXPECT_EQ(settings.backOffsetYMM, 0);
}

}  // namespace
}  // namespace quorvel
