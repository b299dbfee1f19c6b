#include "Inspector/ContentEditor.h"

#include "Controls/Style.h"
#include "Inspector/FileDrags.h"
#include "Inspector/LineBreaks.h"
#include "Inspector/TextChange.h"
#include "Inspector/UndoKeys.h"

#include <QAbstractTextDocumentLayout>
#include <QDragEnterEvent>
#include <QFontDatabase>
#include <QTextBlock>
#include <algorithm>
#include <cmath>

namespace quorvel {

namespace {

constexpr int lowest = 60;
constexpr int highest = 120;
constexpr int narrowest = 120;

}  // namespace

ContentEditor::ContentEditor(QWidget* parent) : QPlainTextEdit(parent) {
    setAccessibleName(QStringLiteral("Content"));
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);  // its corners would lie on those of the frame
    document()->setDocumentMargin(Style::tight + Style::hair);
    wearFont();
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            [this] { updateGeometry(); });
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        // It is also told of what changes no text, as words that an input method is still composing.
        const QString now = content();
        if (now == shown_) return;
        shown_ = now;
        Q_EMIT contentEdited(now);
    });
}

void ContentEditor::setShown(const QString& text) {
    const QString wanted = LineBreaks::asLineFeeds(text);
    if (wanted == shown_) return;
    const TextChange change = TextChange::between(shown_, wanted);
    shown_ = wanted;
    QTextCursor cursor(document());
    cursor.setPosition(int(change.start));
    cursor.setPosition(int(change.start + change.removed), QTextCursor::KeepAnchor);
    cursor.insertText(change.inserted);
}

QString ContentEditor::content() const {
    // Unlike its plain text, it keeps spaces that don't break.
    return LineBreaks::asLineFeeds(document()->toRawText());
}

QSize ContentEditor::sizeHint() const {
    const double lines = document()->documentLayout()->documentSize().height();
    const double height =
        std::ceil(lines * QFontMetricsF(font()).lineSpacing() + 2 * document()->documentMargin()) + 2 * frameWidth();
    return {QPlainTextEdit::sizeHint().width(), int(std::clamp(height, double(lowest), double(highest)))};
}

QSize ContentEditor::minimumSizeHint() const {
    return {narrowest, lowest};
}

bool ContentEditor::event(QEvent* event) {
    return leaveToUndo(*event) ? false : QPlainTextEdit::event(event);
}

void ContentEditor::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange) wearFont();
}

void ContentEditor::dragEnterEvent(QDragEnterEvent* event) {
    if (bringsFiles(*event)) return event->ignore();
    QPlainTextEdit::dragEnterEvent(event);
}

void ContentEditor::wearFont() {
    QFont font = Style::font(Style::TextSize::body);
    font.setFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    font.setFixedPitch(true);
    setFont(font);
}

}  // namespace quorvel
