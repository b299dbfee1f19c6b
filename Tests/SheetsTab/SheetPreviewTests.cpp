#include "Controls/SegmentedPicker.h"
#include "Controls/Style.h"
#include "SheetsTab/SheetPicture.h"
#include "SheetsViewTest.h"

#include <QImage>
#include <QSplitter>
#include <QTest>
#include <QToolButton>

namespace quorvel {

namespace {

class SheetPreviewTest : public SheetsViewTest {
protected:
    void SetUp() override { start(); }

    std::int64_t page() { return model.state()._sheetPage; }
    SheetPicture* picture() { return view->findChild<SheetPicture*>(); }
    SegmentedPicker* side() { return view->findChild<SegmentedPicker*>(); }
    void turnDuplexOn() {
        change([](DeckProject& changed) { changed.sheet.duplex = true; });
        settle();
    }
    void wheel(QPoint turned) { SheetsViewTest::wheel(*picture(), turned); }
};

}  // namespace

TEST_F(SheetPreviewTest, TheButtonsGoFromPageToPage) {
    EXPECT_TRUE(reads("Sheet 1 of 4"));
    EXPECT_FALSE(isEnabled("Previous Page"));
    for (const char* caption : {"Sheet 2 of 4", "Sheet 3 of 4", "Sheet 4 of 4"}) {
        click("Next Page");
        EXPECT_TRUE(reads(caption));
        settle();
    }
    EXPECT_EQ(preview(), "Preview of sheet 4");
    EXPECT_FALSE(isEnabled("Next Page"));
    click("Next Page");
    EXPECT_EQ(page(), 3);
    for (int i = 0; i < 5; ++i) click("Previous Page");
    EXPECT_EQ(page(), 0);
    EXPECT_TRUE(reads("Sheet 1 of 4"));
}

TEST_F(SheetPreviewTest, KeysGoFromPageToPage) {
    const struct {
        Qt::Key key;
        std::int64_t page;
    } cases[] = {{Qt::Key_PageDown, 1}, {Qt::Key_Down, 2}, {Qt::Key_Right, 3}, {Qt::Key_Right, 3}, {Qt::Key_PageUp, 2},
                 {Qt::Key_Up, 1},       {Qt::Key_Left, 0}, {Qt::Key_Left, 0},  {Qt::Key_End, 3},   {Qt::Key_Home, 0}};
    picture()->setFocus();
    for (const auto& each : cases) {
        QTest::keyClick(picture(), each.key);
        EXPECT_EQ(page(), each.page) << each.key;
    }
}

TEST_F(SheetPreviewTest, AClickOnTheSheetTakesTheKeys) {
    QTest::mouseClick(picture(), Qt::LeftButton);
    EXPECT_TRUE(picture()->hasFocus());
    QTest::keyClick(picture(), Qt::Key_PageDown);
    EXPECT_EQ(page(), 1);
}

TEST_F(SheetPreviewTest, ANotchOfTheWheelIsAPage) {
    wheel({0, -120});
    EXPECT_EQ(page(), 1);
    wheel({0, -360});
    EXPECT_EQ(page(), 3);
    wheel({0, -120});
    EXPECT_EQ(page(), 3);
    wheel({0, 60});
    EXPECT_EQ(page(), 3);
    wheel({0, 60});
    EXPECT_EQ(page(), 2);
    wheel({0, 60});
    wheel({0, -60});  // turned back half way
    EXPECT_EQ(page(), 2);
    wheel({120, 0});
    EXPECT_EQ(page(), 1);
}

TEST_F(SheetPreviewTest, AWantedPageBeyondTheLastIsKept) {
    model.setSheetPage(3);
    open("cards.csv", table(10));
    settle();
    EXPECT_TRUE(reads("Sheet 4 of 2"));
    EXPECT_EQ(preview(), "Preview of sheet 4");
    EXPECT_FALSE(isEnabled("Next Page"));
    click("Previous Page");
    EXPECT_EQ(page(), 2);
}

TEST_F(SheetPreviewTest, TheSideIsOfferedWhileThereAreBacks) {
    EXPECT_FALSE(side()->isVisibleTo(view.get()));
    turnDuplexOn();
    EXPECT_TRUE(side()->isVisibleTo(view.get()));
    EXPECT_EQ(side()->accessibleName(), "Side");
    EXPECT_EQ(side()->currentIndex(), 0);
    const std::uint64_t front = model.state()._sheetImage->id();
    click("Back");
    EXPECT_TRUE(model.state()._sheetBack);
    EXPECT_EQ(model.state()._sheetImage->id(), front) << "the old picture stays until the new one is there";
    settle();
    EXPECT_NE(model.state()._sheetImage->id(), front);
    model.setSheetBack(false);
    EXPECT_EQ(side()->currentIndex(), 0);
    model.setSheetBack(true);
    change([](DeckProject& changed) { changed.sheet.duplex = false; });
    EXPECT_FALSE(side()->isVisibleTo(view.get()));
    EXPECT_TRUE(model.state()._sheetBack);
}

TEST_F(SheetPreviewTest, ArrowKeysChooseTheSide) {
    turnDuplexOn();
    press(Qt::Key_Right, "Front");
    EXPECT_TRUE(model.state()._sheetBack);
    press(Qt::Key_Left, "Back");
    EXPECT_FALSE(model.state()._sheetBack);
}

TEST_F(SheetPreviewTest, ThePaperHasTheAspectOfThePage) {
    const auto expectAspect = [&](double aspect) {
        const QRectF paper = picture()->paper();
        EXPECT_NEAR(paper.width() / paper.height(), aspect, 0.01);
        EXPECT_TRUE(QRectF(picture()->contentsRect()).contains(paper));
        EXPECT_NEAR(paper.center().x(), picture()->width() / 2.0, 1);
        EXPECT_NEAR(paper.center().y(), picture()->height() / 2.0, 1);
    };
    expectAspect(612.0 / 792);
    // At once, with the old picture stretched.
    change([](DeckProject& changed) { changed.sheet.orientation = Orientation::landscape; });
    expectAspect(792.0 / 612);
    change([](DeckProject& changed) { changed.sheet.paper = Paper::a4; });
    expectAspect(297.0 / 210);
    view->resize(721, 600);
    settle();
    expectAspect(297.0 / 210);
}

TEST_F(SheetPreviewTest, ACardThatDoesNotFitLeavesThePreviewBeingMade) {
    makeCardTooBig();
    settle();
    EXPECT_EQ(preview(), "Making the preview…");
    EXPECT_TRUE(picture()->paper().isEmpty());
    EXPECT_FALSE(isEnabled("Next Page"));
    EXPECT_EQ(lineThatBegins("Sheet "), "");
    change([](DeckProject& changed) { changed.template_.size = CardSize::mini; });
    EXPECT_EQ(preview(), "Making the preview…");
    settle();
    EXPECT_EQ(preview(), "Preview of sheet 1");
}

TEST_F(SheetPreviewTest, WithoutCardsThereIsNothingToCount) {
    open("empty.csv", "Name,Qty\n");
    settle();
    EXPECT_EQ(lineThatBegins("Sheet "), "");
    EXPECT_FALSE(isEnabled("Next Page"));
    EXPECT_FALSE(isEnabled("Previous Page"));
    press(Qt::Key_PageDown, preview());
    EXPECT_EQ(page(), 0);
}

TEST_F(SheetPreviewTest, ComingOnScreenDrawsTheSheetAnew) {
    settle();
    const std::uint64_t before = model.state()._sheetImage->id();
    view->hide();
    settle();
    view->show();
    settle();
    EXPECT_NE(model.state()._sheetImage->id(), before);
}

TEST_F(SheetPreviewTest, ChangesMadeOffScreenAreShownOnReturn) {
    view->hide();
    change([](DeckProject& changed) {
        changed.sheet.paper = Paper::a4;
        changed.sheet.duplex = true;
    });
    model.setSheetPage(2);
    view->show();
    expectFormShows(project());
    EXPECT_TRUE(reads("Sheet 3 of 4"));
}

TEST_F(SheetPreviewTest, PageAndSideOutliveTheView) {
    turnDuplexOn();
    model.setSheetPage(2);
    model.setSheetBack(true);
    view = std::make_unique<SheetsView>(model);
    show(*view);
    EXPECT_TRUE(reads("Sheet 3 of 4"));
    EXPECT_EQ(side()->currentIndex(), 1);
}

TEST_F(SheetPreviewTest, ColumnsHaveTheirWidths) {
    auto* columns = view->findChild<QSplitter*>();
    const auto formWidth = [&] { return columns->widget(0)->width(); };
    EXPECT_EQ(formWidth(), 350);
    view->resize(1600, 900);
    settle();
    EXPECT_EQ(formWidth(), 350);

    QWidget* handle = columns->handle(1);
    const auto drag = [&](int distance) {
        const QPoint start = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, {}, start);
        QTest::mouseMove(handle, start + QPoint(distance, 0));
        QTest::mouseRelease(handle, Qt::LeftButton, {}, start + QPoint(distance, 0));
        settle();
    };
    drag(600);
    EXPECT_EQ(formWidth(), 420);
    drag(-600);
    EXPECT_EQ(formWidth(), 320);
    drag(600);
    view->resize(721, 600);
    settle();
    EXPECT_EQ(formWidth(), 320);
    EXPECT_EQ(columns->widget(1)->width(), 400);
    EXPECT_EQ(view->minimumSizeHint().width(), 721);
}

TEST_F(SheetPreviewTest, EveryControlHasAName) {
    EXPECT_EQ(unnamedControls(*view), std::vector<std::string>());
    turnDuplexOn();
    EXPECT_EQ(unnamedControls(*view), std::vector<std::string>());
    makeCardTooBig();
    EXPECT_EQ(unnamedControls(*view), std::vector<std::string>());
}

TEST_F(SheetPreviewTest, ThePaperIsWhiteAndItsShadowFallsDown) {
    change([](DeckProject& changed) { changed.sheet.cutMarks = false; });
    settle();
    const QImage image = view->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRectF paper = picture()->paper().translated(picture()->mapTo(view.get(), QPoint()));
    const auto lightness = [&](double x, double y) { return qGray(image.pixel(int(x), int(y))); };
    EXPECT_EQ(lightness(paper.center().x(), paper.top() + 3), 255);
    const int around = qGray(Style::underPage(view->palette()).rgb());
    const double x = paper.center().x();
    EXPECT_LT(lightness(x, paper.bottom() + 2), around);
    EXPECT_LT(lightness(x, paper.bottom() + 2), lightness(x, paper.top() - 2));
    EXPECT_EQ(lightness(x, paper.bottom() + 14), around);
}

}  // namespace quorvel
