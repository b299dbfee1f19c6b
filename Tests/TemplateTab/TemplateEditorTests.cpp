#include "Controls/Wording.h"
#include "Support/Widgets/WindowTest.h"
#include "TemplateTab/CardPicture.h"
#include "TemplateTab/TemplateEditor.h"

#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class TemplateEditorTest : public WindowTest {
protected:
    TemplateEditor editor{model};

    QToolButton& previous() const { return *find<QToolButton>(editor, "Previous Card"); }
    QToolButton& next() const { return *find<QToolButton>(editor, "Next Card"); }
    QString shownCard() const { return editor.findChild<QLabel*>()->text(); }
    /// The colour in the middle of the picture.
    QColor middle() {
        auto* picture = editor.findChild<CardPicture*>();
        const QImage seen = picture->grab().toImage();
        return seen.pixelColor(seen.rect().center());
    }
};

TEST_F(TemplateEditorTest, WithoutCardsTheDesignItselfIsShown) {
    model.newDeck(SampleTemplates::Kind::classic, "Cards");
    settle();
    show(editor);
    EXPECT_FALSE(next().isVisible());
    EXPECT_TRUE(model.state()._canvasImage);
    EXPECT_EQ(nameOf(*editor.findChild<CardPicture*>()), text("The card’s design"));
}

TEST_F(TemplateEditorTest, TheButtonsGoFromCardToCard) {
    open("cards.csv", "Name\nFire\nWater\n");
    show(editor);
    EXPECT_EQ(shownCard(), "Card 1 of 2");
    EXPECT_FALSE(previous().isEnabled());
    QTest::mouseClick(&next(), Qt::LeftButton);
    EXPECT_EQ(model.state()._canvasCard, 1);
    EXPECT_EQ(shownCard(), "Card 2 of 2");
    EXPECT_FALSE(next().isEnabled());
    QTest::mouseClick(&previous(), Qt::LeftButton);
    EXPECT_EQ(model.state()._canvasCard, 0);
}

TEST_F(TemplateEditorTest, ThePictureFollowsTheDesign) {
    model.newDeck(SampleTemplates::Kind::classic, "Cards");
    CardTemplate design("Plain", CardSize::poker, {}, {});
    for (const RGBA color : {RGBA::bytes(0xC0, 0x20, 0x20), RGBA::bytes(0x20, 0x20, 0xC0)}) {
        design.background = color;
        model.setTemplate(design);
        settle();
        show(editor);
        EXPECT_NEAR(middle().redF(), color.r, 0.02);
        EXPECT_NEAR(middle().blueF(), color.b, 0.02);
    }
}

TEST_F(TemplateEditorTest, EveryControlHasAName) {
    open("cards.csv", "Name\nFire\nWater\n");
    show(editor);
    EXPECT_THAT(unnamedControls(editor), testing::IsEmpty());
}

}  // namespace
}  // namespace quorvel
