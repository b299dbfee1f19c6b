#include "Inspector/MenuButton.h"

#include "Controls/QuietShapes.h"
#include "Controls/Style.h"

#include <QMenu>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace quorvel {

namespace {

constexpr int chevronWidth = 10;
constexpr int besideTitle = 2 * Style::medium + Style::small + chevronWidth;

}  // namespace

MenuButton::MenuButton(const QString& title, QMenu* menu, QWidget* parent) : QPushButton(title, parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMenu(menu);
}

QSize MenuButton::sizeHint() const {
    const int width = titleSize(QWIDGETSIZE_MAX).width() + besideTitle;
    return {width, heightForWidth(width)};
}

QSize MenuButton::minimumSizeHint() const {
    return {titleSize(1).width() + besideTitle, QPushButton::sizeHint().height()};
}

int MenuButton::heightForWidth(int width) const {
    return std::max(QPushButton::sizeHint().height(), titleSize(width - besideTitle).height() + 2 * Style::tight);
}

void MenuButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.features.setFlag(QStyleOptionButton::HasMenu, false);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    const QColor ink = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
    const int words = titleSize(width() - besideTitle).width();
    const QRect title((width() - words - Style::small - chevronWidth) / 2, 0, words, height());
    painter.drawItemText(style()->visualRect(layoutDirection(), rect(), title), Qt::AlignCenter | Qt::TextWordWrap,
                         palette(), isEnabled(), text(), QPalette::ButtonText);
    const QRect chevron(title.right() + Style::small, 0, chevronWidth, height());
    QuietShapes::drawChevron(painter, QRectF(style()->visualRect(layoutDirection(), rect(), chevron)).center(), ink);
    if (hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange))
        QuietShapes::drawRing(painter, rect(), QuietShapes::corner, Style::accent(palette()));
}

QSize MenuButton::titleSize(int width) const {
    return fontMetrics()
        .boundingRect(QRect(0, 0, std::max(width, 1), 0), Qt::AlignCenter | Qt::TextWordWrap, text())
        .size();
}

}  // namespace quorvel
