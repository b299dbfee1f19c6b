#include "Inspector/ColorWell.h"
#include "Inspector/ContentEditor.h"
#include "InspectorTest.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QSpinBox>
#include <cmath>

namespace quorvel {

namespace {

class SelectionTest : public InspectorTest {
protected:
    bool showsTheTemplate() { return words().contains("Card size"); }
    bool showsALayer() { return words().contains("Position and size"); }

    /// Types into a number field and leaves it open.
    void beginTyping(const QString& field, const QString& number) {
        auto* input = find<QLineEdit>(page(), field);
        input->setFocus();
        input->selectAll();
        QTest::keyClicks(input, number);
    }

    const Layer* layerWith(const UUID& id) {
        for (const Layer& each : design().front)
            if (each.id == id) return &each;
        return nullptr;
    }
};

}  // namespace

TEST_F(SelectionTest, TheFormFollowsTheSelectionAtOnce) {
    EXPECT_TRUE(showsTheTemplate());
    for (const auto& [kind, name] : EnumText<LayerKind>::cases) {
        add(kind);
        EXPECT_TRUE(showsALayer()) << name;
        EXPECT_EQ(typed("Name").toStdString(), layer().name);
    }
    model.setSide(Side::back);
    EXPECT_TRUE(showsTheTemplate());
    model.selectLayer(design().back.front().id);
    EXPECT_TRUE(showsALayer());
    model.selectLayer(UUID::random());
    EXPECT_TRUE(showsTheTemplate());
}

TEST_F(SelectionTest, UndoingTheSelectedLayerShowsTheTemplate) {
    add(LayerKind::shape);
    EXPECT_TRUE(showsALayer());
    model.undo();
    EXPECT_TRUE(showsTheTemplate());
    model.redo();
    EXPECT_TRUE(showsALayer());
}

TEST_F(SelectionTest, ValuesFollowEveryChange) {
    add(LayerKind::text);
    change([](Layer& changed) {
        changed.name = "N";
        changed.frame = {1, 2, 3, 4};
        changed.content = "C";
        changed.style.size = 33;
    });
    EXPECT_EQ(typed("Name"), "N");
    EXPECT_EQ(typed("Left"), "1");
    EXPECT_EQ(typed("Height"), "4");
    EXPECT_EQ(typed("Size"), "33");
    EXPECT_EQ(page().findChild<ContentEditor*>()->content(), "C");
    model.beginLayerDrag();
    change([](Layer& changed) { changed.frame.x = 7.5; });
    EXPECT_EQ(typed("Left").toDouble(), 7.5);
    model.endLayerDrag();
    model.undo();
    EXPECT_EQ(typed("Left"), "1");
}

TEST_F(SelectionTest, ANumberThatIsBeingTypedStaysWhileOtherThingsChange) {
    add(LayerKind::shape);
    beginTyping("Left", "12");
    change([](Layer& changed) { changed.name = "Other"; });
    EXPECT_EQ(typed("Left"), "12");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(layer().frame.x, 12);
}

TEST_F(SelectionTest, ATypedNumberIsForTheLayerThatItWasTypedFor) {
    add(LayerKind::shape);
    const UUID first = layer().id;
    for (const LayerKind next : {LayerKind::shape, LayerKind::text}) {
        model.selectLayer(first);
        const double typedNumber = next == LayerKind::shape ? 41 : 42;
        beginTyping("Left", QString::number(typedNumber));
        model.addLayer(next);
        EXPECT_EQ(layerWith(first)->frame.x, typedNumber);
        EXPECT_NE(layer().frame.x, typedNumber);
        EXPECT_EQ(typed("Left").toDouble(), std::round(layer().frame.x * 100) / 100);
        EXPECT_FALSE(inspector->isAncestorOf(QApplication::focusWidget()));
    }
}

TEST_F(SelectionTest, ATypedNumberIsDroppedWithItsSide) {
    add(LayerKind::shape);
    const CardTemplate before = design();
    beginTyping("Left", "41");
    model.setSide(Side::back);
    model.selectLayer(design().back.front().id);
    EXPECT_EQ(design(), before);
}

TEST_F(SelectionTest, ATypedNumberReachesNoOtherDeck) {
    beginTyping("Bleed", "7");
    const UUID first = *model.state()._selection;
    model.duplicateDeck(first);
    EXPECT_EQ(design().bleedMM, 3);
    EXPECT_EQ(typed("Bleed"), "3");
    model.setSelection(first);
    EXPECT_EQ(design().bleedMM, 3);

    model.selectLayer(design().front.back().id);
    const CardTemplate before = design();
    beginTyping("Left", "41");
    model.setSelection(model.state()._decks.back().id);
    model.selectLayer(design().front.back().id);
    EXPECT_EQ(design().front, before.front);
    model.setSelection(first);
    EXPECT_EQ(design(), before);
}

TEST_F(SelectionTest, TypingEndsWhereItsLayerGoes) {
    add(LayerKind::shape);
    auto* name = find<QLineEdit>(page(), "Name");
    name->setFocus();
    QTest::keyClicks(name, "x");
    model.deleteSelectedLayer();
    EXPECT_TRUE(showsTheTemplate());
    // Nothing else has caught the keyboard.
    EXPECT_FALSE(inspector->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(SelectionTest, TheColourDialogChangesWhatItWasOpenedFor) {
    add(LayerKind::shape);
    settle();
    undo->removeAllActions();
    QTest::mouseClick(find<ColorWell>(page(), "Fill"), Qt::LeftButton);
    QColorDialog* dialog = openDialog();
    ASSERT_TRUE(dialog);
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->windowTitle(), "Fill");
    // As the user does, channel by channel.
    const auto turn = [&](const QString& channel, int value) {
        for (const QLabel* label : dialog->findChildren<QLabel*>())
            if (label->text().remove(u'&') == channel) qobject_cast<QSpinBox*>(label->buddy())->setValue(value);
    };
    const RGBA before = *layer().fill;
    turn("Red:", 1);
    EXPECT_EQ(layer().fill, RGBA(1 / 255.0, before.g, before.b, before.a));
    turn("Alpha channel:", 4);
    const RGBA picked(1 / 255.0, before.g, before.b, 4 / 255.0);
    EXPECT_EQ(layer().fill, picked);
    EXPECT_EQ(steps(), 2U);
    turn("Green:", 0);
    model.undo();
    EXPECT_EQ(dialog->currentColor(), QColor::fromRgbF(1 / 255.0F, float(before.g), float(before.b), 4 / 255.0F));
    const UUID first = layer().id;
    add(LayerKind::shape);
    EXPECT_FALSE(openDialog());
    EXPECT_EQ(layerWith(first)->fill, picked);
    settle();
}

TEST_F(SelectionTest, NoListOrMenuOutlivesWhatItIsFor) {
    add(LayerKind::text);
    click("Add Rule");
    const UUID first = layer().id;
    model.duplicateSelectedLayer();
    const UUID second = layer().id;
    settle();
    for (const char* name : {"When", "Match", "Font"}) {
        model.selectLayer(first);
        auto* picker = find<QComboBox>(page(), name);
        picker->showPopup();
        EXPECT_TRUE(picker->view()->isVisible()) << name;
        model.selectLayer(second);
        EXPECT_FALSE(picker->view()->isVisible()) << name;
    }
    for (const char* name : {"Insert Field", "Insert Icon"}) {
        model.selectLayer(first);
        QMenu* menu = menuOf(name);
        menu->popup({0, 0});
        model.selectLayer(second);
        EXPECT_FALSE(menu->isVisible()) << name;
    }
    model.selectLayer(std::nullopt);
    QMenu* samples = menuOf("Start Over from a Sample Template");
    samples->popup({0, 0});
    model.duplicateDeck(*model.state()._selection);
    EXPECT_FALSE(samples->isVisible());
}

TEST_F(SelectionTest, NumbersAreThoseOfTheUsersLanguage) {
    inspector->setLocale(QLocale(QLocale::German, QLocale::Germany));
    type("Bleed", "7,5");
    EXPECT_EQ(design().bleedMM, 7.5);
    EXPECT_EQ(typed("Bleed"), "7,5");
    add(LayerKind::text);
    type("Left", "-1.234,25");
    EXPECT_EQ(layer().frame.x, -1234.25);
    EXPECT_EQ(typed("Left"), "-1.234,25");
    type("Size", "9.5");  // points stand between thousands
    EXPECT_NE(layer().style.size, 9.5);
    EXPECT_EQ(typed("Size"), QLocale(QLocale::German, QLocale::Germany).toString(layer().style.size));
}

TEST_F(SelectionTest, ThereIsOneColourDialog) {
    add(LayerKind::shape);
    change([](Layer& changed) { changed.stroke = RGBA::black; });
    settle();
    QTest::mouseClick(find<ColorWell>(page(), "Fill"), Qt::LeftButton);
    QTest::mouseClick(find<ColorWell>(page(), "Line"), Qt::LeftButton);
    EXPECT_EQ(openDialog()->windowTitle(), "Line");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    int dialogs = 0;
    for (QWidget* window : QApplication::topLevelWidgets()) dialogs += qobject_cast<QColorDialog*>(window) != nullptr;
    EXPECT_EQ(dialogs, 1);
    model.setSelection(std::nullopt);
    EXPECT_FALSE(openDialog());
}

TEST_F(SelectionTest, TheDialogGoesWithTheInspector) {
    add(LayerKind::shape);
    settle();
    QTest::mouseClick(find<ColorWell>(page(), "Fill"), Qt::LeftButton);
    ASSERT_TRUE(openDialog());
    inspector->hide();
    EXPECT_FALSE(openDialog());
    inspector->show();
    QTest::mouseClick(find<ColorWell>(page(), "Fill"), Qt::LeftButton);
    inspector.reset();
    EXPECT_FALSE(openDialog());
}

TEST_F(SelectionTest, WhatChangedWhileItWasHiddenIsShown) {
    add(LayerKind::shape);
    inspector->hide();
    change([](Layer& changed) { changed.name = "Later"; });
    inspector->show();
    EXPECT_EQ(typed("Name"), "Later");
    inspector->hide();
    model.selectLayer(std::nullopt);
    inspector->show();
    EXPECT_TRUE(showsTheTemplate());
}

TEST_F(SelectionTest, EveryControlHasAName) {
    EXPECT_EQ(unnamedControls(*inspector), std::vector<std::string>());
    for (const auto& [kind, name] : EnumText<LayerKind>::cases) {
        add(kind);
        click("Add Rule");
        settle();
        EXPECT_EQ(unnamedControls(*inspector), std::vector<std::string>()) << name;
    }
}

TEST_F(SelectionTest, ADesignFromAFileMayHoldAnything) {
    add(LayerKind::text);
    change([](Layer& changed) {
        changed.name = "a\nb\xff";
        changed.frame = {1e300, -1e300, 1e-300, 0};
        changed.content =
            "a\r\nb\rc\xE2\x80\xA8"
            "d\xC2\xA0"
            "e";
        changed.style.fontFamily = std::string(5000, 'W');
        changed.opacity = 7;
        changed.rules.resize(3);
    });
    const CardTemplate before = design();
    settle();
    EXPECT_EQ(page().findChild<ContentEditor*>()->content(), QString::fromUtf8("a\nb\nc\nd\u00a0e"));
    EXPECT_LE(page().minimumSizeHint().width(), 290);
    EXPECT_EQ(ruleCount(), 3);
    EXPECT_EQ(design(), before);
    auto* editor = page().findChild<ContentEditor*>();
    editor->setFocus();
    editor->moveCursor(QTextCursor::End);
    QTest::keyClicks(editor, "!");
    EXPECT_EQ(layer().content,
              "a\nb\nc\nd\xC2\xA0"
              "e!");
}

}  // namespace quorvel
