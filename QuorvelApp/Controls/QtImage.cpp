#include "Controls/QtImage.h"

namespace quorvel {

QImage toQImage(const Image& image) {
    const QImage::Format format =
        image.alpha() == Image::Alpha::opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    // The copy keeps the pixels alive; Qt calls back when the last of its own copies is gone.
    auto* keeper = new Image(image);
    return QImage(
        reinterpret_cast<const uchar*>(keeper->pixels()), keeper->width(), keeper->height(),
        qsizetype(keeper->width()) * 4, format, [](void* kept) { delete static_cast<Image*>(kept); }, keeper);
}

}  // namespace quorvel
