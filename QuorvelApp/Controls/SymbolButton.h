#pragma once

#include <QToolButton>

namespace quorvel {

/// A flat button with a symbol alone. Tab leads to it; a click leaves the keyboard where it is.
class SymbolButton : public QToolButton {
    Q_OBJECT
public:
    /// `name` is what a screen reader says, and the tooltip until another is set. `size` is the symbol's, in logical
    /// pixels.
    SymbolButton(QStringView symbol, const QString& name, int size = 16, QWidget* parent = nullptr);

    /// One of a row of such buttons: a square around a symbol of this size.
    static SymbolButton* inRow(QStringView symbol, const QString& name, const QString& tip, int size);
};

}  // namespace quorvel
