#include "Inspector/Inspector.h"
#include "TemplateTab/CardCanvas.h"
#include "TemplateTab/CardSurface.h"
#include "TemplateTab/LayerList.h"
#include "TemplateTab/LayerRows.h"
#include "TemplateTab/TemplateEditor.h"
#include "TemplateTabTest.h"

#include <QTest>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class TemplateEditorTest : public TemplateTabTest {
protected:
    TemplateEditor editor{model, desktop};
    LayerList& list = *editor.findChild<LayerList*>();
    CardCanvas& canvas = *editor.findChild<CardCanvas*>();
    Inspector& inspector = *editor.findChild<Inspector*>();

    void dragHandle(int index, int by) {
        QSplitterHandle& handle = *editor.handle(index);
        const QPoint start = handle.rect().center();
        QTest::mousePress(&handle, Qt::LeftButton, {}, start);
        QTest::mouseMove(&handle, start + QPoint(by, 0));
        QTest::mouseRelease(&handle, Qt::LeftButton, {}, start);
    }
};

TEST_F(TemplateEditorTest, HasThreeColumnsFromLeftToRight) {
    show(editor, {1200, 700});
    EXPECT_EQ(editor.widget(0), &list);
    EXPECT_EQ(editor.widget(1), &canvas);
    EXPECT_EQ(editor.widget(2), &inspector);
    EXPECT_EQ(list.width(), 220);
    EXPECT_EQ(inspector.width(), 320);
}

TEST_F(TemplateEditorTest, TheCardTakesWhatIsLeft) {
    for (const int width : {1200, 1500, 2400, 1000}) {
        show(editor, {width, 700});
        EXPECT_EQ(list.width(), 220) << width;
        EXPECT_EQ(inspector.width(), 320) << width;
    }
    EXPECT_EQ(canvas.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(TemplateEditorTest, TheColumnsKeepTheirLimits) {
    show(editor, {1400, 700});
    for (const auto& [by, width] : {std::pair(400, 280), std::pair(-400, 190), std::pair(30, 220)}) {
        dragHandle(1, by);
        EXPECT_NEAR(list.width(), width, 2);
    }
    for (const auto& [by, width] : {std::pair(400, 290), std::pair(-400, 400), std::pair(40, 360)}) {
        dragHandle(2, by);
        EXPECT_NEAR(inspector.width(), width, 2);
    }
}

TEST_F(TemplateEditorTest, FitsANarrowWindow) {
    EXPECT_LE(editor.minimumSizeHint().width(), 190 + 380 + 290 + 2);
    show(editor, {900, 500});
    EXPECT_EQ(editor.width(), 900);
    EXPECT_GE(list.width(), 190);
    EXPECT_GE(canvas.width(), 380);
    EXPECT_GE(inspector.width(), 290);
    show(editor, {862, 500});
    EXPECT_EQ(list.width(), 190);
    EXPECT_EQ(canvas.width(), 380);
    EXPECT_EQ(inspector.width(), 290);
    EXPECT_TRUE(editor.rect().contains(inspector.geometry()));
}

TEST_F(TemplateEditorTest, ThePreviewFollowsTheSizeOfTheWindow) {
    const auto& surface = *canvas.findChild<CardSurface*>();
    show(editor, {1000, 500});
    const double small = surface.geometry().scale();
    show(editor, {1400, 900});
    EXPECT_GT(surface.geometry().scale(), 1.5 * small);
}

TEST_F(TemplateEditorTest, TheColumnsShowTheSame) {
    show(editor, {1200, 700});
    model.setSide(Side::back);
    EXPECT_EQ(canvas.findChild<CardSurface*>()->overlays().size(), 1u);
    model.newDeck(SampleTemplates::Kind::classic, "Another");
    EXPECT_EQ(canvas.findChild<CardSurface*>()->overlays().size(), model.layers(Side::back).size());
    EXPECT_EQ(list.findChild<LayerRows*>()->rows().size(), model.layers(Side::back).size());
    model.deleteDeck(*model.state()._selection);
    settle();
}

TEST_F(TemplateEditorTest, EveryControlHasAName) {
    open("cards.csv", "Name\nFire\nWater\n");
    show(editor);
    model.selectLayer(model.layers(Side::front).at(0).id);
    EXPECT_THAT(unnamedControls(editor), testing::IsEmpty());
}

}  // namespace
}  // namespace quorvel
