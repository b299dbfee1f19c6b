#include "DataTab/DataViewTest.h"

#include <QAbstractItemView>
#include <QApplication>

namespace quorvel {
namespace {

class ColumnsSectionTest : public DataViewTest {};

TEST_F(ColumnsSectionTest, saysInItsFooterHowColumnsAreUsed) {
    const auto* footer = find<QLabel>(
        view, QStringLiteral("Which column feeds each field. Matched by name when the spreadsheet is read; any column "
                             "can also be used directly in a layer as {{Column Name}}."));
    ASSERT_TRUE(footer);
    EXPECT_EQ(footer->textFormat(), Qt::RichText) << "what is typed as it stands is told by its letters";
}

TEST_F(ColumnsSectionTest, setsTheColumnOfEachField) {
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

TEST_F(ColumnsSectionTest, choosesAColumnFromTheOpenList) {
    open("cards.csv", plainDeck);
    Picker* art = picker("Art");
    QTest::mouseClick(art, Qt::LeftButton);
    ASSERT_TRUE(art->view()->isVisible());
    const QModelIndex flavor = art->model()->index(8, 0);
    QTest::mouseMove(art->view()->viewport(), art->view()->visualRect(flavor).center());
    QTest::keyClick(art->view(), Qt::Key_End);
    QTest::keyClick(art->view(), Qt::Key_Return);
    EXPECT_EQ(mapped(Field::art), "Flavor");
}

TEST_F(ColumnsSectionTest, leavesTheMappingAloneWhenItOnlyShowsIt) {
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

TEST_F(ColumnsSectionTest, doesNotTurnAPickerByTheWheelInPassing) {
    open("cards.csv", plainDeck);
    table()->setFocus();
    Picker* title = picker("Title");
    const QPointF place(title->width() / 2.0, title->height() / 2.0);
    QWheelEvent wheel(place, title->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(title, &wheel);
    EXPECT_EQ(mapped(Field::title), "Name");
}

}  // namespace
}  // namespace quorvel
