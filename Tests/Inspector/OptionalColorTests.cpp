#include "Inspector/ColorWell.h"
#include "Inspector/OptionalColor.h"

#include <QCheckBox>
#include <QTest>
#include <gtest/gtest.h>

namespace quorvel {

TEST(OptionalColor, GoesBackUnlessItIsAnswered) {
    OptionalColor color("Fill", RGBA::white);
    std::optional<RGBA> picked = RGBA::black;
    QObject::connect(&color, &OptionalColor::valuePicked, &color, [&](const auto& value) { picked = value; });
    color.show();
    auto* box = color.findChild<QCheckBox*>();
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_EQ(picked, RGBA::white);
    EXPECT_FALSE(box->isChecked());
    color.setValue(RGBA::black);
    EXPECT_TRUE(color.findChild<ColorWell*>()->isVisible());
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_EQ(picked, std::nullopt);
    EXPECT_TRUE(box->isChecked());
}

}  // namespace quorvel
