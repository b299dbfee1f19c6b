#include "Controls/QuietStyle.h"

#include "Controls/QuietShapes.h"
#include "Controls/Style.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QListView>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleOption>
#include <algorithm>

namespace quorvel {

using namespace QuietShapes;

namespace {

constexpr int controlHeight = 28;
constexpr int buttonPadding = 12;
constexpr int fieldPadding = 4;  // more than the toolkit's
constexpr int menuArrowWidth = 16;
constexpr int scrollBarWidth = 12;
constexpr int shortestSlider = 32;

bool has(const QStyleOption& option, QStyle::StateFlag state) {
    return option.state.testFlag(state);
}

QColor ink(const QStyleOption& option) {
    return option.palette.color(has(option, QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled,
                                QPalette::ButtonText);
}

}  // namespace

QuietStyle::QuietStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void QuietStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) || qobject_cast<QScrollBar*>(widget))
        widget->setAttribute(Qt::WA_Hover);
    // Ours is a slider on the ground of what scrolls.
    if (qobject_cast<QScrollBar*>(widget)) widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void QuietStyle::unpolish(QWidget* widget) {
    if (qobject_cast<QScrollBar*>(widget)) widget->setAttribute(Qt::WA_OpaquePaintEvent);
    QProxyStyle::unpolish(widget);
}

void QuietStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
            return drawButton(*painter, *option);
        case PE_PanelButtonTool:
            return drawToolButton(*painter, *option);
        case PE_FrameDefaultButton:
        case PE_IndicatorButtonDropDown:
            return;
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            return drawCheckBox(*painter, *option);
        case PE_IndicatorRadioButton:
            return drawRadioButton(*painter, *option);
        case PE_PanelMenu:
            // Lifted from the window, as the panels on it are.
            return drawBox(*painter, option->rect, 0, Style::surface(option->palette), Style::line(option->palette));
        case PE_FrameMenu:
            return drawBox(*painter, option->rect, 0, {}, Style::line(option->palette));
        case PE_PanelItemViewRow:
            if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
                item && item->features.testFlag(QStyleOptionViewItem::Alternate))
                painter->fillRect(option->rect, option->palette.color(QPalette::AlternateBase));
            return;
        case PE_PanelItemViewItem:
            if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option))
                return drawItem(*painter, *item, qobject_cast<const QListView*>(widget));
            break;
        case PE_PanelLineEdit:
            if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option)) {
                if (frame->lineWidth > 0) return drawField(*painter, *option);
                return;
            }
            break;
        case PE_FrameLineEdit:
            return drawField(*painter, *option);
        case PE_Frame: {
            if (qobject_cast<const QPlainTextEdit*>(widget)) return drawField(*painter, *option);
            // Within the corners a scrolled content's ground goes on.
            const auto* area = qobject_cast<const QAbstractScrollArea*>(widget);
            const QColor ground = area ? groundOf(*area) : QColor();
            return drawBox(*painter, option->rect, corner, ground, Style::line(option->palette));
        }
        case PE_FrameFocusRect:
            if (!has(*option, State_KeyboardFocusChange)) return;
            return drawRing(*painter, option->rect, corner, Style::accent(option->palette));
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void QuietStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    switch (element) {
        case CE_PushButton:
            QProxyStyle::drawControl(element, option, painter, widget);
            // The toolkit would only darken the frame that ours doesn't have.
            if (has(*option, State_HasFocus) && has(*option, State_KeyboardFocusChange))
                drawRing(
                    *painter, option->rect, corner,
                    isDefault(option) ? option->palette.color(QPalette::WindowText) : Style::accent(option->palette));
            return;
        case CE_PushButtonLabel:
            if (isDefault(option) && has(*option, State_Enabled)) {
                QStyleOptionButton onAccent = *qstyleoption_cast<const QStyleOptionButton*>(option);
                onAccent.palette.setColor(QPalette::ButtonText,
                                          option->palette.color(QPalette::Active, QPalette::HighlightedText));
                return QProxyStyle::drawControl(element, &onAccent, painter, widget);
            }
            break;
        case CE_MenuItem: {
            const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            if (item && item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty())
                return painter->fillRect(option->rect.left() + Style::small, option->rect.center().y(),
                                         option->rect.width() - 2 * Style::small, 1, Style::line(option->palette));
            if (!item || !has(*option, State_Selected) || !has(*option, State_Enabled)) break;
            const int iconSize = proxy()->pixelMetric(PM_SmallIconSize, option, widget);
            const QStyleOptionMenuItem onAccent = drawMenuGround(*painter, *item, iconSize);
            return QProxyStyle::drawControl(element, &onAccent, painter, widget);
        }
        case CE_ProgressBar:
            if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
                bar && !bar->textVisible && bar->maximum > bar->minimum)
                return drawProgress(*painter, *bar);
            break;
        case CE_Splitter: {
            const QPoint middle = option->rect.center();
            const QRect line = has(*option, State_Horizontal)
                                   ? QRect(middle.x(), option->rect.top(), 1, option->rect.height())
                                   : QRect(option->rect.left(), middle.y(), option->rect.width(), 1);
            return painter->fillRect(line, Style::line(option->palette));
        }
        case CE_HeaderSection:
        case CE_HeaderEmptyArea:
            painter->fillRect(option->rect, option->palette.color(QPalette::Window));
            return painter->fillRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1,
                                     Style::line(option->palette));
        default:
            break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void QuietStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
    if (control == CC_ComboBox) {
        const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (combo && !combo->editable && combo->frame) {
            QStyleOptionButton button;
            button.QStyleOption::operator=(*option);
            button.state.setFlag(State_On, false);
            drawButton(*painter, button);
            const QRect arrow = subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget);
            drawChevron(*painter, QRectF(arrow).center(), ink(*option));
            if (has(*option, State_HasFocus) && has(*option, State_KeyboardFocusChange))
                drawRing(*painter, option->rect, corner, Style::accent(option->palette));
            return;
        }
    }
    if (control == CC_ScrollBar) {
        if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
            drawScrollBar(*painter, *bar, subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget), widget);
        return;
    }
    if (control == CC_ToolButton) {
        const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        if (button && button->features.testFlag(QStyleOptionToolButton::HasMenu) &&
            !button->features.testFlag(QStyleOptionToolButton::MenuButtonPopup)) {
            // One button that opens a menu; only words leave room to say so.
            QStyleOptionToolButton plain = *button;
            plain.features.setFlag(QStyleOptionToolButton::HasMenu, false);
            drawToolButton(*painter, plain);
            if (hasMenuAndWords(option)) {
                const QPointF arrow(button->rect.right() - menuArrowWidth + 3.5, QRectF(button->rect).center().y());
                drawChevron(*painter, arrow, ink(*option));
                plain.rect.adjust(0, 0, -menuArrowWidth, 0);
            }
            proxy()->drawControl(CE_ToolButtonLabel, &plain, painter, widget);
            if (has(*option, State_HasFocus) && has(*option, State_KeyboardFocusChange))
                drawRing(*painter, option->rect, corner, Style::accent(option->palette));
            return;
        }
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect QuietStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    if (element == SE_PushButtonFocusRect) return option->rect;
    if (element == SE_LineEditContents) {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        const int padding = frame && frame->lineWidth > 0 ? fieldPadding : 0;
        return QProxyStyle::subElementRect(element, option, widget).adjusted(padding, 0, -padding, 0);
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect QuietStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                 const QWidget* widget) const {
    if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
        const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        const int padding = combo && combo->frame && !combo->editable ? fieldPadding : 0;
        return QProxyStyle::subControlRect(control, option, part, widget).adjusted(padding, 0, 0, 0);
    }
    if (control != CC_ScrollBar) return QProxyStyle::subControlRect(control, option, part, widget);
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (!bar) return {};

    // Without arrows: the groove is the whole bar.
    const QRect whole = option->rect;
    const bool horizontal = bar->orientation == Qt::Horizontal;
    const int length = horizontal ? whole.width() : whole.height();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    int sliderLength = length;
    if (range > 0) {
        sliderLength = int(qint64(bar->pageStep) * length / (range + bar->pageStep));
        sliderLength = std::min(std::max(sliderLength, shortestSlider), length);
    }
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - sliderLength,
                                              bar->upsideDown);
    const auto along = [&](int from, int size) {
        const QRect rect = horizontal ? QRect(whole.left() + from, whole.top(), size, whole.height())
                                      : QRect(whole.left(), whole.top() + from, whole.width(), size);
        return visualRect(bar->direction, whole, rect);
    };
    switch (part) {
        case SC_ScrollBarGroove:
            return whole;
        case SC_ScrollBarSlider:
            return along(start, sliderLength);
        case SC_ScrollBarSubPage:
            return along(0, start);
        case SC_ScrollBarAddPage:
            return along(start + sliderLength, length - start - sliderLength);
        default:
            return {};
    }
}

QSize QuietStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
        case CT_PushButton:
            // The toolkit's least width is for rows of dialog buttons; ours go by their words.
            result.setWidth(std::max(size.width() + 2 * buttonPadding, controlHeight));
            result.setHeight(std::max(result.height(), controlHeight));
            break;
        case CT_ComboBox:
            result.rwidth() += 3 * fieldPadding;
            [[fallthrough]];
        case CT_LineEdit:
            result.setHeight(std::max(result.height(), controlHeight));
            break;
        case CT_ItemViewItem:
            if (qobject_cast<const QListView*>(widget)) result.setHeight(std::max(result.height(), controlHeight));
            break;
        case CT_ToolButton:
            if (hasMenuAndWords(option)) result.rwidth() += menuArrowWidth;
            result = result.expandedTo({controlHeight, controlHeight});
            break;
        default:
            break;
    }
    return result;
}

int QuietStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_ScrollBarExtent:
            return scrollBarWidth;
        case PM_ScrollBarSliderMin:
            return shortestSlider;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return 16;
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
            return Style::small;
        case PM_ListViewIconSize:
            return 18;
        case PM_ToolBarIconSize:
            return 20;
        case PM_DefaultFrameWidth:
            // Room for round corners around what is scrolled.
            if (qobject_cast<const QAbstractScrollArea*>(widget)) return 2;
            break;
        case PM_MenuVMargin:
            return Style::tight;
        case PM_SplitterWidth:
            return 5;  // wide enough to be caught
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            break;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int QuietStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const {
    switch (hint) {
        case SH_ScrollBar_Transient:
        case SH_EtchDisabledText:
        case SH_DitherDisabledText:
        case SH_DialogButtonBox_ButtonsHaveIcons:
        case SH_ComboBox_Popup:  // a list that scrolls, however many entries there are
            return 0;
        case SH_ScrollBar_LeftClickAbsolutePosition:
            return 0;
        case SH_Menu_Scrollable:
            return 1;
        default:
            return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

}  // namespace quorvel
