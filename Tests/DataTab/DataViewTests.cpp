#include "Controls/ElidedLabel.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "DataTab/DataView.h"
#include "DataTab/FileRow.h"
#include "DataTab/ListPicker.h"
#include "Support/Widgets/WindowTest.h"
#include "Support/WorkbookWriter.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>
#include <filesystem>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

constexpr std::string_view plainDeck =
    "Name,Rules,Price,Kind,Image,Icons,Qty,Flavor\n"
    "Pear,Gain 2.,1,Fruit,,coin,2,sweet\n"
    "Plum,\"Draw.\nDiscard.\",2,Fruit,,,1,sour\n";

std::string workbook(const std::vector<std::string>& names) {
    test::WorkbookParts parts;
    for (const std::string& name : names)
        parts.sheets.push_back(
            {name, test::worksheetXML("<row><c t=\"inlineStr\"><is><t>Name</t></is></c><c t=\"inlineStr\"><is><t>Of " +
                                      name + "</t></is></c></row><row><c t=\"inlineStr\"><is><t>Card of " + name +
                                      "</t></is></c></row>")});
    return test::workbookBytes(parts);
}

class DataViewTest : public WindowTest {
protected:
    DataView view{model};

    DataViewTest() { show(view); }

    void click(const QString& button) { QTest::mouseClick(find<QPushButton>(view, button), Qt::LeftButton); }
    FileRow* row(const QString& name) { return find<FileRow>(view, name); }
    ElidedLabel* nameIn(const QString& name) { return row(name)->findChild<ElidedLabel*>(); }
    QString textIn(const QString& name) {
        const auto* sentence = row(name)->findChild<QLabel*>();
        return sentence->isVisible() ? sentence->text() : nameIn(name)->text();
    }
    ListPicker* picker(const QString& name) { return find<ListPicker>(view, name); }
    SymbolLabel* eye() { return find<SymbolLabel>(view, QStringLiteral("Watching for changes")); }
    DataTableView* table() { return view.findChild<DataTableView*>(); }
    QString cell(int row, int column) { return table()->model()->index(row, column).data().toString(); }
    QLabel* missingPictures() {
        for (QLabel* label : view.findChildren<QLabel*>())
            if (label->accessibleName().contains(QLatin1String("pictures not found"))) return label;
        return nullptr;
    }
    std::optional<std::string> mapped(Field field) { return model.currentProject()->mapping.column(field); }
    /// Goes down the entries to one of them, as one does with the keyboard.
    void choose(ListPicker* picker, int index) {
        picker->setFocus();
        QTest::keyClick(picker, Qt::Key_Home);
        for (int i = 0; i < index; ++i) QTest::keyClick(picker, Qt::Key_Down);
    }
};

// What is shown

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

TEST_F(DataViewTest, saysInItsFooterHowColumnsAreUsed) {
    bool found = false;
    for (const QLabel* label : view.findChildren<QLabel*>())
        found = found || label->text() == QStringLiteral(
                                              "Which column feeds each field. Matched by name when the spreadsheet is "
                                              "read; any column can also be used directly in a layer as {{Column "
                                              "Name}}.");
    EXPECT_TRUE(found);
}

TEST_F(DataViewTest, showsADeckThatWasOpenBeforeTheView) {
    open("cards.csv", plainDeck);
    DataView late(model);
    show(late);
    EXPECT_EQ(late.findChild<DataTableView*>()->model()->rowCount(), 2);
    EXPECT_EQ(find<ListPicker>(late, "Title")->currentText(), QStringLiteral("Name"));
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

// Trouble

TEST_F(DataViewTest, paintsAFileThatCanNotBeFoundOrange) {
    const auto path = open("cards.csv", plainDeck);
    const auto hasOrange = [&] {
        const QImage picture = nameIn("Spreadsheet")->grab().toImage();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                if (pixel.red() > pixel.blue() + 60) return true;
            }
        return false;
    };
    EXPECT_FALSE(hasOrange());
    std::filesystem::remove(path);
    click("Reload");
    settle();
    EXPECT_TRUE(hasOrange());
    EXPECT_EQ(nameIn("Spreadsheet")->accessibleDescription(),
              QStringLiteral("“cards.csv” can’t be found. It may have been moved or deleted: choose it again."));
    EXPECT_TRUE(row("Spreadsheet")->toolTip().contains(QStringLiteral("can’t be found")));
    EXPECT_FALSE(table()->isVisible());
    // The deck still knows its columns.
    EXPECT_EQ(picker("Title")->currentIndex(), -1);
    EXPECT_EQ(picker("Title")->placeholderText(), QStringLiteral("Name"));

    write("cards.csv", plainDeck);
    click("Reload");
    settle();
    EXPECT_FALSE(hasOrange());
    EXPECT_TRUE(nameIn("Spreadsheet")->accessibleDescription().isEmpty());
    EXPECT_TRUE(table()->isVisible());
    EXPECT_EQ(picker("Title")->currentText(), QStringLiteral("Name"));
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

TEST_F(DataViewTest, namesFourOfFiveMissingPictures) {
    open("cards.csv", "Name,Art\nA,one.png\nB,two.png\nC,three.png\nD,art/four.png\nE,five.png\n");
    ASSERT_EQ(model.state().open._missingArt.size(), 5u);
    EXPECT_TRUE(missingPictures()->isVisible());
    EXPECT_EQ(missingPictures()->accessibleName(),
              QStringLiteral("5 pictures not found: one.png, two.png, three.png, art/four.png"));
    EXPECT_EQ(missingPictures()->text().remove(QChar(0x200B)), missingPictures()->accessibleName());
    EXPECT_EQ(missingPictures()->palette().color(QPalette::WindowText), Style::warning(view.palette()));
    write("cards.csv", "Name,Art\nA,\n");
    click("Reload");
    settle();
    EXPECT_FALSE(missingPictures()->isVisible());
}

TEST_F(DataViewTest, isNotWidenedByLongNames) {
    const std::string longName(200, 'n');
    open(longName + ".csv", "Name,Art," + std::string(5000, 'h') + "\nPear," + std::string(5000, 'p') + ",1\n");
    EXPECT_LE(view.minimumSizeHint().width(), 701);
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QString::fromStdString(longName + ".csv"));
    EXPECT_FALSE(nameIn("Spreadsheet")->toolTip().isEmpty());
    EXPECT_TRUE(missingPictures()->isVisible());
    EXPECT_LT(missingPictures()->height(), 300);
}

TEST_F(DataViewTest, takesNoNameForMarkup) {
    open("<b>bold</b>.csv", "Name,Art\nA,<h1>huge</h1>.png\n");
    EXPECT_EQ(missingPictures()->textFormat(), Qt::PlainText);
    write("<b>bold</b>.csv", std::string(4000, '\x01'));
    click("Reload");
    settle();
    EXPECT_FALSE(row("Spreadsheet")->toolTip().contains(QLatin1String("<b>")));
}

TEST_F(DataViewTest, takesEveryScript) {
    open("קלפים 🃏.csv", "שם,漢字,👩‍🌾\nשלום,かな,😀\n");
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QStringLiteral("קלפים 🃏.csv"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("שלום"));
    EXPECT_EQ(picker("Title")->itemText(3), QStringLiteral("👩‍🌾"));
    EXPECT_FALSE(view.grab().isNull());
}

// What one does

TEST_F(DataViewTest, reloads) {
    open("cards.csv", plainDeck);
    write("cards.csv", "Name\nQuince\n");
    click("Reload");
    settle();
    EXPECT_EQ(cell(0, 1), QStringLiteral("Quince"));
    EXPECT_EQ(table()->model()->columnCount(), 2);
    EXPECT_EQ(picker("Title")->count(), 2);
}

TEST_F(DataViewTest, followsASaveOfTheFile) {
    open("cards.csv", plainDeck);
    write("cards.csv", "Name\nQuince\n");
    settle();  // The event is seen at its end,
    settle();  // and waits until the file is quiet.
    EXPECT_EQ(cell(0, 1), QStringLiteral("Quince"));
}

TEST_F(DataViewTest, choosesASpreadsheet) {
    open("cards.csv", plainDeck);
    desktop.answers = {write("other.csv", "Name\nQuince\n")};
    click("Choose Spreadsheet…");
    settle();
    ASSERT_EQ(desktop.asked.size(), 1u);
    EXPECT_TRUE(std::holds_alternative<OpenPanel>(desktop.asked[0]));
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QStringLiteral("other.csv"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Quince"));
}

TEST_F(DataViewTest, choosesTheFoldersAndLetsGoOfTheIcons) {
    open("cards.csv", plainDeck);
    std::filesystem::create_directories(desktop.folder / "my art");
    std::filesystem::create_directories(desktop.folder / "my icons");
    desktop.answers = {desktop.folder / "my art", desktop.folder / "my icons"};
    click("Choose Art Folder…");
    settle();
    EXPECT_EQ(textIn("Art folder"), QStringLiteral("my art"));
    EXPECT_EQ(textIn("Icons folder"), QStringLiteral("Built-in icons only"));
    click("Choose Icons Folder…");
    settle();
    EXPECT_EQ(textIn("Icons folder"), QStringLiteral("my icons"));
    EXPECT_TRUE(find<QPushButton>(view, "Remove Icons Folder")->isVisible());
    click("Remove Icons Folder");
    settle();
    EXPECT_EQ(textIn("Icons folder"), QStringLiteral("Built-in icons only"));
    EXPECT_FALSE(find<QPushButton>(view, "Remove Icons Folder")->isVisible());
    EXPECT_FALSE(model.currentProject()->iconFolder.has_value());
    EXPECT_TRUE(model.currentProject()->artFolder.has_value());
}

TEST_F(DataViewTest, changesNothingWhenAPanelIsCancelled) {
    open("cards.csv", plainDeck);
    const DeckProject before = *model.currentProject();
    click("Choose Spreadsheet…");
    click("Choose Art Folder…");
    click("Choose Icons Folder…");
    settle();
    EXPECT_EQ(desktop.asked.size(), 3u);
    EXPECT_EQ(*model.currentProject(), before);
}

TEST_F(DataViewTest, setsTheColumnOfEachField) {
    open("cards.csv", plainDeck);
    const std::pair<const char*, Field> fields[] = {
        {"Title", Field::title}, {"Text", Field::text},   {"Cost", Field::cost},        {"Type", Field::type},
        {"Art", Field::art},     {"Icons", Field::icons}, {"Quantity", Field::quantity}};
    for (const auto& [label, field] : fields) {
        choose(picker(label), 8);
        EXPECT_EQ(mapped(field), "Flavor") << label;
        EXPECT_EQ(picker(label)->currentText(), QStringLiteral("Flavor"));
        choose(picker(label), 0);
        EXPECT_EQ(mapped(field), std::nullopt) << label;
        EXPECT_EQ(picker(label)->currentText(), QStringLiteral("None"));
    }
    // Choosing nothing for the title left the cards without one.
    EXPECT_EQ(model.state().open._deck->cards.size(), 2u);
}

TEST_F(DataViewTest, choosesAColumnFromTheOpenList) {
    open("cards.csv", plainDeck);
    ListPicker* art = picker("Art");
    QTest::mouseClick(art, Qt::LeftButton);
    ASSERT_TRUE(art->view()->isVisible());
    const QModelIndex flavor = art->model()->index(8, 0);
    QTest::mouseMove(art->view()->viewport(), art->view()->visualRect(flavor).center());
    QTest::keyClick(art->view(), Qt::Key_End);
    QTest::keyClick(art->view(), Qt::Key_Return);
    EXPECT_EQ(mapped(Field::art), "Flavor");
}

TEST_F(DataViewTest, leavesTheMappingAloneWhenItOnlyShowsIt) {
    open("cards.csv", plainDeck);
    const FieldMapping before = model.currentProject()->mapping;
    int announced = 0;
    const auto counting = model.subscribe([&](Changes changes) { announced += changes.has(Change::decks); });
    model.reloadSpreadsheet();
    settle();
    write("cards.csv", "Extra,Name,Rules,Price,Kind,Image,Icons,Qty,Flavor\nx,Pear,,,,,,,\n");
    model.reloadSpreadsheet();
    settle();
    EXPECT_EQ(model.currentProject()->mapping, before);
    EXPECT_EQ(announced, 0);
    EXPECT_EQ(picker("Title")->currentIndex(), 2);
}

TEST_F(DataViewTest, doesNotTurnAPickerByTheWheelInPassing) {
    open("cards.csv", plainDeck);
    table()->setFocus();
    ListPicker* title = picker("Title");
    const QPointF place(title->width() / 2.0, title->height() / 2.0);
    QWheelEvent wheel(place, title->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(title, &wheel);
    EXPECT_EQ(mapped(Field::title), "Name");
}

TEST_F(DataViewTest, showsTheSheetsOfAWorkbook) {
    open("cards.xlsx", workbook({"Events", "Creatures", "Notes"}));
    EXPECT_TRUE(picker("Sheet")->isVisible());
    EXPECT_EQ(picker("Sheet")->count(), 3);
    EXPECT_EQ(picker("Sheet")->currentText(), QStringLiteral("Events"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Card of Events"));
    choose(picker("Sheet"), 2);
    settle();
    EXPECT_EQ(model.currentProject()->sheetIndex, 2);
    EXPECT_EQ(cell(0, 1), QStringLiteral("Card of Notes"));
    EXPECT_EQ(table()->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Of Notes"));
    open("plain.csv", plainDeck);
    EXPECT_FALSE(picker("Sheet")->isVisible());
}

TEST_F(DataViewTest, hasNoSheetRowForAWorkbookOfOne) {
    open("cards.xlsx", workbook({"Events"}));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Card of Events"));
    EXPECT_FALSE(picker("Sheet")->isVisible());
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

// By keyboard and by ear

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
