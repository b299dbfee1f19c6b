#include "CardsTab/CardTilePainter.h"

#include "Controls/QtImage.h"
#include "Controls/Spinner.h"
#include "Controls/Style.h"
#include "Drawing/ImageScaling.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvel {
namespace {

constexpr double dimmed = 0.45;  // opacity of a card that prints no copies
constexpr double shadowOpacity = 0.18;
constexpr double shadowRadius = 3;
constexpr double shadowDown = 1;
constexpr int spinnerSize = 20;
constexpr int badgeOut = 5;
constexpr double ringWidth = 2.5;
constexpr double ringGap = 2;
const QColor noCopies(0x6e, 0x6e, 0x73);  // a gray that white is readable on

QSize pixels(QSize size, double ratio) {
    return {std::max(int(std::lround(size.width() * ratio)), 1), std::max(int(std::lround(size.height() * ratio)), 1)};
}

QImage reduced(const Image& image, QSize size, double ratio) {
    const Rect target{0, 0, double(size.width()), double(size.height())};
    const auto placed = ImageScaling::place(image, target, target);
    if (!placed) return {};
    QImage picture = toQImage(placed->image);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

/// Digits that stand in fields of one width, so that badges below each other line up whatever the font.
class EvenDigits {
public:
    EvenDigits(const QFont& font, const QString& text) : metrics_(font), text_(text) {
        for (char digit = '0'; digit <= '9'; ++digit)
            digit_ = std::max(digit_, metrics_.horizontalAdvance(QLatin1Char(digit)));
        for (const QChar c : text_) width_ += advance(c);
    }

    double width() const { return width_; }

    /// With its left end at `x` and its baseline at `y`.
    void draw(QPainter& painter, double x, double y) const {
        for (const QChar c : text_) {
            painter.drawText(QPointF(x + (advance(c) - metrics_.horizontalAdvance(c)) / 2, y), QString(c));
            x += advance(c);
        }
    }

private:
    double advance(QChar c) const { return c.isDigit() ? digit_ : metrics_.horizontalAdvance(c); }

    QFontMetricsF metrics_;
    QString text_;
    double digit_ = 0;
    double width_ = 0;
};

SoftShadow cardShadow(double cornerRadius) {
    return SoftShadow(
        {.radius = shadowRadius, .offset = {0, shadowDown}, .opacity = shadowOpacity, .cornerRadius = cornerRadius});
}

}  // namespace

CardTilePainter::CardTilePainter() : shadow_(cardShadow(0)) {}

void CardTilePainter::setLook(Look look) {
    if (look == look_) return;
    look_ = std::move(look);
    shadow_ = cardShadow(look_.cornerRadius);
}

bool CardTilePainter::paint(QPainter& painter, const Place& place, const CardTile& tile, Focus focus, double turn) {
    bool best = true;
    if (tile.printed != 0) {
        best = paintAll(painter, place, tile, turn);
    } else {
        // As a whole: badge, picture and shadow must not shine through each other.
        const QRect all = (place.picture | place.caption).adjusted(-overhang, -overhang, overhang, overhang);
        QImage layer(pixels(all.size(), look_.pixelRatio), QImage::Format_ARGB32_Premultiplied);
        layer.setDevicePixelRatio(look_.pixelRatio);
        layer.fill(Qt::transparent);
        QPainter whole(&layer);
        whole.translate(-all.topLeft());
        best = paintAll(whole, place, tile, turn);
        whole.end();
        painter.setOpacity(dimmed);
        painter.drawImage(all.topLeft(), layer);
        painter.setOpacity(1);
    }
    if (focus == Focus::yes) {
        const double out = ringGap + ringWidth / 2;
        const double radius = (tile.image ? look_.cornerRadius : Style::radius) + out;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Style::accent(look_.palette), ringWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(place.picture).adjusted(-out, -out, out, out), radius, radius);
    }
    return best;
}

bool CardTilePainter::paintAll(QPainter& painter, const Place& place, const CardTile& tile, double turn) {
    painter.setRenderHint(QPainter::Antialiasing);
    bool best = true;
    if (tile.image) {
        shadow_.paint(painter, place.picture);
        best = paintPicture(painter, place.picture, tile);
    } else {
        drawn_[tile.card.id] = {};
        paintPlaceholder(painter, place.picture, turn);
    }
    if (tile.printed != 1) paintBadge(painter, place.picture, tile);

    painter.setFont(look_.captionFont);
    painter.setPen(look_.palette.color(QPalette::WindowText));
    const QString caption =
        QFontMetrics(look_.captionFont).elidedText(tile.caption(), Qt::ElideRight, place.caption.width());
    painter.drawText(place.caption, Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine, caption);
    return best;
}

bool CardTilePainter::paintPicture(QPainter& painter, const QRect& rect, const CardTile& tile) {
    Drawn& drawn = drawn_[tile.card.id];
    const QSize size = pixels(rect.size(), look_.pixelRatio);
    const bool isSharp = drawn.image == tile.image->id() && drawn.picture.size() == size;
    if (!isSharp && toReduce_ > 0) {
        --toReduce_;
        drawn.picture = reduced(*tile.image, size, look_.pixelRatio);
        drawn.image = tile.image->id();
    } else if (!isSharp) {
        // While the window is resized the one at the last size does, or else the rough one, for one painting.
        const bool isNear = drawn.image == tile.image->id() && !drawn.picture.isNull();
        if (!isNear) drawn = {tile.image->id(), {}};
        painter.drawImage(rect, isNear ? drawn.picture : toQImage(*tile.image));
        return false;
    }
    painter.drawImage(rect.topLeft(), drawn.picture);
    return true;
}

void CardTilePainter::paintPlaceholder(QPainter& painter, const QRect& rect, double turn) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(look_.palette, 0.12));
    painter.drawRoundedRect(rect, Style::radius, Style::radius);
    Spinner::paint(painter, spinner(rect), Style::secondary(look_.palette), turn);
}

void CardTilePainter::paintBadge(QPainter& painter, const QRect& picture, const CardTile& tile) const {
    const EvenDigits digits(look_.badgeFont, tile.badge());
    const QFontMetricsF metrics(look_.badgeFont);
    const double height = std::ceil(metrics.height()) + 2 * Style::hair;
    const double width = std::max(std::ceil(digits.width()) + 2 * (Style::tight + Style::hair), height);
    // Over the corner rather than within: what designers put there, a cost most often, stays readable.
    const QRectF capsule(picture.x() + picture.width() - width + badgeOut, picture.y() - badgeOut, width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tile.printed == 0 ? noCopies : Style::accent(look_.palette));
    painter.drawRoundedRect(capsule, height / 2, height / 2);
    painter.setFont(look_.badgeFont);
    painter.setPen(Qt::white);
    digits.draw(painter, capsule.x() + (width - digits.width()) / 2,
                capsule.y() + (height - metrics.height()) / 2 + metrics.ascent());
}

std::uint64_t CardTilePainter::drawnImage(std::int64_t card) const {
    const auto found = drawn_.find(card);
    return found == drawn_.end() ? 0 : found->second.image;
}

void CardTilePainter::keep(TileRange cards) {
    std::erase_if(drawn_, [cards](const auto& each) { return !cards.contains(int(each.first)); });
}

QRect CardTilePainter::spinner(const QRect& picture) {
    QRect rect(0, 0, spinnerSize, spinnerSize);
    rect.moveCenter(picture.center());
    return rect;
}

}  // namespace quorvel
