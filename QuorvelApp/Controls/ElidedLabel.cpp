#include "Controls/ElidedLabel.h"

#include "Controls/Wording.h"

#include <QEvent>
#include <QPainter>
#include <QTextDocument>

namespace quorvel {

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QWidget(parent), mode_(mode) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
    // One line, whatever the text has.
    QString line = text;
    line.replace(u'\n', u' ').replace(QChar::LineSeparator, u' ').replace(QChar::ParagraphSeparator, u' ');
    if (line == text_) return;
    text_ = line;
    setAccessibleName(text_);
    updateGeometry();
    showWholeWhenCut();
    update();
}

void ElidedLabel::setColor(const QColor& color) {
    if (color == color_) return;
    color_ = color;
    update();
}

QSize ElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_) + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("…")), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(color_.isValid() && isEnabled() ? color_ : palette().color(foregroundRole()));
    painter.drawText(rect(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text_, mode_, width()));
}

void ElidedLabel::resizeEvent(QResizeEvent*) {
    showWholeWhenCut();
}

void ElidedLabel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        showWholeWhenCut();
    }
    QWidget::changeEvent(event);
}

void ElidedLabel::showWholeWhenCut() {
    const bool cut = fontMetrics().horizontalAdvance(text_) > width();
    // As rich text, whatever it looks like: only that is broken into lines.
    setToolTip(cut ? Qt::convertFromPlainText(breakable(text_), Qt::WhiteSpaceNormal) : QString());
}

}  // namespace quorvel
