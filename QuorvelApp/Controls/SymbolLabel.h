#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace quorvel {

/// A symbol that stands for itself; decoration unless it has an accessible name.
class SymbolLabel : public QWidget {
    Q_OBJECT
public:
    using Color = std::function<QColor(const QPalette&)>;

    /// `size` in logical pixels; `color` is asked again when the palette changes.
    SymbolLabel(const QString& name, int size, Color color, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString name_;
    int size_;
    Color color_;
};

}  // namespace quorvel
