#pragma once

#include "CardsTab/CardTile.h"
#include "CardsTab/GridLayout.h"
#include "Controls/SoftShadow.h"

#include <QFont>
#include <QImage>
#include <QPalette>
#include <cstdint>
#include <unordered_map>

class QPainter;

namespace quorvel {

/// Draws tiles from their values. Keeps the pictures of those on screen reduced to the very pixels that they cover:
/// they are sharp, and drawn again they cost a copy.
class CardTilePainter {
public:
    /// Pictures reduced in one painting. The others are drawn roughly at first, so that no painting is long.
    static constexpr int reducedAtOnce = 10;

    static constexpr int overhang = 6;  ///< how far the shadow and the focus ring reach beyond a tile

    /// What all tiles share.
    struct Look {
        QPalette palette;
        QFont captionFont;
        QFont badgeFont;
        double cornerRadius = 0;  ///< of the card, in logical pixels
        double pixelRatio = 1;    ///< pixels to a logical pixel

        bool operator==(const Look&) const = default;
    };

    struct Place {
        QRect picture;
        QRect caption;
    };

    enum class Focus { no, yes };

    CardTilePainter();

    void setLook(Look look);
    const Look& look() const { return look_; }

    /// At the start of each painting.
    void begin() { toReduce_ = reducedAtOnce; }

    /// Whether the picture is at its best; otherwise the tile wants to be drawn once more. `turn` is that of the
    /// spinner, from 0 to 1.
    bool paint(QPainter& painter, const Place& place, const CardTile& tile, Focus focus, double turn);

    /// The number of the image that a card was last drawn with, 0 for none.
    std::uint64_t drawnImage(std::int64_t card) const;

    /// Lets go of all but those within.
    void keep(TileRange cards);

    /// Where the spinner stands while there is no picture.
    static QRect spinner(const QRect& picture);

private:
    struct Drawn {
        std::uint64_t image = 0;
        QImage picture;
    };

    bool paintAll(QPainter& painter, const Place& place, const CardTile& tile, double turn);
    bool paintPicture(QPainter& painter, const QRect& rect, const CardTile& tile);
    void paintPlaceholder(QPainter& painter, const QRect& rect, double turn) const;
    void paintBadge(QPainter& painter, const QRect& picture, const CardTile& tile) const;

    Look look_;
    int toReduce_ = 0;
    std::unordered_map<std::int64_t, Drawn> drawn_;  // by card
    SoftShadow shadow_;
};

}  // namespace quorvel
