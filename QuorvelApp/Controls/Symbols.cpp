#include "Controls/Symbols.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <utility>

// Outside of any namespace, as its macro asks. The drawings are in a static library, so they must be asked for.
static void provideDrawings() {
    static const bool provided = [] {
        Q_INIT_RESOURCE(Symbols);
        return true;
    }();
    static_cast<void>(provided);
}

namespace quorvel::Symbols {

namespace {

const QString folder = QStringLiteral(":/symbols");
const QString suffix = QStringLiteral(".svg");

/// The drawing's path; empty, with a message, when there is none of that name.
QString drawing(QStringView name) {
    provideDrawings();
    QString path = folder + u'/' + name.toString() + suffix;
    if (QFile::exists(path)) return path;
    qCritical("no symbol is called \"%s\"", qUtf8Printable(name.toString()));
    return {};
}

/// `size` in device pixels.
QPixmap draw(const QString& path, QSize size, const QColor& color) {
    if (path.isEmpty() || size.isEmpty()) return {};
    const QString key =
        QStringLiteral("%1 %2x%3 %4").arg(path).arg(size.width()).arg(size.height()).arg(color.rgba(), 8, 16);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;

    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const double side = std::min(size.width(), size.height());
    QSvgRenderer(path).render(&painter, QRectF((size.width() - side) / 2, (size.height() - side) / 2, side, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QColor tint(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::ButtonText);
        case QIcon::Selected:
            return palette.color(QPalette::Active, QPalette::HighlightedText);
        case QIcon::Normal:
        case QIcon::Active:
            break;
    }
    return palette.color(QPalette::Active, QPalette::ButtonText);
}

/// Draws when asked, so that the colours are those of the palette at that time.
class Engine : public QIconEngine {
public:
    explicit Engine(QString path) : path_(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const qreal scale = painter->device() ? painter->device()->devicePixelRatio() : 1;
        painter->drawPixmap(rect, draw(path_, (QSizeF(rect.size()) * scale).toSize(), tint(mode)));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return draw(path_, size, tint(mode)); }
    QIconEngine* clone() const override { return new Engine(path_); }
    bool isNull() override { return false; }

private:
    QString path_;
};

}  // namespace

QIcon icon(QStringView name) {
    const QString path = drawing(name);
    return path.isEmpty() ? QIcon() : QIcon(new Engine(path));
}

QPixmap pixmap(QStringView name, int size, const QColor& color, qreal devicePixelRatio) {
    const int side = int(std::lround(size * devicePixelRatio));
    QPixmap pixmap = draw(drawing(name), QSize(side, side), color);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

QStringList names() {
    provideDrawings();
    QStringList names = QDir(folder).entryList({u'*' + suffix}, QDir::Files, QDir::Name);
    for (QString& name : names) name.chop(suffix.size());
    return names;
}

}  // namespace quorvel::Symbols
