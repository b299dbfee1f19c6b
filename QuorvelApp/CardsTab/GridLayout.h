#pragma once

#include <QPoint>
#include <QRect>
#include <optional>

namespace quorvel {

/// Neighbouring tiles by number: `first` up to but without `end`.
struct TileRange {
    int first = 0;
    int end = 0;

    bool isEmpty() const { return first >= end; }
    bool contains(int index) const { return index >= first && index < end; }
    bool operator==(const TileRange&) const = default;
};

/// Where the tiles of a grid stand, found by arithmetic: a deck of 5,000 cards costs as much as one of five. Lengths
/// are whole logical pixels from the grid's top left, y down.
///
/// As many columns as fit at the minimum width share the width, none beyond the maximum. A tile is a picture of the
/// card's proportions over a caption.
class GridLayout {
public:
    static constexpr int minimumColumn = 150;
    static constexpr int maximumColumn = 210;
    static constexpr int columnGap = 18;
    static constexpr int rowGap = 20;
    static constexpr int captionGap = 6;  ///< between picture and caption

    GridLayout() = default;

    /// `aspect` is a card's width by its height; what no card can have counts as the nearest that one can.
    GridLayout(int count, int width, double aspect, int captionHeight);

    bool operator==(const GridLayout&) const = default;

    int count() const { return count_; }
    int columns() const { return columns_; }
    int columnWidth() const { return columnWidth_; }
    int tileHeight() const { return pictureHeight_ + captionGap + captionHeight_; }
    int rowPitch() const { return tileHeight() + rowGap; }
    int rows() const { return count_ == 0 ? 0 : (count_ - 1) / columns_ + 1; }

    /// Of all rows; at most what a widget can be high.
    int height() const;

    QRect tile(int index) const;
    QRect picture(int index) const;
    QRect caption(int index) const;

    /// The tiles of all rows of which some part lies within `top` up to but without `bottom`.
    TileRange visible(int top, int bottom) const;

    /// The tile at a place; none in the gaps.
    std::optional<int> at(QPoint place) const;

    enum class Step { left, right, up, down, pageUp, pageDown, first, last };

    /// Where a key leads from a tile. Left and right go in reading order, across the ends of rows; what would leave the
    /// grid stays, but a step down or a page into a last row that ends before goes to its end. `pageRows` at least 1.
    int moved(int from, Step step, int pageRows) const;

private:
    int count_ = 0;
    int columns_ = 1;
    int columnWidth_ = minimumColumn;
    int pictureHeight_ = minimumColumn;
    int captionHeight_ = 0;
};

}  // namespace quorvel
