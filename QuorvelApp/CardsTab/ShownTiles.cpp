#include "CardsTab/ShownTiles.h"

#include <utility>

namespace quorvel {

ShownTiles::ShownTiles(Tell appeared, Tell disappeared)
    : appeared_(std::move(appeared)), disappeared_(std::move(disappeared)) {}

void ShownTiles::show(TileRange seen) {
    const TileRange before = std::exchange(shown_, seen);
    for (int index = before.first; index < before.end; ++index)
        if (!seen.contains(index)) disappeared_(index);
    for (int index = seen.first; index < seen.end; ++index)
        if (!before.contains(index)) appeared_(index);
}

}  // namespace quorvel
