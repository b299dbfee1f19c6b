#include "Controls/WrappingCheckBox.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace quorvel {

WrappingCheckBox::WrappingCheckBox(const QString& title, QWidget* parent) : QCheckBox(title, parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize WrappingCheckBox::minimumSizeHint() const {
    const int widestWord = titleSize(1).width();
    return {boxWidth() + widestWord, sizeHint().height()};
}

int WrappingCheckBox::heightForWidth(int width) const {
    if (width >= sizeHint().width()) return sizeHint().height();
    return std::max(sizeHint().height(), titleSize(width - boxWidth()).height());
}

void WrappingCheckBox::paintEvent(QPaintEvent* event) {
    if (width() >= sizeHint().width()) return QCheckBox::paintEvent(event);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect title = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);
    option.text.clear();
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_CheckBox, option);
    painter.drawItemText(title, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextWordWrap, palette(), isEnabled(), text(),
                         QPalette::WindowText);
}

QSize WrappingCheckBox::titleSize(int width) const {
    return fontMetrics().boundingRect(QRect(0, 0, std::max(width, 1), 0), Qt::TextWordWrap, text()).size();
}

int WrappingCheckBox::boxWidth() const {
    return sizeHint().width() - fontMetrics().horizontalAdvance(text());
}

}  // namespace quorvel
