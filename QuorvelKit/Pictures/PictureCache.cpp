#include "Pictures/PictureCache.h"

#include <functional>
#include <iterator>
#include <utility>

namespace quorvel {
namespace {

std::size_t byteCountOf(const PictureCache::Value& value) {
    if (const auto* image = std::get_if<Image>(&value)) return image->byteCount();
    if (const auto* placed = std::get_if<PlacedImage>(&value)) return placed->image.byteCount();
    return std::get<EncodedPicture>(value).jpeg->size();
}

}  // namespace

std::size_t PictureCache::KeyHash::operator()(const Key& key) const {
    std::size_t hash = std::hash<std::string>()(key.name) + std::size_t(key.kind);
    for (const Rect& rect : {key.target, key.visible})
        for (const double value : {rect.x, rect.y, rect.width, rect.height})
            hash = hash * 0x9E3779B97F4A7C15u + std::hash<double>()(value);
    return hash;
}

std::optional<PictureCache::Value> PictureCache::find(const Key& key) {
    const auto found = index_.find(key);
    if (found == index_.end()) return std::nullopt;
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->value;
}

void PictureCache::store(const Key& key, Value value) {
    if (const auto found = index_.find(key); found != index_.end()) drop(found->second);
    const std::size_t added = byteCountOf(value);
    if (added > budget_) return;
    while (byteCount_ + added > budget_) drop(std::prev(entries_.end()));
    entries_.push_front({key, std::move(value), added});
    index_.emplace(key, entries_.begin());
    byteCount_ += added;
}

void PictureCache::dropPlaced(const std::string& name) {
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto next = std::next(entry);
        if (entry->key.kind == Kind::placed && entry->key.name == name) drop(entry);
        entry = next;
    }
}

void PictureCache::drop(Entries::iterator entry) {
    byteCount_ -= entry->byteCount;
    index_.erase(entry->key);
    entries_.erase(entry);
}

}  // namespace quorvel
