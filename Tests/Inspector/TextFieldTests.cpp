#include "Inspector/TextField.h"
#include "Support/Widgets/WindowTest.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <utility>

namespace quorvel {

namespace {

class TextFieldTest : public WindowTest {};

}  // namespace

TEST_F(TextFieldTest, FollowsTheModelWithoutMovingTheCursorAway) {
    TextField field("Name");
    field.setShown("abc");
    EXPECT_EQ(field.cursorPosition(), 0);  // so that the beginning of a long text is seen
    show(field, {200, 30});
    field.activateWindow();
    field.setFocus();
    field.setCursorPosition(2);
    field.setShown("abc");
    EXPECT_EQ(field.cursorPosition(), 2);
    field.setShown("aXYbc");
    EXPECT_EQ(field.cursorPosition(), 3);
}

TEST_F(TextFieldTest, SpeaksOfTheUsersChangesOnly) {
    TextField field("Name");
    QStringList changes;
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&](const QString& text) { changes += text; });
    field.setShown("abc");
    EXPECT_EQ(changes, QStringList());
    QTest::keyClicks(&field, "x");
    // As a screen reader does for its user.
    QAccessible::queryAccessibleInterface(&field)->setText(QAccessible::Value, "dictated");
    EXPECT_EQ(changes, QStringList({"xabc", "dictated"}));
}

TEST_F(TextFieldTest, WhatIsPastedBecomesOneLine) {
    // A cell that is copied from a spreadsheet ends its line.
    const struct {
        const char* pasted;
        const char* line;
        int cursor;
    } cases[] = {
        {"Fruit\n", "Fruit", 5},         {"Fruit\r\n", "Fruit", 5}, {"a\nb", "a b", 3},
        {"a\r\nb\rc", "a b c", 5},       {"\n\n", "", 0},           {"a\u2028b\u2029", "a b", 3},
        {"a\tb\u00a0", "a\tb\u00a0", 4},
    };
    for (const auto& each : cases) {
        TextField field("Value");
        QStringList changes;
        QObject::connect(&field, &QLineEdit::textChanged, &field, [&](const QString& text) { changes += text; });
        QApplication::clipboard()->setText(QString::fromUtf8(each.pasted));
        field.paste();
        const QString line = QString::fromUtf8(each.line);
        EXPECT_EQ(field.text(), line);
        EXPECT_EQ(field.cursorPosition(), each.cursor) << each.line;
        EXPECT_EQ(changes.join("; "), line);
    }
}

TEST_F(TextFieldTest, PastingBetweenWordsLeavesTheCursorBehindWhatIsNew) {
    TextField field("Name");
    field.setShown("ab");
    field.setCursorPosition(1);
    QApplication::clipboard()->setText("x\r\ny\r\nz");
    field.paste();
    EXPECT_EQ(field.text(), "ax y zb");
    EXPECT_EQ(field.cursorPosition(), 6);
}

TEST_F(TextFieldTest, LinesOfTheModelAreShownWithoutAChange) {
    TextField field("Name");
    int changes = 0;
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&] { ++changes; });
    show(field, {200, 30});
    field.activateWindow();
    field.setFocus();
    field.setShown("a\nb\n");
    EXPECT_EQ(field.text(), "a b");
    field.setCursorPosition(1);
    field.setShown("a\nb\n");
    EXPECT_EQ(field.cursorPosition(), 1);
    EXPECT_EQ(changes, 0);
}

TEST_F(TextFieldTest, NothingOfALongTextIsCutOff) {
    const QString words(100'000, 'x');
    TextField field("Name");
    QStringList changes;
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&](const QString& text) { changes += text; });
    QApplication::clipboard()->setText(words);
    field.paste();
    EXPECT_EQ(changes, QStringList(words));
    field.setShown(words + "y");
    QTest::keyClick(&field, Qt::Key_Home);
    QTest::keyClicks(&field, "z");
    EXPECT_EQ(changes.last(), "z" + words + "y");
}

TEST_F(TextFieldTest, FilesAreLeftToTheWindow) {
    TextField field("Name");
    for (const auto& [urls, isTaken] : {std::pair{QList<QUrl>(), true},
                                        {{QUrl("https://example.org")}, true},
                                        {{QUrl::fromLocalFile("/cards.csv")}, false}}) {
        QMimeData data;
        data.setText("words");
        if (!urls.isEmpty()) data.setUrls(urls);
        QDragEnterEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&field, &event);
        EXPECT_EQ(event.isAccepted(), isTaken);
    }
}

}  // namespace quorvel
