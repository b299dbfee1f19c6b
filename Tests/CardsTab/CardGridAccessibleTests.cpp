#include "CardsTab/CardGrid.h"
#include "CardsTab/CardGridAccessible.h"
#include "CardsTab/CardsView.h"
#include "Support/Widgets/WindowTest.h"

#include <QAccessible>
#include <QTest>

namespace quorvel {
namespace {

class CardGridAccessibleTest : public WindowTest {
protected:
    CardsView view{model};
    CardGrid& grid = *view.findChild<CardGrid*>();

    void openRows(int count) {
        show(view, {620, 500});
        view.activateWindow();
        std::string text = "Name,Text,Type,Qty\n";
        for (int i = 0; i < count; ++i) text += "**Card** " + std::to_string(i) + ",{icon:coin},Fruit,3\n";
        open("cards.csv", text);
    }

    QAccessibleInterface& list() { return *QAccessible::queryAccessibleInterface(&grid); }
};

TEST_F(CardGridAccessibleTest, EveryTileIsAnElement) {
    openRows(5000);
    EXPECT_EQ(list().role(), QAccessible::List);
    EXPECT_EQ(list().text(QAccessible::Name), QStringLiteral("Cards"));
    ASSERT_EQ(list().childCount(), 5000);
    for (const int index : {0, 1, 4999}) {
        QAccessibleInterface* const tile = list().child(index);
        ASSERT_NE(tile, nullptr);
        EXPECT_EQ(tile->role(), QAccessible::ListItem);
        EXPECT_EQ(tile->parent(), &list());
        EXPECT_EQ(list().indexOfChild(tile), index);
        EXPECT_EQ(list().child(index), tile) << "the same each time";
        EXPECT_EQ(tile->text(QAccessible::Name), QStringLiteral("Card %1, Fruit, 3 copies. [coin]").arg(index));
        EXPECT_EQ(tile->text(QAccessible::Description),
                  QStringLiteral("Double-click to edit the template with this card"));
        EXPECT_EQ(tile->rect().size(), grid.tileRect(index).size());
        EXPECT_TRUE(tile->state().focusable);
    }
    EXPECT_FALSE(list().child(0)->state().offscreen);
    EXPECT_TRUE(list().child(4999)->state().offscreen);
    EXPECT_EQ(list().child(5000), nullptr);
    EXPECT_EQ(list().child(-1), nullptr);
}

TEST_F(CardGridAccessibleTest, FindsTheTileAtAPlace) {
    openRows(20);
    const QPoint place = grid.mapToGlobal(grid.tileRect(2).center());
    EXPECT_EQ(list().childAt(place.x(), place.y()), list().child(2));
    const QPoint gap = grid.mapToGlobal(grid.tileRect(0).topRight() + QPoint(9, 0));
    EXPECT_EQ(list().childAt(gap.x(), gap.y()), nullptr);
}

TEST_F(CardGridAccessibleTest, TheCurrentTileIsSelectedAndHasTheFocus) {
    openRows(20);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Right);
    EXPECT_TRUE(list().child(1)->state().selected);
    EXPECT_TRUE(list().child(1)->state().focused);
    EXPECT_FALSE(list().child(0)->state().selected);
    EXPECT_EQ(list().focusChild(), list().child(1));
}

TEST_F(CardGridAccessibleTest, PressingATileEditsWithIt) {
    openRows(20);
    auto* const actions = list().child(3)->actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(grid.current(), 3);
    EXPECT_EQ(actions->localizedActionName(QAccessibleActionInterface::pressAction()),
              QStringLiteral("Edit Template with This Card"));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(model.state()._canvasCard, 3);
    EXPECT_EQ(model.state()._tab, Tab::template_);
}

TEST_F(CardGridAccessibleTest, ElementsGoWithTheirCards) {
    openRows(20);
    static_cast<void>(list().child(19));
    write("cards.csv", "Name\nOne\nTwo\n");
    model.reloadSpreadsheet();
    settle();
    EXPECT_EQ(list().childCount(), 2);
    EXPECT_EQ(list().child(19), nullptr);
    EXPECT_EQ(list().child(1)->text(QAccessible::Name), QStringLiteral("Two, , 1 copies. "));
    CardGridAccessible::forgetFrom(grid, 2);
    EXPECT_EQ(list().child(1)->text(QAccessible::Name), QStringLiteral("Two, , 1 copies. "));
    CardGridAccessible::forgetFrom(grid, 0);
    EXPECT_EQ(list().indexOfChild(list().child(1)), 1);
}

}  // namespace
}  // namespace quorvel
