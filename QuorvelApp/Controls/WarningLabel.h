#pragma once

#include <QWidget>

namespace quorvel {

/// A sentence in the colour of warnings behind the warning symbol.
class WarningLabel : public QWidget {
    Q_OBJECT
public:
    explicit WarningLabel(const QString& text, QWidget* parent = nullptr);
};

}  // namespace quorvel
