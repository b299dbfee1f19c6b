#include "AppModelTest.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <limits>

// Records and calls that no window of ours makes, but a file edited by hand or a slip might: the program goes on.
namespace quorvel {
namespace {

using testing::ElementsAre;

class AppModelHostile : public AppModelTest {
protected:
    static constexpr double largest = std::numeric_limits<double>::max();

    /// Lets everything be drawn, exported and saved that can be.
    void useEverything() {
        for (std::int64_t id = -1; id < 4; ++id) model().cardAppeared(id);
        model().setSide(Side::back);
        model().setSheetBack(true);
        settle(Milliseconds(700));
        desktop.answers = {desktop.folder / "sheets.pdf", desktop.folder.path(), desktop.folder.path(),
                           desktop.folder / "page.pdf"};
        for (const auto& [kind, name] : EnumText<ExportKind>::cases) model().export_(kind);
        model().saveCalibrationPage();
        model().beginLayerDrag();
        model().endLayerDrag();
        for (const auto& [kind, name] : EnumText<LayerKind>::cases) model().addLayer(kind);
        settle(Milliseconds(700));
    }

    /// A deck of three cards, changed on the disk while the program isn't running.
    template <class Edit>
    void withRecord(Edit edit) {
        SCOPED_TRACE(++record_);
        withSpreadsheet("cards.csv", "Name,Qty\nA,1\nB,0\nC,2\n");
        DeckProject project = *model().currentProject();
        owned.reset();
        project.template_.size = CardSize::custom(20, 12);  // fast to draw
        edit(project);
        ASSERT_TRUE(library().saveDeck(project));
        start();
        ASSERT_EQ(state()._selection, project.id);
        settle(Milliseconds(200));
        EXPECT_EQ(state().open._deck->cards.size(), 3u);
        useEverything();
        restart();
        ASSERT_EQ(state()._decks.size(), 1u) << "it is still there";
        model().deleteDeck(project.id);
        settle();
        owned.reset();
    }

private:
    int record_ = 0;
};

TEST_F(AppModelHostile, RecordsWithAnyNumbers) {
    for (const double number : {0.0, -5.0, largest}) {
        withRecord([&](DeckProject& project) { project.template_.size.widthMM = number; });
        withRecord([&](DeckProject& project) { project.template_.size.heightMM = number; });
        withRecord([&](DeckProject& project) {
            project.template_.bleedMM = project.template_.safeMM = project.template_.cornerRadiusMM = number;
        });
        withRecord([&](DeckProject& project) {
            for (Layer& layer : project.template_.front) {
                layer.frame = {number, number, number, number};
                layer.style.size = layer.strokeWidth = layer.iconSizeMM = layer.iconSpacingMM = layer.opacity = number;
            }
        });
        withRecord([&](DeckProject& project) {
            project.sheet.duplex = true;
            project.sheet.spacing = Spacing::separated;
            project.sheet.gutterMM = project.sheet.backOffsetXMM = project.sheet.backOffsetYMM = number;
        });
        withRecord([&](DeckProject& project) { project.sheet.marginMM = project.created = number; });
    }
    for (const std::int64_t number : {std::int64_t(0), std::int64_t(-1), INT64_MIN, INT64_MAX, std::int64_t(100'000)}) {
        withRecord([&](DeckProject& project) { project.imageDPI = project.sheetIndex = number; });
    }
}

TEST_F(AppModelHostile, NumbersThatAreNoCardAndNoPage) {
    withSpreadsheet("cards.csv", table({"A", "B"}));
    for (const std::int64_t number : {std::int64_t(-1), std::int64_t(2), INT64_MIN, INT64_MAX}) {
        model().setCanvasCard(number);
        EXPECT_EQ(model().canvasCardValue(), std::nullopt);
        model().setSheetPage(number);
        model().cardAppeared(number);
        settle(Milliseconds(100));
        EXPECT_TRUE(state()._canvasImage) << "the design without a card";
        EXPECT_TRUE(state()._sheetImage);
        EXPECT_TRUE(model().thumbnails().empty());
        model().chooseSheet(number);
        settle();
        EXPECT_EQ(model().currentProject()->sheetIndex, 0);
        EXPECT_THAT(titles(), ElementsAre("A", "B"));
        model().selectLayer(model().layers(Side::front)[0].id);
        model().moveSelectedLayer(number);
    }
}

TEST_F(AppModelHostile, ASelectionThatIsNoDeck) {
    withSpreadsheet("cards.csv", table({"A"}));
    model().setSelection(UUID::random());
    EXPECT_EQ(model().currentProject(), nullptr);
    useEverything();
    model().deleteDeck(*state()._selection);
    model().duplicateDeck(*state()._selection);
    model().useSpreadsheet(desktop.folder / "cards.csv");
    settle();
    EXPECT_EQ(state()._decks.size(), 2u);
    EXPECT_THAT(titles(), ElementsAre("A"));
}

TEST_F(AppModelHostile, ADeckWithoutCards) {
    withSpreadsheet("cards.csv", "Name,Qty\n");
    EXPECT_EQ(state().open._loadError, std::nullopt);
    EXPECT_TRUE(titles().empty());
    useEverything();
    EXPECT_EQ(model().sheetPageCount(), 0);
    EXPECT_TRUE(state()._sheetImage) << "an empty sheet";
    EXPECT_TRUE(state()._canvasImage);
}

TEST_F(AppModelHostile, ListenersThatOperate) {
    start();
    model().newDeck(SampleTemplates::Kind::mini, "Other");
    const UUID other = *state()._selection;
    withSpreadsheet("cards.csv", table({"A", "B"}));
    // Each time something is told, another operation from within, the rough ones too.
    int round = 0;
    const auto subscription = model().subscribe([&](Changes changes) {
        if (changes == Changes{unsigned(Change::exports)} || round >= 399) return;
        const UUID open = state()._selection.value_or(other);
        switch (++round % 10) {
            case 0:
                return model().setSelection(round % 20 ? std::optional(other) : std::nullopt);
            case 1:
                return model().duplicateDeck(open);
            case 2:
                return model().addLayer(LayerKind::text);
            case 3:
                return model().undo();
            case 4:
                return model().useSpreadsheet(desktop.folder / "cards.csv");
            case 5:
                return model().cardAppeared(round % 3);
            case 6:
                return model().setCanvasCard(round % 3);
            case 7:
                return model().reloadSpreadsheet();
            case 8:
                return open == other ? model().redo() : model().deleteDeck(open);
            case 9:
                desktop.answers = {desktop.folder.path()};
                return model().export_(ExportKind::images);
        }
    });
    model().addLayer(LayerKind::shape);
    for (int i = 0; i < 60; ++i) {
        settle(Milliseconds(50));
        model().setTab(i % 2 ? Tab::cards : Tab::sheets);
    }
    EXPECT_EQ(round, 399);
    settle(Milliseconds(1000));
    EXPECT_NE(model().currentProject(), nullptr);
    const std::vector<DeckProject> before = state()._decks;
    restart();
    EXPECT_EQ(state()._decks, before) << "and all of it was saved";
}

}  // namespace
}  // namespace quorvel
