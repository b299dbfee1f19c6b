#include "CardsTab/GridLayout.h"

#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorvel {

GridLayout::GridLayout(int count, int width, double aspect, int captionHeight)
    : count_(std::max(count, 0)),
      columns_(std::max((width + columnGap) / (minimumColumn + columnGap), 1)),
      columnWidth_(std::clamp((width - columnGap * (columns_ - 1)) / columns_, minimumColumn, maximumColumn)),
      captionHeight_(std::max(captionHeight, 0)) {
    constexpr double slimmest = 1.0 / 20;
    const double shape = std::isnan(aspect) ? 1 : std::clamp(aspect, slimmest, 1 / slimmest);
    pictureHeight_ = int(std::lround(columnWidth_ / shape));
}

int GridLayout::height() const {
    if (count_ == 0) return 0;
    return int(std::min<std::int64_t>(std::int64_t(rows()) * rowPitch() - rowGap, QWIDGETSIZE_MAX));
}

QRect GridLayout::tile(int index) const {
    return {index % columns_ * (columnWidth_ + columnGap), index / columns_ * rowPitch(), columnWidth_, tileHeight()};
}

QRect GridLayout::picture(int index) const {
    return {tile(index).topLeft(), QSize(columnWidth_, pictureHeight_)};
}

QRect GridLayout::caption(int index) const {
    const QRect all = tile(index);
    return {all.x(), all.y() + pictureHeight_ + captionGap, all.width(), captionHeight_};
}

TileRange GridLayout::visible(int top, int bottom) const {
    top = std::max(top, 0);
    if (bottom <= top || count_ == 0) return {};
    // A row whose tiles end at or above the top shows nothing but its gap.
    const int first = top / rowPitch() + (top % rowPitch() >= tileHeight() ? 1 : 0);
    const int end = (bottom - 1) / rowPitch() + 1;
    const auto start = [this](int row) { return int(std::min<std::int64_t>(std::int64_t(row) * columns_, count_)); };
    const TileRange range{start(first), start(end)};
    return range.isEmpty() ? TileRange{} : range;
}

std::optional<int> GridLayout::at(QPoint place) const {
    if (place.x() < 0 || place.y() < 0) return std::nullopt;
    const int column = place.x() / (columnWidth_ + columnGap);
    const std::int64_t index = std::int64_t(place.y() / rowPitch()) * columns_ + column;
    if (column >= columns_ || index >= count_ || !tile(int(index)).contains(place)) return std::nullopt;
    return int(index);
}

int GridLayout::moved(int from, Step step, int pageRows) const {
    const int last = count_ - 1;
    const auto byRows = [&](int rows) {
        const int column = from % columns_;
        const int row = std::clamp(from / columns_ + rows, 0, std::max(this->rows() - 1, 0));
        return std::min(row * columns_ + column, last);
    };
    switch (step) {
        case Step::left:
            return std::max(from - 1, 0);
        case Step::right:
            return std::min(from + 1, last);
        case Step::up:
            return byRows(-1);
        case Step::down:
            return byRows(1);
        case Step::pageUp:
            return byRows(-pageRows);
        case Step::pageDown:
            return byRows(pageRows);
        case Step::first:
            return 0;
        case Step::last:
            return last;
    }
    return from;
}

}  // namespace quorvel
