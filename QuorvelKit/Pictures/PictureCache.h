#pragma once

#include "Drawing/EncodedPicture.h"
#include "Drawing/Image.h"
#include "Drawing/ImageScaling.h"
#include "Foundation/Geometry.h"

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>

namespace quorvel {

/// Pictures in memory up to a budget of bytes; the least recently used go first. Not for several threads at once.
class PictureCache {
public:
    enum class Kind { image, icon, encoded, placed };

    /// What a picture was made from. The rectangles count for placed images only.
    struct Key {
        Kind kind = Kind::image;
        std::string name;
        Rect target{};
        Rect visible{};
        bool operator==(const Key&) const = default;
    };

    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    using Value = std::variant<Image, EncodedPicture, PlacedImage>;

    explicit PictureCache(std::size_t budget) : budget_(budget) {}

    /// The picture, which counts as used just now.
    std::optional<Value> find(const Key& key);

    /// Keeps the picture and drops others for it; one that is larger than the budget isn't kept.
    void store(const Key& key, Value value);

    /// Drops every placed image of a name.
    void dropPlaced(const std::string& name);

    std::size_t byteCount() const { return byteCount_; }

private:
    struct Entry {
        Key key;
        Value value;
        std::size_t byteCount = 0;
    };
    using Entries = std::list<Entry>;

    void drop(Entries::iterator entry);

    std::size_t budget_;
    std::size_t byteCount_ = 0;
    Entries entries_;  ///< the most recently used in front
    std::unordered_map<Key, Entries::iterator, KeyHash> index_;
};

}  // namespace quorvel
