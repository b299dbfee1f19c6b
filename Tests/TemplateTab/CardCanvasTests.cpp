#include "Controls/ElidedLabel.h"
#include "Controls/Style.h"
#include "TemplateTab/CardBar.h"
#include "TemplateTab/CardCanvas.h"
#include "TemplateTab/CardSurface.h"
#include "TemplateTab/SidePicker.h"
#include "TemplateTabTest.h"

#include <QAccessible>
#include <QCheckBox>
#include <QTest>
#include <QToolButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class CardCanvasTest : public TemplateTabTest {
protected:
    CardCanvas canvas{model, desktop};
    CardSurface& surface = *canvas.findChild<CardSurface*>();

    CardCanvasTest() { show(canvas, {500, 600}); }

    QToolButton& previous() const { return *find<QToolButton>(canvas, "Previous Card"); }
    QToolButton& next() const { return *find<QToolButton>(canvas, "Next Card"); }
    ElidedLabel& caption() const { return *canvas.findChild<ElidedLabel*>(); }
    QCheckBox& option(const QString& title) const { return *find<QCheckBox>(canvas, title); }
    QAbstractButton& segment(const QString& title) const {
        return *find<QAbstractButton>(*canvas.findChild<SidePicker*>(), title);
    }
    void openCards() {
        open("cards.csv", "Name\n**Fire** {icon:coin}\nWater\nEarth\n");
        model.setTab(Tab::template_);
    }
    int overlayCount() const { return int(surface.overlays().size()); }
};

// The card bar

TEST_F(CardCanvasTest, TheCaptionTellsWhichCard) {
    openCards();
    EXPECT_EQ(caption().text(), "Card 1 of 3: Fire [coin]");
    model.setCanvasCard(2);
    EXPECT_EQ(caption().text(), "Card 3 of 3: Earth");
}

TEST_F(CardCanvasTest, WithoutCardsItSaysWhatIsSeen) {
    EXPECT_EQ(caption().text(), "No cards yet: fields show their names");
    EXPECT_GT(pixels(caption(), Style::secondary(canvas.palette())), 5);
    for (QToolButton* button : {&next(), &previous()}) {
        EXPECT_FALSE(button->isEnabled());
        click(*button);
        EXPECT_EQ(model.state()._canvasCard, 0);
    }
}

TEST_F(CardCanvasTest, TheButtonsGoFromCardToCard) {
    openCards();
    for (const int expected : {1, 2, 2, 2}) {
        click(next());
        EXPECT_EQ(model.state()._canvasCard, expected);
    }
    for (const int expected : {1, 0, 0}) {
        click(previous());
        EXPECT_EQ(model.state()._canvasCard, expected);
    }
    EXPECT_EQ(previous().toolTip(), "Previous card");
    EXPECT_EQ(next().toolTip(), "Next card");
}

TEST_F(CardCanvasTest, AtTheEndTheKeyboardStaysWithTheButton) {
    openCards();
    QApplication::setActiveWindow(&canvas);
    next().setFocus();
    for (int i = 0; i < 4; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(next().hasFocus());
    EXPECT_EQ(model.state()._canvasCard, 2);
}

TEST_F(CardCanvasTest, TheButtonsStayInPlace) {
    open("cards.csv", "Name\nA\n" + std::string(300, 'm') + "\n\n");
    const QPoint place = next().pos();
    for (int i = 0; i < 3; ++i) {
        model.setCanvasCard(i);
        settle();
        EXPECT_EQ(next().pos(), place);
    }
    EXPECT_EQ(canvas.minimumSizeHint().width() <= CardCanvas::narrowest, true) << canvas.minimumSizeHint().width();
}

TEST_F(CardCanvasTest, ThePickerSetsTheSide) {
    EXPECT_EQ(canvas.findChild<SidePicker*>()->accessibleName(), "Side");
    select("Title");
    click(segment("Back"));
    EXPECT_EQ(model.state()._side, Side::back);
    EXPECT_EQ(selected(), "");
    ASSERT_EQ(overlayCount(), 1);
    EXPECT_EQ(surface.overlays()[0].name, "Pattern");
    model.setSide(Side::front);
    EXPECT_TRUE(segment("Front").isChecked());
}

// The card surface

TEST_F(CardCanvasTest, TheSurfaceTellsWhatItShows) {
    EXPECT_EQ(surface.accessibleDescription(), "Card preview: No card, front");
    EXPECT_EQ(surface.toolTip(),
              "Click a layer to select it. Drag to move, drag the corner to resize, arrow keys nudge (Shift: 2 mm).");
    openCards();
    EXPECT_EQ(surface.accessibleDescription(), "Card preview: Fire [coin], front");
    model.setCanvasCard(1);
    model.setSide(Side::back);
    EXPECT_EQ(surface.accessibleDescription(), "Card preview: Water, back");
}

TEST_F(CardCanvasTest, TheSurfaceTakesWhatIsLeft) {
    const int bar = canvas.findChild<CardBar*>()->height();
    EXPECT_EQ(surface.width(), 500);
    EXPECT_EQ(surface.y(), bar);
    EXPECT_GT(surface.height(), 600 - bar - 60);
}

TEST_F(CardCanvasTest, OverlaysAreElements) {
    select("Badge");
    QAccessibleInterface& card = *QAccessible::queryAccessibleInterface(&surface);
    std::vector<QString> names;
    for (int i = 0; i < card.childCount(); ++i) {
        QAccessibleInterface* child = card.child(i);
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(card.indexOfChild(child), i);
        EXPECT_EQ(child->parent(), &card);
        EXPECT_EQ(card.child(i), child);
        names.push_back(child->text(QAccessible::Name));
        EXPECT_EQ(child->state().selected, names.back() == "Badge");
    }
    EXPECT_THAT(names, testing::ElementsAre("Background", "Title", "Badge", "Line", "Resize handle"));
    QAccessibleInterface* handle = card.child(4);
    const QPoint middle = handle->rect().center();
    EXPECT_NEAR(handle->rect().width(), 12, 1);
    EXPECT_EQ(card.childAt(middle.x(), middle.y()), handle);
    const QPoint title = card.child(1)->rect().center();
    EXPECT_EQ(card.childAt(title.x(), title.y()), card.child(1));
    const QPoint corner = surface.mapToGlobal(QPoint(1, 1));
    EXPECT_EQ(card.childAt(corner.x(), corner.y()), nullptr);
    // An element whose overlay has gone is no longer valid.
    model.setSide(Side::back);
    EXPECT_FALSE(handle->isValid());
    EXPECT_EQ(card.childCount(), 1);
    EXPECT_EQ(card.child(1), nullptr);
}

// The options

TEST_F(CardCanvasTest, TheOptionsAreOnAtFirst) {
    EXPECT_TRUE(option("Guides").isChecked());
    EXPECT_TRUE(option("Outlines").isChecked());
    EXPECT_EQ(option("Guides").toolTip(),
              "The cut line (red) and the safe zone (blue dashes); outside the cut line is bleed");
    EXPECT_EQ(option("Outlines").toolTip(), "Dashed outlines around every layer");
    EXPECT_EQ(option("Outlines").x() - option("Guides").geometry().right() - 1, 16);
    EXPECT_LT(option("Guides").font().pointSizeF(), canvas.font().pointSizeF());
    EXPECT_TRUE(desktop.defaults.empty()) << "nothing is written that nobody chose";
}

TEST_F(CardCanvasTest, TheOptionsAreKept) {
    click(option("Guides"));
    EXPECT_EQ(desktop.defaults.at("showGuides"), "false");
    click(option("Outlines"));
    EXPECT_EQ(desktop.defaults.at("showOutlines"), "false");
    EXPECT_EQ(overlayCount(), 0);
    click(option("Guides"));
    EXPECT_EQ(desktop.defaults.at("showGuides"), "true");

    CardCanvas later(model, desktop);
    EXPECT_TRUE(find<QCheckBox>(later, "Guides")->isChecked());
    EXPECT_FALSE(find<QCheckBox>(later, "Outlines")->isChecked());
    EXPECT_TRUE(later.findChild<CardSurface*>()->overlays().empty());
}

TEST_F(CardCanvasTest, WhatIsNoAnswerIsNone) {
    desktop.defaults = {{"showGuides", "maybe"}, {"showOutlines", ""}};
    CardCanvas later(model, desktop);
    EXPECT_TRUE(find<QCheckBox>(later, "Guides")->isChecked());
    EXPECT_TRUE(find<QCheckBox>(later, "Outlines")->isChecked());
}

TEST_F(CardCanvasTest, WithoutOutlinesOnlyTheSelectedLayerHasOne) {
    select("Title");
    click(option("Outlines"));
    ASSERT_EQ(overlayCount(), 1);
    EXPECT_EQ(surface.overlays()[0].name, "Title");
    model.selectLayer(std::nullopt);
    EXPECT_EQ(overlayCount(), 0);
    click(option("Outlines"));
    EXPECT_EQ(overlayCount(), 4);
}

TEST_F(CardCanvasTest, EveryControlHasAName) {
    openCards();
    select("Title");
    EXPECT_THAT(unnamedControls(canvas), testing::IsEmpty());
}

}  // namespace
}  // namespace quorvel
