#include "AppModelTest.h"
#include "Templates/TemplateEdits.h"
#include "Templates/TemplateJSON.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace quorvel {
namespace {

using testing::ElementsAre;

class AppModelEdit : public AppModelTest {
protected:
    void SetUp() override {
        start();
        model().newDeck(SampleTemplates::Kind::classic, "Game");
        settle(Milliseconds(1000));
        model().selectLayer(model().layers(Side::front).at(1).id);
    }

    const Layer& selected() { return *model().selectedLayerValue(); }
    static bool says(const std::vector<Layer>& layers, std::string_view words) {
        return std::ranges::any_of(layers, [&](const Layer& layer) { return layer.content.contains(words); });
    }
};

TEST_F(AppModelEdit, AnEqualTemplateMakesNoStepAndNoSave) {
    model().setTemplate(model().template_());
    model().updateLayer(selected());
    EXPECT_FALSE(undo->canUndo());
    EXPECT_EQ(scheduler.timerCount(), 0u) << "neither a save nor a render waits";
    Layer stranger("Stranger", LayerKind::text, {}, "");
    model().updateLayer(stranger);
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(AppModelEdit, AnEditIsSavedHalfASecondAfterTheLast) {
    model().nudgeSelectedLayer(1, 0);
    scheduler.advance(Milliseconds(400));
    model().nudgeSelectedLayer(1, 0);
    scheduler.advance(Milliseconds(499));
    scheduler.settle();
    EXPECT_NE(saved()->template_, model().template_());
    scheduler.advance(Milliseconds(1));
    scheduler.settle();
    EXPECT_EQ(saved()->template_, model().template_());
}

TEST_F(AppModelEdit, APendingSaveOfOneDeckOutlivesAnEditOfAnother) {
    const UUID first = *state()._selection;
    model().nudgeSelectedLayer(1, 0);
    const CardTemplate edited = model().template_();
    model().newDeck(SampleTemplates::Kind::mini, "Other");
    model().addLayer(LayerKind::shape);
    scheduler.settle();
    for (const DeckProject& project : library().loadDecks())
        if (project.id == first) {
            EXPECT_EQ(project.template_, edited);
        }
}

TEST_F(AppModelEdit, ADragIsOneStepWithItsOwnName) {
    const CardTemplate before = model().template_();
    model().beginLayerDrag();
    for (int i = 0; i < 20; ++i) model().nudgeSelectedLayer(0.5, 0.25);
    model().endLayerDrag();
    const CardTemplate after = model().template_();
    EXPECT_EQ(undo->undoName(), "Move Layer");
    EXPECT_EQ(undo->undoCount(), 1u);
    model().undo();
    EXPECT_EQ(model().template_(), before);
    EXPECT_FALSE(undo->canUndo());
    EXPECT_EQ(undo->redoName(), "Edit Template");
    model().redo();
    EXPECT_EQ(model().template_(), after);
    EXPECT_EQ(undo->undoName(), "Edit Template");
}

TEST_F(AppModelEdit, ADragThatMovedNothingLeavesAStepThatRestoresAnEqualDesign) {
    const CardTemplate before = model().template_();
    model().beginLayerDrag();
    model().endLayerDrag();
    EXPECT_EQ(undo->undoName(), "Move Layer");
    model().undo();
    EXPECT_EQ(model().template_(), before);
    EXPECT_FALSE(undo->canUndo());
    EXPECT_FALSE(undo->canRedo());
}

TEST_F(AppModelEdit, ACommandDuringADragJoinsItsStep) {
    model().beginLayerDrag();
    model().addLayer(LayerKind::text);
    model().endLayerDrag();
    EXPECT_EQ(undo->undoCount(), 1u);
}

TEST_F(AppModelEdit, NothingIsUndoneDuringADrag) {
    model().nudgeSelectedLayer(3, 0);
    model().undo();
    model().beginLayerDrag();
    model().nudgeSelectedLayer(1, 0);
    const CardTemplate dragged = model().template_();
    model().undo();
    model().redo();
    EXPECT_EQ(model().template_(), dragged);
    EXPECT_EQ(undo->undoName(), "Move Layer") << "its step is still there";
    model().endLayerDrag();
    model().undo();
    EXPECT_NE(model().template_(), dragged);
    model().redo();
    EXPECT_EQ(model().template_(), dragged);
}

TEST_F(AppModelEdit, ADragEndsWithItsDeck) {
    model().beginLayerDrag();
    model().newDeck(SampleTemplates::Kind::mini, "Other");
    model().addLayer(LayerKind::shape);
    EXPECT_EQ(undo->undoName(), "Edit Template");
    EXPECT_EQ(undo->undoCount(), 1u);
    model().endLayerDrag();  // comes late
    model().undo();
    EXPECT_EQ(undo->redoName(), "Edit Template");
}

TEST_F(AppModelEdit, ANumberThatCantBeStoredIsNoEdit) {
    const DeckProject before = *model().currentProject();
    for (const double nonsense : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        model().nudgeSelectedLayer(nonsense, 0);
        Layer layer = selected();
        layer.opacity = nonsense;
        model().updateLayer(layer);
        CardTemplate design = model().template_();
        design.bleedMM = nonsense;
        model().setTemplate(design);
        DeckProject project = before;
        project.sheet.gutterMM = nonsense;
        model().updateProject(project);
    }
    EXPECT_EQ(*model().currentProject(), before);
    EXPECT_FALSE(undo->canUndo());
    EXPECT_EQ(scheduler.timerCount(), 0u) << "neither a save nor a render waits";
    for (int i = 0; i < 3; ++i) model().nudgeSelectedLayer(1e308, 0);
    EXPECT_EQ(undo->undoCount(), 1u) << "the second would be infinite";
    restart();
    EXPECT_EQ(state()._decks.size(), 1u);
}

TEST_F(AppModelEdit, EachOtherEditIsAStep) {
    model().nudgeSelectedLayer(0.1, 0);
    model().nudgeSelectedLayer(0.1, 0);
    model().addLayer(LayerKind::icons);
    EXPECT_EQ(undo->undoCount(), 3u);
    EXPECT_EQ(undo->undoName(), "Edit Template");
}

TEST_F(AppModelEdit, ADeletedLayerComesBackUnselected) {
    const CardTemplate before = model().template_();
    model().deleteSelectedLayer();
    EXPECT_EQ(model().layers(Side::front).size(), before.front.size() - 1);
    EXPECT_EQ(state()._selectedLayer, std::nullopt);
    model().undo();
    EXPECT_EQ(model().template_(), before);
    EXPECT_EQ(model().selectedLayerValue(), nullptr);
}

TEST_F(AppModelEdit, AnUndoMayLeaveASelectionThatNamesNoLayer) {
    model().addLayer(LayerKind::shape);
    EXPECT_EQ(selected().name, "Shape");
    model().undo();
    EXPECT_TRUE(state()._selectedLayer);
    EXPECT_EQ(model().selectedLayerValue(), nullptr);
    model().nudgeSelectedLayer(1, 1);
    model().duplicateSelectedLayer();
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(AppModelEdit, MovingTheTopmostForwardChangesNothing) {
    model().selectLayer(model().layers(Side::front).back().id);
    model().moveSelectedLayer(1);
    EXPECT_FALSE(undo->canUndo());
    model().moveSelectedLayer(-1);
    EXPECT_TRUE(undo->canUndo());
    EXPECT_EQ(model().layers(Side::front)[model().layers(Side::front).size() - 2].id, *state()._selectedLayer);
}

TEST_F(AppModelEdit, ACopyOfTheTopmostLiesOnTopAndIsSelected) {
    const Layer source = model().layers(Side::front).back();
    model().selectLayer(source.id);
    model().duplicateSelectedLayer();
    const Layer& copy = model().layers(Side::front).back();
    EXPECT_EQ(state()._selectedLayer, copy.id);
    EXPECT_NE(copy.id, source.id);
    EXPECT_EQ(copy.name, source.name + " copy");
    EXPECT_DOUBLE_EQ(copy.frame.x, source.frame.x + 2);
    EXPECT_DOUBLE_EQ(copy.frame.y, source.frame.y + 2);
}

TEST_F(AppModelEdit, StartingOverNeedsNoSpreadsheetAndCanBeUndone) {
    const CardTemplate before = model().template_();
    model().startOver(SampleTemplates::Kind::tarot);
    EXPECT_EQ(model().template_().size.preset, CardSize::Preset::tarot);
    EXPECT_TRUE(says(model().layers(Side::back), "GAME"));
    EXPECT_EQ(state()._selectedLayer, std::nullopt);
    model().undo();
    EXPECT_EQ(model().template_(), before);
}

TEST_F(AppModelEdit, ChangingTheSideClearsTheSelectionAndDraws) {
    model().setSide(Side::front);
    EXPECT_TRUE(state()._selectedLayer) << "it is that side already";
    model().setSide(Side::back);
    EXPECT_FALSE(state()._selectedLayer);
    scheduler.advance(Milliseconds(24));
    EXPECT_EQ(scheduler.backgroundCount(), 0u);
    scheduler.advance(Milliseconds(1));
    EXPECT_EQ(scheduler.backgroundCount(), 1u);
    model().addLayer(LayerKind::text);
    EXPECT_EQ(model().layers(Side::back).back().name, "Text");
}

TEST_F(AppModelEdit, WithoutADeckEveryEditDoesNothing) {
    model().setSelection(std::nullopt);
    settle(Milliseconds(1000));
    EXPECT_TRUE(says(model().layers(Side::back), "YOUR GAME"));
    const CardTemplate before = model().template_();
    model().selectLayer(before.front[0].id);
    model().setTemplate(SampleTemplates::make(SampleTemplates::Kind::mini, "x"));
    model().beginLayerDrag();
    model().addLayer(LayerKind::text);
    model().nudgeSelectedLayer(1, 1);
    model().moveSelectedLayer(1);
    model().duplicateSelectedLayer();
    model().deleteSelectedLayer();
    model().startOver(SampleTemplates::Kind::mini);
    model().setFieldColumn(Field::title, "Name");
    model().undo();
    EXPECT_EQ(model().template_(), before);
    EXPECT_FALSE(undo->canUndo());
    EXPECT_EQ(scheduler.timerCount(), 0u);
}

TEST_F(AppModelEdit, EditsBeforeThereIsAWindowCantBeUndone) {
    model().setUndoManager({});
    model().nudgeSelectedLayer(1, 0);
    model().setUndoManager(undo);
    EXPECT_FALSE(undo->canUndo());
    model().undo();
    model().redo();
}

TEST_F(AppModelEdit, TheStepsOfOneDeckNeverReachAnother) {
    model().nudgeSelectedLayer(1, 0);
    model().newDeck(SampleTemplates::Kind::mini, "Other");
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(AppModelEdit, ATemplateTravelsThroughAFile) {
    const CardTemplate before = model().template_();
    model().exportTemplate();
    EXPECT_EQ(state()._error, std::nullopt) << "cancelled";
    EXPECT_EQ(std::get<SavePanel>(desktop.asked.back()).fileName, "Classic.json");
    const Path file = desktop.folder / "Classic.json";
    desktop.answers = {file};
    model().exportTemplate();
    EXPECT_EQ(state()._notice, std::nullopt);

    model().importTemplate();
    EXPECT_FALSE(undo->canUndo()) << "cancelled";
    desktop.answers = {file};
    model().importTemplate();
    // Only the id differs, and that alone makes a step.
    EXPECT_TRUE(undo->canUndo());
    EXPECT_NE(model().template_().id, before.id);
    CardTemplate same = model().template_();
    same.id = before.id;
    EXPECT_EQ(same, before);
    EXPECT_EQ(state()._selectedLayer, std::nullopt);
}

TEST_F(AppModelEdit, WhatIsNoTemplateChangesNothing) {
    const CardTemplate before = model().template_();
    for (const std::string_view text : {"", "{}", "[1, 2", "{\"name\": 3}"}) {
        desktop.answers = {write("other.json", text)};
        model().importTemplate();
        EXPECT_EQ(state()._error, "That file isn’t a Quorvel template.");
        model().clearError();
    }
    desktop.answers = {desktop.folder / "nowhere.json"};
    model().importTemplate();
    EXPECT_EQ(state()._error, "That file isn’t a Quorvel template.");
    model().clearError();
    desktop.answers = {desktop.folder / "no such folder" / "x.json"};
    model().exportTemplate();
    EXPECT_TRUE(state()._error);
    EXPECT_EQ(model().template_(), before);
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(AppModelEdit, AColumnIsChangedAtOnceAndNotUndoable) {
    withSpreadsheet("cards.csv", "Name,Other,Qty\nA,Z,1\n");
    EXPECT_THAT(titles(), ElementsAre("A"));
    model().setFieldColumn(Field::title, "Other");
    EXPECT_THAT(titles(), ElementsAre("Z"));
    model().setFieldColumn(Field::title, "");
    EXPECT_EQ(model().currentProject()->mapping.column(Field::title), std::nullopt);
    EXPECT_THAT(titles(), ElementsAre(""));
    EXPECT_FALSE(undo->canUndo());
    settle(Milliseconds(500));
    EXPECT_EQ(saved()->mapping, model().currentProject()->mapping);
    EXPECT_THAT(model().knownFieldNames(),
                ElementsAre("title", "text", "cost", "type", "art", "icons", "quantity", "Name", "Other", "Qty"));
}

TEST_F(AppModelEdit, WhatChangesDecidesWhatIsDrawn) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    model().cardAppeared(0);
    settle(Milliseconds(500));
    Changes heard;
    const auto subscription = model().subscribe([&](Changes changes) { heard.bits |= changes.bits; });
    const auto drawnBy = [&](auto edit) {
        settle(Milliseconds(500));
        heard = {};
        edit();
        settle(Milliseconds(500));
        std::string drawn;
        if (heard.has(Change::thumbnails)) drawn += " thumbnails";
        if (heard.has(Change::canvas)) drawn += " canvas";
        if (heard.has(Change::sheet)) drawn += " sheet";
        return drawn;
    };
    EXPECT_EQ(drawnBy([&] { model().addLayer(LayerKind::shape); }), " thumbnails canvas sheet");
    EXPECT_EQ(drawnBy([&] { model().setFieldColumn(Field::cost, "Name"); }), " thumbnails canvas sheet");
    EXPECT_EQ(drawnBy([&] {
                  DeckProject next = *model().currentProject();
                  next.sheet.cutMarks = !next.sheet.cutMarks;
                  model().updateProject(next);
              }),
              " sheet");
    EXPECT_EQ(drawnBy([&] {
                  DeckProject next = *model().currentProject();
                  next.imageDPI = 600;
                  model().updateProject(next);
              }),
              "");
    EXPECT_EQ(drawnBy([&] { model().renameDeck(*state()._selection, "Other"); }), "");
    EXPECT_EQ(drawnBy([&] { model().reloadSpreadsheet(); }), " thumbnails canvas sheet");
    EXPECT_EQ(drawnBy([&] { model().setCanvasCard(1); }), " canvas");
    EXPECT_EQ(drawnBy([&] { model().setCanvasCard(1); }), "");
    EXPECT_EQ(drawnBy([&] { model().refreshCanvas(); }), " canvas");
    EXPECT_EQ(drawnBy([&] { model().setSheetPage(4); }), " sheet");
    EXPECT_EQ(drawnBy([&] { model().setSheetBack(true); }), " sheet");
    EXPECT_EQ(drawnBy([&] { model().setSide(Side::back); }), " canvas");
}

TEST_F(AppModelEdit, TheOldThumbnailStaysUntilTheNewOneIsThere) {
    withSpreadsheet("cards.csv", table({"A"}));
    model().cardAppeared(0);
    settle(Milliseconds(200));
    const Image old = model().thumbnails().at(0);
    Layer veil("Veil", LayerKind::shape, {0, 0, 100, 100}, "");
    veil.fill = RGBA::black;
    model().setTemplate(TemplateEdits::adding(model().template_(), Side::front, veil));
    scheduler.advance(Milliseconds(89));
    EXPECT_EQ(model().thumbnails().size(), 1u);
    scheduler.advance(Milliseconds(1));
    scheduler.runBackground();
    model().nudgeSelectedLayer(1, 0);  // an edit while the batch is on its way
    scheduler.deliver();
    EXPECT_EQ(model().thumbnails().at(0).pixels(), old.pixels()) << "the batch is out of date and dropped";
    settle(Milliseconds(200));
    EXPECT_NE(model().thumbnails().at(0).pixels(), old.pixels());
}

TEST_F(AppModelEdit, TheWantedPageIsRemembered) {
    withSpreadsheet("cards.csv", "Name,Qty\nA,30\n");
    EXPECT_EQ(model().sheetPageCount(), 4);
    model().setSheetPage(3);
    write("cards.csv", "Name,Qty\nA,5\n");
    settle(Milliseconds(1000));
    EXPECT_EQ(model().sheetPageCount(), 1);
    EXPECT_EQ(state()._sheetPage, 3);
    EXPECT_TRUE(state()._sheetImage);
    DeckProject big = *model().currentProject();
    big.template_ = TemplateEdits::withSize(big.template_, 400, 400);
    model().updateProject(big);
    EXPECT_EQ(model().sheetPageCount(), 0);
    EXPECT_FALSE(state()._sheetImage) << "a card bigger than the paper has no page";
}

}  // namespace
}  // namespace quorvel
