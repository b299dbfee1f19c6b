#include "Shell/DeckRowDelegate.h"

#include "Controls/Style.h"

#include <QAbstractItemView>
#include <QPainter>

namespace quorvel {
namespace {

constexpr int symbolSize = 18;

}  // namespace

void DeckRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const bool selected = row.state & QStyle::State_Selected;
    const bool active = selected && (row.state & QStyle::State_HasFocus || (row.widget && row.widget->hasFocus()));
    const QPalette& palette = row.palette;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    const QRect bar = row.rect.adjusted(Style::small, 1, -Style::small, -1);
    if (selected)
        painter->setBrush(active ? palette.brush(QPalette::Active, QPalette::Highlight)
                                 : QBrush(Style::panel(palette, 0.22)));
    else if (row.state & QStyle::State_MouseOver)
        painter->setBrush(Style::panel(palette, 0.08));
    if (painter->brush() != Qt::NoBrush) painter->drawRoundedRect(bar, 6, 6);

    const QRect inner = bar.adjusted(Style::small, 0, -Style::small, 0);
    const bool mirrored = row.direction == Qt::RightToLeft;
    QRect symbol(0, 0, symbolSize, symbolSize);
    symbol.moveCenter(inner.center());
    symbol.moveLeft(mirrored ? inner.right() - symbolSize + 1 : inner.left());
    row.icon.paint(painter, symbol, Qt::AlignCenter, active ? QIcon::Selected : QIcon::Normal);

    const int room = symbolSize + Style::small;
    const QRect name = mirrored ? inner.adjusted(0, 0, -room, 0) : inner.adjusted(room, 0, 0, 0);
    painter->setPen(palette.color(QPalette::Active, active ? QPalette::HighlightedText : QPalette::WindowText));
    painter->setFont(row.font);
    const QString cut = row.fontMetrics.elidedText(row.text, Qt::ElideRight, name.width());
    painter->drawText(name, int(Qt::AlignVCenter | Qt::TextSingleLine | (mirrored ? Qt::AlignRight : Qt::AlignLeft)),
                      cut);
    painter->restore();
}

QSize DeckRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {0, qMax(symbolSize, option.fontMetrics.height()) + 2 * Style::small - Style::hair};
}

}  // namespace quorvel
