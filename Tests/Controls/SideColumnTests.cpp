#include "Controls/SideColumn.h"
#include "Support/Widgets/WindowTest.h"

namespace quorvel {
namespace {

class SideColumnTest : public WindowTest {
protected:
    QWidget* column = new QWidget;
    QWidget* rest = new QWidget;
    SideColumn columns{column, {.least = 100, .ideal = 150, .most = 200}, rest, 300};
};

}  // namespace

TEST_F(SideColumnTest, ItIsTheRestThatGrowsWithTheWindow) {
    show(columns, {700, 400});
    EXPECT_EQ(column->width(), 150);
    columns.resize(1200, 400);
    settle();
    EXPECT_EQ(column->width(), 150);
    EXPECT_EQ(rest->width(), 1200 - 150 - columns.handleWidth());
}

TEST_F(SideColumnTest, KeepsBothWithinTheirWidths) {
    show(columns, {900, 400});
    for (const int wanted : {0, 20, 150, 500, 899}) {
        columns.setSizes({wanted, 900 - wanted});
        settle();
        EXPECT_GE(column->width(), 100);
        EXPECT_LE(column->width(), 200);
    }
    EXPECT_EQ(columns.minimumSizeHint().width(), 100 + 300 + columns.handleWidth());
}

}  // namespace quorvel
