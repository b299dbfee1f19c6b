// The model with the real clock, threads and files: what an edit costs, how long a save takes to show, and how long
// any step holds the main thread up.

#include "Foundation/FileBytes.h"
#include "Model/AppModel.h"
#include "ProcessorTime.h"
#include "QtPlatform/QtScheduler.h"
#include "Samples/SampleDeck.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/FakeDesktop.h"

#include <QCoreApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace quorvel {
namespace {

using SteadyClock = std::chrono::steady_clock;

double milliseconds(SteadyClock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Hands everything on and remembers the longest time that a job took on the main thread.
class MeasuringScheduler final : public Scheduler {
public:
    Task later(std::chrono::milliseconds delay, Job job) override {
        return real_.later(delay, measured(std::move(job)));
    }
    Task inBackground(std::function<Job()> work) override {
        return real_.inBackground([this, work = std::move(work)]() mutable {
            Job tail = work();
            work = {};
            return measured(std::move(tail));
        });
    }
    Task whenReadable(int descriptor, Job job) override {
        return real_.whenReadable(descriptor, measured(std::move(job)));
    }
    void post(Job job) override { real_.post(measured(std::move(job))); }
    Clock::time_point now() const override { return real_.now(); }

    /// Runs an operation of the model.
    void measure(const std::string& what, const std::function<void()>& operation) {
        const double start = processorTime();
        operation();
        auto& longest = operations[what];
        longest = std::max(longest, processorTime() - start);
    }

    double longestJob = 0;                     ///< ms
    std::map<std::string, double> operations;  ///< ms, the longest of each

private:
    Job measured(Job job) {
        return [this, job = std::move(job)] {
            const double start = processorTime();
            if (job) job();
            longestJob = std::max(longestJob, processorTime() - start);
        };
    }

    QtScheduler real_;
};

std::string deck(std::size_t rows, int version) {
    std::string text = "Name,Text,Cost,Type,Art,Icons,Qty\n";
    for (std::size_t i = 0; i < rows; ++i)
        text += "Card " + std::to_string(i) + " v" + std::to_string(version) +
                ",\"Gain {coin} and move one **fruit** to the press. Draw a card.\",2,Courier,,coin; sun,2\n";
    return text;
}

/// A deck of the sample design on a spreadsheet of its own.
struct OpenModel {
    MeasuringScheduler scheduler;
    FakeDesktop desktop;
    std::shared_ptr<UndoStack> undo = std::make_shared<UndoStack>();
    std::filesystem::path file = desktop.folder / "cards.csv";
    AppModel model;

    explicit OpenModel(std::size_t rows) : model(scheduler, desktop, AppModel::Persist::yes) {
        model.setUndoManager(undo);
        save(deck(rows, 0));
        model.useSpreadsheet(file);
        wait([&] { return cards() == rows; });
        scheduler.longestJob = 0;
    }

    std::size_t cards() const { return model.state().open._deck->cards.size(); }
    void save(const std::string& text) { static_cast<void>(FileBytes::write(file, text)); }
    static void wait(const std::function<bool()>& done) {
        if (!runUntil(done)) std::abort();
    }
};

CardTemplate withLayers(const CardTemplate& base, std::size_t count) {
    CardTemplate design = base;
    const std::vector<Layer> pattern = base.front;
    design.front.clear();
    for (std::size_t i = 0; i < count; ++i) {
        Layer layer = pattern[i % pattern.size()];
        layer.id = UUID::random();
        design.front.push_back(std::move(layer));
    }
    return design;
}

/// One movement of a drag, or one key: everything that happens on the main thread before the call returns.
void editsOneOf60Layers(benchmark::State& state) {
    OpenModel open(500);
    open.model.setTemplate(withLayers(open.model.template_(), 60));
    for (std::int64_t id = 0; id < 24; ++id) open.model.cardAppeared(id);
    CardTemplate next = open.model.template_();
    for (auto _ : state) {
        next.front[30].frame.x += 0.001;
        open.model.setTemplate(next);
    }
}
BENCHMARK(editsOneOf60Layers)->Unit(benchmark::kMicrosecond)->Iterations(1000);

/// From the save of a spreadsheet to the last of 24 visible thumbnails, the 350 ms of waiting included.
void saveToThumbnails(benchmark::State& state) {
    OpenModel open(500);
    for (std::int64_t id = 0; id < 24; ++id) open.model.cardAppeared(id);
    OpenModel::wait([&] { return open.model.thumbnails().size() == 24; });
    int version = 0;
    for (auto _ : state) {
        std::map<std::int64_t, const std::uint32_t*> old;
        for (const auto& [id, image] : open.model.thumbnails()) old[id] = image.pixels();
        const std::string text = deck(500, ++version);
        const auto start = SteadyClock::now();
        open.save(text);
        OpenModel::wait([&] {
            return std::ranges::all_of(open.model.thumbnails(),
                                       [&](const auto& each) { return old[each.first] != each.second.pixels(); });
        });
        state.SetIterationTime(milliseconds(SteadyClock::now() - start) / 1000);
    }
    state.counters["longest_main_ms"] = open.scheduler.longestJob;
}
BENCHMARK(saveToThumbnails)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(8);

/// Each operation of the model, and whatever comes of it, with a deck of 5,000 cards: the longest that the main thread
/// is held.
void holdsTheMainThread(benchmark::State& state) {
    OpenModel open(5000);
    AppModel& model = open.model;
    const UUID big = *model.state()._selection;
    model.duplicateDeck(big);
    const auto atRest = [&] { return !model.state().open._isLoading && model.exports().empty(); };
    OpenModel::wait(atRest);
    open.scheduler.longestJob = 0;
    int version = 0;
    for (auto _ : state) {
        auto& s = open.scheduler;
        s.measure("select", [&] { model.setSelection(big); });
        OpenModel::wait([&] { return open.cards() == 5000; });
        s.measure("appear", [&] {
            for (std::int64_t id = 0; id < 200; ++id) model.cardAppeared(id);
        });
        OpenModel::wait([&] { return model.thumbnails().size() >= 200; });
        s.measure("setTemplate", [&] { model.addLayer(LayerKind::shape); });
        s.measure("undo", [&] { model.undo(); });
        s.measure("mapping", [&] { model.setFieldColumn(Field::cost, ++version % 2 ? "Qty" : "Cost"); });
        s.measure("sheet", [&] {
            DeckProject next = *model.currentProject();
            next.sheet.cutMarks = !next.sheet.cutMarks;
            model.updateProject(next);
        });
        s.measure("pages", [&] { benchmark::DoNotOptimize(model.sheetPageCount()); });
        s.measure("page", [&] { model.setSheetPage(model.state()._sheetPage + 400); });
        s.measure("reload", [&] { model.reloadSpreadsheet(); });
        OpenModel::wait(atRest);
        s.measure("rename", [&] { model.renameDeck(big, "Big " + std::to_string(version)); });
        s.measure("duplicate", [&] { model.duplicateDeck(big); });
        OpenModel::wait([&] { return open.cards() == 5000; });
        s.measure("delete", [&] { model.deleteDeck(*model.state()._selection); });
        s.measure("close", [&] { model.setSelection(std::nullopt); });
        OpenModel::wait([&] { return model.state()._canvasImage.has_value(); });
    }
    for (const auto& [what, longest] : open.scheduler.operations) state.counters[what + "_ms"] = longest;
    state.counters["jobs_ms"] = open.scheduler.longestJob;
}
BENCHMARK(holdsTheMainThread)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace quorvel

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
