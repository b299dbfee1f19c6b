#include "CardsTab/BannerList.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

OpenDeck openWith(std::vector<std::string> missing, std::vector<std::int64_t> bad) {
    OpenDeck open;
    auto deck = std::make_shared<Deck>();
    deck->badQuantities = std::move(bad);
    open._deck = deck;
    open._missingArt = std::move(missing);
    return open;
}

TEST(BannerList, NoTroubleNoBanner) {
    EXPECT_TRUE(bannersFor(OpenDeck()).empty());
}

TEST(BannerList, FiveMissingPicturesAreCountedAndThreeNamed) {
    const auto banners = bannersFor(openWith({"a.png", "b.png", "c.png", "d.png", "e.png"}, {}));
    ASSERT_EQ(banners.size(), 1u);
    EXPECT_EQ(banners[0].text.toStdString(),
              "5 pictures can’t be opened (a.png, b.png, c.png). Choose the folder they’re in so Quorvel may read it.");
    EXPECT_EQ(banners[0].symbol, QStringLiteral("photo.badge.exclamationmark"));
    EXPECT_EQ(banners[0].tone, Banner::Tone::warning);
    EXPECT_EQ(Banner::title(banners[0].action), QStringLiteral("Choose Art Folder…"));
}

TEST(BannerList, EightBadRowsNameSixWithoutAnEllipsis) {
    const auto banners = bannersFor(openWith({}, {2, 3, 5, 8, 13, 21, 34, 55}));
    ASSERT_EQ(banners.size(), 1u);
    EXPECT_EQ(banners[0].text.toStdString(),
              "Rows 2, 3, 5, 8, 13, 21 have a quantity that isn’t a number; they print once.");
    EXPECT_EQ(banners[0].symbol, QStringLiteral("number"));
    EXPECT_EQ(banners[0].tone, Banner::Tone::quiet);
    EXPECT_EQ(banners[0].action, Banner::Action::none);
}

TEST(BannerList, TheErrorStandsFirst) {
    OpenDeck open = openWith({"a.png"}, {2});
    open._loadError = "It can’t be read.";
    const auto banners = bannersFor(open);
    ASSERT_EQ(banners.size(), 3u);
    EXPECT_EQ(banners[0].text.toStdString(), "It can’t be read.");
    EXPECT_EQ(banners[0].symbol, QStringLiteral("exclamationmark.triangle"));
    EXPECT_EQ(Banner::title(banners[0].action), QStringLiteral("Choose Spreadsheet…"));
    EXPECT_EQ(banners[1].action, Banner::Action::chooseArtFolder);
    EXPECT_EQ(banners[2].symbol, QStringLiteral("number"));
}

TEST(BannerList, NamesAreShownAsTheyAre) {
    EXPECT_TRUE(bannersFor(openWith({"<b>%1&"}, {}))[0].text.contains(QStringLiteral("(<b>%1&)")));
}

}  // namespace
}  // namespace quorvel
