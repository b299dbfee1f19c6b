#include "Controls/Style.h"
#include "DataTab/DataViewTest.h"

#include <QApplication>
#include <QScrollBar>
#include <QSplitter>
#include <filesystem>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

TEST_F(DataViewTest, hasNothingToChangeWithoutADeck) {
    EXPECT_TRUE(nameIn("Spreadsheet")->text().isEmpty());
    EXPECT_FALSE(find<QPushButton>(view, "Choose Spreadsheet…")->isEnabled());
    EXPECT_FALSE(picker("Title")->isEnabled());
    EXPECT_FALSE(table()->isVisible());
    click("Choose Spreadsheet…");
    EXPECT_TRUE(desktop.asked.empty());
}

TEST_F(DataViewTest, waitsForASpreadsheetInANewDeck) {
    model.newDeck(SampleTemplates::Kind::classic, "Game");
    settle();
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QString());
    EXPECT_EQ(textIn("Art folder"), QString());
    EXPECT_EQ(textIn("Icons folder"), QStringLiteral("Built-in icons only"));
    EXPECT_FALSE(eye()->isVisible());
    EXPECT_FALSE(find<QPushButton>(view, "Reload")->isEnabled());
    EXPECT_TRUE(find<QPushButton>(view, "Choose Spreadsheet…")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(view, "Remove Icons Folder")->isVisible());
    EXPECT_FALSE(picker("Sheet")->isVisible());
    EXPECT_EQ(picker("Title")->currentText(), QStringLiteral("None"));
    EXPECT_FALSE(table()->isVisible());
    EXPECT_FALSE(missingPictures()->isVisible());
}

TEST_F(DataViewTest, showsTheFilesTheColumnsAndTheTable) {
    open("cards.csv", plainDeck);
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QStringLiteral("cards.csv"));
    EXPECT_EQ(textIn("Art folder"), QStringLiteral("The spreadsheet’s folder (needs permission)"));
    EXPECT_TRUE(eye()->isVisible());
    EXPECT_EQ(eye()->toolTip(), QStringLiteral("Save the spreadsheet and the cards update by themselves"));
    EXPECT_FALSE(picker("Sheet")->isVisible());
    const std::pair<const char*, const char*> expected[] = {{"Title", "Name"},  {"Text", "Rules"}, {"Cost", "Price"},
                                                            {"Type", "Kind"},   {"Art", "Image"},  {"Icons", "Icons"},
                                                            {"Quantity", "Qty"}};
    for (const auto& [label, column] : expected) {
        EXPECT_EQ(picker(label)->currentText(), QString(column)) << label;
        EXPECT_EQ(picker(label)->count(), 9);
        EXPECT_EQ(picker(label)->itemText(0), QStringLiteral("None"));
        EXPECT_EQ(picker(label)->itemText(8), QStringLiteral("Flavor"));
    }
    EXPECT_TRUE(table()->isVisible());
    EXPECT_EQ(cell(0, 0), QStringLiteral("2"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Pear"));
    EXPECT_EQ(cell(1, 2), QStringLiteral("Draw. Discard."));
}

TEST_F(DataViewTest, showsADeckThatWasOpenBeforeTheView) {
    open("cards.csv", plainDeck);
    DataView late(model);
    show(late);
    EXPECT_EQ(late.findChild<DataTableView*>()->model()->rowCount(), 2);
    EXPECT_EQ(find<Picker>(late, "Title")->currentText(), QStringLiteral("Name"));
}

TEST_F(DataViewTest, hasTheWidthsOfItsColumns) {
    open("cards.csv", plainDeck);
    const auto* splitter = view.findChild<QSplitter*>();
    show(view, {1280, 700});
    EXPECT_EQ(splitter->widget(0)->width(), 380);
    EXPECT_GE(splitter->widget(1)->width(), 890);
    show(view, {700, 700});
    EXPECT_GE(splitter->widget(0)->width(), 339);
    EXPECT_GE(splitter->widget(1)->width(), 360);
    EXPECT_LE(view.minimumSizeHint().width(), 701);
    EXPECT_EQ(splitter->widget(0)->maximumWidth(), 460);
}

TEST_F(DataViewTest, keepsTheLastGoodTableOverAnError) {
    open("cards.csv", plainDeck);
    write("cards.csv", std::string(4000, '\x01'));
    click("Reload");
    settle();
    ASSERT_TRUE(model.state().open._loadError.has_value());
    EXPECT_TRUE(table()->isVisible());
    EXPECT_EQ(cell(0, 1), QStringLiteral("Pear"));
    EXPECT_EQ(picker("Title")->currentText(), QStringLiteral("Name"));
    EXPECT_FALSE(row("Spreadsheet")->toolTip().isEmpty());
    EXPECT_TRUE(eye()->isVisible());
}

TEST_F(DataViewTest, keepsEverythingWhileItLoads) {
    open("cards.csv", plainDeck);
    click("Reload");
    ASSERT_TRUE(model.state().open._isLoading);
    EXPECT_TRUE(table()->isVisible());
    EXPECT_EQ(cell(0, 1), QStringLiteral("Pear"));
    settle();
    EXPECT_EQ(cell(0, 1), QStringLiteral("Pear"));
}

TEST_F(DataViewTest, takesEveryScript) {
    open("קלפים 🃏.csv", "שם,漢字,👩‍🌾\nשלום,かな,😀\n");
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QStringLiteral("קלפים 🃏.csv"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("שלום"));
    EXPECT_EQ(picker("Title")->itemText(3), QStringLiteral("👩‍🌾"));
    EXPECT_FALSE(view.grab().isNull());
}

TEST_F(DataViewTest, followsASaveOfTheFile) {
    open("cards.csv", plainDeck);
    write("cards.csv", "Name\nQuince\n");
    settle();  // The event is seen at its end,
    settle();  // and waits until the file is quiet.
    EXPECT_EQ(cell(0, 1), QStringLiteral("Quince"));
}

TEST_F(DataViewTest, followsTheSelectedDeck) {
    open("first.csv", plainDeck);
    const auto first = model.state()._selection;
    model.newDeck(SampleTemplates::Kind::classic, "Second");
    settle();
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QString());
    EXPECT_FALSE(table()->isVisible());
    EXPECT_FALSE(eye()->isVisible());
    model.setSelection(first);
    settle();
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QStringLiteral("first.csv"));
    EXPECT_TRUE(table()->isVisible());
    model.setSelection(std::nullopt);
    settle();
    EXPECT_FALSE(find<QPushButton>(view, "Choose Spreadsheet…")->isEnabled());
    EXPECT_FALSE(table()->isVisible());
}

TEST_F(DataViewTest, keepsItsPlaceOverAReloadAndDropsItForAnotherDeck) {
    std::string many = "Name,Text\n";
    for (int row = 0; row < 500; ++row) many += "Card " + std::to_string(row) + ",text\n";
    open("many.csv", many);
    table()->scrollTo(table()->model()->index(300, 1));
    table()->setCurrentIndex(table()->model()->index(301, 1));
    const int place = table()->verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    open("many.csv", many + "One more,text\n");
    click("Reload");
    settle();
    EXPECT_EQ(table()->model()->rowCount(), 501);
    EXPECT_EQ(table()->verticalScrollBar()->value(), place);
    EXPECT_TRUE(table()->selectionModel()->isSelected(table()->model()->index(301, 1)));
    model.newDeck(SampleTemplates::Kind::classic, "Second");
    open("other.csv", many);
    EXPECT_EQ(table()->verticalScrollBar()->value(), 0);
    EXPECT_FALSE(table()->selectionModel()->hasSelection());
}

TEST_F(DataViewTest, isWalkedByTabFromTopToBottom) {
    open("cards.xlsx", workbook({"Events", "Notes"}));
    view.activateWindow();
    find<QPushButton>(view, "Reload")->setFocus();
    QStringList walked;
    for (int i = 0; i < 14; ++i) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        walked += nameOf(*QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(walked.join(u", ").toStdString(),
              "Reload, Choose Spreadsheet…, Sheet, Choose Art Folder…, Choose Icons Folder…, Title, Text, Cost, Type, "
              "Art, Icons, Quantity, Table, Reload");
}

TEST_F(DataViewTest, namesEverythingForAScreenReader) {
    EXPECT_THAT(unnamedControls(view), testing::IsEmpty());
    open("cards.csv", plainDeck);
    EXPECT_THAT(unnamedControls(view), testing::IsEmpty());
    open("cards.xlsx", workbook({"Events", "Notes"}));
    EXPECT_THAT(unnamedControls(view), testing::IsEmpty());
}

TEST_F(DataViewTest, staysUsableInDarkColours) {
    open("cards.csv", "Name,Art\nA,one.png\n");
    Style::apply(*qApp, Style::Appearance::dark);
    EXPECT_EQ(missingPictures()->palette().color(QPalette::WindowText), Style::warning(view.palette()));
    EXPECT_FALSE(view.grab().isNull());
    Style::apply(*qApp, Style::Appearance::light);
    EXPECT_EQ(missingPictures()->palette().color(QPalette::WindowText), Style::warning(view.palette()));
}

}  // namespace
}  // namespace quorvel
