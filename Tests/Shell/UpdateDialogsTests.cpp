#include "Shell/Alert.h"
#include "Shell/UpdateDialogs.h"
#include "Shell/UpdaterBrowser.h"
#include "Shell/UpdaterTest.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest/QTest>

namespace quorvel {
namespace {

/// The dialogs on the screen.
class UpdateDialogsTests : public UpdaterTests {
protected:
    template <class Widget>
    static Widget* shown() {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (auto* widget = qobject_cast<Widget*>(each); widget && widget->isVisible()) return widget;
        return nullptr;
    }

    void open(const Answer& answer) {
        server.answer = [answer](const Request&) { return answer; };
        use(server.address());
        dialogs = std::make_unique<UpdateDialogs>(*updater, [] { return nullptr; });
    }

    static QPushButton* button(QDialog* dialog, const QString& name) {
        for (QPushButton* each : dialog->findChildren<QPushButton*>())
            if (each->text().remove('&') == name) return each;
        return nullptr;
    }

    static QStringList words(const Alert& alert) {
        QStringList words;
        for (const QLabel* each : alert.findChildren<QLabel*>()) words << each->text();
        return words;
    }

    std::unique_ptr<UpdateDialogs> dialogs;
};

TEST_F(UpdateDialogsTests, SayThatThisIsTheNewestVersion) {
    open(UpdaterServer::status(404));
    updater->checkForUpdates();
    finish();
    auto* alert = shown<Alert>();
    ASSERT_TRUE(alert);
    EXPECT_EQ(words(*alert), QStringList({"You’re up to date",
                                          "Quorvel 0.1.0 is the newest version. Quorvel checks for updates on its own "
                                          "and will let you know when there’s a new one."}));
    EXPECT_TRUE(alert->isModal());
    ASSERT_EQ(alert->findChildren<QPushButton*>().size(), 1);
    QTest::mouseClick(button(alert, "OK"), Qt::LeftButton);
    EXPECT_FALSE(shown<Alert>());
}

TEST_F(UpdateDialogsTests, SayThatItCouldNotCheck) {
    open(UpdaterServer::status(500));
    updater->checkForUpdates();
    finish();
    auto* alert = shown<Alert>();
    ASSERT_TRUE(alert);
    EXPECT_EQ(words(*alert), QStringList({"Couldn’t check for updates",
                                          "Check your internet connection and try again. Quorvel also checks on its "
                                          "own about once a day."}));
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_FALSE(shown<Alert>());
}

TEST_F(UpdateDialogsTests, ShowWhatIsNewAsPlainTextAndOpenTheDownload) {
    open(UpdaterServer::status(200, "", newer));
    updater->checkForUpdates();
    finish();
    auto* dialog = shown<QDialog>();
    ASSERT_TRUE(dialog);
    EXPECT_FALSE(dialog->isModal());
    auto* notes = dialog->findChild<QPlainTextEdit*>();
    ASSERT_TRUE(notes);
    EXPECT_EQ(notes->toPlainText(), "<b>New</b>");
    EXPECT_TRUE(notes->isReadOnly());
    EXPECT_FALSE(notes->accessibleName().isEmpty());

    UpdaterBrowser browser;
    QDesktopServices::setUrlHandler("https", &browser, "open");
    ASSERT_TRUE(button(dialog, "Download…"));
    QTest::mouseClick(button(dialog, "Download…"), Qt::LeftButton);
    QDesktopServices::unsetUrlHandler("https");
    EXPECT_EQ(browser.opened, std::vector{QUrl("https://example.org/0.2")});
    EXPECT_FALSE(shown<QDialog>());
}

TEST_F(UpdateDialogsTests, LaterLeavesItAtThat) {
    open(UpdaterServer::status(200, "", newer));
    updater->checkDaily();
    scheduler.advance(Updater::afterStart);
    finish();
    auto* dialog = shown<QDialog>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->testAttribute(Qt::WA_ShowWithoutActivating));
    QTest::mouseClick(button(dialog, "Later"), Qt::LeftButton);
    EXPECT_FALSE(shown<QDialog>());
}

TEST_F(UpdateDialogsTests, ThereIsOneAtATime) {
    open(UpdaterServer::status(200, "", newer));
    for (int i = 0; i < 3; ++i) {
        updater->checkForUpdates();
        finish();
    }
    int count = 0;
    for (QWidget* each : QApplication::topLevelWidgets()) count += qobject_cast<QDialog*>(each) ? 1 : 0;
    EXPECT_EQ(count, 1);
    dialogs.reset();
    EXPECT_FALSE(shown<QDialog>());
}

}  // namespace
}  // namespace quorvel
