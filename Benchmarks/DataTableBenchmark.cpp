// The table preview with far more rows and columns than anyone has cards: how long each step holds the main thread up.

#include "Controls/Picker.h"
#include "DataTab/ColumnListModel.h"
#include "DataTab/DataTableView.h"
#include "ProcessorTime.h"
#include "Support/Desktop/EventLoop.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QScrollBar>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvel {
namespace {

using Table = std::shared_ptr<const DataTable>;

Table tableOf(std::size_t rows, std::size_t columns) {
    static const std::vector<std::string> texts = {
        "Pear", "Gain 2 {icon:coin}. **Draw** a card, then discard one of your choice.", "3", "art/pear.png", "",
        "שלום"};
    std::vector<std::string> headers;
    for (std::size_t column = 0; column < columns; ++column) headers.push_back("Column " + std::to_string(column));
    TextRows cells;
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column) cells.appendCell(texts[(row + column) % texts.size()]);
        cells.endRow();
    }
    return std::make_shared<const DataTable>(std::move(headers), std::move(cells), "cards.csv");
}

/// Everything that a step brings with it on the main thread, its painting included.
void measure(benchmark::State& state, const std::function<void()>& step) {
    const double start = processorTime();
    step();
    runWhatWaits();
    state.SetIterationTime((processorTime() - start) / 1e3);
}

struct Screen {
    DataTableView view;
    explicit Screen(const Table& table) {
        view.resize(860, 800);
        view.show();
        view.setTable(table, DataTableView::Places::dropped);
        runWhatWaits();
        paint();
    }
    void paint() { view.viewport()->repaint(); }
};

void sets(benchmark::State& state) {
    const Table table = tableOf(std::size_t(state.range(0)), std::size_t(state.range(1)));
    Screen screen(nullptr);
    for (auto _ : state) {
        measure(state, [&] {
            screen.view.setTable(table, DataTableView::Places::dropped);
            screen.paint();
        });
        screen.view.setTable(nullptr, DataTableView::Places::dropped);
    }
}
BENCHMARK(sets)
    ->Args({5'000, 10})
    ->Args({100'000, 50})
    ->Args({5, 20'000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void scrolls(benchmark::State& state) {
    const Table table = tableOf(std::size_t(state.range(0)), std::size_t(state.range(1)));
    Screen screen(table);
    QScrollBar& down = *screen.view.verticalScrollBar();
    QScrollBar& across = *screen.view.horizontalScrollBar();
    int step = 0;
    for (auto _ : state)
        measure(state, [&] {
            down.setValue(int(std::int64_t(++step) * 7'919 % (down.maximum() + 1)));
            across.setValue(int(std::int64_t(step) * 1'049 % (across.maximum() + 1)));
            screen.paint();
        });
}
BENCHMARK(scrolls)
    ->Args({5'000, 10})
    ->Args({100'000, 50})
    ->Args({5, 20'000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void reloads(benchmark::State& state) {
    const auto rows = std::size_t(state.range(0));
    const auto columns = std::size_t(state.range(1));
    const Table tables[] = {tableOf(rows, columns), tableOf(rows + 100, columns + 1)};
    Screen screen(tables[0]);
    std::size_t next = 0;
    for (auto _ : state) {
        next = 1 - next;
        measure(state, [&] {
            screen.view.setTable(tables[next], DataTableView::Places::kept);
            screen.paint();
        });
    }
}
BENCHMARK(reloads)
    ->Args({5'000, 10})
    ->Args({100'000, 50})
    ->Args({5, 20'000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void selectsAll(benchmark::State& state) {
    const Table table = tableOf(std::size_t(state.range(0)), std::size_t(state.range(1)));
    Screen screen(table);
    for (auto _ : state) {
        measure(state, [&] {
            screen.view.selectAll();
            screen.paint();
        });
        screen.view.clearSelection();
    }
}
BENCHMARK(selectsAll)->Args({100'000, 50})->Args({5, 20'000})->UseManualTime()->Unit(benchmark::kMillisecond);

void copiesAll(benchmark::State& state) {
    const Table table = tableOf(std::size_t(state.range(0)), std::size_t(state.range(1)));
    Screen screen(table);
    screen.view.selectAll();
    for (auto _ : state) measure(state, [&] { screen.view.copy(); });
}
BENCHMARK(copiesAll)->Args({5'000, 10})->Args({100'000, 50})->UseManualTime()->Unit(benchmark::kMillisecond);

/// Seven pickers get other columns and show one of them.
void fillsThePickers(benchmark::State& state) {
    std::vector<std::string> headers;
    for (std::int64_t i = 0; i < state.range(0); ++i) headers.push_back("Column " + std::to_string(i));
    ColumnListModel columns;
    std::vector<std::unique_ptr<Picker>> pickers;
    for (int i = 0; i < 7; ++i) {
        pickers.push_back(std::make_unique<Picker>("Column"));
        pickers.back()->setModel(&columns);
        pickers.back()->QWidget::show();
    }
    runWhatWaits();
    for (auto _ : state) {
        headers.front() += 'x';
        measure(state, [&] {
            columns.setHeaders(headers);
            for (const auto& picker : pickers) picker->show(columns.indexOf(headers.back()));
        });
    }
}
BENCHMARK(fillsThePickers)->Arg(20'000)->UseManualTime()->Unit(benchmark::kMillisecond);

void opensAPicker(benchmark::State& state) {
    std::vector<std::string> headers;
    for (std::int64_t i = 0; i < state.range(0); ++i) headers.push_back("Column " + std::to_string(i));
    ColumnListModel columns;
    columns.setHeaders(headers);
    for (auto _ : state) {
        Picker picker("Column");
        picker.setModel(&columns);
        picker.QWidget::show();
        runWhatWaits();
        picker.show(int(headers.size()) / 2);
        measure(state, [&] { picker.showPopup(); });
        picker.hidePopup();
    }
}
BENCHMARK(opensAPicker)->Arg(10)->Arg(20'000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvel

int main(int count, char** arguments) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
