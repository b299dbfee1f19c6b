// What the window shows while a deck is edited: the canvas, a page of the print preview and a batch of thumbnails of
// the sample deck, and what the main thread pays for them with a deck of 5,000 cards.

#include "Model/Previews.h"
#include "Model/ThumbnailQueue.h"
#include "Model/Thumbnails.h"
#include "Rendering/CardImage.h"
#include "SampleOnDisk.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>

using namespace quorvel;

namespace {

constexpr std::int64_t manyCards = 5000;

const SampleOnDisk& sample() {
    static const SampleOnDisk made;
    return made;
}

CardRenderer sampleRenderer() {
    return sample().renderer(SampleTemplates::Kind::classic, CardRenderer::MissingPictures::mark);
}

/// The sample deck's cards over and over, 999 copies of each.
std::shared_ptr<const Deck> largeDeck() {
    auto deck = std::make_shared<Deck>();
    const auto& cards = sample().cards();
    for (std::int64_t id = 0; id < manyCards; ++id) {
        Card card = cards[std::size_t(id) % cards.size()];
        card.id = id;
        card.quantity = 999;
        deck->cards.push_back(std::move(card));
    }
    return deck;
}

void canvas(benchmark::State& state) {
    const auto draw = Previews::canvas(sampleRenderer(), sample().cards()[3], Side::front);
    benchmark::DoNotOptimize(draw());  // fills the cache of pictures
    for (auto _ : state) benchmark::DoNotOptimize(draw());
}
BENCHMARK(canvas)->Unit(benchmark::kMillisecond);

void page(benchmark::State& state) {
    const auto draw = Previews::sheet(sampleRenderer(), sample().deck(), {}, 0, false);
    benchmark::DoNotOptimize((*draw)());
    for (auto _ : state) benchmark::DoNotOptimize((*draw)());
}
BENCHMARK(page)->Unit(benchmark::kMillisecond);

void thumbnailBatch(benchmark::State& state) {
    const CardRenderer renderer = sampleRenderer();
    const double dpi = Previews::thumbnailDPI(renderer.template_, Thumbnails::width);
    for (auto _ : state) {
        for (std::size_t i = 0; i < ThumbnailQueue::batch; ++i)
            benchmark::DoNotOptimize(CardImage::render(&sample().cards()[i], Side::front, renderer,
                                                       CardImage::Bleed::none, CardImage::Corners::rounded, dpi));
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(ThumbnailQueue::batch));
}
BENCHMARK(thumbnailBatch)->Unit(benchmark::kMillisecond);

/// The main thread's share of showing another page of 5,000,000 cards.
void startPage(benchmark::State& state) {
    const auto deck = largeDeck();
    for (auto _ : state) benchmark::DoNotOptimize(Previews::sheet(sampleRenderer(), deck, {}, INT64_MAX, false));
}
BENCHMARK(startPage)->Unit(benchmark::kMicrosecond);

Image smallImage() {
    return Image(1, 1, allocatePixels(1, 1), Image::Alpha::varying);
}

/// All cards seen, every second one on screen with its image: no window shows so many.
ThumbnailQueue crowdedQueue() {
    ThumbnailQueue queue;
    std::vector<std::pair<std::int64_t, Image>> images;
    for (std::int64_t id = 0; id < manyCards; ++id) {
        queue.appeared(id);
        images.emplace_back(id, smallImage());
    }
    queue.store(std::move(images));
    for (std::int64_t id = 0; id < manyCards; id += 2) queue.disappeared(id);
    return queue;
}

/// With 5,000 cards still there, and with all but ten lost.
void invalidate(benchmark::State& state) {
    const ThumbnailQueue crowded = crowdedQueue();
    const auto count = state.range(0);
    for (auto _ : state) {
        state.PauseTiming();
        auto queue = std::make_unique<ThumbnailQueue>(crowded);
        state.ResumeTiming();
        const auto change = queue->invalidate(count);
        benchmark::DoNotOptimize(change.gone.size());
        benchmark::DoNotOptimize(queue->prune());
        state.PauseTiming();
        queue.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(invalidate)->Arg(manyCards)->Arg(10)->Unit(benchmark::kMicrosecond);

/// Switching decks: a full store of thumbnails is taken out. Freeing it (ten milliseconds) is left to the background.
void clear(benchmark::State& state) {
    const CardRenderer renderer = sampleRenderer();
    const double dpi = Previews::thumbnailDPI(renderer.template_, Thumbnails::width);
    ThumbnailQueue::Change change;
    for (auto _ : state) {
        state.PauseTiming();
        ThumbnailQueue queue;
        std::vector<std::pair<std::int64_t, Image>> images;
        for (std::size_t id = 0; id < ThumbnailQueue::limit; ++id)
            images.emplace_back(id, *CardImage::render(nullptr, Side::back, renderer, CardImage::Bleed::none,
                                                       CardImage::Corners::rounded, dpi));
        queue.store(std::move(images));
        change = {};
        state.ResumeTiming();
        change = queue.clear();
    }
}
BENCHMARK(clear)->Iterations(50)->Unit(benchmark::kMicrosecond);

/// A deck of 5,000 cards flung from top to bottom and back: 10,000 tiles come and go.
void fling(benchmark::State& state) {
    constexpr std::int64_t onScreen = 24;
    for (auto _ : state) {
        ThumbnailQueue queue;
        for (std::int64_t step = 0; step < 2 * manyCards; ++step) {
            const std::int64_t id = step < manyCards ? step : 2 * manyCards - 1 - step;
            const std::int64_t left = step < manyCards ? id - onScreen : id + onScreen;
            queue.appeared(id);
            queue.disappeared(left);
        }
        benchmark::DoNotOptimize(queue.prune());
    }
    state.SetItemsProcessed(state.iterations() * 2 * manyCards);
}
BENCHMARK(fling)->Unit(benchmark::kMillisecond);

}  // namespace
