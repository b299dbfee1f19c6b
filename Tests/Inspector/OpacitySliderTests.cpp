#include "Inspector/OpacitySlider.h"

#include <QAccessible>
#include <QTest>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace quorvel {

TEST(OpacitySlider, IsSpokenInPercents) {
    OpacitySlider slider("Opacity");
    std::vector<double> edits;
    QObject::connect(&slider, &OpacitySlider::opacityEdited, &slider,
                     [&](double opacity) { edits.push_back(opacity); });
    for (const auto& [opacity, spoken] : {std::pair{0.0, "0 percent"}, {0.999, "99 percent"}, {1.0, "100 percent"}}) {
        slider.setOpacity(opacity);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&slider);
        ASSERT_TRUE(accessible && accessible->valueInterface());
        EXPECT_EQ(accessible->role(), QAccessible::Slider);
        EXPECT_EQ(accessible->text(QAccessible::Name), "Opacity");
        EXPECT_EQ(accessible->text(QAccessible::Value), spoken);
        EXPECT_EQ(accessible->valueInterface()->currentValue().toDouble(), opacity);
    }
    EXPECT_TRUE(edits.empty());
    QAccessible::queryAccessibleInterface(&slider)->valueInterface()->setCurrentValue(0.25);
    EXPECT_EQ(edits, std::vector<double>({0.25}));
}

TEST(OpacitySlider, TakenByTheKnobItStays) {
    OpacitySlider slider("Opacity");
    slider.setOpacity(0.5);
    slider.show();
    QTest::mousePress(&slider, Qt::LeftButton, {}, {74, 12});
    EXPECT_EQ(slider.opacity(), 0.5);
    QTest::mouseMove(&slider, {76, 12});
    EXPECT_NEAR(slider.opacity(), 0.5 + 2 / 124.0, 0.002);
    slider.letGo();
    QTest::mouseMove(&slider, {20, 12});
    EXPECT_NEAR(slider.opacity(), 0.5 + 2 / 124.0, 0.002);
}

}  // namespace quorvel
