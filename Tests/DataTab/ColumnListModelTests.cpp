#include "DataTab/ColumnListModel.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(ColumnListModel, startsWithNone) {
    ColumnListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_TRUE(model.setHeaders({"Name", "None", "a\nb"}));
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.index(0).data().toString(), QStringLiteral("None"));
    EXPECT_EQ(model.index(2).data().toString(), QStringLiteral("None"));
    EXPECT_EQ(model.index(3).data().toString(), QStringLiteral("a b"));
}

TEST(ColumnListModel, findsColumns) {
    ColumnListModel model;
    model.setHeaders({"Name", "None"});
    EXPECT_EQ(model.indexOf(""), 0);
    EXPECT_EQ(model.indexOf("Name"), 1);
    EXPECT_EQ(model.indexOf("None"), 2);
    EXPECT_EQ(model.indexOf("name"), -1);
    EXPECT_EQ(model.columnAt(0), "");
    EXPECT_EQ(model.columnAt(2), "None");
    EXPECT_EQ(model.columnAt(3), "");
    EXPECT_EQ(model.columnAt(-1), "");
}

TEST(ColumnListModel, tellsWhetherTheHeadersAreOthers) {
    ColumnListModel model;
    EXPECT_FALSE(model.setHeaders({}));
    EXPECT_TRUE(model.setHeaders({"Name"}));
    EXPECT_FALSE(model.setHeaders({"Name"}));
    EXPECT_TRUE(model.setHeaders({}));
}

}  // namespace
}  // namespace quorvel
