// Drawing cards of the sample deck: a card at 300 dpi and at the size of a thumbnail with its pictures cached, its PNG,
// and the print sheets of the whole deck.

#include "Printing/SheetPDF.h"
#include "Rendering/CardImage.h"
#include "SampleOnDisk.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>

using namespace quorvel;

namespace {

const SampleOnDisk& sample() {
    static const SampleOnDisk made;
    return made;
}

std::optional<Image> draw(const Card& card, const CardRenderer& renderer, double dpi) {
    return CardImage::render(&card, Side::front, renderer, CardImage::Bleed::none, CardImage::Corners::square, dpi);
}

/// Each round draws another card of the deck; the first round of all has filled the cache.
void drawCards(benchmark::State& state, SampleTemplates::Kind kind, double dpi) {
    const auto renderer = sample().renderer(kind);
    const auto& cards = sample().cards();
    for (const Card& card : cards) draw(card, renderer, dpi);
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(draw(cards[next++ % cards.size()], renderer, dpi));
}
BENCHMARK_CAPTURE(drawCards, classic_300dpi, SampleTemplates::Kind::classic, 300.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCards, tarot_300dpi, SampleTemplates::Kind::tarot, 300.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCards, mini_300dpi, SampleTemplates::Kind::mini, 300.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCards, classic_thumbnail, SampleTemplates::Kind::classic, 110.0)->Unit(benchmark::kMillisecond);

void encodeCards(benchmark::State& state) {
    const auto renderer = sample().renderer(SampleTemplates::Kind::classic);
    std::vector<Image> images;
    for (const Card& card : sample().cards()) images.push_back(*draw(card, renderer, 300));
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(CardImage::pngData(images[next++ % images.size()], 300));
}
BENCHMARK(encodeCards)->Unit(benchmark::kMillisecond);

void printSheets(benchmark::State& state) {
    const auto renderer = sample().renderer(SampleTemplates::Kind::classic);
    std::vector<Card> cards;
    while (cards.size() < 500) cards.push_back(sample().cards()[cards.size() % sample().cards().size()]);
    for (auto _ : state) benchmark::DoNotOptimize(SheetPDF::make(cards, renderer, {}, "Benchmark"));
    state.SetItemsProcessed(state.iterations() * std::int64_t(cards.size()));
}
BENCHMARK(printSheets)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

}  // namespace
