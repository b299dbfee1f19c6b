#pragma once

#include <QWidget>

class QLabel;

namespace quorvel {

/// A sentence in the colour of warnings behind the warning symbol.
class WarningLabel : public QWidget {
    Q_OBJECT
public:
    explicit WarningLabel(const QString& text, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void tint();

    QLabel* text_ = nullptr;
};

}  // namespace quorvel
