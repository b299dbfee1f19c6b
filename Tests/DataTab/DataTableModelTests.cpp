#include "DataTab/DataTableModel.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quorvel {
namespace {

std::shared_ptr<const DataTable> table(std::size_t rows, std::size_t columns, const std::string& cell = "cell") {
    std::vector<std::string> headers;
    for (std::size_t column = 0; column < columns; ++column) headers.push_back("Column " + std::to_string(column));
    TextRows cells;
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column)
            cells.appendCell(cell + " " + std::to_string(row) + "." + std::to_string(column));
        cells.endRow();
    }
    return std::make_shared<const DataTable>(std::move(headers), std::move(cells), "cards.csv");
}

class DataTableModelTest : public testing::Test {
protected:
    DataTableModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Warning};

    QString shown(int row, int column) { return model.index(row, column).data().toString(); }
    QString header(int column) { return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(); }
};

TEST_F(DataTableModelTest, isEmptyWithoutATable) {
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
    model.replace(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_TRUE(model.shows(nullptr));
}

TEST_F(DataTableModelTest, putsTheRowNumbersInFrontOfTheCells) {
    const auto numbered = std::make_shared<const DataTable>(std::vector<std::string>{"Name", "Text"},
                                                            TextRows{{"Pear", "a\nb"}, {"Plum"}}, "cards.csv",
                                                            std::vector<std::int64_t>{4, 70'000});
    model.replace(numbered);
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.columnCount(), 3);
    EXPECT_EQ(header(0), QStringLiteral("Row"));
    EXPECT_EQ(header(1), QStringLiteral("Name"));
    EXPECT_EQ(shown(0, 0), QStringLiteral("4"));
    EXPECT_EQ(shown(1, 0), QStringLiteral("70000"));
    EXPECT_EQ(shown(0, 2), QStringLiteral("a b"));
    EXPECT_EQ(shown(1, 2), QString());
    EXPECT_EQ(model.index(0, 2).data(Qt::AccessibleTextRole).toString(), QStringLiteral("a\nb"));
    EXPECT_EQ(model.index(1, 2).data(Qt::AccessibleTextRole).toString(), QStringLiteral("empty"));
    EXPECT_FALSE(model.headerData(9, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.headerData(-1, Qt::Vertical, Qt::DisplayRole).isValid());
}

TEST_F(DataTableModelTest, sharesTheTableWithoutKeepingItAlive) {
    auto shared = table(3, 2);
    model.replace(shared);
    EXPECT_EQ(shared.use_count(), 1);
    EXPECT_TRUE(model.shows(shared));
    shared.reset();
    EXPECT_FALSE(model.shows(nullptr));
    EXPECT_EQ(model.table(), nullptr);
    EXPECT_EQ(shown(0, 1), QString());
    EXPECT_EQ(header(1), QString());
    EXPECT_EQ(model.rowCount(), 3);
    const auto next = table(1, 2, "next");
    model.reload(next);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(shown(0, 1), QStringLiteral("next 0.0"));
}

// From every shape to every other: what is selected and named by an index stays, as far as it still exists.
TEST_F(DataTableModelTest, keepsPlacesOverAReload) {
    struct Shape {
        std::size_t rows, columns;
    };
    for (const Shape before : {Shape{0, 0}, {0, 3}, {4, 2}, {9, 5}})
        for (const Shape after : {Shape{0, 0}, {0, 3}, {4, 2}, {9, 5}, {5, 9}}) {
            const auto old = table(before.rows, before.columns);
            const auto now = table(after.rows, after.columns, "now");
            model.replace(old);
            QItemSelectionModel selection(&model);
            selection.select({model.index(1, 0), model.index(2, 1)}, QItemSelectionModel::Select);
            const bool wasSelected = selection.hasSelection();
            model.reload(now);
            EXPECT_EQ(model.rowCount(), int(after.rows));
            EXPECT_EQ(model.columnCount(), int(after.columns) + 1);
            EXPECT_EQ(selection.hasSelection(), wasSelected && after.rows >= 2);
            if (after.rows > 0 && after.columns > 0) {
                EXPECT_EQ(shown(int(after.rows) - 1, 1), QStringLiteral("now %1.0").arg(after.rows - 1));
            }
        }
    model.reload(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
}

TEST_F(DataTableModelTest, forgetsPlacesForAnotherSpreadsheet) {
    const auto old = table(4, 2);
    const auto other = table(4, 2, "other");
    model.replace(old);
    const QPersistentModelIndex place(model.index(1, 1));
    model.replace(other);
    EXPECT_FALSE(place.isValid());
}

}  // namespace
}  // namespace quorvel
