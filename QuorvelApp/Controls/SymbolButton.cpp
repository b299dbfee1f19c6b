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

}  // namespace quorvel
