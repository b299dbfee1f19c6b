#include "Controls/Style.h"
#include "DataTab/DataCells.h"
#include "DataTab/DataTableView.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using Table = std::shared_ptr<const DataTable>;

Table tableOf(std::vector<std::string> headers, TextRows rows) {
    return std::make_shared<const DataTable>(std::move(headers), std::move(rows), "cards.csv");
}

Table tableOf(std::size_t rows, std::size_t columns) {
    std::vector<std::string> headers;
    for (std::size_t column = 0; column < columns; ++column) headers.push_back("Column " + std::to_string(column));
    TextRows cells;
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column)
            cells.appendCell("cell " + std::to_string(row) + "." + std::to_string(column));
        cells.endRow();
    }
    return tableOf(std::move(headers), std::move(cells));
}

class DataTableViewTest : public WindowTest {
protected:
    Table table = tableOf({"Name", "Text", "Qty"}, {{"Pear", "two\nlines", "1"}, {"Plum", std::string(900, 'w'), "2"}});
    DataTableView view;

    DataTableViewTest() {
        view.setTable(table, DataTableView::Places::dropped);
        show(view, {800, 400});
        view.setFocus();
    }

    QRect cell(int row, int column) { return view.visualRect(view.model()->index(row, column)); }
    void clickOn(int row, int column, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, cell(row, column).center());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(&view, key, keys); }
    static std::string clipboard() { return QApplication::clipboard()->text().toStdString(); }
    int columnWidth(int column) { return view.horizontalHeader()->sectionSize(column); }
    QString toolTipAt(int row, int column) {
        QToolTip::hideText();
        const QPoint place = cell(row, column).center();
        QHelpEvent help(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    std::vector<QColor> colorsIn(const QRect& rect) {
        const QImage picture = view.viewport()->grab(rect).toImage();
        std::vector<QColor> colors;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) colors.push_back(picture.pixelColor(x, y));
        return colors;
    }
};

TEST_F(DataTableViewTest, spacesTextsByFourteenAndSix) {
    EXPECT_EQ(cell(0, 0).height(), view.fontMetrics().height() + 6);
    const QRect first = DataCells::textRect({0, 0, 100, 20}, true, false, Qt::LeftToRight);
    const QRect last = DataCells::textRect({100, 0, 100, 20}, false, true, Qt::LeftToRight);
    EXPECT_EQ(first.left(), 16);
    EXPECT_EQ(last.left() - first.right() - 1, 14);
    EXPECT_EQ(199 - last.right(), 16);
    EXPECT_EQ(DataCells::textRect({0, 0, 100, 20}, true, false, Qt::RightToLeft), QRect(7, 0, 77, 20));
    EXPECT_EQ(view.horizontalHeader()->height(), 16 + view.horizontalHeader()->fontMetrics().height() + 6);
}

TEST_F(DataTableViewTest, makesColumnsAsWideAsTheirTextsButAtMost260) {
    const QFontMetrics metrics = view.fontMetrics();
    const int ofName = columnWidth(1) - DataCells::columnSpacing;
    EXPECT_GE(ofName, metrics.horizontalAdvance(QStringLiteral("Name")));
    EXPECT_GE(ofName, metrics.horizontalAdvance(QStringLiteral("Plum")));
    EXPECT_LE(ofName, 80);
    EXPECT_EQ(columnWidth(2), 260 + DataCells::columnSpacing);
    view.setTable(tableOf({std::string(500, 'h')}, {{"x"}}), DataTableView::Places::dropped);
    EXPECT_EQ(columnWidth(1), DataCells::columnWidth(260, false, true));
}

TEST_F(DataTableViewTest, seesWideTextsFarDown) {
    TextRows rows;
    for (int row = 0; row < 3000; ++row) {
        rows.appendCell(row < 300 ? "x" : "a much wider text");
        rows.endRow();
    }
    const Table wide = tableOf({"x"}, std::move(rows));
    view.setTable(wide, DataTableView::Places::dropped);
    EXPECT_GE(columnWidth(1), view.fontMetrics().horizontalAdvance(QStringLiteral("a much wider text")));
}

TEST_F(DataTableViewTest, paintsRowNumbersInTheSecondaryColour) {
    const auto numbers = colorsIn(cell(0, 0));
    const auto names = colorsIn(cell(0, 1));
    EXPECT_THAT(numbers, testing::Contains(Style::secondary(view.palette())));
    EXPECT_THAT(numbers, testing::Not(testing::Contains(view.palette().color(QPalette::Text))));
    EXPECT_THAT(names, testing::Contains(view.palette().color(QPalette::Text)));
}

TEST_F(DataTableViewTest, showsTheWholeOfACutCellAsItsTooltip) {
    EXPECT_EQ(toolTipAt(0, 1), QString());
    EXPECT_GE(toolTipAt(1, 2).count(u'w'), 900);
}

// Selecting and copying

TEST_F(DataTableViewTest, copiesWhatWasSelectedByMouse) {
    clickOn(0, 1);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "Pear");
    clickOn(0, 2);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "two\nlines");
    clickOn(0, 1);
    clickOn(1, 1, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "Pear\nPlum");
    clickOn(0, 1);
    clickOn(1, 3, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "Pear\t\n\t2");
}

TEST_F(DataTableViewTest, copiesWhatWasSelectedByKeyboard) {
    clickOn(0, 0);
    press(Qt::Key_Right);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "Pear\nPlum");
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "2\tPear\t\"two\nlines\"\t1\n3\tPlum\t" + std::string(900, 'w') + "\t2");
}

TEST_F(DataTableViewTest, copiesWholeColumnsByTheirHeaders) {
    QHeaderView* header = view.horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(1) + 5, header->height() - 5});
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "Pear\nPlum");
}

TEST_F(DataTableViewTest, offersToCopyInItsMenu) {
    ASSERT_EQ(view.actions().size(), 1);
    EXPECT_EQ(view.actions()[0]->text(), QStringLiteral("Copy"));
    clickOn(1, 1);
    view.actions()[0]->trigger();
    EXPECT_EQ(clipboard(), "Plum");
}

TEST_F(DataTableViewTest, leavesTheClipboardAloneWithoutASelection) {
    QApplication::clipboard()->setText(QStringLiteral("before"));
    view.clearSelection();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "before");
    view.setTable(nullptr, DataTableView::Places::dropped);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "before");
}

TEST_F(DataTableViewTest, isReadOnly) {
    clickOn(0, 1);
    press(Qt::Key_F2);
    QTest::keyClicks(&view, QStringLiteral("Plum"));
    press(Qt::Key_Delete);
    EXPECT_TRUE(view.findChildren<QLineEdit*>().isEmpty());
    EXPECT_EQ(view.currentIndex().row(), 0);
    EXPECT_EQ(view.model()->index(0, 1).data().toString(), QStringLiteral("Pear"));
}

TEST_F(DataTableViewTest, isWalkedByKeyboard) {
    const Table many = tableOf(1000, 8);
    view.setTable(many, DataTableView::Places::dropped);
    clickOn(0, 0);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(view.currentIndex(), view.model()->index(999, 8));
    EXPECT_TRUE(view.viewport()->rect().intersects(cell(999, 8)));
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(view.currentIndex(), view.model()->index(0, 0));
    press(Qt::Key_PageDown);
    EXPECT_GT(view.currentIndex().row(), 5);
}

// Reloads

TEST_F(DataTableViewTest, keepsSelectionAndPlaceOverAReload) {
    const Table many = tableOf(1000, 30);
    view.setTable(many, DataTableView::Places::dropped);
    view.horizontalScrollBar()->setValue(333);
    view.verticalScrollBar()->setValue(5005);
    clickOn(240, 6);
    const int x = view.horizontalScrollBar()->value();
    const int y = view.verticalScrollBar()->value();
    const Table longer = tableOf(1100, 30);
    view.setTable(longer, DataTableView::Places::kept);
    runWhatWaits();
    EXPECT_EQ(view.horizontalScrollBar()->value(), x);
    EXPECT_EQ(view.verticalScrollBar()->value(), y);
    EXPECT_EQ(view.currentIndex(), view.model()->index(240, 6));
    EXPECT_TRUE(view.selectionModel()->isSelected(view.currentIndex()));
    const Table shorter = tableOf(10, 2);
    view.setTable(shorter, DataTableView::Places::kept);
    runWhatWaits();
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    view.setTable(many, DataTableView::Places::dropped);
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
    EXPECT_FALSE(view.selectionModel()->hasSelection());
}

TEST_F(DataTableViewTest, paintsWhileItsTableIsGone) {
    table.reset();
    EXPECT_FALSE(view.grab().isNull());
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
}

TEST_F(DataTableViewTest, takesTwentyThousandColumnsAndNone) {
    const Table wide = tableOf(3, 20'000);
    view.setTable(wide, DataTableView::Places::dropped);
    runWhatWaits();
    EXPECT_EQ(view.model()->columnCount(), 20'001);
    EXPECT_GE(columnWidth(20'000), view.fontMetrics().horizontalAdvance(QStringLiteral("Column 19999")));
    clickOn(0, 0);
    press(Qt::Key_End);
    EXPECT_EQ(view.currentIndex().column(), 20'000);
    EXPECT_FALSE(view.grab().isNull());
    const Table none = tableOf(std::vector<std::string>{}, {});
    view.setTable(none, DataTableView::Places::kept);
    runWhatWaits();
    EXPECT_EQ(view.model()->columnCount(), 1);
    EXPECT_FALSE(view.grab().isNull());
}

TEST_F(DataTableViewTest, takesAHundredThousandRows) {
    const Table tall = tableOf(100'000, 5);
    view.setTable(tall, DataTableView::Places::dropped);
    runWhatWaits();
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    EXPECT_GE(view.rowAt(view.viewport()->height() - 2), 99'998);
    EXPECT_FALSE(view.grab().isNull());
}

TEST_F(DataTableViewTest, standsFromRightToLeftWhereTheUserReadsSo) {
    view.setLayoutDirection(Qt::RightToLeft);
    runWhatWaits();
    EXPECT_GT(cell(0, 0).left(), cell(0, 1).left());
    EXPECT_FALSE(view.grab().isNull());
}

TEST_F(DataTableViewTest, followsTheFont) {
    const int before = cell(0, 0).height();
    const int width = columnWidth(1);
    QFont larger = view.font();
    larger.setPointSizeF(larger.pointSizeF() * 2);
    view.setFont(larger);
    runWhatWaits();
    EXPECT_GT(cell(0, 0).height(), before);
    EXPECT_GT(columnWidth(1), width);
}

}  // namespace
}  // namespace quorvel
