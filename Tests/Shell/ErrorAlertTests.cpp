#include "Shell/Alert.h"
#include "Shell/ErrorAlert.h"
#include "Shell/ShellTest.h"

#include <QAccessible>
#include <QPushButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class ErrorAlertTest : public ShellTest {
protected:
    Alert* alert() const { return dialog<Alert>(); }
    std::string said() const { return alert() ? words(*alert()).toStdString() : ""; }
    std::string expected() const { return "Something went wrong\n" + *model.state()._error; }
    /// An export of a deck without cards.
    void makeError() {
        if (!model.currentProject()) model.newDeck(SampleTemplates::Kind::classic, "Empty");
        model.export_(ExportKind::sheets);
    }
};

TEST_F(ErrorAlertTest, TheErrorIsItsMessage) {
    EXPECT_EQ(alert(), nullptr);
    makeError();
    ASSERT_TRUE(model.state()._error);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(said(), expected());
    EXPECT_EQ(alert()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(alert()->findChildren<QPushButton*>().size(), 1);
    EXPECT_THAT(unnamedControls(*alert()), testing::IsEmpty());
}

TEST_F(ErrorAlertTest, ItIsAnAlertToScreenReaders) {
    makeError();
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(alert());
    EXPECT_EQ(accessible->role(), QAccessible::AlertMessage);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Something went wrong");
    EXPECT_EQ(accessible->text(QAccessible::Description), text(*model.state()._error));
}

TEST_F(ErrorAlertTest, ItStaysUntilItIsClosed) {
    makeError();
    settle(std::chrono::hours(1));
    EXPECT_NE(alert(), nullptr);
    click(find<QPushButton>(*alert(), "OK"));
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(model.state()._error, std::nullopt);
}

TEST_F(ErrorAlertTest, ReturnAndEscapeCloseIt) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        makeError();
        ASSERT_NE(alert(), nullptr);
        QTest::keyClick(alert(), key);
        EXPECT_EQ(alert(), nullptr);
        EXPECT_EQ(model.state()._error, std::nullopt);
    }
}

TEST_F(ErrorAlertTest, ASecondErrorTakesThePlaceOfTheFirst) {
    makeError();
    const Alert* before = alert();
    model.useSpreadsheet(desktop.folder / "not there.csv");
    settle();
    EXPECT_EQ(alert(), before);
    EXPECT_EQ(said(), expected());
}

TEST_F(ErrorAlertTest, AnErrorThatWentByItselfTakesItsAlertAlong) {
    makeError();
    model.clearError();
    EXPECT_EQ(alert(), nullptr);
}

}  // namespace
}  // namespace quorvel
