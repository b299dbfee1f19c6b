#include "Model/Thumbnails.h"

#include "Model/Previews.h"
#include "Rendering/CardImage.h"

#include <utility>

namespace quorvel {

Thumbnails::Thumbnails(Scheduler& scheduler, std::function<Input()> input, std::function<void()> changed)
    : scheduler_(scheduler), input_(std::move(input)), changed_(std::move(changed)) {}

void Thumbnails::cardAppeared(std::int64_t id) {
    if (queue_.appeared(id)) pumpThumbnails(afterAppearance);
}

void Thumbnails::cardDisappeared(std::int64_t id) {
    queue_.disappeared(id);
}

void Thumbnails::invalidateThumbnails(std::int64_t count) {
    thumbTask_.cancel();
    auto change = queue_.invalidate(count);
    pumpThumbnails(afterInvalidation);
    announce(std::move(change));
}

void Thumbnails::clear() {
    thumbTask_.cancel();
    announce(queue_.clear());
}

void Thumbnails::pumpThumbnails(std::chrono::milliseconds delay) {
    if (thumbTask_ || !queue_.prune()) return;
    const auto run = std::make_shared<const Run>(input_(), queue_.thumbnailGeneration());
    thumbTask_ = scheduler_.later(delay, [this, run] { runBatch(run); });
}

void Thumbnails::runBatch(const std::shared_ptr<const Run>& run) {
    if (run->generation != queue_.thumbnailGeneration()) return;
    auto ids = queue_.takeBatch(std::int64_t(run->input.deck->cards.size()));
    if (ids.empty()) return finishBatch(*run, {});  // all have scrolled away during the delay
    thumbTask_ = inBackground(
        scheduler_, [run, ids = std::move(ids)] { return draw(run->input, ids); },
        [this, run](Drawn drawn) { finishBatch(*run, std::move(drawn)); });
}

void Thumbnails::finishBatch(const Run& run, Drawn drawn) {
    if (run.generation != queue_.thumbnailGeneration()) return;
    auto change = queue_.store(std::move(drawn));
    thumbTask_ = {};
    pumpThumbnails(std::chrono::milliseconds(0));
    announce(std::move(change));
}

void Thumbnails::announce(ThumbnailQueue::Change change) {
    if (change.gone.size() > ThumbnailQueue::batch) {
        // A grid full of pictures is a hundred megabytes to give back: too long for the main thread.
        const auto gone = std::make_shared<std::vector<Image>>(std::move(change.gone));
        scheduler_
            .inBackground([gone] {
                gone->clear();
                return Scheduler::Job();
            })
            .detach();
    }
    if (change.any) changed_();
}

Thumbnails::Drawn Thumbnails::draw(const Input& input, const std::vector<std::int64_t>& ids) {
    const double dpi = Previews::thumbnailDPI(input.renderer.template_, width);
    Drawn drawn;
    for (const std::int64_t id : ids) {
        auto image = CardImage::render(&input.deck->cards[std::size_t(id)], Side::front, input.renderer,
                                       CardImage::Bleed::none, CardImage::Corners::rounded, dpi);
        if (image) drawn.emplace_back(id, std::move(*image));
    }
    return drawn;
}

}  // namespace quorvel
