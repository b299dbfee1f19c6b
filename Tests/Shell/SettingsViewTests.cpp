#include "Shell/SettingsView.h"
#include "Shell/ShellTest.h"

#include <QStackedWidget>
#include <QToolButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class SettingsViewTest : public ShellTest {};

TEST_F(SettingsViewTest, PrivacyIsSaidInTwoParagraphs) {
    SettingsView settings(desktop);
    EXPECT_EQ(
        words(settings).toStdString(),
        "Your decks never leave this computer. Quorvel reads the spreadsheets and folders you choose, and writes "
        "only the files you export.\n"
        "It keeps a bookmark to each spreadsheet so it can watch it for changes, and goes online only to look for "
        "updates.");
    EXPECT_THAT(unnamedControls(settings), testing::IsEmpty());
}

TEST_F(SettingsViewTest, ThePaneHasItsNameAndSymbol) {
    SettingsView settings(desktop);
    auto* button = find<QToolButton>(settings, "Privacy");
    EXPECT_TRUE(button->isChecked());
    EXPECT_FALSE(button->icon().isNull());
}

TEST_F(SettingsViewTest, ThePaneShownIsRemembered) {
    for (const char* before : {"", "privacy", "a pane of a later version"}) {
        desktop.defaults["settingsTab"] = before;
        SettingsView settings(desktop);
        auto* button = find<QToolButton>(settings, "Privacy");
        EXPECT_TRUE(button->isChecked());
        EXPECT_EQ(settings.findChild<QStackedWidget*>()->currentIndex(), 0);
        show(settings, settings.size());
        click(button);
        EXPECT_TRUE(button->isChecked());
        EXPECT_EQ(desktop.defaults["settingsTab"], "privacy");
    }
}

TEST_F(SettingsViewTest, TheMenuOpensOneWindow) {
    item("File", "Settings…")->trigger();
    const auto* first = dialog<SettingsView>();
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(first->isModal());
    item("File", "Settings…")->trigger();
    EXPECT_EQ(dialog<SettingsView>(), first);
}

TEST_F(SettingsViewTest, KeysOpenAndCloseIt) {
    for (const bool escape : {true, false}) {
        QApplication::setActiveWindow(&window);
        press(Qt::Key_Comma, Qt::ControlModifier);
        auto* settings = dialog<SettingsView>();
        ASSERT_NE(settings, nullptr);
        QApplication::setActiveWindow(settings);
        if (escape)
            QTest::keyClick(settings, Qt::Key_Escape);
        else
            QTest::keyClick(settings, Qt::Key_W, Qt::ControlModifier);
        EXPECT_FALSE(settings->isVisible());
        EXPECT_TRUE(window.isVisible());
    }
}

TEST_F(SettingsViewTest, ItGoesWithTheWindow) {
    item("File", "Settings…")->trigger();
    window.close();
    EXPECT_EQ(dialog<SettingsView>(), nullptr);
}

}  // namespace
}  // namespace quorvel
