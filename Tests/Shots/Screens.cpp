#include "Shots/Screens.h"

#include "CardsTab/CardGrid.h"
#include "CardsTab/LoadingView.h"
#include "Controls/Spinner.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/WorkbookWriter.h"
#include "Templates/TemplateEdits.h"

#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <filesystem>

namespace quorvel {

namespace {

constexpr QSize smallest(900, 600);

void openSheets(Stage& stage) {
    stage.openLibrary();
    stage.setTab(Tab::sheets);
}

void openBacks(Stage& stage) {
    openSheets(stage);
    stage.edit([](DeckProject& deck) {
        deck.sheet.duplex = true;
        deck.sheet.backOffsetXMM = -0.5;
    });
    stage.model.setSheetBack(true);
    stage.settle();
}

void openData(Stage& stage) {
    stage.openLibrary();
    stage.setTab(Tab::data);
}

/// A workbook of several sheets with more columns than fit, and folders of its own for pictures and icons.
void openWorkbook(Stage& stage) {
    std::string rows;
    for (int row = 0; row < 60; ++row) {
        rows += "<row>";
        for (int column = 0; column < 12; ++column) {
            const std::string cell = row == 0 ? (column == 0 ? "Name" : "Column " + std::to_string(column))
                                     : column == 2 && row % 3 == 1
                                         ? "A cell whose text goes on for longer than a column may ever be wide"
                                     : (row + column) % 4 == 0 ? ""
                                                               : "Cell " + std::to_string(row * 12 + column);
            rows += "<c t=\"inlineStr\"><is><t>" + cell + "</t></is></c>";
        }
        rows += "</row>";
    }
    const std::string sheet = test::worksheetXML(rows);
    stage.open("Cards of the Third Playtest, with Notes from Everyone.xlsx",
               test::workbookBytes({.sheets = {{"Cards", sheet}, {"Tokens", sheet}}}));
    for (const auto kind : {AppModel::FolderKind::art, AppModel::FolderKind::icons}) {
        const auto folder = stage.desktop.folder / (kind == AppModel::FolderKind::art ? "Pictures" : "Icons");
        std::filesystem::create_directory(folder);
        stage.desktop.answers = {folder};
        stage.model.chooseFolder(kind);
    }
    stage.setTab(Tab::data);
}

/// The sample on the canvas, with the topmost layer selected that is as asked for.
void openEditor(Stage& stage, Side side = Side::front, const std::function<bool(const Layer&)>& wanted = {}) {
    stage.openLibrary();
    stage.setTab(Tab::template_);
    stage.model.setSide(side);
    for (const Layer& layer : stage.model.layers(side))
        if (wanted && wanted(layer)) stage.model.selectLayer(layer.id);
    stage.settle();
}

/// Of that kind and, so that the form shows all it has, without rules.
std::function<bool(const Layer&)> ofKind(LayerKind kind) {
    return [kind](const Layer& layer) { return layer.kind == kind && layer.rules.empty(); };
}

bool hasRules(const Layer& layer) {
    return !layer.rules.empty();
}

void openRules(Stage& stage) {
    openEditor(stage, Side::front, hasRules);
    Layer layer = *stage.model.selectedLayerValue();
    layer.rules.resize(1);
    StyleRule rule = layer.rules.front();
    rule.id = UUID::random();
    rule.field = "cost";
    rule.match = StyleRule::Match::isEmpty;
    rule.fill.reset();
    rule.hide = true;
    layer.rules.push_back(rule);
    stage.model.updateLayer(layer);
    stage.settle();
    for (QScrollArea* form : stage.window.findChildren<QScrollArea*>())
        if (form->isVisible()) form->verticalScrollBar()->setValue(form->verticalScrollBar()->maximum());
    stage.settle();
}

void openNewDeck(Stage& stage) {
    stage.model.newDeck(SampleTemplates::Kind::classic, "My Game");
    stage.setTab(Tab::cards);
}

void openLoading(Stage& stage) {
    stage.model.useSpreadsheet(stage.write("Orchard Couriers.csv", "Name\nPear\n"));
    stage.model.setTab(Tab::cards);
    // The sign comes only after a moment, by the toolkit's own clock.
    (void)runUntil([&] { return stage.window.findChild<LoadingView*>()->findChild<Spinner*>()->isVisible(); });
}

UpdateFeed::News news() {
    return {.version = "1.5",
            .notes =
                "Version 1.5\n\n• Icon rows can be aligned to either side.\n• A deck of ten thousand cards opens "
                "in half the time.\n\nVersion 1.4.1\n\n• Text that is shrunk to fit keeps its line spacing.",
            .download = "https://quorvel.invalid/download"};
}

void focusDecks(Stage& stage) {
    stage.openLibrary();
    stage.focus<QListWidget>();
}

}  // namespace

const std::vector<Screen>& screens() {
    static const std::vector<Screen> table{
        // Without a deck
        {"welcome", [](Stage&) {}},
        {"welcome-smallest", [](Stage&) {}, smallest},
        {"welcome-drop", [](Stage& s) { s.drag(s.write("cards.csv", "Name\n")); }},
        {"no-deck-selected", [](Stage& s) { s.openLibrary(), s.model.setSelection({}), s.settle(); }},
        {"new-deck", [](Stage& s) { s.choose("New Deck…"); }},

        // Cards
        {"cards-no-spreadsheet", openNewDeck},
        {"cards-no-spreadsheet-smallest", openNewDeck, smallest},
        {"cards-loading", openLoading},
        {"cards", [](Stage& s) { s.openLibrary(); }},
        {"cards-smallest", [](Stage& s) { s.openLibrary(); }, smallest},
        {"cards-wide", [](Stage& s) { s.openLibrary(); }, {1920, 1080}},
        {"cards-tarot", [](Stage& s) { s.openSample(SampleTemplates::Kind::tarot); }},
        {"cards-mini", [](Stage& s) { s.openSample(SampleTemplates::Kind::mini); }},
        {"cards-focus", [](Stage& s) { s.openLibrary(), s.focus<CardGrid>(), s.press(Qt::Key_Right); }},
        {"cards-not-drawn-yet",
         [](Stage& s) { s.model.useSpreadsheet(s.write("cards.csv", "Name\nPear\nApple\n")), s.scheduler.settle(); }},
        {"cards-banners", [](Stage& s) { s.openTrouble(); }},
        {"cards-banners-smallest", [](Stage& s) { s.openTrouble(); }, smallest},
        {"cards-error-above",
         [](Stage& s) {
             s.openTrouble(), s.write("Orchard with trouble.csv", ""), s.model.reloadSpreadsheet(),
                 s.settle(AppModel::noticeTime);
         }},
        {"cards-error", [](Stage& s) { s.open("Orchard Couriers.numbers", "PK"), s.setTab(Tab::cards); }},
        {"cards-no-rows", [](Stage& s) { s.open("Orchard Couriers.csv", "Name,Text,Qty\n"); }},

        // Template
        {"template", [](Stage& s) { openEditor(s); }},
        {"template-smallest", [](Stage& s) { openEditor(s, Side::front, ofKind(LayerKind::text)); }, smallest},
        {"template-text", [](Stage& s) { openEditor(s, Side::front, ofKind(LayerKind::text)); }},
        {"template-picture", [](Stage& s) { openEditor(s, Side::front, ofKind(LayerKind::image)); }},
        {"template-shape", [](Stage& s) { openEditor(s, Side::front, ofKind(LayerKind::shape)); }},
        {"template-icons", [](Stage& s) { openEditor(s, Side::front, ofKind(LayerKind::icons)); }},
        {"template-rules", openRules},
        {"template-back", [](Stage& s) { openEditor(s, Side::back, ofKind(LayerKind::text)); }},
        {"template-hidden",
         [](Stage& s) {
             openEditor(s, Side::front, ofKind(LayerKind::icons));
             Layer layer = *s.model.selectedLayerValue();
             layer.hidden = true;
             s.model.updateLayer(layer), s.settle();
         }},
        {"template-custom-size",
         [](Stage& s) {
             openEditor(s), s.model.setTemplate(TemplateEdits::withSize(s.model.template_(), 70, 120)), s.settle();
         }},
        {"template-no-cards", [](Stage& s) { openNewDeck(s), s.setTab(Tab::template_); }},
        {"template-wide", [](Stage& s) { openEditor(s, Side::front, ofKind(LayerKind::text)); }, {1920, 1080}},

        // Print & Export
        {"sheets-front", openSheets},
        {"sheets-smallest", openSheets, smallest},
        {"sheets-back", openBacks},
        {"sheets-back-smallest", openBacks, smallest},
        {"sheets-apart",
         [](Stage& s) {
             openSheets(s), s.edit([](DeckProject& d) {
                 d.sheet.spacing = Spacing::separated, d.sheet.gutterMM = 4, d.sheet.paper = Paper::a4;
             });
         }},
        {"sheets-too-big",
         [](Stage& s) {
             openSheets(s), s.edit([](DeckProject& d) { d.template_.size = CardSize::custom(300, 300); });
         }},
        {"sheets-no-cards", [](Stage& s) { s.open("Orchard Couriers.csv", "Name\n"), s.setTab(Tab::sheets); }},

        // Spreadsheet
        {"data", openData},
        {"data-smallest", openData, smallest},
        {"data-workbook", openWorkbook},
        {"data-trouble", [](Stage& s) { s.openTrouble(), s.setTab(Tab::data); }},
        {"data-file-gone",
         [](Stage& s) {
             std::filesystem::remove(s.openTrouble()), s.model.reloadSpreadsheet(), s.setTab(Tab::data),
                 s.settle(AppModel::noticeTime);
         }},
        {"data-no-spreadsheet",
         [](Stage& s) { s.model.newDeck(SampleTemplates::Kind::classic, "My Game"), s.setTab(Tab::data); }},

        // What comes over them
        {"busy", [](Stage& s) { s.openLibrary(), s.exportHalfway(ExportKind::images); }},
        {"busy-on-sheets", [](Stage& s) { openSheets(s), s.exportHalfway(ExportKind::tts); }},
        {"notice", [](Stage& s) { s.openLibrary(), s.exportHalfway(ExportKind::images), s.scheduler.settle(); }},
        {"error",
         [](Stage& s) {
             s.model.newDeck(SampleTemplates::Kind::classic, "My Game"), s.model.export_(ExportKind::sheets),
                 s.settle();
         }},
        {"rename", [](Stage& s) { focusDecks(s), s.press(Qt::Key_F2); }},
        {"delete", [](Stage& s) { focusDecks(s), s.press(Qt::Key_Delete); }},
        {"settings", [](Stage& s) { s.openLibrary(), s.choose("Settings…"); }},
        {"about", [](Stage& s) { s.openLibrary(), s.choose("About Quorvel"); }},
        {"update-none",
         [](Stage& s) {
             s.openLibrary();
             Q_EMIT s.updater.upToDate();
         }},
        {"update-unreachable",
         [](Stage& s) {
             s.openLibrary();
             Q_EMIT s.updater.unreachable();
         }},
        {"update-news",
         [](Stage& s) {
             s.openLibrary();
             Q_EMIT s.updater.newerVersion(news(), Updater::Occasion::command);
         }},
        {"menu-file", [](Stage& s) { s.openLibrary(), s.openMenuOfBar("File"); }},
        {"menu-edit", [](Stage& s) { s.openLibrary(), s.openMenuOfBar("Edit"); }},
        {"menu-deck", [](Stage& s) { s.openLibrary(), s.openMenuOfBar("Deck"); }},
        {"menu-layer", [](Stage& s) { s.openLibrary(), s.openMenuOfBar("Layer"); }},
        {"menu-export", [](Stage& s) { s.openLibrary(), s.openMenu("Export"); }},
        {"menu-add-deck", [](Stage& s) { s.openLibrary(), s.openMenu("Add Deck"); }},
    };
    return table;
}

}  // namespace quorvel
