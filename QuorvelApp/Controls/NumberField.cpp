#include "Controls/NumberField.h"

#include "Controls/Style.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <cmath>

namespace quorvel {

namespace {

constexpr int fieldWidth = 70;
constexpr int mostDecimals = 2;

/// Whether the text begins with a hyphen or a minus sign.
bool isMinus(const QString& text) {
    return text.startsWith(u'-') || text.startsWith(u'\u2212');
}

}  // namespace

NumberField::NumberField(const QString& title, const QString& unit, QWidget* parent)
    : QWidget(parent), field_(new QLineEdit) {
    field_->setFixedWidth(fieldWidth);
    field_->setAlignment(Qt::AlignRight);
    field_->setAccessibleName(title);
    field_->setAccessibleDescription(unit);
    field_->setText(print(value_, locale()));
    field_->setAcceptDrops(false);  // what is dropped is a file for the window
    field_->installEventFilter(this);
    connect(field_, &QLineEdit::editingFinished, this, &NumberField::commit);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::tight);
    row->addWidget(field_);
    if (!unit.isEmpty()) {
        auto* label = new QLabel(unit);
        // Fields below each other stand in line, whatever their units.
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QLatin1String("mm")));
        Style::makeSecondary(label);
        row->addWidget(label);
    }

    setAccessibleName(title);
    setFocusProxy(field_);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void NumberField::setValue(double value) {
    if (value == value_ && isTyping()) return;
    value_ = value;
    restore();
}

void NumberField::restore() {
    // Setting the same text again would lose the selection.
    if (const QString shown = print(value_, locale()); field_->text() != shown) field_->setText(shown);
    field_->setModified(false);
}

std::optional<double> NumberField::parse(const QString& text, const QLocale& locale) {
    // Signs are read here: some locales print one with marks of direction that they don't read back, and every keyboard
    // has only the hyphen.
    QString digits = text;
    digits.removeIf([](QChar character) { return character.category() == QChar::Other_Format; });
    digits = digits.trimmed();
    const bool isNegative = isMinus(digits);
    if (isNegative) digits.remove(0, 1);
    if (isMinus(digits) || (isNegative && digits.startsWith(u'+'))) return std::nullopt;

    bool isNumber = false;
    const double value = locale.toDouble(digits, &isNumber);
    if (!isNumber || !std::isfinite(value)) return std::nullopt;
    return isNegative ? -value : value;
}

QString NumberField::print(double value, const QLocale& locale) {
    if (!std::isfinite(value)) return {};
    const QString digits = QString::number(value, 'f', mostDecimals);
    int decimals = mostDecimals;
    while (decimals > 0 && digits[digits.size() - 1 - (mostDecimals - decimals)] == u'0') --decimals;
    const bool isZero = decimals == 0 && std::abs(value) < 0.5;  // which may have a sign
    return locale.toString(isZero ? 0.0 : value, 'f', decimals);
}

bool NumberField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);

    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape && isTyping()) {
        key->accept();
        if (event->type() == QEvent::KeyPress) {
            restore();
            field_->selectAll();
        }
        return true;
    }
    // The field would keep these keys to itself even with nothing of its own to take back.
    if (event->type() == QEvent::ShortcutOverride &&
        ((key->matches(QKeySequence::Undo) && !field_->isUndoAvailable()) ||
         (key->matches(QKeySequence::Redo) && !field_->isRedoAvailable()))) {
        key->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void NumberField::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LocaleChange) restore();
}

void NumberField::commit() {
    const QString text = field_->text().trimmed();
    // The text that is shown stands for the whole value, with the decimals that aren't.
    const bool isNew = isTyping() && text != print(value_, locale());
    const double typed = isNew ? parse(text, locale()).value_or(value_) : value_;
    restore();
    if (typed != value_) Q_EMIT valueEdited(typed);
    if (field_->hasFocus()) field_->selectAll();
}

bool NumberField::isTyping() const {
    return field_->isModified();
}

}  // namespace quorvel
