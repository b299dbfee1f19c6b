#pragma once

#include "Model/Thumbnails.h"
#include "Rendering/TestCards.h"
#include "Support/Desktop/ManualScheduler.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace quorvel {

inline constexpr std::uint32_t red = 0xFFFF0000;
inline constexpr std::uint32_t green = 0xFF00FF00;

/// Cards wide enough to draw fast.
inline CardRenderer plainRenderer(std::uint32_t color) {
    CardRenderer renderer;
    renderer.template_ = CardTemplate("Test", CardSize(CardSize::Preset::custom, 60, 6), {}, {});
    renderer.template_.background =
        RGBA::bytes(std::uint8_t(color >> 16), std::uint8_t(color >> 8), std::uint8_t(color));
    renderer.template_.cornerRadiusMM = 1;
    renderer.missingPictures = CardRenderer::MissingPictures::mark;
    return renderer;
}

/// A grid without a window.
class Grid {
public:
    explicit Grid(int count) : Grid(count, scheduler) {}
    Grid(int count, Scheduler& through)
        : thumbnails(
              through,
              [this] {
                  ++runs;
                  return input;
              },
              [this] { note(); }) {
        setDeck(count);
    }

    void setDeck(int count) {
        auto deck = std::make_shared<Deck>();
        deck->cards = numberedCards(count);
        input.deck = deck;
    }
    void invalidate() { thumbnails.invalidateThumbnails(std::int64_t(input.deck->cards.size())); }
    void appear(std::int64_t first, std::int64_t end) {
        for (std::int64_t id = first; id < end; ++id) thumbnails.cardAppeared(id);
    }
    void disappear(std::int64_t first, std::int64_t end) {
        for (std::int64_t id = first; id < end; ++id) thumbnails.cardDisappeared(id);
    }

    const std::map<std::int64_t, Image>& images() const { return thumbnails.queue().images(); }
    std::uint32_t colorOf(std::int64_t id) const {
        const Image& image = images().at(id);
        return pixelAt(image, image.width() / 2, image.height() / 2);
    }

    ManualScheduler scheduler;
    Thumbnails::Input input{std::make_shared<const Deck>(), plainRenderer(red)};
    int runs = 0;
    int changes = 0;
    std::vector<std::int64_t> rendered;  ///< in the order of arrival
    Thumbnails thumbnails;

private:
    void note() {
        ++changes;
        for (const auto& [id, image] : images())
            if (seen_.insert(image.id()).second) rendered.push_back(id);
    }

    std::set<std::uint64_t> seen_;
};

}  // namespace quorvel
