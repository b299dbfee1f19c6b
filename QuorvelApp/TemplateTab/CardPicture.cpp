#include "TemplateTab/CardPicture.h"

#include "Controls/Style.h"

#include <QPainter>

namespace quorvel {

void CardPicture::setImage(const QImage& image) {
    image_ = image;
    update();
}

QSize CardPicture::minimumSizeHint() const {
    return {200, 200};
}

void CardPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Style::underPage(palette()));
    if (image_.isNull()) return;
    const QRectF room = QRectF(rect()).adjusted(Style::huge, Style::huge, -Style::huge, -Style::huge);
    // No larger than it was drawn: a card that gets coarse looks wrong.
    const QSizeF size = QSizeF(image_.size().boundedTo((room.size() * devicePixelRatio()).toSize()));
    QRectF place({}, QSizeF(image_.size()).scaled(size / devicePixelRatio(), Qt::KeepAspectRatio));
    place.moveCenter(room.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image_);
    painter.setPen(QPen(Style::line(palette()), 1));
    painter.drawRect(place.adjusted(-0.5, -0.5, 0.5, 0.5));
}

}  // namespace quorvel
