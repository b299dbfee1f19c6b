#include "Controls/Picker.h"

#include "Controls/Style.h"

#include <QListView>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>
#include <algorithm>

namespace quorvel {
namespace {

constexpr int idealWidth = 184;
constexpr int fewestCharacters = 6;
constexpr int entriesInSight = 20;
constexpr int measuredEntries = 200;  // nobody waits for thousands
constexpr int widestPopup = 480;

}  // namespace

Picker::Picker(const QString& title, QWidget* parent) : QComboBox(parent) {
    setAccessibleName(title);
    // By the length that is asked for, not by that of any entry.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(fewestCharacters);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMaxVisibleItems(entriesInSight);
    // The wheel that it leaves to the form doesn't bring it the keyboard either.
    setFocusPolicy(Qt::StrongFocus);
    auto* list = new QListView(this);
    list->setAccessibleName(title);
    list->setUniformItemSizes(true);
    list->setTextElideMode(Qt::ElideMiddle);
    setView(list);
}

void Picker::show(int index, const QString& missing) {
    const QString placeholder = index < 0 ? missing : QString();
    if (placeholder != placeholderText()) setPlaceholderText(placeholder);
    if (index != currentIndex()) setCurrentIndex(index);
}

QSize Picker::sizeHint() const {
    return {std::max(idealWidth, minimumSizeHint().width()), QComboBox::sizeHint().height()};
}

void Picker::showPopup() {
    view()->setMinimumWidth(popupWidth());
    QComboBox::showPopup();
}

int Picker::popupWidth() const {
    int widest = 0;
    for (int index = 0; index < std::min(count(), measuredEntries); ++index)
        widest =
            std::max(widest, view()->sizeHintForIndex(model()->index(index, modelColumn(), rootModelIndex())).width());
    return std::min(widest + 2 * Style::medium, widestPopup);
}

void Picker::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    if (currentIndex() < 0 && !placeholderText().isEmpty()) {
        option.palette.setBrush(QPalette::ButtonText, option.palette.placeholderText());
        option.currentText = placeholderText();
    }
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, field.width() - Style::tight);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace quorvel
