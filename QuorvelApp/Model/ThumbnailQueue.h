#pragma once

#include "Drawing/Image.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quorvel {

/// Which thumbnails to draw next, which are out of date, which to drop: decisions on plain values, without time,
/// threads or drawing. Cards are known by their id, the index of their row.
class ThumbnailQueue {
public:
    static constexpr std::size_t batch = 12;   ///< cards drawn in one background task
    static constexpr std::size_t limit = 120;  ///< images kept; what is on screen is kept beyond it

    /// What became of the images. Those that went are handed out, since to free many takes milliseconds.
    struct Change {
        bool any = false;  ///< some have come or gone
        std::vector<Image> gone;
    };

    /// A tile came on screen. Whether it was queued; not if its image is fresh or it waits already.
    bool appeared(std::int64_t id);

    /// A tile left the screen. It stays queued until the next `prune`, so that it keeps its place if it returns before.
    void disappeared(std::int64_t id);

    /// Every image is out of date and stays until a new one comes; cards at or beyond `count` are lost. What is visible
    /// is queued in ascending order. Raises the generation.
    Change invalidate(std::int64_t count);

    /// Drops from the queue what isn't visible or is fresh. Whether anything is left to draw.
    bool prune();

    /// Takes the first cards off the queue, at most `batch`, and answers those of them that are visible and an index
    /// below `count`.
    std::vector<std::int64_t> takeBatch(std::int64_t count);

    /// Keeps drawn images as fresh, in the place of older ones, and evicts what is over the limit.
    Change store(std::vector<std::pair<std::int64_t, Image>> images);

    /// As after the last tile of a closed deck: nothing visible, nothing kept. Raises the generation.
    Change clear();

    /// Counts the changes that make drawings under way worthless.
    std::int64_t thumbnailGeneration() const { return thumbnailGeneration_; }
    const std::map<std::int64_t, Image>& images() const { return images_; }
    bool isFresh(std::int64_t id) const { return freshThumbnails_.contains(id); }
    const std::set<std::int64_t>& visibleCards() const { return visibleCards_; }
    const std::vector<std::int64_t>& queue() const { return thumbnailQueue_; }

private:
    void evict(std::vector<Image>& gone);

    std::map<std::int64_t, Image> images_;
    std::set<std::int64_t> visibleCards_;
    std::unordered_set<std::int64_t> freshThumbnails_;
    std::vector<std::int64_t> thumbnailQueue_;
    std::unordered_set<std::int64_t> queuedThumbnails_;            // the same as the queue, for a quick look
    std::unordered_map<std::int64_t, std::int64_t> thumbnailUse_;  // the value of the clock when it was last seen
    std::int64_t useClock_ = 0;
    std::int64_t thumbnailGeneration_ = 0;
};

}  // namespace quorvel
