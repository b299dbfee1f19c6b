#include "Controls/Style.h"
#include "Controls/TintedPanel.h"
#include "Support/Widgets/WindowTest.h"

#include <QImage>

namespace quorvel {
namespace {

class TintedPanelTest : public WindowTest {};

}  // namespace

TEST_F(TintedPanelTest, IsRoundedAndAsDarkAsTold) {
    const auto middleOf = [](double opacity) {
        TintedPanel panel(opacity);
        show(panel, {60, 40});
        const QImage image = panel.grab().toImage();
        EXPECT_EQ(image.pixelColor(0, 0), panel.palette().color(QPalette::Window)) << "beyond the corner";
        return image.pixelColor(30, 20).lightness();
    };
    const int none = middleOf(0);
    EXPECT_LT(middleOf(0.1), none);
    EXPECT_LT(middleOf(0.3), middleOf(0.1));
}

}  // namespace quorvel
