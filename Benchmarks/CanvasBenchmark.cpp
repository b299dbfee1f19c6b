// The canvas of a heavy design, 40 layers with a picture of 2400 pixels: what each movement of a drag holds the main
// thread up for, and how soon the card is drawn anew.

#include "ProcessorTime.h"
#include "QtPlatform/QtScheduler.h"
#include "Rendering/CardImage.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/FakeDesktop.h"
#include "TemplateTab/CardSurface.h"
#include "TemplateTab/TemplateEditor.h"
#include "WindowBenchmark.h"

#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace quorvel {
namespace {

constexpr int layerCount = 40;
constexpr int pictureSide = 2400;
constexpr int cardCount = 500;

/// A picture that no filter makes small.
QImage art() {
    QImage image(pictureSide, pictureSide, QImage::Format_RGB32);
    unsigned grain = 1;
    for (int y = 0; y < pictureSide; ++y)
        for (int x = 0; x < pictureSide; ++x) {
            grain = grain * 1664525U + 1013904223U;
            image.setPixel(x, y, qRgb(x / 10, y / 10, int(grain >> 27) * 8));
        }
    return image;
}

/// The art below, and over it texts, shapes and rows of icons that overlap.
CardTemplate design() {
    std::vector<Layer> layers{{"Art", LayerKind::image, {-3, -3, 69.5, 94.9}, "art.png"}};
    for (int i = 1; i < layerCount; ++i) {
        const LayerKind kinds[] = {LayerKind::text, LayerKind::shape, LayerKind::icons};
        const double step = i;
        layers.emplace_back("Layer " + std::to_string(i), kinds[i % 3], Frame{step, 1.5 * step, 22, 18},
                            i % 3 == 0 ? "{{title}} moves one **fruit** to {icon:coin}." : "coin x3");
        if (i % 3 == 1) layers.back().fill = RGBA::bytes(0xE0, 0xE0, 0xC0);
    }
    return {"Heavy", CardSize::poker, std::move(layers), {}};
}

/// How often a widget was painted: what is measured must be all of it.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    int count = 0;

    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

/// The Template tab of a large window, with the picture of the card drawn.
struct OpenEditor {
    QApplication& app = application();
    QtScheduler scheduler;
    FakeDesktop desktop;
    AppModel model{scheduler, desktop, AppModel::Persist::no};
    std::shared_ptr<UndoStack> undo = std::make_shared<UndoStack>();
    TemplateEditor editor{model, desktop};
    CardSurface& surface = *editor.findChild<CardSurface*>();
    PaintCounter paints{surface};
    std::vector<double> times;  ///< ms, of what was measured

    OpenEditor() {
        model.setUndoManager(undo);
        std::ofstream out(desktop.folder / "cards.csv", std::ios::binary);
        out << "Name\n";
        for (int i = 0; i < cardCount; ++i) out << "Card " << i << "\n";
        out.close();
        if (!art().save(QString::fromStdString((desktop.folder / "art.png").string()))) std::abort();
        editor.resize(1400, 900);
        editor.show();
        model.useSpreadsheet(desktop.folder / "cards.csv");
        if (!runUntil([&] { return int(model.state().open._deck->cards.size()) == cardCount; })) std::abort();
        model.setTemplate(design());
        model.selectLayer(model.layers(Side::front)[layerCount / 2].id);
        waitForPicture();
    }

    void waitForPicture() {
        // What is under way now may be of an older design, so that it is asked for once more.
        const auto before = model.state()._canvasImage;
        CardTemplate next = model.template_();
        next.safeMM = next.safeMM == 3 ? 4 : 3;
        model.setTemplate(next);
        const auto isNew = [&] {
            const auto& now = model.state()._canvasImage;
            return now && (!before || now->id() != before->id());
        };
        if (!runUntil(isNew)) std::abort();
        QApplication::processEvents();
    }

    QPointF middle() const {
        const Rect rect = surface.geometry().rect(model.selectedLayerValue()->frame);
        return {rect.midX(), rect.midY()};
    }
    void send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, surface.mapToGlobal(at), button, buttons, {});
        QApplication::sendEvent(&surface, &event);
    }
    void press(QPointF at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton); }
    void moveTo(QPointF at) { send(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton); }
    void release(QPointF at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton); }

    void measure(const std::function<void()>& step) {
        const double start = processorTime();
        step();
        times.push_back(processorTime() - start);
    }

    void report(benchmark::State& state) {
        std::ranges::sort(times);
        state.counters["median_ms"] = times[times.size() / 2];
        state.counters["99th_ms"] = times[times.size() * 99 / 100];
        state.counters["longest_ms"] = times.back();
        state.counters["paints"] = paints.count;
    }
};

/// One movement of a drag and what it draws: outline, list, inspector. The pictures that come meanwhile are not of it.
void movesALayer(benchmark::State& state) {
    OpenEditor open;
    const QPointF start = open.middle();
    open.press(start);
    open.paints.count = 0;
    int step = 0;
    for (auto _ : state) {
        ++step;
        const QPointF to = start + QPointF(step * 7 % 120 - 60, step * 5 % 90 - 45);
        open.measure([&] {
            open.moveTo(to);
            QApplication::sendPostedEvents();
        });
    }
    open.release(start);
    open.report(state);
}
BENCHMARK(movesALayer)->Unit(benchmark::kMillisecond)->Iterations(500);

/// The same by the corner, in the middle of everything that the pictures of a drag bring.
void movesWithPictures(benchmark::State& state) {
    OpenEditor open;
    const QPointF start = open.middle();
    open.press(start);
    open.paints.count = 0;
    int step = 0;
    for (auto _ : state) {
        ++step;
        open.measure([&] {
            open.moveTo(start + QPointF(step * 7 % 120 - 60, step * 5 % 90 - 45));
            QApplication::processEvents();
        });
    }
    open.release(start);
    open.report(state);
}
BENCHMARK(movesWithPictures)->Unit(benchmark::kMillisecond)->Iterations(300);

/// All of the canvas drawn once more, its picture at hand.
void paintsAll(benchmark::State& state) {
    OpenEditor open;
    for (auto _ : state) open.measure([&] { open.surface.repaint(); });
    open.report(state);
}
BENCHMARK(paintsAll)->Unit(benchmark::kMillisecond)->Iterations(200);

/// The drawing of that picture, which the background does.
void drawsThePicture(benchmark::State& state) {
    const OpenEditor open;
    const CardRenderer renderer{open.model.template_(), open.model.state().open._assets,
                                CardRenderer::MissingPictures::mark};
    const auto card = open.model.canvasCardValue();
    const double dpi = 1000 / ((63.5 + 2 * 3) / 25.4);
    for (auto _ : state)
        benchmark::DoNotOptimize(CardImage::render(&*card, Side::front, renderer, CardImage::Bleed::included,
                                                   CardImage::Corners::square, dpi));
}
BENCHMARK(drawsThePicture)->Unit(benchmark::kMillisecond);

/// From an edit until the new picture of the card is on the canvas, the wait of 25 ms for further edits included.
void drawsTheCardAnew(benchmark::State& state) {
    OpenEditor open;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        open.waitForPicture();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        open.times.push_back(time.count());
    }
    open.report(state);
}
BENCHMARK(drawsTheCardAnew)->Unit(benchmark::kMillisecond)->Iterations(50)->UseRealTime();

}  // namespace
}  // namespace quorvel
