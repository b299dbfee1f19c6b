#include "Controls/SymbolLabel.h"

#include "Controls/Symbols.h"

#include <QPainter>
#include <utility>

namespace quorvel {

SymbolLabel::SymbolLabel(const QString& name, int size, Color color, QWidget* parent)
    : QWidget(parent), name_(name), size_(size), color_(std::move(color)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolLabel::sizeHint() const {
    return {size_, size_};
}

void SymbolLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QPoint corner((width() - size_) / 2, (height() - size_) / 2);
    painter.drawPixmap(corner, Symbols::pixmap(name_, size_, color_(palette()), devicePixelRatio()));
}

}  // namespace quorvel
