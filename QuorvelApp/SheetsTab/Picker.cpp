#include "SheetsTab/Picker.h"

#include "Controls/Style.h"

#include <QAbstractItemView>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>

namespace quorvel {

namespace {

constexpr int fewestCharacters = 8;

}  // namespace

Picker::Picker(const QString& title, QWidget* parent) : QComboBox(parent) {
    setAccessibleName(title);
    view()->setAccessibleName(title);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(fewestCharacters);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Picker::showPopup() {
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * Style::medium);
    QComboBox::showPopup();
}

void Picker::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(currentText(), Qt::ElideRight, field.width() - Style::tight);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace quorvel
