#include "Inspector/IconPictures.h"

#include <QImage>
#include <QPixmap>
#include <gtest/gtest.h>

namespace quorvel {

TEST(IconPictures, AreDrawn) {
    const QImage star = IconPictures::icon("star").pixmap(16).toImage();
    EXPECT_EQ(star.size(), QSize(16, 16) * star.devicePixelRatio());
    EXPECT_GT(star.pixelColor(star.rect().center()).alpha(), 200);
    EXPECT_EQ(star.pixelColor(0, 0).alpha(), 0);
}

}  // namespace quorvel
