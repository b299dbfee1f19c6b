#include "Shell/NewDeckSheet.h"
#include "Shell/ShellTest.h"

#include <QPushButton>
#include <QRadioButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class NewDeckSheetTest : public ShellTest {
protected:
    NewDeckSheet& sheet() {
        model.setShowNewDeck(true);
        auto* found = dialog<NewDeckSheet>();
        EXPECT_NE(found, nullptr);
        QApplication::setActiveWindow(found);
        return *found;
    }
    bool isShown() const { return dialog<NewDeckSheet>() != nullptr; }
};

TEST_F(NewDeckSheetTest, ItSaysWhatItAsksFor) {
    NewDeckSheet& shown = sheet();
    EXPECT_EQ(shown.windowTitle(), "New Deck");
    EXPECT_EQ(shown.windowModality(), Qt::WindowModal);
    EXPECT_EQ(words(shown).toStdString(),
              "New Deck\n"
              "Deck name\n"
              "Template\n"
              "Title, cost, art, type bar, rules text and icons; frame colour by type.\n"
              "Full-bleed art with a banner, for characters and events.\n"
              "Small cards and tokens with a big icon row.\n"
              "Next, choose the spreadsheet of cards. You can change the card size and every layer later.");
    auto* name = find<QLineEdit>(shown, "Deck name");
    EXPECT_EQ(name->text(), "");
    EXPECT_EQ(name->placeholderText(), "My Game");
    EXPECT_EQ(shown.focusWidget(), name);
    EXPECT_TRUE(find<QPushButton>(shown, "Create")->isDefault());
    EXPECT_THAT(unnamedControls(shown), testing::IsEmpty());
}

TEST_F(NewDeckSheetTest, ClassicIsChosenFirst) {
    struct Row {
        const char* name;
        const char* description;
        bool checked;
    };
    NewDeckSheet& shown = sheet();
    for (const Row& row :
         {Row{"Classic (poker size)", "Title, cost, art, type bar, rules text and icons; frame colour by type.", true},
          Row{"Tall (tarot size)", "Full-bleed art with a banner, for characters and events.", false},
          Row{"Mini", "Small cards and tokens with a big icon row.", false}}) {
        auto* button = find<QRadioButton>(shown, row.name);
        EXPECT_EQ(button->isChecked(), row.checked) << row.name;
        EXPECT_EQ(button->accessibleDescription(), row.description);
    }
}

TEST_F(NewDeckSheetTest, CreateMakesTheDeck) {
    NewDeckSheet& shown = sheet();
    QTest::keyClicks(find<QLineEdit>(shown, "Deck name"), "Dragons & Ünicorns");
    QTest::mouseClick(find<QRadioButton>(shown, "Tall (tarot size)"), Qt::LeftButton, {}, QPoint(8, 8));
    click(find<QPushButton>(shown, "Create"));
    EXPECT_THAT(deckNames(), testing::ElementsAre("Dragons & Ünicorns"));
    EXPECT_EQ(model.template_().size, SampleTemplates::make(SampleTemplates::Kind::tarot, "").size);
    EXPECT_FALSE(model.state()._showNewDeck);
    EXPECT_FALSE(isShown());
}

TEST_F(NewDeckSheetTest, ReturnCreates) {
    auto* name = find<QLineEdit>(sheet(), "Deck name");
    QTest::keyClicks(name, "Dragons");
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_THAT(deckNames(), testing::ElementsAre("Dragons"));
    EXPECT_FALSE(isShown());
}

TEST_F(NewDeckSheetTest, ReturnCreatesFromTheButtonsOfTheTemplatesToo) {
    QTest::keyClick(find<QRadioButton>(sheet(), "Mini"), Qt::Key_Return);
    EXPECT_THAT(deckNames(), testing::SizeIs(1));
}

TEST_F(NewDeckSheetTest, AnEmptyNameIsReplaced) {
    click(find<QPushButton>(sheet(), "Create"));
    EXPECT_THAT(deckNames(), testing::ElementsAre("New Deck"));
}

TEST_F(NewDeckSheetTest, CancelAndEscapeMakeNothing) {
    click(find<QPushButton>(sheet(), "Cancel"));
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(model.state()._showNewDeck);
    QTest::keyClick(&sheet(), Qt::Key_Escape);
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(model.state()._showNewDeck);
    EXPECT_THAT(deckNames(), testing::IsEmpty());
}

TEST_F(NewDeckSheetTest, AClickOnADescriptionChooses) {
    NewDeckSheet& shown = sheet();
    for (QLabel* each : shown.findChildren<QLabel*>())
        if (each->text().startsWith("Small cards")) click(each);
    EXPECT_TRUE(find<QRadioButton>(shown, "Mini")->isChecked());
}

TEST_F(NewDeckSheetTest, ArrowKeysChooseATemplate) {
    NewDeckSheet& shown = sheet();
    auto* classic = find<QRadioButton>(shown, "Classic (poker size)");
    shown.activateWindow();
    runWhatWaits();
    classic->setFocus();
    QTest::keyClick(classic, Qt::Key_Down);
    EXPECT_TRUE(find<QRadioButton>(shown, "Tall (tarot size)")->isChecked());
}

TEST_F(NewDeckSheetTest, ItComesEmptyEachTime) {
    QTest::keyClicks(find<QLineEdit>(sheet(), "Deck name"), "Dragons");
    model.setShowNewDeck(false);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(find<QLineEdit>(sheet(), "Deck name")->text(), "");
}

}  // namespace
}  // namespace quorvel
