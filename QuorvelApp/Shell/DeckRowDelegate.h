#pragma once

#include <QStyledItemDelegate>

namespace quorvel {

/// A row of the sidebar: a symbol and a name that is cut at its end, on a rounded bar when selected.
class DeckRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quorvel
