// The grid of a deck of 5,000 cards: what a scroll, a page, a reload and a resize hold the main thread up for.

#include "CardsTab/CardGrid.h"
#include "CardsTab/CardsView.h"
#include "ProcessorTime.h"
#include "QtPlatform/QtScheduler.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/FakeDesktop.h"
#include "WindowBenchmark.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QScrollBar>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <fstream>
#include <functional>
#include <string>

namespace quorvel {
namespace {

constexpr int cardCount = 5000;

std::string deck(int rows) {
    std::string text = "Name,Text,Cost,Type,Qty\n";
    for (int i = 0; i < rows; ++i)
        text += "Card " + std::to_string(i) + ",\"Gain {icon:coin} and move one **fruit**.\",2,Courier," +
                std::to_string(i % 4) + "\n";
    return text;
}

/// The Cards tab of a large window with all of its thumbnails drawn.
struct OpenView {
    QApplication& app = application();
    QtScheduler scheduler;
    FakeDesktop desktop;
    AppModel model{scheduler, desktop, AppModel::Persist::no};
    CardsView view{model};
    CardGrid& grid = *view.findChild<CardGrid*>();
    QScrollBar& bar =
        *qobject_cast<QAbstractScrollArea*>(grid.parentWidget()->parentWidget()->parentWidget())->verticalScrollBar();
    double longest = 0;  ///< ms

    explicit OpenView(int rows = cardCount) {
        save(rows);
        view.resize(1400, 900);
        view.show();
        model.useSpreadsheet(desktop.folder / "cards.csv");
        waitForPictures(rows);
    }

    void save(int rows) { std::ofstream(desktop.folder / "cards.csv", std::ios::binary) << deck(rows); }

    void waitForPictures(int rows) {
        const auto done = [&] {
            if (grid.count() != rows || model.state().open._isLoading) return false;
            // All that is seen, not merely some of what was seen before.
            for (int index = 0; index < grid.count(); ++index)
                if (!grid.visibleRegion().intersects(grid.tileRect(index)))
                    continue;
                else if (!model.thumbnails().contains(index))
                    return false;
            return true;
        };
        if (!runUntil(done)) std::abort();
        paint();
        paint();
    }

    /// One turn of what waits on the main thread, painting included.
    void paint() { QApplication::processEvents(); }

    void measure(const std::function<void()>& step) {
        const double start = processorTime();
        step();
        paint();
        longest = std::max(longest, processorTime() - start);
    }

    void report(benchmark::State& state) const { state.counters["longest_ms"] = longest; }
};

/// One notch of the wheel, down and up over all of the deck, with the pictures that come meanwhile.
void scrollsByNotches(benchmark::State& state) {
    OpenView open;
    int step = 144;
    for (auto _ : state) {
        if (open.bar.value() + step > open.bar.maximum() || open.bar.value() + step < 0) step = -step;
        open.measure([&] { open.bar.setValue(open.bar.value() + step); });
    }
    open.report(state);
}
BENCHMARK(scrollsByNotches)->Unit(benchmark::kMillisecond)->Iterations(1000);

/// Where the bar is dragged to: every tile is another.
void jumps(benchmark::State& state) {
    OpenView open;
    int i = 0;
    for (auto _ : state)
        open.measure([&] { open.bar.setValue(int(std::int64_t(open.bar.maximum()) * (++i * 37 % 101) / 101)); });
    open.report(state);
}
BENCHMARK(jumps)->Unit(benchmark::kMillisecond)->Iterations(200);

/// All that is seen drawn once more, each picture at hand.
void paintsAll(benchmark::State& state) {
    OpenView open;
    for (auto _ : state) open.measure([&] { open.grid.repaint(); });
    open.report(state);
}
BENCHMARK(paintsAll)->Unit(benchmark::kMillisecond)->Iterations(200);

/// The window gets wider, pixel by pixel: every picture gets another size with some of them.
void resizes(benchmark::State& state) {
    OpenView open;
    int width = 1400;
    for (auto _ : state) {
        width = width == 1500 ? 1400 : width + 1;
        open.measure([&] { open.view.resize(width, 900); });
    }
    open.report(state);
}
BENCHMARK(resizes)->Unit(benchmark::kMillisecond)->Iterations(300);

/// What the view does when all cards have been read anew, in the middle of the deck.
void reloads(benchmark::State& state) {
    OpenView open;
    open.bar.setValue(open.bar.maximum() / 2);
    open.waitForPictures(cardCount);
    for (auto _ : state) {
        open.model.reloadSpreadsheet();
        // Every turn of the loop until the pictures have come, each measured by itself.
        while (open.model.state().open._isLoading) open.measure([] {});
        open.measure([&] { open.grid.repaint(); });
    }
    open.report(state);
}
BENCHMARK(reloads)->Unit(benchmark::kMillisecond)->Iterations(30);

}  // namespace
}  // namespace quorvel
