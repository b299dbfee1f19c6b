#include "Controls/BusyButton.h"
#include "Controls/SymbolLabel.h"
#include "Shell/ShellTest.h"
#include "Shell/WelcomeView.h"

#include <QPushButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class WelcomeViewTest : public ShellTest {
protected:
    WelcomeView& welcome = *window.findChild<WelcomeView*>();
};

TEST_F(WelcomeViewTest, ItSaysWhatTheProgramIsFor) {
    EXPECT_TRUE(welcome.isVisible());
    EXPECT_EQ(welcome.findChild<SymbolLabel*>()->sizeHint(), QSize(56, 56));
    QString said = words(welcome);
    for (const char* line :
         {"Quorvel", "Turn a spreadsheet into print-and-play cards",
          "Make a spreadsheet: one row per card, with columns like Name, Text, Cost, Type, Art, Icons and Qty.",
          "Design the card once: text boxes, pictures, shapes and icon rows bound to your columns.",
          "Print sheets with cut marks and backs, or export 300 dpi images and Tabletop Simulator decks.",
          "Or drop a CSV, TSV or Excel file here. Numbers: File › Export To › CSV."})
        EXPECT_TRUE(said.split('\n').contains(text(line))) << line;
}

TEST_F(WelcomeViewTest, TheStepsAreOfABearableWidth) {
    for (const QSize size : {QSize(900, 600), QSize(1280, 820), QSize(2400, 1400)}) {
        show(window, size);
        for (const QLabel* each : welcome.findChildren<QLabel*>()) {
            if (!each->text().startsWith("Make")) continue;
            EXPECT_LE(each->parentWidget()->width(), 560);
            EXPECT_GE(each->parentWidget()->width(), 500);
            EXPECT_GE(each->height(), each->heightForWidth(each->width()));
        }
    }
}

TEST_F(WelcomeViewTest, NewDeckShowsTheSheet) {
    click(find<QPushButton>(welcome, "New Deck…"));
    EXPECT_TRUE(model.state()._showNewDeck);
}

TEST_F(WelcomeViewTest, TheSampleOpens) {
    click(find<QPushButton>(welcome, "Open the Sample Deck"));
    settle();
    ASSERT_NE(model.currentProject(), nullptr);
    EXPECT_FALSE(welcome.isVisible());
    EXPECT_EQ(model.template_().size, SampleTemplates::make(SampleTemplates::Kind::classic, "").size);
}

TEST_F(WelcomeViewTest, WhileTheSampleIsPaintedItsButtonIsBusy) {
    auto* sample = find<BusyButton>(welcome, "Open the Sample Deck");
    EXPECT_FALSE(sample->isBusy());
    item("File", "Open the Sample Deck")->trigger();
    EXPECT_TRUE(sample->isBusy()) << "wherever it was asked for";
    click(sample);
    settle();
    EXPECT_FALSE(sample->isBusy());
    EXPECT_EQ(model.state()._decks.size(), 1U);
    model.setSelection(std::nullopt);
    EXPECT_TRUE(sample->isEnabled());
}

TEST_F(WelcomeViewTest, ASpreadsheetMakesADeck) {
    desktop.answers = {write("Dragons.csv", threeCards)};
    click(find<QPushButton>(welcome, "Choose Spreadsheet…"));
    settle();
    EXPECT_THAT(deckNames(), testing::ElementsAre("Dragons"));
}

TEST_F(WelcomeViewTest, ItComesBackWhenNoDeckIsOpen) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    EXPECT_FALSE(welcome.isVisible());
    model.setSelection(std::nullopt);
    EXPECT_TRUE(welcome.isVisible());
}

}  // namespace
}  // namespace quorvel
