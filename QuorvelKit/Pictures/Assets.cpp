#include "Pictures/Assets.h"

#include "Foundation/Text.h"
#include "Pictures/PictureCache.h"
#include "Pictures/PictureLocation.h"
#include "Pictures/PictureReader.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quorvel {
namespace {

using Key = PictureCache::Key;
using Kind = PictureCache::Kind;

constexpr std::array<std::string_view, 7> iconExtensions{"png", "jpg", "jpeg", "pdf", "heic", "tif", "tiff"};

std::uint64_t idOf(const Image& image) {
    return image.id();
}

std::uint64_t idOf(const EncodedPicture& picture) {
    return picture.id;
}

Image numbered(const Image& image, std::uint64_t id) {
    return image.renumbered(id);
}

EncodedPicture numbered(EncodedPicture picture, std::uint64_t id) {
    picture.id = id;
    return picture;
}

std::string trimmed(std::string_view name) {
    return std::string(Text::trimWhitespaceAndNewlines(name));
}

}  // namespace

struct Assets::Tables {
    std::mutex lock;
    std::condition_variable ended;  ///< something that was underway has come to its end

    // All below is guarded by the lock. Pictures go by their trimmed name, icons by their lower-case one.
    std::unordered_map<std::string, Image> registered;
    std::unordered_map<std::string, std::filesystem::path> locations;
    std::unordered_map<std::string, PictureReader::Header> headers;
    std::unordered_set<std::string> misses;
    std::unordered_set<std::string> iconMisses;
    PictureCache cache{pixelBudget};
    std::unordered_set<Key, PictureCache::KeyHash> underway;

    /// The number of each picture at its first reading. One that was dropped and read anew keeps it, so that a document
    /// still stores it once.
    std::unordered_map<Key, std::uint64_t, PictureCache::KeyHash> ids;

    bool isMiss(const Key& key) const {
        return (key.kind == Kind::image && misses.contains(key.name)) ||
               (key.kind == Kind::icon && iconMisses.contains(key.name));
    }

    /// The picture of the key from the cache, from the thread that is just making it, or from `make`, which runs
    /// without the lock and answers an optional T.
    template <class T, class Make>
    std::optional<T> obtain(const Key& key, Make make) {
        std::unique_lock guard(lock);
        for (;;) {
            if (auto found = cache.find(key)) return std::get<T>(std::move(*found));
            if (isMiss(key)) return std::nullopt;
            if (underway.insert(key).second) break;
            ended.wait(guard);
        }
        guard.unlock();
        std::optional<T> made;
        const auto end = [&] {
            guard.lock();
            underway.erase(key);
            ended.notify_all();
        };
        try {
            made = make();
        } catch (...) {
            end();
            throw;
        }
        end();
        if constexpr (!std::is_same_v<T, PlacedImage>)
            if (made) made = numbered(*made, ids.try_emplace(key, idOf(*made)).first->second);
        if (made)
            cache.store(key, *made);
        else if (key.kind == Kind::image)
            misses.insert(key.name);
        else if (key.kind == Kind::icon)
            iconMisses.insert(key.name);
        return made;
    }
};

Assets::Assets(std::vector<std::filesystem::path> folders, std::optional<std::filesystem::path> iconFolder)
    : folders_(std::move(folders)), iconFolder_(std::move(iconFolder)), tables_(std::make_unique<Tables>()) {}

Assets::~Assets() = default;

std::optional<Image> Assets::registered(const std::string& name) const {
    const std::lock_guard guard(tables_->lock);
    const auto found = tables_->registered.find(name);
    return found == tables_->registered.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::filesystem::path> Assets::locate(const std::string& name) {
    {
        const std::lock_guard guard(tables_->lock);
        if (const auto found = tables_->locations.find(name); found != tables_->locations.end()) return found->second;
    }
    auto location = resolve(name);
    if (location) {
        const std::lock_guard guard(tables_->lock);
        tables_->locations.emplace(name, *location);
    }
    return location;
}

std::optional<PictureReader::Header> Assets::header(const std::string& name) {
    {
        const std::lock_guard guard(tables_->lock);
        if (tables_->misses.contains(name)) return std::nullopt;
        if (const auto found = tables_->headers.find(name); found != tables_->headers.end()) return found->second;
    }
    const auto location = locate(name);
    const auto header = location ? PictureReader::header(*location) : std::nullopt;
    const std::lock_guard guard(tables_->lock);
    if (header)
        tables_->headers.emplace(name, *header);
    else
        tables_->misses.insert(name);
    return header;
}

std::optional<Image> Assets::image(std::string_view rawName) {
    const std::string name = trimmed(rawName);
    if (name.empty()) return std::nullopt;
    if (auto image = registered(name)) return image;
    return tables_->obtain<Image>({Kind::image, name}, [&]() -> std::optional<Image> {
        const auto location = locate(name);
        return location ? PictureReader::read(*location) : std::nullopt;
    });
}

std::optional<Assets::PixelSize> Assets::size(std::string_view rawName) {
    const std::string name = trimmed(rawName);
    if (name.empty()) return std::nullopt;
    if (const auto image = registered(name)) return PixelSize{image->width(), image->height()};
    const auto known = header(name);
    return known ? std::optional(PixelSize{known->width, known->height}) : std::nullopt;
}

std::optional<EncodedPicture> Assets::encoded(std::string_view rawName) {
    const std::string name = trimmed(rawName);
    if (name.empty() || registered(name)) return std::nullopt;
    const auto known = header(name);
    if (!known || !known->storable) return std::nullopt;
    return tables_->obtain<EncodedPicture>({Kind::encoded, name}, [&]() -> std::optional<EncodedPicture> {
        const auto location = locate(name);
        return location ? PictureReader::encoded(*location) : std::nullopt;
    });
}

std::optional<PlacedImage> Assets::placed(std::string_view rawName, const Rect& target, const Rect& visible) {
    const std::string name = trimmed(rawName);
    if (name.empty()) return std::nullopt;
    return tables_->obtain<PlacedImage>({Kind::placed, name, target, visible}, [&]() -> std::optional<PlacedImage> {
        const auto source = image(name);
        return source ? ImageScaling::place(*source, target, visible) : std::nullopt;
    });
}

std::optional<Image> Assets::icon(std::string_view rawName) {
    const std::string name = Text::lowercased(rawName);
    if (auto image = registered("icon:" + name)) return image;
    // An icon lies in the folder itself.
    if (!iconFolder_ || name.empty() || name.contains('/') || name.contains('\0')) return std::nullopt;
    return tables_->obtain<Image>({Kind::icon, name}, [&]() -> std::optional<Image> {
        for (const std::string_view extension : iconExtensions)
            if (auto image = PictureReader::read(*iconFolder_ / (name + "." + std::string(extension)))) return image;
        return std::nullopt;
    });
}

std::optional<std::filesystem::path> Assets::resolve(std::string_view name) const {
    return PictureLocation::find(name, folders_);
}

std::vector<std::string> Assets::missing(const std::vector<std::string>& names) {
    std::vector<std::string> result;
    std::unordered_set<std::string> seen;
    for (const std::string& each : names) {
        const std::string name = trimmed(each);
        if (name.empty() || !seen.insert(name).second) continue;
        if (!registered(name) && !header(name)) result.push_back(each);
    }
    return result;
}

void Assets::register_(Image image, std::string_view name) {
    const std::lock_guard guard(tables_->lock);
    tables_->registered.insert_or_assign(std::string(name), std::move(image));
    tables_->cache.dropPlaced(std::string(name));
}

}  // namespace quorvel
