#pragma once

#include "CardsTab/GridLayout.h"

#include <functional>

namespace quorvel {

/// Tells each tile's coming on screen and its leaving exactly once, from the ranges that are seen one after another.
class ShownTiles {
public:
    using Tell = std::function<void(int index)>;

    ShownTiles(Tell appeared, Tell disappeared);

    /// What is seen now. Those that have left are told first.
    void show(TileRange seen);

    TileRange shown() const { return shown_; }

private:
    Tell appeared_;
    Tell disappeared_;
    TileRange shown_;
};

}  // namespace quorvel
