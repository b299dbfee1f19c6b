#include "Controls/Style.h"
#include "Inspector/ContentEditor.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QFontInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QUrl>

namespace quorvel {

namespace {

class ContentEditorTest : public WindowTest {
protected:
    ContentEditor editor;
    QStringList edits;

    ContentEditorTest() {
        QObject::connect(&editor, &ContentEditor::contentEdited, &editor, [this](const QString& now) { edits += now; });
    }
};

}  // namespace

TEST_F(ContentEditorTest, ShowingATextIsNoEdit) {
    editor.setShown("a\nb");
    editor.setShown("");
    editor.setShown("a\u00a0b");
    EXPECT_EQ(editor.content(), "a\u00a0b");
    EXPECT_EQ(edits, QStringList());
}

TEST_F(ContentEditorTest, EveryLineBreakIsOne) {
    for (const char* text : {"a\nb", "a\rb", "a\r\nb", "a\u2028b", "a\u2029b"}) {
        editor.setShown(QString::fromUtf8(text));
        EXPECT_EQ(editor.content(), "a\nb");
    }
    show(editor, {200, 100});
    editor.moveCursor(QTextCursor::End);
    QTest::keyClick(&editor, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(edits, QStringList({"a\nb\n"}));
}

TEST_F(ContentEditorTest, TheTabKeyLeavesIt) {
    QWidget form;
    editor.setParent(&form);
    QLineEdit next(&form);
    show(form, {200, 100});
    editor.setFocus();
    QTest::keyClick(&editor, Qt::Key_Tab);
    EXPECT_TRUE(next.hasFocus());
    EXPECT_EQ(edits, QStringList());
    editor.setParent(nullptr);
}

TEST_F(ContentEditorTest, WhatIsPastedIsPlain) {
    auto* data = new QMimeData;
    data->setHtml("<b>bold</b>");
    data->setText("bold");
    QApplication::clipboard()->setMimeData(data);
    editor.paste();
    EXPECT_EQ(edits, QStringList({"bold"}));
}

TEST_F(ContentEditorTest, NoCharacterIsLostOrTakenForAnEdit) {
    for (int code = 0; code < 0x10000; ++code) {
        // Beyond western letters only what documents mean something by.
        if (code >= 0x250 && !(code >= 0x2000 && code < 0x2070) && !(code >= 0xfdd0 && code < 0xfdf0) && code < 0xfff0)
            continue;
        const QChar character(static_cast<char16_t>(code));
        const QString shown = QString("a") + character + "b";
        editor.setShown(shown);
        const QString now = editor.content();
        if (now != shown) {
            EXPECT_EQ(now, "a\nb") << code;
        }
        editor.setShown("");
    }
    EXPECT_EQ(edits, QStringList());
}

TEST_F(ContentEditorTest, FilesAreLeftToTheWindow) {
    show(editor, {200, 100});
    for (const bool isFile : {false, true}) {
        QMimeData data;
        data.setText("words");
        if (isFile) data.setUrls({QUrl::fromLocalFile("/cards.csv")});
        QDragEnterEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(editor.viewport(), &event);
        EXPECT_EQ(event.isAccepted(), !isFile);
    }
}

TEST_F(ContentEditorTest, TheCursorStaysWhereTheUserIs) {
    editor.setShown("one two three");
    QTextCursor cursor = editor.textCursor();
    cursor.setPosition(7);
    editor.setTextCursor(cursor);
    editor.setShown("one two three four");
    EXPECT_EQ(editor.textCursor().position(), 7);
    editor.setShown("zero one two three four");
    EXPECT_EQ(editor.textCursor().position(), 12);
}

TEST_F(ContentEditorTest, TheKeyboardIsSeenInIt) {
    QWidget form;
    editor.setParent(&form);
    editor.resize(200, 60);
    show(form, {200, 100});
    form.activateWindow();
    editor.clearFocus();
    const auto edge = [this] { return editor.grab().toImage().pixelColor(100, 0); };
    EXPECT_NE(edge(), Style::accent(editor.palette()));
    editor.setFocus();
    EXPECT_EQ(edge(), Style::accent(editor.palette()));
    editor.clearFocus();
    EXPECT_NE(edge(), Style::accent(editor.palette()));
    editor.setParent(nullptr);
}

TEST_F(ContentEditorTest, ItsLettersAreThoseOfATypewriter) {
    EXPECT_TRUE(QFontInfo(editor.font()).fixedPitch());
}

}  // namespace quorvel
