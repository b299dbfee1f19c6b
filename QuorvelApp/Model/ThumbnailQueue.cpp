#include "Model/ThumbnailQueue.h"

#include "Foundation/Housekeeping.h"

#include <algorithm>
#include <utility>

namespace quorvel {

namespace {

using Images = std::map<std::int64_t, Image>;

/// Takes the images from `first` on out of `images`.
std::vector<Image> takeFrom(Images& images, Images::iterator first) {
    std::vector<Image> taken;
    for (auto each = first; each != images.end(); ++each) taken.push_back(std::move(each->second));
    images.erase(first, images.end());
    return taken;
}

}  // namespace

bool ThumbnailQueue::appeared(std::int64_t id) {
    visibleCards_.insert(id);
    // A fresh image is seen, too: that is what keeps it.
    thumbnailUse_[id] = ++useClock_;
    if (freshThumbnails_.contains(id) || !queuedThumbnails_.insert(id).second) return false;
    thumbnailQueue_.push_back(id);
    return true;
}

void ThumbnailQueue::disappeared(std::int64_t id) {
    visibleCards_.erase(id);
}

ThumbnailQueue::Change ThumbnailQueue::invalidate(std::int64_t count) {
    ++thumbnailGeneration_;
    freshThumbnails_.clear();
    auto lost = takeFrom(images_, images_.lower_bound(count));
    visibleCards_.erase(visibleCards_.lower_bound(count), visibleCards_.end());
    std::erase_if(thumbnailUse_, [count](const auto& use) { return use.first >= count; });

    thumbnailQueue_.assign(visibleCards_.begin(), visibleCards_.end());
    queuedThumbnails_ = {thumbnailQueue_.begin(), thumbnailQueue_.end()};
    return {!lost.empty(), std::move(lost)};
}

bool ThumbnailQueue::prune() {
    std::erase_if(thumbnailQueue_, [this](std::int64_t id) {
        if (visibleCards_.contains(id) && !freshThumbnails_.contains(id)) return false;
        queuedThumbnails_.erase(id);
        return true;
    });
    return !thumbnailQueue_.empty();
}

std::vector<std::int64_t> ThumbnailQueue::takeBatch(std::int64_t count) {
    const auto end = thumbnailQueue_.begin() + std::ptrdiff_t(std::min(batch, thumbnailQueue_.size()));
    std::vector<std::int64_t> taken(thumbnailQueue_.begin(), end);
    thumbnailQueue_.erase(thumbnailQueue_.begin(), end);
    for (const std::int64_t id : taken) queuedThumbnails_.erase(id);
    std::erase_if(taken, [&](std::int64_t id) { return id < 0 || id >= count || !visibleCards_.contains(id); });
    return taken;
}

ThumbnailQueue::Change ThumbnailQueue::store(std::vector<std::pair<std::int64_t, Image>> images) {
    std::vector<Image> gone;
    for (auto& [id, image] : images) {
        if (const auto [old, isNew] = images_.try_emplace(id, image); !isNew)
            gone.push_back(std::exchange(old->second, std::move(image)));
        freshThumbnails_.insert(id);
    }
    evict(gone);
    return {!images.empty() || !gone.empty(), std::move(gone)};
}

void ThumbnailQueue::evict(std::vector<Image>& gone) {
    if (images_.size() <= limit) return;
    std::vector<std::int64_t> keys;
    keys.reserve(images_.size());
    for (const auto& [id, image] : images_) keys.push_back(id);
    for (const std::int64_t id : Housekeeping::evictions(keys, visibleCards_, thumbnailUse_, limit)) {
        gone.push_back(std::move(images_.extract(id).mapped()));
        freshThumbnails_.erase(id);
        thumbnailUse_.erase(id);
    }
}

ThumbnailQueue::Change ThumbnailQueue::clear() {
    ++thumbnailGeneration_;
    auto gone = takeFrom(images_, images_.begin());
    visibleCards_.clear();
    freshThumbnails_.clear();
    thumbnailQueue_.clear();
    queuedThumbnails_.clear();
    thumbnailUse_.clear();
    return {!gone.empty(), std::move(gone)};
}

}  // namespace quorvel
