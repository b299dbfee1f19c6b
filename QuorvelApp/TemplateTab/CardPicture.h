#pragma once

#include <QImage>
#include <QWidget>

namespace quorvel {

/// A picture of a card in the middle of its place, as large as it fits, on the colour that lies behind paper.
class CardPicture : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// A null image shows nothing.
    void setImage(const QImage& image);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage image_;
};

}  // namespace quorvel
