// Drawing cards of the sample deck: a card at 300 dpi and at the size of a thumbnail with its pictures cached, its PNG,
// and the print sheets of the whole deck.

#include "Cards/Deck.h"
#include "Printing/SheetPDF.h"
#include "Rendering/CardImage.h"
#include "Samples/SampleDeck.h"
#include "Samples/SampleTemplates.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <unistd.h>

using namespace quorvel;

namespace {

/// The sample deck's cards and its pictures on the disk, for as long as the program runs.
class Sample {
public:
    Sample() : folder_(std::filesystem::temp_directory_path() / ("quorvel-benchmark-" + std::to_string(getpid()))) {
        if (!SampleDeck::write(folder_)) {
            std::fputs("the sample deck can't be written\n", stderr);
            std::exit(1);
        }
        DataTable table = SampleDeck::table();
        const auto mapping = FieldMapping::guess(table.headers);
        cards_ = Deck(std::move(table), mapping).cards;
        assets_ = std::make_shared<Assets>(std::vector{folder_});
    }
    ~Sample() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Sample(const Sample&) = delete;
    Sample& operator=(const Sample&) = delete;

    const std::vector<Card>& cards() const { return cards_; }

    CardRenderer renderer(SampleTemplates::Kind kind) const {
        return {SampleTemplates::make(kind, SampleDeck::name), assets_};
    }

private:
    std::filesystem::path folder_;
    std::vector<Card> cards_;
    std::shared_ptr<Assets> assets_;
};

const Sample& sample() {
    static const Sample made;
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
