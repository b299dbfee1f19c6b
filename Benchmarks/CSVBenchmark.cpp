// How fast text becomes a table, on one core. The bytes per second are those of the file.

#include "Spreadsheet/CSV.h"

#include <benchmark/benchmark.h>
#include <cstddef>
#include <random>
#include <string>

namespace {

using namespace quorvel;

constexpr std::size_t fileSize = 50'000'000;

/// What a designer's export looks like: short names and numbers, a quoted rules text with commas, doubled quotes and
/// now and then a line end, some letters beyond ASCII.
std::string cardFile(std::size_t size) {
    std::mt19937 random(1);
    const auto pick = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    constexpr const char* names[] = {"Ember Fox", "Tide Caller", "Glass Orchard", "Élan", "Moss Golem", "Ünruh"};
    constexpr const char* rules[] = {"Draw two cards, then discard one. ", "\"\"Haste\"\", at dusk. ",
                                     "When it arrives, gain {coin}.\n", "Costs **1** less for each {leaf} you own. "};
    std::string text = "Name,Cost,Type,Rules,Art,Copies\r\n";
    while (text.size() < size) {
        text += names[pick(6)];
        text += ' ';
        text += std::to_string(random() % 10'000);
        text += ',' + std::to_string(random() % 10);
        text += pick(2) == 0 ? ",Creature,\"" : ",Spell,\"";
        for (std::size_t i = 0; i < 1 + pick(5); ++i) text += rules[pick(4)];
        text += "\",art/" + std::to_string(random() % 10'000) + ".png,";
        text += std::to_string(random() % 4) + "\r\n";
    }
    return text;
}

/// The hardest kind for a parser: nothing but cells of a few characters.
std::string numberFile(std::size_t size) {
    std::mt19937 random(2);
    std::string text = "a,b,c,d,e,f,g,h\n";
    while (text.size() < size) {
        for (int i = 0; i < 8; ++i) {
            if (i > 0) text += ',';
            text += std::to_string(random() % 1'000);
        }
        text += '\n';
    }
    return text;
}

void measure(benchmark::State& state, const std::string& file) {
    for (auto _ : state) benchmark::DoNotOptimize(CSV::table(file, "cards.csv"));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

void tableOfCards(benchmark::State& state) {
    measure(state, cardFile(fileSize));
}
BENCHMARK(tableOfCards)->Unit(benchmark::kMillisecond);

void tableOfNumbers(benchmark::State& state) {
    measure(state, numberFile(fileSize));
}
BENCHMARK(tableOfNumbers)->Unit(benchmark::kMillisecond);

}  // namespace
