#pragma once

#include "Cards/Deck.h"
#include "Desktop/Scheduler.h"
#include "Model/ThumbnailQueue.h"
#include "Rendering/CardRenderer.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace quorvel {

/// Draws the thumbnails of the grid: one runner works the queue off in batches, in the background, and lets the event
/// loop have its turn between them. A card whose image can't be made keeps its old one and is tried again when it next
/// appears. Main thread only; what was under way ends with this object.
class Thumbnails {
public:
    static constexpr std::chrono::milliseconds afterAppearance{15};
    static constexpr std::chrono::milliseconds afterInvalidation{90};
    static constexpr double width = 400;  ///< pixels across the card's trim width

    /// What to draw from, copied when a run begins. The deck is never null.
    struct Input {
        std::shared_ptr<const Deck> deck;
        CardRenderer renderer;
    };

    /// `input` is asked on the main thread, in the middle of the calls below. `changed` is told when images have come
    /// or gone, as the last thing of a call or a batch.
    Thumbnails(Scheduler& scheduler, std::function<Input()> input, std::function<void()> changed);
    Thumbnails(const Thumbnails&) = delete;
    Thumbnails& operator=(const Thumbnails&) = delete;

    void cardAppeared(std::int64_t id);
    void cardDisappeared(std::int64_t id);

    /// The template, the table or the assets have changed; the deck now has `count` cards.
    void invalidateThumbnails(std::int64_t count);

    /// Another deck is opened: no picture of the old one may land in it.
    void clear();

    const ThumbnailQueue& queue() const { return queue_; }

private:
    /// A run between its pump and the end of its batch. Shared with the background, which only reads it.
    struct Run {
        Input input;
        std::int64_t generation = 0;
    };
    using Drawn = std::vector<std::pair<std::int64_t, Image>>;

    void pumpThumbnails(std::chrono::milliseconds delay);
    void runBatch(const std::shared_ptr<const Run>& run);
    void finishBatch(const Run& run, Drawn drawn);
    void announce(ThumbnailQueue::Change change);
    static Drawn draw(const Input& input, const std::vector<std::int64_t>& ids);

    Scheduler& scheduler_;
    std::function<Input()> input_;
    std::function<void()> changed_;
    ThumbnailQueue queue_;
    Scheduler::Task thumbTask_;  // set during all of the runner's life
};

}  // namespace quorvel
