#pragma once

#include <QAbstractButton>
#include <QColor>

namespace quorvel {

/// The eye of a layer in the list, without a border: open while the layer is shown.
class EyeButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit EyeButton(QWidget* parent = nullptr);

    void showLayer(const QString& name, bool hidden);
    void setColor(const QColor& color);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool hidden_ = false;
    QColor color_;
};

}  // namespace quorvel
