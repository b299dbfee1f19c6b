#include "Inspector/MenuButton.h"
#include "Support/Widgets/WindowTest.h"

#include <QMenu>
#include <QTimer>

namespace quorvel {

namespace {

class MenuButtonTest : public WindowTest {};

}  // namespace

TEST_F(MenuButtonTest, WordsGoOnInAnotherLineWhereItIsNarrow) {
    QMenu menu;
    const MenuButton button("Start Over from a Sample Template", &menu);
    const QSize wide = button.sizeHint();
    EXPECT_EQ(button.heightForWidth(wide.width()), wide.height());
    EXPECT_GT(button.heightForWidth(wide.width() * 2 / 3), wide.height());
    EXPECT_LT(button.minimumSizeHint().width(), wide.width() / 2);
}

TEST_F(MenuButtonTest, APressOpensTheMenu) {
    QMenu menu;
    menu.addAction("One");
    MenuButton button("Menu", &menu);
    show(button, {200, 40});
    bool wasOpen = false;
    // It stays in the click until the menu closes.
    QTimer::singleShot(0, &menu, [&] {
        wasOpen = menu.isVisible();
        menu.close();
    });
    button.click();
    EXPECT_TRUE(wasOpen);
}

}  // namespace quorvel
