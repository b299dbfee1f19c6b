#include "Shell/DeckList.h"
#include "Shell/ShellTest.h"
#include "TemplateTab/TemplateEditor.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

class RootViewTest : public ShellTest {
protected:
    DeckList& sidebar = *window.findChild<DeckList*>();

    RootViewTest() { model.newDeck(SampleTemplates::Kind::classic, "Game"); }

    void showTab(Tab tab) {
        model.setTab(tab);
        settle();
    }
};

TEST_F(RootViewTest, InANarrowWindowTheSidebarGivesWayToTheTemplate) {
    show(window, {900, 600});
    EXPECT_TRUE(sidebar.isVisible());
    showTab(Tab::template_);
    EXPECT_FALSE(sidebar.isVisible());
    auto& editor = *window.findChild<TemplateEditor*>();
    EXPECT_EQ(editor.width(), 900);
    for (int i = 0; i < 3; ++i) {
        EXPECT_GE(editor.widget(i)->width(), editor.widget(i)->minimumWidth());
        EXPECT_TRUE(editor.rect().contains(editor.widget(i)->geometry()));
    }
    showTab(Tab::cards);
    EXPECT_TRUE(sidebar.isVisible()) << "and comes back";
}

TEST_F(RootViewTest, WithRoomForBothItStays) {
    showTab(Tab::template_);
    EXPECT_TRUE(sidebar.isVisible());
    show(window, {900, 600});
    EXPECT_FALSE(sidebar.isVisible());
    show(window, {1280, 820});
    EXPECT_TRUE(sidebar.isVisible());
}

}  // namespace
}  // namespace quorvel
