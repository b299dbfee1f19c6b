#include "Controls/SymbolButton.h"

#include "Controls/Symbols.h"

namespace quorvel {

SymbolButton::SymbolButton(QStringView symbol, const QString& name, int size, QWidget* parent) : QToolButton(parent) {
    setIcon(Symbols::icon(symbol));
    setIconSize({size, size});
    setAccessibleName(name);
    setToolTip(name);
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
}

SymbolButton* SymbolButton::inRow(QStringView symbol, const QString& name, const QString& tip, int size) {
    constexpr int side = 28;
    auto* button = new SymbolButton(symbol, name, size);
    button->setFixedSize(side, side);
    button->setToolTip(tip);
    return button;
}

}  // namespace quorvel
