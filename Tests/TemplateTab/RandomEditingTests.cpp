#include "Cards/Markup.h"
#include "Controls/ElidedLabel.h"
#include "Controls/NumberField.h"
#include "Controls/SymbolButton.h"
#include "Controls/Wording.h"
#include "Inspector/Inspector.h"
#include "Library/DeckProjectJSON.h"
#include "Library/Library.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/FakeDesktop.h"
#include "Support/Desktop/ManualScheduler.h"
#include "TemplateTab/CardBar.h"
#include "TemplateTab/CardSurface.h"
#include "TemplateTab/LayerRow.h"
#include "TemplateTab/LayerRows.h"
#include "TemplateTab/SidePicker.h"
#include "TemplateTab/TemplateEditor.h"
#include "Templates/TemplateEdits.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QTest>
#include <algorithm>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <random>

// A designer who does anything at any time, by hand and by menu. After each step what is seen must be what is stored.
namespace quorvel {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int steps = 250;
#else
constexpr int steps = 2500;
#endif

class RandomEditing : public testing::TestWithParam<unsigned> {
protected:
    ManualScheduler scheduler;
    FakeDesktop desktop;
    std::shared_ptr<UndoStack> undo = std::make_shared<UndoStack>();
    std::unique_ptr<AppModel> owned;
    std::unique_ptr<TemplateEditor> editor;
    std::mt19937 random{GetParam()};
    CardTemplate first;  ///< as it was when the steps to undo began
    std::optional<UUID> deck;
    std::string done;

    AppModel& model() { return *owned; }
    const AppState& state() { return owned->state(); }

    void SetUp() override {
        owned = std::make_unique<AppModel>(scheduler, desktop, AppModel::Persist::yes);
        model().setUndoManager(undo);
        editor = std::make_unique<TemplateEditor>(model(), desktop);
        editor->resize(1100, 760);
        editor->show();
        runWhatWaits();
        model().newDeck(SampleTemplates::Kind::classic, "First");
        model().useSpreadsheet(saveCards(3));
        model().newDeck(SampleTemplates::Kind::mini, "Second");
        model().useSpreadsheet(saveCards(5));
        scheduler.settle(std::chrono::seconds(1));
        follow();
    }

    void TearDown() override {
        editor.reset();
        owned.reset();
    }

    // Chance

    int below(int limit) { return int(random() % unsigned(limit)); }
    double within(double from, double to) { return std::uniform_real_distribution(from, to)(random); }
    template <class Value>
    const Value& oneOf(const std::vector<Value>& values) {
        return values[std::size_t(below(int(values.size())))];
    }

    std::filesystem::path saveCards(int count) {
        const std::filesystem::path file = desktop.folder / ("cards " + std::to_string(count % 2) + ".csv");
        std::ofstream out(file, std::ios::binary);
        out << "Name,Type,Cost,Flavor\n";
        for (int i = 0; i < count; ++i)
            out << "Card " << i << ",Kind " << i % 3 << "," << i << ",Words of " << i << "\n";
        return file;
    }

    // By hand

    CardSurface& surface() { return *editor->findChild<CardSurface*>(); }
    Inspector& inspector() { return *editor->findChild<Inspector*>(); }
    LayerRows& rows() { return *editor->findChild<LayerRows*>(); }

    QPoint somewhere() { return {below(surface().width()), below(surface().height())}; }

    void click() { QTest::mouseClick(&surface(), Qt::LeftButton, {}, somewhere()); }

    void drag(QPoint from) {
        QTest::mousePress(&surface(), Qt::LeftButton, {}, from);
        const int moves = below(5);
        for (int i = 0; i < moves; ++i) QTest::mouseMove(&surface(), from + QPoint(below(200) - 100, below(200) - 100));
        // Some drags are in the middle of something else.
        if (below(8) == 0) model().undo();
        if (below(20) == 0) model().deleteSelectedLayer();
        if (below(20) == 0) model().setSide(Side(below(2)));
        if (below(30) == 0) switchDeck();
        QTest::mouseRelease(&surface(), Qt::LeftButton, {}, somewhere());
    }

    void resize() {
        for (const LayerOverlay& overlay : surface().overlays())
            if (overlay.handle) return drag(QPointF(overlay.handle->midX(), overlay.handle->midY()).toPoint());
    }

    void pressKey() {
        surface().setFocus();
        const auto key = oneOf<Qt::Key>({Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Left,
                                         Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Delete});
        QTest::keyClick(&surface(), key, below(2) ? Qt::ShiftModifier : Qt::NoModifier);
    }

    void pressEye() {
        if (rows().rows().empty()) return;
        auto* eye = oneOf(rows().rows())->findChild<QAbstractButton*>();
        QTest::mouseClick(eye, Qt::LeftButton);
    }

    void pressRow() {
        if (!rows().rows().empty()) QTest::mouseClick(oneOf(rows().rows()), Qt::LeftButton, {}, {30, 8});
    }

    void turnCard() {
        const auto buttons = editor->findChild<CardBar*>()->findChildren<SymbolButton*>();
        QTest::mouseClick(buttons[below(int(buttons.size()))], Qt::LeftButton);
    }

    template <class Widget>
    Widget* anyInInspector() {
        std::vector<Widget*> shown;
        for (Widget* each : inspector().findChildren<Widget*>())
            if (each->isVisible() && each->isEnabled()) shown.push_back(each);
        return shown.empty() ? nullptr : oneOf(shown);
    }

    void useInspector() {
        switch (below(4)) {
            case 0:
                if (auto* box = anyInInspector<QCheckBox>()) box->click();
                return;
            case 1:
                if (auto* field = anyInInspector<QLineEdit>()) {
                    field->setFocus();
                    field->selectAll();
                    QTest::keyClicks(field, oneOf<QString>({"12", "-3.25", "0", "7,5", "words", "1e400", "", "99999"}));
                    if (below(3)) QTest::keyClick(field, Qt::Key_Return);
                }
                return;
            case 2:
                if (auto* content = anyInInspector<QPlainTextEdit>()) QTest::keyClicks(content, "{{x}");
                return;
            default:
                if (auto* picker = anyInInspector<QComboBox>()) {
                    picker->setFocus();
                    QTest::keyClick(picker, below(2) ? Qt::Key_Down : Qt::Key_Up);
                }
        }
    }

    // By menu

    void changeLayer() {
        const Layer* selected = model().selectedLayerValue();
        if (!selected) return;
        Layer layer = *selected;
        switch (below(6)) {
            case 0:
                layer.frame.x = within(-100, 100);
                break;
            case 1:
                layer.content = oneOf<std::string>({"", "{{title}}", "**b** {icon:coin}", "{{flavor}} {{", "pear.png"});
                break;
            case 2:
                layer.fill = below(2) ? std::optional(RGBA::bytes(below(256), 20, 30)) : std::nullopt;
                break;
            case 3: {
                StyleRule rule;
                rule.id = UUID::random();
                rule.field = "type";
                rule.value = "Kind 1";
                rule.hide = below(2) == 0;
                layer.rules.push_back(rule);
                break;
            }
            case 4:
                layer.rules.clear();
                break;
            default:
                layer.opacity = within(0, 1);
        }
        model().updateLayer(layer);
    }

    void changeSize() {
        const auto presets = EnumText<CardSize::Preset>::cases;
        model().setTemplate(
            TemplateEdits::withPreset(model().template_(), presets[std::size_t(below(int(presets.size())))].first));
    }

    void switchDeck() { model().setSelection(oneOf(state()._decks).id); }

    void doAnything() {
        struct Act {
            const char* name;
            int weight;
            std::function<void()> act;
        };
        const std::vector<Act> acts{
            {"click", 12, [&] { click(); }},
            {"drag", 12, [&] { drag(somewhere()); }},
            {"resize", 6, [&] { resize(); }},
            {"key", 10, [&] { pressKey(); }},
            {"eye", 4, [&] { pressEye(); }},
            {"row", 6, [&] { pressRow(); }},
            {"inspector", 14, [&] { useInspector(); }},
            {"add", 3, [&] { model().addLayer(LayerKind(below(4))); }},
            {"duplicate", 3, [&] { model().duplicateSelectedLayer(); }},
            {"delete", 3, [&] { model().deleteSelectedLayer(); }},
            {"move", 4, [&] { model().moveSelectedLayer(below(2) ? 1 : -1); }},
            {"change", 8, [&] { changeLayer(); }},
            {"size", 1, [&] { changeSize(); }},
            {"undo", 8, [&] { model().undo(); }},
            {"redo", 8, [&] { model().redo(); }},
            {"side", 4, [&] { model().setSide(Side(below(2))); }},
            {"card", 3, [&] { turnCard(); }},
            {"start over", 1, [&] { model().startOver(SampleTemplates::Kind(below(3))); }},
            {"deck", 1, [&] { switchDeck(); }},
            {"another deck", 1,
             [&] {
                 if (state()._decks.size() < 5) model().duplicateDeck(*state()._selection);
             }},
            {"reload", 2,
             [&] {
                 saveCards(below(7));
                 model().reloadSpreadsheet();
             }},
            {"time", 4, [&] { scheduler.settle(std::chrono::milliseconds(below(40))); }},
        };
        int sum = 0;
        for (const Act& each : acts) sum += each.weight;
        int chosen = below(sum);
        for (const Act& each : acts) {
            chosen -= each.weight;
            if (chosen >= 0) continue;
            done = each.name;
            each.act();
            return;
        }
    }

    // What must hold

    void follow() {
        if (deck == state()._selection) return;
        deck = state()._selection;
        first = model().template_();
        // A drag may have switched the deck and then left steps in the new one: their bottom is the first design.
        first = bottom();
    }

    /// Undoes all there is and redoes it. A step that changed nothing, as of a drag that ended where it began, has no
    /// inverse and is gone then.
    CardTemplate bottom() {
        int undone = 0;
        while (undo->canUndo()) {
            const CardTemplate before = model().template_();
            const std::size_t count = undo->undoCount();
            model().undo();
            if (undo->undoCount() >= count) {
                ADD_FAILURE() << "a step can't be undone";
                break;
            }
            undone += model().template_() != before;
        }
        CardTemplate found = model().template_();
        for (int i = 0; i < undone; ++i) model().redo();
        return found;
    }

    void checkList() {
        const auto& layers = model().layers(state()._side);
        ASSERT_EQ(rows().rows().size(), layers.size());
        for (std::size_t i = 0; i < layers.size(); ++i)
            ASSERT_EQ(rows().rows()[i]->content(), LayerRow::Content::of(layers[layers.size() - 1 - i]));
        const LayerRow* selected = rows().selectedRow();
        const Layer* value = model().selectedLayerValue();
        ASSERT_EQ(selected != nullptr, value != nullptr);
        if (selected) {
            ASSERT_EQ(selected->content().layer, value->id);
        }
    }

    void checkSurface() {
        const CanvasGeometry geometry(model().template_(), {double(surface().width()), double(surface().height())});
        ASSERT_EQ(surface().geometry(), geometry);
        const Layer* selected = model().selectedLayerValue();
        std::vector<LayerOverlay> expected;
        for (const Layer& each : model().layers(state()._side)) {
            if (each.hidden) continue;
            const auto handle = &each == selected ? std::optional(geometry.handle(each.frame)) : std::nullopt;
            expected.push_back({each.id, each.name, geometry.outline(each.frame), handle});
        }
        ASSERT_EQ(surface().overlays(), expected);
    }

    void checkBar() {
        const std::size_t count = state().open._deck->cards.size();
        const auto card = model().canvasCardValue();
        ASSERT_EQ(card.has_value(), count > 0);
        const QString title = card ? text(Markup::plainText(card->title())) : QString();
        const QString caption = QString("Card %1 of %2: ").arg(state()._canvasCard + 1).arg(count) + title;
        ASSERT_EQ(editor->findChild<CardBar*>()->findChild<ElidedLabel*>()->text(),
                  card ? caption : "No cards yet: fields show their names");
        ASSERT_EQ(surface().accessibleDescription(),
                  "Card preview: " + (card ? title : "No card") + ", " + text(textOf(state()._side)));
        for (const SidePicker* each : editor->findChildren<SidePicker*>())
            ASSERT_EQ(each->currentIndex(), int(state()._side));
    }

    void checkInspector() {
        const auto shown = [&](const QString& name) -> QWidget* {
            for (QWidget* each : inspector().findChildren<QWidget*>())
                if (each->isVisible() && each->accessibleName() == name) return each;
            return nullptr;
        };
        const Layer* selected = model().selectedLayerValue();
        auto* name = qobject_cast<QLineEdit*>(shown("Name"));
        ASSERT_NE(name, nullptr);
        ASSERT_EQ(name->text().toStdString(), selected ? selected->name : model().template_().name);
        const std::vector<std::pair<QString, double>> numbers =
            selected ? std::vector<std::pair<QString, double>>{{"Left", selected->frame.x},
                                                               {"Top", selected->frame.y},
                                                               {"Width", selected->frame.width},
                                                               {"Height", selected->frame.height}}
                     : std::vector<std::pair<QString, double>>{{"Bleed", model().template_().bleedMM},
                                                               {"Safe zone", model().template_().safeMM}};
        for (const auto& [title, value] : numbers) {
            NumberField* field = nullptr;
            for (NumberField* each : inspector().findChildren<NumberField*>())
                if (each->isVisible() && each->accessibleName() == title) field = each;
            ASSERT_NE(field, nullptr) << title.toStdString();
            ASSERT_EQ(field->value(), value) << title.toStdString();
        }
    }

    void checkRecord() {
        const DeckProject& record = *model().currentProject();
        const auto decoded = deckProjectFromJSON(toJSON(record));
        ASSERT_TRUE(decoded);
        ASSERT_EQ(*decoded, record);
    }

    void checkFile() {
        scheduler.settle(std::chrono::seconds(1));
        const auto stored = Library{desktop.applicationSupport()}.loadDecks();
        ASSERT_EQ(stored.size(), state()._decks.size());
        for (const DeckProject& each : stored) {
            const auto known = std::ranges::find(state()._decks, each.id, &DeckProject::id);
            ASSERT_NE(known, state()._decks.end());
            ASSERT_EQ(each, *known);
        }
    }

    void checkSteps() {
        const CardTemplate now = model().template_();
        ASSERT_EQ(bottom(), first);
        ASSERT_EQ(model().template_(), now);
    }
};

TEST_P(RandomEditing, WhatIsSeenIsWhatIsStored) {
    for (int step = 0; step < steps; ++step) {
        ASSERT_NO_FATAL_FAILURE(doAnything());
        if (step % 16 == 0) runWhatWaits();
        follow();
        SCOPED_TRACE("step " + std::to_string(step) + ": " + done);
        ASSERT_NO_FATAL_FAILURE(checkList());
        ASSERT_NO_FATAL_FAILURE(checkSurface());
        ASSERT_NO_FATAL_FAILURE(checkBar());
        ASSERT_NO_FATAL_FAILURE(checkInspector());
        ASSERT_NO_FATAL_FAILURE(checkRecord());
        if (step % 50 == 25) {
            ASSERT_NO_FATAL_FAILURE(checkSteps());
        }
        if (step % 50 == 49) {
            ASSERT_NO_FATAL_FAILURE(checkFile());
        }
    }
    ASSERT_NO_FATAL_FAILURE(checkSteps());
    ASSERT_NO_FATAL_FAILURE(checkFile());
}

INSTANTIATE_TEST_SUITE_P(Designers, RandomEditing, testing::Range(1U, 9U));

}  // namespace
}  // namespace quorvel
