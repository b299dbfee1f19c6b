#include "Controls/SymbolLabel.h"
#include "LayerListTest.h"
#include "TemplateTab/SidePicker.h"

#include <QAccessible>
#include <QMenu>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;

// Rows

TEST_F(LayerListTest, TheTopmostLayerStandsFirst) {
    EXPECT_THAT(rowNames(), ElementsAre("Ghost", "Line", "Badge", "Title", "Background"));
    for (int i = 1; i < 5; ++i)
        EXPECT_GE(row(std::size_t(i)).y(), row(std::size_t(i - 1)).y() + row(std::size_t(i - 1)).height());
}

TEST_F(LayerListTest, ShowsTheLayersOfTheSide) {
    model.setSide(Side::back);
    EXPECT_THAT(rowNames(), ElementsAre("Pattern"));
    auto& picker = *list.findChild<SidePicker*>();
    EXPECT_EQ(picker.accessibleName(), "Side");
    EXPECT_EQ(picker.pos(), QPoint(10, 10));
    click(*find<QAbstractButton>(picker, "Front"));
    EXPECT_EQ(model.state()._side, Side::front);
    EXPECT_EQ(rowNames().size(), 5u);
}

TEST_F(LayerListTest, OnlyALayerWithRulesHasThePalette) {
    for (const LayerRow* each : rows.rows()) {
        const auto* palette = each->findChild<SymbolLabel*>();
        EXPECT_EQ(palette->isVisible(), each->accessibleName() == "Title");
        EXPECT_EQ(palette->toolTip(), "Has conditional styling");
        EXPECT_EQ(palette->accessibleName(), "Conditional styling");
    }
}

TEST_F(LayerListTest, EachKindHasItsSymbol) {
    // Without their names two rows of one kind look alike, and of two kinds they don't.
    CardTemplate next = model.template_();
    next.front.clear();
    for (const auto& [kind, name] : EnumText<LayerKind>::cases)
        for (int i = 0; i < 2; ++i) next.front.emplace_back("Same", kind, Frame{1, 1, 5, 5}, "");
    model.setTemplate(next);
    settle();
    std::vector<QImage> seen;
    for (LayerRow* each : rows.rows()) seen.push_back(each->grab().toImage());
    ASSERT_EQ(seen.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i)
        for (std::size_t k = 0; k < 8; ++k) EXPECT_EQ(seen[i] == seen[k], i / 2 == k / 2) << i << " " << k;
}

TEST_F(LayerListTest, NamesOfTheUsersAreShownAsTheyAre) {
    for (const char* name : {"<b>Bold</b>", "&both", "ünïcödé 🂡", ""}) {
        Layer renamed = layer(layer("Badge").name);
        renamed.name = name;
        model.updateLayer(renamed);
        EXPECT_EQ(rowNames()[2], QString::fromUtf8(name));
        EXPECT_EQ(eye(rowNames()[2]).accessibleName(), "Hide " + QString::fromUtf8(name));
        renamed.name = "Badge";
        model.updateLayer(renamed);
    }
}

TEST_F(LayerListTest, ALayerKeepsItsRowWhereverItMoves) {
    select("Title");
    LayerRow* const title = &row("Title");
    model.moveSelectedLayer(1);
    EXPECT_THAT(rowNames(), ElementsAre("Ghost", "Line", "Title", "Badge", "Background"));
    EXPECT_EQ(&row("Title"), title);
    settle();
    EXPECT_EQ(title->y(), row(1).y() + row(1).height());
    model.deleteSelectedLayer();
    EXPECT_THAT(rowNames(), ElementsAre("Ghost", "Line", "Badge", "Background"));
    model.undo();
    EXPECT_THAT(rowNames(), ElementsAre("Ghost", "Line", "Title", "Badge", "Background"));
}

TEST_F(LayerListTest, TwoLayersOfOneIdAreTwoRows) {
    CardTemplate next = model.template_();
    next.front = {next.front[1], next.front[1]};
    next.front[0].name = "Twin";
    model.setTemplate(next);
    EXPECT_THAT(rowNames(), ElementsAre("Title", "Twin"));
    select("Twin");
    ASSERT_NE(rows.selectedRow(), nullptr);
    click(eye("Twin"));
    EXPECT_TRUE(model.layers(Side::front)[0].hidden);
}

// The eye

TEST_F(LayerListTest, TheEyeHidesAndShows) {
    EXPECT_EQ(eye("Badge").toolTip(), "Hide layer");
    EXPECT_EQ(eye("Badge").accessibleName(), "Hide Badge");
    EXPECT_EQ(eye("Ghost").toolTip(), "Show layer");
    EXPECT_EQ(eye("Ghost").accessibleName(), "Show Ghost");
    select("Title");
    click(eye("Badge"));
    EXPECT_TRUE(layer("Badge").hidden);
    EXPECT_EQ(eye("Badge").accessibleName(), "Show Badge");
    EXPECT_EQ(eye("Badge").toolTip(), "Show layer");
    EXPECT_EQ(selected(), "Title") << "on whichever row";
    EXPECT_EQ(undo->undoCount(), 1u);
    EXPECT_EQ(undoName(), "Edit Template");
    click(eye("Ghost"));
    EXPECT_FALSE(layer("Ghost").hidden);
    model.undo();
    model.undo();
    EXPECT_FALSE(layer("Badge").hidden);
    EXPECT_TRUE(layer("Ghost").hidden);
}

TEST_F(LayerListTest, TheEyeDoesntTakeTheKeyboard) {
    rows.setFocus();
    click(eye("Badge"));
    EXPECT_TRUE(rows.hasFocus());
}

TEST_F(LayerListTest, TheTabKeyLeadsToTheEyeOfTheSelectedRow) {
    select("Badge");
    rows.setFocus();
    QTest::keyClick(&rows, Qt::Key_Tab);
    ASSERT_TRUE(eye("Badge").hasFocus()) << QApplication::focusWidget()->metaObject()->className();
    QTest::keyClick(&eye("Badge"), Qt::Key_Space);
    EXPECT_TRUE(layer("Badge").hidden);
    QTest::keyClick(&eye("Badge"), Qt::Key_Tab);
    EXPECT_TRUE(tool("Add Layer").hasFocus()) << QApplication::focusWidget()->accessibleName().toStdString();
    // With its layer, it goes.
    eye("Badge").setFocus();
    model.deleteSelectedLayer();
    EXPECT_TRUE(rows.hasFocus());
}

// The tools

TEST_F(LayerListTest, AddOffersEveryKind) {
    QToolButton& add = tool("Add Layer");
    EXPECT_EQ(add.toolTip(), "Add a layer");
    EXPECT_TRUE(add.isEnabled());
    std::vector<QString> titles;
    for (const QAction* each : add.menu()->actions()) {
        titles.push_back(each->text());
        EXPECT_FALSE(each->icon().isNull());
    }
    EXPECT_THAT(titles, ElementsAre("Text", "Picture", "Shape", "Icon Row"));
    const std::vector<LayerKind> kinds{LayerKind::text, LayerKind::image, LayerKind::shape, LayerKind::icons};
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        add.menu()->actions()[int(i)]->trigger();
        EXPECT_EQ(model.selectedLayerValue()->kind, kinds[i]);
        EXPECT_EQ(model.layers(Side::front).back().kind, kinds[i]);
        EXPECT_EQ(rows.selectedRow(), &row(0));
    }
    EXPECT_EQ(undo->undoCount(), 4u);
}

TEST_F(LayerListTest, TheOthersWantASelection) {
    struct Case {
        const char *name, *tip;
    };
    const Case cases[] = {{"Delete Layer", "Delete the layer"},
                          {"Duplicate Layer", "Duplicate the layer"},
                          {"Bring Forward", "Bring forward"},
                          {"Send Backward", "Send backward"}};
    for (const auto& [name, tip] : cases) {
        EXPECT_EQ(tool(name).toolTip(), tip);
        EXPECT_FALSE(tool(name).isEnabled());
    }
    select("Title");
    for (const auto& [name, tip] : cases) EXPECT_TRUE(tool(name).isEnabled());
    const UUID gone = layer("Title").id;
    model.deleteSelectedLayer();
    model.selectLayer(gone);
    for (const auto& [name, tip] : cases) EXPECT_FALSE(tool(name).isEnabled()) << "selected, but not there";
}

TEST_F(LayerListTest, DeleteDeletes) {
    select("Title");
    tool("Delete Layer").setFocus();
    QTest::keyClick(&tool("Delete Layer"), Qt::Key_Space);
    EXPECT_THAT(names(), ElementsAre("Background", "Badge", "Line", "Ghost"));
    EXPECT_FALSE(model.state()._selectedLayer);
    EXPECT_TRUE(rows.hasFocus()) << "the keyboard stays in the column";
}

TEST_F(LayerListTest, DuplicateCopiesAbove) {
    select("Title");
    click(tool("Duplicate Layer"));
    EXPECT_THAT(names(), ElementsAre("Background", "Title", "Title copy", "Badge", "Line", "Ghost"));
    EXPECT_EQ(selected(), "Title copy");
}

TEST_F(LayerListTest, ForwardAndBackwardMove) {
    select("Line");
    click(tool("Bring Forward"));
    EXPECT_THAT(names(), ElementsAre("Background", "Title", "Badge", "Ghost", "Line"));
    const std::size_t steps = undo->undoCount();
    click(tool("Bring Forward"));
    EXPECT_EQ(undo->undoCount(), steps) << "it is on top";
    click(tool("Send Backward"));
    click(tool("Send Backward"));
    EXPECT_THAT(names(), ElementsAre("Background", "Title", "Line", "Badge", "Ghost"));
    EXPECT_EQ(selected(), "Line");
}

TEST_F(LayerListTest, TheToolsStandTogether) {
    QWidget* before = nullptr;
    for (const char* name : {"Add Layer", "Delete Layer", "Duplicate Layer", "Bring Forward", "Send Backward"}) {
        QToolButton& button = tool(name);
        EXPECT_TRUE(button.autoRaise());
        if (before) {
            EXPECT_EQ(button.x() - before->geometry().right() - 1, 4);
        } else {
            EXPECT_EQ(button.mapTo(&list, QPoint()).x(), 8);
        }
        before = &button;
    }
    EXPECT_EQ(list.height() - before->mapTo(&list, QPoint(0, before->height())).y(), 8);
}

// Screen readers

TEST_F(LayerListTest, RowsAreItemsOfAList) {
    select("Badge");
    rows.setFocus();
    QAccessibleInterface& accessible = *QAccessible::queryAccessibleInterface(&rows);
    EXPECT_EQ(accessible.role(), QAccessible::List);
    EXPECT_EQ(accessible.text(QAccessible::Name), "Layers");
    ASSERT_EQ(accessible.childCount(), 5);
    for (int i = 0; i < 5; ++i) {
        QAccessibleInterface& item = *accessible.child(i);
        EXPECT_EQ(item.role(), QAccessible::ListItem);
        EXPECT_EQ(item.text(QAccessible::Name), rowNames()[std::size_t(i)]);
        EXPECT_EQ(item.state().selected, i == 2);
        EXPECT_EQ(item.state().focused, i == 2);
        EXPECT_EQ(item.parent(), &accessible);
        EXPECT_EQ(accessible.indexOfChild(&item), i);
        const QPoint place = item.rect().center();
        EXPECT_EQ(accessible.childAt(place.x(), place.y()), &item);
    }
    EXPECT_EQ(accessible.focusChild(), accessible.child(2));
    EXPECT_EQ(accessible.child(5), nullptr);
    EXPECT_EQ(accessible.child(-1), nullptr);
}

TEST_F(LayerListTest, EveryControlHasAName) {
    select("Title");
    EXPECT_THAT(unnamedControls(list), testing::IsEmpty());
}

}  // namespace
}  // namespace quorvel
