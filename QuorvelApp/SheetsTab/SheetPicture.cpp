#include "SheetsTab/SheetPicture.h"

#include "Controls/QtImage.h"
#include "Controls/Style.h"

#include <QFocusEvent>
#include <QPainter>
#include <cmath>

namespace quorvel {

SheetPicture::SheetPicture(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void SheetPicture::showSheet(const Image& image, QSizeF page) {
    if (image_ && image_->id() == image.id() && page_ == page) return;
    image_ = image;
    page_ = page;
    update();
}

void SheetPicture::showText(const QString& text) {
    if (!image_ && text_ == text) return;
    image_.reset();
    scaled_ = {};
    text_ = text;
    update();
}

QRectF SheetPicture::paper() const {
    if (!image_ || page_.isEmpty()) return {};
    const QRectF room = contentsRect();
    const QSizeF size = page_.scaled(room.size(), Qt::KeepAspectRatio);
    // On whole pixels of the screen, so that its edges and cut marks are sharp.
    const double scale = devicePixelRatioF();
    const auto whole = [scale](double length) { return std::round(length * scale) / scale; };
    return {whole(room.x() + (room.width() - size.width()) / 2), whole(room.y() + (room.height() - size.height()) / 2),
            whole(size.width()), whole(size.height())};
}

void SheetPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF sheet = paper();
    if (sheet.isEmpty()) {
        painter.setPen(Style::secondary(palette()));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, text_);
        return;
    }
    shadow_.paint(painter, sheet);
    painter.drawImage(sheet, scaled((sheet.size() * devicePixelRatioF()).toSize()));
    if (showsFocus_) {
        painter.setPen(QPen(Style::accent(palette()), Style::hair));
        painter.drawRect(sheet);
    }
}

QImage SheetPicture::scaled(QSize pixels) {
    if (scaled_.size() != pixels || scaledFrom_ != image_->id()) {
        scaled_ = toQImage(*image_).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        scaledFrom_ = image_->id();
    }
    return scaled_;
}

void SheetPicture::focusInEvent(QFocusEvent* event) {
    // A click needs no answer in the shape of a frame.
    showsFocus_ = event->reason() != Qt::MouseFocusReason;
    QWidget::focusInEvent(event);
}

void SheetPicture::focusOutEvent(QFocusEvent* event) {
    showsFocus_ = false;
    QWidget::focusOutEvent(event);
}

}  // namespace quorvel
