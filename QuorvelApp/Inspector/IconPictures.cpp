#include "Inspector/IconPictures.h"

#include "Controls/QtImage.h"
#include "Drawing/BitmapContext.h"
#include "Pictures/IconSet.h"

#include <QGuiApplication>
#include <QPixmap>
#include <cmath>
#include <utility>

namespace quorvel::IconPictures {

namespace {

constexpr int iconSize = 16;

}  // namespace

QIcon icon(std::string_view name) {
    const qreal scale = qGuiApp->devicePixelRatio();
    const int side = int(std::lround(iconSize * scale));
    auto bitmap = BitmapContext::make(side, side);
    if (!bitmap) return {};
    IconSet::draw(name, IconSet::color(name), bitmap->context(), Rect{0, 0, double(side), double(side)});
    QPixmap picture = QPixmap::fromImage(toQImage(std::move(*bitmap).finish()));
    picture.setDevicePixelRatio(scale);
    return picture;
}

}  // namespace quorvel::IconPictures
