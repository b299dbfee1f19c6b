#include "CardsTab/CardGrid.h"
#include "CardsTab/CardsColumn.h"
#include "CardsTab/CardsView.h"
#include "Controls/Style.h"
#include "Support/Widgets/WindowTest.h"

#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <algorithm>
#include <map>
#include <set>

namespace quorvel {
namespace {

std::string rows(int count, const std::string& suffix = "") {
    std::string text = "Name,Text,Type,Qty\n";
    for (int i = 0; i < count; ++i) text += "Card " + std::to_string(i) + suffix + ",Draw.,Fruit,1\n";
    return text;
}

class CardGridTest : public WindowTest {
protected:
    CardsView view{model};
    CardGrid& grid = *view.findChild<CardGrid*>();
    QScrollBar& bar = *view.findChild<CardsColumn*>()->verticalScrollBar();

    void openRows(int count, QSize size = {620, 500}) {
        show(view, size);
        view.activateWindow();
        open("cards.csv", rows(count));
    }

    void save(const std::string& text) {
        write("cards.csv", text);
        model.reloadSpreadsheet();
        settle();
    }

    QPoint centre(int index) const { return grid.tileRect(index).center(); }

    bool isSeen(int index) const {
        const QRect tile = grid.tileRect(index);
        return view.rect().intersects(QRect(grid.mapTo(&view, tile.topLeft()), tile.size()));
    }
    bool isSeenWhole(int index) const {
        const QRect tile = grid.tileRect(index);
        return view.rect().contains(QRect(grid.mapTo(&view, tile.topLeft()), tile.size()));
    }
    int top(int index) const { return grid.mapTo(&view, grid.tileRect(index).topLeft()).y(); }

    /// The cards whose pictures are drawn when all have to be drawn anew: those that the model believes to be on
    /// screen.
    std::set<int> believedOnScreen() {
        std::map<std::int64_t, std::uint64_t> before;
        for (const auto& [id, image] : model.thumbnails()) before[id] = image.id();
        CardTemplate design = model.template_();
        design.background = RGBA::bytes(std::uint8_t(++tint_), 0x80, 0x80);
        model.setTemplate(design);
        settle();
        std::set<int> drawn;
        for (const auto& [id, image] : model.thumbnails())
            if (!before.contains(id) || before[id] != image.id()) drawn.insert(int(id));
        return drawn;
    }

    std::set<int> seen() const {
        std::set<int> all;
        for (int index = 0; index < grid.count(); ++index)
            if (isSeen(index)) all.insert(index);
        return all;
    }

private:
    int tint_ = 0;
};

TEST_F(CardGridTest, TheModelKnowsWhatIsOnScreen) {
    openRows(300);
    EXPECT_FALSE(seen().empty());
    EXPECT_LT(seen().size(), 20u);
    EXPECT_EQ(believedOnScreen(), seen());
    bar.setValue(3000);
    EXPECT_GT(*seen().begin(), 10);
    EXPECT_EQ(believedOnScreen(), seen()) << "scrolled";
    view.resize(900, 800);
    settle();
    EXPECT_EQ(believedOnScreen(), seen()) << "resized";
    bar.setValue(bar.maximum());
    EXPECT_TRUE(seen().contains(299));
    EXPECT_EQ(believedOnScreen(), seen()) << "at the end";
}

TEST_F(CardGridTest, AHiddenTabHasNoTilesOnScreen) {
    openRows(300);
    view.hide();
    EXPECT_EQ(believedOnScreen(), std::set<int>());
    view.show();
    settle();
    EXPECT_EQ(believedOnScreen(), seen());
}

TEST_F(CardGridTest, ATileThatComesBackAfterAReloadIsDrawnAgain) {
    openRows(8);
    ASSERT_TRUE(seen().contains(5));
    save(rows(2));
    EXPECT_EQ(grid.count(), 2);
    EXPECT_FALSE(model.thumbnails().contains(5));
    save(rows(8));
    EXPECT_TRUE(model.thumbnails().contains(5));
    EXPECT_EQ(believedOnScreen(), seen());
    save("Name\n");
    save(rows(8));
    EXPECT_EQ(believedOnScreen(), seen()) << "from no cards at all";
}

TEST_F(CardGridTest, AReloadKeepsThePlace) {
    openRows(300);
    bar.setValue(5000);
    const int first = *seen().begin();
    const int before = top(first);
    save(rows(300, " new"));
    EXPECT_EQ(bar.value(), 5000);
    EXPECT_EQ(top(first), before);
    // A banner that comes above moves nothing of what is seen.
    save(rows(300, " new") + "Last,Draw.,Fruit,many\n");
    EXPECT_EQ(top(first), before);
    save("");
    ASSERT_TRUE(model.state().open._loadError);
    EXPECT_EQ(top(first), before);
    save(rows(20));
    save(rows(300));
    EXPECT_EQ(top(first), before) << "also after a save that was too short for the place";
}

TEST_F(CardGridTest, AnotherWidthKeepsTheFirstTile) {
    openRows(300);
    bar.setValue(5000);
    const int first = *seen().begin();
    const int before = top(first);
    for (const int width : {700, 1100, 900, 620}) {
        view.resize(width, 500);
        settle();
        EXPECT_TRUE(isSeen(first)) << width;
    }
    EXPECT_EQ(top(first), before) << "there and back again";
}

TEST_F(CardGridTest, KeysMoveTheCurrentTileAndBringItOnScreen) {
    openRows(300);
    grid.setFocus();
    const int columns = grid.tiles().columns();
    ASSERT_GE(columns, 3);
    EXPECT_EQ(grid.current(), 0);
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&grid, key);
        EXPECT_TRUE(isSeen(*grid.current()));
        return *grid.current();
    };
    EXPECT_EQ(press(Qt::Key_Right), 1);
    EXPECT_EQ(press(Qt::Key_Down), 1 + columns);
    EXPECT_TRUE(isSeenWhole(1 + columns));
    EXPECT_EQ(press(Qt::Key_Left), columns);
    EXPECT_EQ(press(Qt::Key_Up), 0);
    EXPECT_EQ(bar.value(), 0) << "with the first row comes the header";
    EXPECT_EQ(press(Qt::Key_End), 299);
    EXPECT_TRUE(isSeenWhole(299));
    const int back = press(Qt::Key_PageUp);
    EXPECT_LT(back, 299);
    EXPECT_GT(press(Qt::Key_PageDown), back);
    EXPECT_EQ(press(Qt::Key_Home), 0);
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(CardGridTest, ReturnEditsTheTemplateWithTheCard) {
    openRows(20);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Right);
    QTest::keyClick(&grid, Qt::Key_Right);
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(model.state()._canvasCard, 2);
    EXPECT_EQ(model.state()._tab, Tab::template_);
}

TEST_F(CardGridTest, ADoubleClickEditsTheTemplateWithTheCard) {
    openRows(20);
    QTest::mouseClick(&grid, Qt::LeftButton, {}, centre(1));
    EXPECT_EQ(grid.current(), 1);
    EXPECT_EQ(model.state()._tab, Tab::cards);
    QTest::mouseDClick(&grid, Qt::LeftButton, {}, centre(1));
    EXPECT_EQ(model.state()._canvasCard, 1);
    EXPECT_EQ(model.state()._tab, Tab::template_);
}

TEST_F(CardGridTest, ADoubleClickDrawsTheCardThatWasOnTheCanvasAnew) {
    openRows(20);
    ASSERT_EQ(model.state()._canvasCard, 0);
    int drawn = 0;
    const auto watching = model.subscribe([&](Changes changes) { drawn += changes.has(Change::canvas); });
    QTest::mouseDClick(&grid, Qt::LeftButton, {}, centre(0));
    settle();
    EXPECT_EQ(drawn, 1);
    EXPECT_EQ(model.state()._tab, Tab::template_);
}

TEST_F(CardGridTest, ADoubleClickBetweenTilesDoesNothing) {
    openRows(20);
    QTest::mouseDClick(&grid, Qt::LeftButton, {}, QPoint(grid.tileRect(0).right() + 9, centre(0).y()));
    QTest::mouseDClick(&grid, Qt::RightButton, {}, centre(1));
    EXPECT_EQ(model.state()._tab, Tab::cards);
    EXPECT_EQ(model.state()._canvasCard, 0);
}

TEST_F(CardGridTest, TheContextMenuHasOneEntry) {
    openRows(20);
    QContextMenuEvent event(QContextMenuEvent::Mouse, centre(2), grid.mapToGlobal(centre(2)));
    QCoreApplication::sendEvent(&grid, &event);
    auto* const menu = grid.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("Edit Template with This Card"));
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(model.state()._canvasCard, 2);
    EXPECT_EQ(model.state()._tab, Tab::template_);
}

TEST_F(CardGridTest, TheContextMenuComesByKeyToo) {
    openRows(20);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Right);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(&grid, &event);
    auto* const menu = grid.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    // Meanwhile the card goes.
    save("Name\nOne\n");
    menu->actions()[0]->trigger();
    EXPECT_EQ(model.state()._tab, Tab::cards);
    EXPECT_EQ(grid.current(), 0);
}

TEST_F(CardGridTest, TheCurrentTileGoesWithItsDeck) {
    openRows(20);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_End);
    save(rows(5));
    EXPECT_EQ(grid.current(), 4);
    model.newDeck(SampleTemplates::Kind::classic, "Two");
    EXPECT_EQ(grid.current(), std::nullopt);
}

TEST_F(CardGridTest, DrawsOnlyWhatIsAskedFor) {
    openRows(5000);
    EXPECT_LT(model.thumbnails().size(), 25u);
    bar.setValue(bar.maximum());
    settle();
    EXPECT_TRUE(isSeenWhole(4999));
    EXPECT_LT(model.thumbnails().size(), 50u);
}

TEST_F(CardGridTest, APictureTakesThePlaceOfItsPlaceholder) {
    show(view, {620, 500});
    model.useSpreadsheet(write("cards.csv", rows(4)));
    scheduler.settle();
    QCoreApplication::processEvents();
    ASSERT_EQ(grid.count(), 4);
    ASSERT_TRUE(model.thumbnails().empty());
    const auto pixel = [&](int index) {
        const QPoint corner = grid.tiles().picture(index).topLeft() + CardGrid::tilesAt() + QPoint(40, 40);
        return grid.grab().toImage().pixelColor(corner);
    };
    const QColor waiting = pixel(0);
    EXPECT_NE(waiting, grid.palette().color(QPalette::Window)) << "a placeholder is seen";
    settle();
    ASSERT_EQ(model.thumbnails().size(), 4u);
    EXPECT_NE(pixel(0), waiting);
}

}  // namespace
}  // namespace quorvel
