#include "Controls/Picker.h"
#include "Inspector/ColorWell.h"
#include "Inspector/RuleRow.h"
#include "InspectorTest.h"
#include "Support/Desktop/EventLoop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

namespace quorvel {

namespace {

class RulesSectionTest : public InspectorTest {
protected:
    const StyleRule& stored(std::size_t index) { return layer().rules[index]; }

    /// A layer of a kind with so many new rules.
    void addWithRules(LayerKind kind, int count) {
        add(kind);
        for (int i = 0; i < count; ++i) click("Add Rule");
        settle();
        undo->removeAllActions();
    }
};

}  // namespace

TEST_F(RulesSectionTest, ANewRuleShowsOnTheFirstCardsType) {
    for (const auto& [kind, name] : EnumText<LayerKind>::cases) {
        add(kind);
        settle();
        undo->removeAllActions();
        click("Add Rule");
        ASSERT_EQ(layer().rules.size(), 1U) << name;
        const auto fill = kind == LayerKind::text ? std::nullopt : std::optional(RGBA(0.55, 0.3, 0.5, 1));
        StyleRule wanted("type", StyleRule::Match::equals, "Fruit", fill, std::nullopt, std::nullopt, false);
        wanted.id = stored(0).id;
        EXPECT_EQ(stored(0), wanted) << name;
        EXPECT_EQ(ruleCount(), 1);
        EXPECT_EQ(steps(), 1U);
        click("Add Rule");
        EXPECT_NE(stored(0).id, stored(1).id);
    }
}

TEST_F(RulesSectionTest, ANewRuleIsBroughtIntoSight) {
    addWithRules(LayerKind::text, 3);
    auto& form = static_cast<QScrollArea&>(page());
    form.verticalScrollBar()->setValue(0);
    click("Add Rule");
    runWhatWaits();
    for (const QWidget* each : {static_cast<const QWidget*>(&rule(3)),
                                static_cast<const QWidget*>(find<QAbstractButton>(page(), "Add Rule"))})
        EXPECT_TRUE(form.viewport()->rect().contains({each->mapTo(form.viewport(), QPoint()), each->size()}));
}

TEST_F(RulesSectionTest, WithoutCardsTheValueIsEmpty) {
    open("none.csv", "Title,Type\n");
    add(LayerKind::shape);
    click("Add Rule");
    EXPECT_EQ(stored(0).value, "");
}

TEST_F(RulesSectionTest, ARowWritesItsRule) {
    addWithRules(LayerKind::text, 2);
    RuleRow& row = rule(1);
    EXPECT_EQ(options("When", row),
              QStringList({"title", "text", "cost", "type", "art", "icons", "quantity", "Power & Glory"}));
    EXPECT_EQ(options("Match", row), QStringList({"is", "contains", "is empty", "is not empty"}));
    choose("When", "Power & Glory", row);
    EXPECT_EQ(stored(1).field, "Power & Glory");
    choose("Match", "contains", row);
    EXPECT_EQ(stored(1).match, StyleRule::Match::contains);
    type("Value", "ea", row);
    EXPECT_EQ(stored(1).value, "ea");
    click("Fill", row);
    EXPECT_EQ(stored(1).fill, RGBA::white);
    click("Text colour", row);
    EXPECT_EQ(stored(1).textColor, RGBA::black);
    click("Line", row);
    EXPECT_EQ(stored(1).stroke, RGBA::black);
    click("Hide the layer", row);
    EXPECT_TRUE(stored(1).hide);
    pick("Text colour", "#010203", row);
    EXPECT_EQ(stored(1).textColor, RGBA::bytes(1, 2, 3));
    click("Fill", row);
    EXPECT_EQ(stored(1).fill, std::nullopt);
    EXPECT_EQ(stored(0).field, "type");
    EXPECT_EQ(undo->undoName(), "Edit Template");
}

TEST_F(RulesSectionTest, OnlyTextsAndIconRowsHaveATextColour) {
    for (const auto& [kind, name] : EnumText<LayerKind>::cases) {
        addWithRules(kind, 1);
        bool has = false;
        for (const QCheckBox* box : rule(0).findChildren<QCheckBox*>()) has |= box->text() == "Text colour";
        EXPECT_EQ(has, kind == LayerKind::text || kind == LayerKind::icons) << name;
    }
}

TEST_F(RulesSectionTest, TheValueIsHiddenAndKeptWhereNothingIsCompared) {
    addWithRules(LayerKind::shape, 1);
    auto* value = find<QLineEdit>(rule(0), "Value");
    EXPECT_TRUE(isShown(value));
    for (const char* match : {"is empty", "is not empty"}) {
        choose("Match", match, rule(0));
        EXPECT_FALSE(isShown(value)) << match;
        EXPECT_EQ(stored(0).value, "Fruit");
    }
    choose("Match", "contains", rule(0));
    EXPECT_TRUE(isShown(value));
    EXPECT_EQ(value->text(), "Fruit");
}

TEST_F(RulesSectionTest, AFieldThatIsNoColumnIsOfferedWhileTheRuleNamesIt) {
    addWithRules(LayerKind::shape, 1);
    change([](Layer& changed) { changed.rules[0].field = "Mana"; });
    EXPECT_EQ(options("When", rule(0)).last(), "Mana");
    EXPECT_EQ(chosen("When", rule(0)), "Mana");
    choose("When", "cost", rule(0));
    EXPECT_EQ(stored(0).field, "cost");
    EXPECT_FALSE(options("When", rule(0)).contains("Mana"));
}

TEST_F(RulesSectionTest, ARuleIsRemoved) {
    addWithRules(LayerKind::shape, 3);
    const UUID first = stored(0).id;
    const UUID last = stored(2).id;
    EXPECT_EQ(find<QAbstractButton>(rule(1), "Remove Rule")->toolTip(), "Remove the rule");
    click("Remove Rule", rule(1));
    ASSERT_EQ(layer().rules.size(), 2U);
    EXPECT_EQ(stored(0).id, first);
    EXPECT_EQ(stored(1).id, last);
    EXPECT_EQ(ruleCount(), 2);
    EXPECT_EQ(rule(1).id(), last);
    model.undo();
    EXPECT_EQ(ruleCount(), 3);
}

TEST_F(RulesSectionTest, EveryRuleOfTheIdIsRemoved) {
    addWithRules(LayerKind::shape, 2);
    change([](Layer& changed) { changed.rules.push_back(changed.rules[0]); });
    EXPECT_EQ(ruleCount(), 3);
    click("Remove Rule", rule(2));
    EXPECT_EQ(layer().rules.size(), 1U);
    EXPECT_EQ(ruleCount(), 1);
}

TEST_F(RulesSectionTest, TypingKeepsTheFieldAndItsCursor) {
    addWithRules(LayerKind::shape, 2);
    auto* value = find<QLineEdit>(rule(1), "Value");
    value->setFocus();
    value->setCursorPosition(2);
    QTest::keyClicks(value, "xyz");
    settle();
    EXPECT_EQ(stored(1).value, "Frxyzuit");
    EXPECT_EQ(value, find<QLineEdit>(rule(1), "Value"));
    EXPECT_TRUE(value->hasFocus());
    EXPECT_EQ(value->cursorPosition(), 5);
    EXPECT_EQ(steps(), 3U);
    model.undo();
    EXPECT_EQ(value->text(), "Frxyuit");
    EXPECT_EQ(value->cursorPosition(), 4);
    // A rule that goes above it doesn't take it away.
    change([](Layer& changed) { changed.rules.erase(changed.rules.begin()); });
    EXPECT_EQ(value, find<QLineEdit>(rule(0), "Value"));
    EXPECT_TRUE(value->hasFocus());
}

TEST_F(RulesSectionTest, ARuleThatGoesWithItsDialogOpenDoesNoHarm) {
    addWithRules(LayerKind::shape, 2);
    QTest::mouseClick(find<ColorWell>(rule(0), "Fill"), Qt::LeftButton);
    ASSERT_TRUE(openDialog());
    click("Remove Rule", rule(0));
    EXPECT_FALSE(openDialog());
    settle();
    EXPECT_EQ(layer().rules.size(), 1U);

    QTest::mouseClick(find<ColorWell>(rule(0), "Fill"), Qt::LeftButton);
    QColorDialog* dialog = openDialog();
    const CardTemplate before = design();
    change([](Layer& changed) { changed.rules.clear(); });
    dialog->setCurrentColor(Qt::red);  // it closes, and may still speak
    EXPECT_TRUE(layer().rules.empty());
    settle();
}

TEST_F(RulesSectionTest, AfterARuleTheKeyboardIsNotLost) {
    addWithRules(LayerKind::shape, 1);
    auto* remove = find<QAbstractButton>(rule(0), "Remove Rule");
    remove->setFocus();
    QTest::keyClick(remove, Qt::Key_Space);
    EXPECT_TRUE(find<QAbstractButton>(page(), "Add Rule")->hasFocus());
}

TEST_F(RulesSectionTest, TheTabKeyGoesThroughTheRulesInOrder) {
    addWithRules(LayerKind::shape, 2);
    find<QComboBox>(rule(0), "When")->setFocus();
    QStringList visited;
    for (int i = 0; i < 15; ++i) {
        QWidget* focus = QApplication::focusWidget();
        visited += nameOf(*focus) + (rule(1).isAncestorOf(focus) ? " 2" : rule(0).isAncestorOf(focus) ? " 1" : "");
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    EXPECT_EQ(visited, QStringList({"When 1", "Remove Rule 1", "Match 1", "Value 1", "Fill 1", "Fill 1", "Line 1",
                                    "Hide the layer 1", "When 2", "Remove Rule 2", "Match 2", "Value 2", "Fill 2",
                                    "Fill 2", "Line 2"}));
}

TEST_F(RulesSectionTest, TheRulesOfACopyAreItsOwn) {
    addWithRules(LayerKind::shape, 1);
    const UUID original = layer().id;
    model.duplicateSelectedLayer();
    type("Value", "Tree", rule(0));
    EXPECT_EQ(stored(0).value, "Tree");
    model.selectLayer(original);
    EXPECT_EQ(stored(0).value, "Fruit");
    EXPECT_EQ(typed("Value", rule(0)), "Fruit");
}

}  // namespace quorvel
