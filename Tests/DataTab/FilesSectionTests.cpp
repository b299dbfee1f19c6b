#include "Controls/Style.h"
#include "DataTab/DataViewTest.h"

#include <QScrollBar>
#include <filesystem>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class FilesSectionTest : public DataViewTest {};

TEST_F(FilesSectionTest, closesTheEyeOverAFileThatIsGone) {
    const auto path = open("cards.csv", plainDeck);
    EXPECT_TRUE(eye()->isVisible());
    std::filesystem::remove(path);
    settle();
    EXPECT_FALSE(eye()->isVisible());
    write("cards.csv", plainDeck);
    click("Reload");
    settle();
    EXPECT_TRUE(eye()->isVisible());
}

TEST_F(FilesSectionTest, paintsAFileThatCanNotBeFoundOrange) {
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

TEST_F(FilesSectionTest, namesFourOfFiveMissingPictures) {
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

TEST_F(FilesSectionTest, isNotWidenedByLongNames) {
    const std::string longName(200, 'n');
    open(longName + ".csv", "Name,Art," + std::string(5000, 'h') + "\nPear," + std::string(5000, 'p') + ",1\n");
    EXPECT_LE(view.minimumSizeHint().width(), 701);
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QString::fromStdString(longName + ".csv"));
    EXPECT_FALSE(nameIn("Spreadsheet")->toolTip().isEmpty());
    EXPECT_TRUE(missingPictures()->isVisible());
    EXPECT_LT(missingPictures()->height(), 300);
}

TEST_F(FilesSectionTest, takesNoNameForMarkup) {
    open("<b>bold</b>.csv", "Name,Art\nA,<h1>huge</h1>.png\n");
    EXPECT_EQ(missingPictures()->textFormat(), Qt::PlainText);
    write("<b>bold</b>.csv", std::string(4000, '\x01'));
    click("Reload");
    settle();
    EXPECT_FALSE(row("Spreadsheet")->toolTip().contains(QLatin1String("<b>")));
}

TEST_F(FilesSectionTest, writesAnAmpersandAsOne) {
    open("pears & plums.csv", "Name\nA\n");
    EXPECT_EQ(row("Spreadsheet")->toolTip(), QString());
    std::filesystem::remove(desktop.folder / "pears & plums.csv");
    click("Reload");
    settle();
    const QString tip = row("Spreadsheet")->toolTip();
    EXPECT_TRUE(Qt::mightBeRichText(tip)) << tip.toStdString();
    EXPECT_TRUE(tip.contains(QLatin1String("pears &amp; plums"))) << tip.toStdString();
}

TEST_F(FilesSectionTest, reloads) {
    open("cards.csv", plainDeck);
    write("cards.csv", "Name\nQuince\n");
    click("Reload");
    settle();
    EXPECT_EQ(cell(0, 1), QStringLiteral("Quince"));
    EXPECT_EQ(table()->model()->columnCount(), 2);
    EXPECT_EQ(picker("Title")->count(), 2);
}

TEST_F(FilesSectionTest, choosesASpreadsheet) {
    open("cards.csv", plainDeck);
    desktop.answers = {write("other.csv", "Name\nQuince\n")};
    click("Choose Spreadsheet…");
    settle();
    ASSERT_EQ(desktop.asked.size(), 1u);
    EXPECT_TRUE(std::holds_alternative<OpenPanel>(desktop.asked[0]));
    EXPECT_EQ(nameIn("Spreadsheet")->text(), QStringLiteral("other.csv"));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Quince"));
}

TEST_F(FilesSectionTest, choosesTheFoldersAndLetsGoOfTheIcons) {
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

TEST_F(FilesSectionTest, changesNothingWhenAPanelIsCancelled) {
    open("cards.csv", plainDeck);
    const DeckProject before = *model.currentProject();
    click("Choose Spreadsheet…");
    click("Choose Art Folder…");
    click("Choose Icons Folder…");
    settle();
    EXPECT_EQ(desktop.asked.size(), 3u);
    EXPECT_EQ(*model.currentProject(), before);
}

TEST_F(FilesSectionTest, showsTheSheetsOfAWorkbook) {
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

TEST_F(FilesSectionTest, hasNoSheetRowForAWorkbookOfOne) {
    open("cards.xlsx", workbook({"Events"}));
    EXPECT_EQ(cell(0, 1), QStringLiteral("Card of Events"));
    EXPECT_FALSE(picker("Sheet")->isVisible());
}

}  // namespace
}  // namespace quorvel
