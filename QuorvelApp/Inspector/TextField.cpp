#include "Inspector/TextField.h"

#include "Inspector/FileDrags.h"
#include "Inspector/LineBreaks.h"
#include "Inspector/TextChange.h"
#include "Inspector/UndoKeys.h"

#include <QDragEnterEvent>
#include <QSignalBlocker>
#include <QValidator>
#include <algorithm>
#include <limits>

namespace quorvel {

namespace {

constexpr int fewestCharacters = 6;

/// The one place that all that is typed, pasted and dropped passes.
class OneLine : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& position) const override {
        const QString line = LineBreaks::asOneLine(text);
        position = int(std::min(LineBreaks::asBlanks(text.left(position)).size(), line.size()));
        text = line;
        return Acceptable;
    }
};

}  // namespace

TextField::TextField(const QString& title, QWidget* parent) : QLineEdit(parent) {
    setAccessibleName(title);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumWidth(fewestCharacters * fontMetrics().averageCharWidth());
    setMaxLength(std::numeric_limits<int>::max());
    setValidator(new OneLine(this));
}

void TextField::setShown(const QString& text) {
    const QString line = LineBreaks::asOneLine(text);
    if (line == this->text()) return;
    const TextChange change = TextChange::between(this->text(), line);
    const QSignalBlocker shown(this);
    setText(line);
    setCursorPosition(hasFocus() ? int(change.end()) : 0);
}

bool TextField::event(QEvent* event) {
    return leaveToUndo(*event) ? false : QLineEdit::event(event);
}

void TextField::dragEnterEvent(QDragEnterEvent* event) {
    if (bringsFiles(*event)) return event->ignore();
    QLineEdit::dragEnterEvent(event);
}

}  // namespace quorvel
