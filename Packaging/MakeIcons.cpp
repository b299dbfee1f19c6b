#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

// MakeIcons DRAWING.svg SIZE OUT.png: the drawing, SIZE pixels wide and high.
int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const int size = QByteArray(argv[2]).toInt();
    QSvgRenderer drawing{QString::fromLocal8Bit(argv[1])};
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        drawing.render(&painter);
    }
    if (drawing.isValid() && image.save(QString::fromLocal8Bit(argv[3]), "PNG")) return 0;
    std::fprintf(stderr, "MakeIcons: %s could not be drawn to %s\n", argv[1], argv[3]);
    return 1;
}
