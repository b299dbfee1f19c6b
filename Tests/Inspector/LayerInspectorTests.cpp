#include "Controls/SegmentedPicker.h"
#include "Inspector/ColorWell.h"
#include "Inspector/ContentEditor.h"
#include "Inspector/FontList.h"
#include "Inspector/LayerKinds.h"
#include "Inspector/OpacitySlider.h"
#include "Inspector/OptionalColor.h"
#include "InspectorTest.h"
#include "Pictures/IconSet.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

namespace quorvel {

namespace {

class LayerInspectorTest : public InspectorTest {
protected:
    /// The forms of all kinds that have what `needed` says, each with a fresh layer.
    template <class Check>
    void forEachKind(std::vector<LayerKind> kinds, Check check) {
        for (const LayerKind kind : kinds) {
            SCOPED_TRACE(std::string(LayerKinds::label(kind)));
            add(kind);
            settle();
            undo->removeAllActions();
            check();
        }
    }

    QStringList headOf(const char* name, const char* kind) {
        return {"Layer", "Name",  "Kind", kind,     "Hidden", "Opacity", "Position and size", "Left", "mm", "Top",
                "mm",    "Width", "mm",   "Height", "mm",     name};
    }
    static QStringList tail() {
        return {"Conditional style", "Add Rule",
                "When a card’s field matches, this layer changes colour or hides. Of several matching rules, the first "
                "one sets each colour."};
    }

    ContentEditor* content() { return page().findChild<ContentEditor*>(); }
};

const std::vector<LayerKind> allKinds{LayerKind::text, LayerKind::image, LayerKind::shape, LayerKind::icons};
const std::vector<LayerKind> kindsWithContent{LayerKind::text, LayerKind::image, LayerKind::icons};

}  // namespace

TEST_F(LayerInspectorTest, ATextLayerHasItsRowsInOrder) {
    add(LayerKind::text);
    settle();
    EXPECT_EQ(words(),
              headOf("Text", "Text") +
                  QStringList({"Content", "Insert Field", "Insert Icon",
                               "{{title}} puts in a field or column. In the text and in cells: **bold**, "
                               "*italic*, {icon:coin}.",
                               "Font", "Font", "Size", "pt", "Bold", "Italic", "Colour", "Align", "Vertical",
                               "Shrink to fit the box", "Icons in their own colours", "Box", "Fill", "Line", "Shape"}) +
                  tail());
}

TEST_F(LayerInspectorTest, APictureLayerHasItsRowsInOrder) {
    add(LayerKind::image);
    settle();
    EXPECT_EQ(words(), headOf("Picture", "Picture") +
                           QStringList({"Content", "Insert Field", "Fit", "Corner radius", "mm", "Background", "Line",
                                        "Line width", "pt",
                                        "A path or {{art}}. Paths are looked up in the art folder and next to the "
                                        "spreadsheet; PNG, JPEG, HEIC, TIFF and PDF."}) +
                           tail());
}

TEST_F(LayerInspectorTest, AShapeLayerHasItsRowsInOrder) {
    add(LayerKind::shape);
    settle();
    EXPECT_EQ(words(), headOf("Shape", "Shape") +
                           QStringList({"Shape", "Corner radius", "mm", "Fill", "Line", "Line width", "pt"}) + tail());
}

TEST_F(LayerInspectorTest, AnIconRowHasItsRowsInOrder) {
    add(LayerKind::icons);
    settle();
    EXPECT_EQ(words(),
              headOf("Icon row", "Icon Row") +
                  QStringList({"Content", "Insert Field", "Icon size", "mm", "Spacing", "mm", "Align", "Vertical",
                               "Icons in their own colours", "Colour",
                               "{{icons}}, or names: “coin, coin, star”, “2 leaf”. Built in: coin, heart, star, bolt, "
                               "drop, leaf, flame, shield, sword, gem, sun, moon, gear, hourglass, arrow, eye, crown, "
                               "key, plus, minus. Pictures in the icons folder (coin.png) replace them.",
                               "Box", "Fill", "Line"}) +
                  tail());
}

TEST_F(LayerInspectorTest, EveryFormFitsTheNarrowestColumn) {
    const auto expectFits = [this] {
        EXPECT_LE(page().minimumSizeHint().width(), 290);
        EXPECT_LE(inspector->minimumSizeHint().width(), 290);
    };
    expectFits();
    forEachKind(allKinds, [&] {
        click("Add Rule");
        settle();
        expectFits();
    });
}

TEST_F(LayerInspectorTest, EveryKindWritesWhatAllLayersHave) {
    forEachKind(allKinds, [this] {
        type("Name", "A");
        EXPECT_EQ(layer().name, "A");
        click("Hidden");
        EXPECT_TRUE(layer().hidden);
        type("Left", "-12.5");
        type("Top", "1e3");
        type("Width", "0");
        type("Height", "-3");
        EXPECT_EQ(layer().frame, (Frame{-12.5, 1000, 0, -3}));
        EXPECT_EQ(steps(), 6U);
        EXPECT_EQ(undo->undoName(), "Edit Template");
        click("Hidden");
        EXPECT_FALSE(layer().hidden);
    });
}

TEST_F(LayerInspectorTest, FontsAndTextAreWritten) {
    add(LayerKind::text);
    settle();
    type("Size", "250.25");
    EXPECT_EQ(layer().style.size, 250.25);
    click("Bold");
    EXPECT_TRUE(layer().style.bold);
    click("Italic");
    EXPECT_TRUE(layer().style.italic);
    click("Shrink to fit the box");
    EXPECT_FALSE(layer().style.shrinkToFit);
    pick("Colour", "#0a0b0c");
    EXPECT_EQ(layer().style.color, RGBA::bytes(10, 11, 12));
    choose("Shape", "Ellipse");
    EXPECT_EQ(layer().shape, ShapeKind::ellipse);
}

TEST_F(LayerInspectorTest, AlignmentIsWritten) {
    forEachKind({LayerKind::text, LayerKind::icons}, [this] {
        click("Right");
        EXPECT_EQ(layer().style.align, TextAlign::right);
        click("Left");
        EXPECT_EQ(layer().style.align, TextAlign::left);
        click("Centre");
        EXPECT_EQ(layer().style.align, TextAlign::center);
        click("Bottom");
        EXPECT_EQ(layer().style.verticalAlign, VerticalAlign::bottom);
        click("Top");
        EXPECT_EQ(layer().style.verticalAlign, VerticalAlign::top);
        click("Middle");
        EXPECT_EQ(layer().style.verticalAlign, VerticalAlign::middle);
        click("Icons in their own colours");
        EXPECT_FALSE(layer().style.colorfulIcons);
        EXPECT_EQ(steps(), 7U);
    });
}

TEST_F(LayerInspectorTest, TheTabKeyStopsOnceAtEachChoice) {
    add(LayerKind::text);
    settle();
    for (const char* align : {"Right", "Left", "Centre"}) {
        click(align);
        find<ColorWell>(page(), "Colour")->setFocus();
        QStringList visited;
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* focus = QApplication::focusWidget();
            visited +=
                qobject_cast<SegmentedPicker*>(focus->parentWidget()) ? nameOf(*focus->parentWidget()) : nameOf(*focus);
        }
        EXPECT_EQ(visited.join(", ").toStdString(), "Align, Vertical, Shrink to fit the box") << align;
    }
}

TEST_F(LayerInspectorTest, IconRowsAreWritten) {
    add(LayerKind::icons);
    settle();
    type("Icon size", "7.5");
    type("Spacing", "-0.5");
    pick("Colour", "#aabbcc");
    EXPECT_EQ(layer().iconSizeMM, 7.5);
    EXPECT_EQ(layer().iconSpacingMM, -0.5);
    EXPECT_EQ(layer().style.color, RGBA::bytes(0xaa, 0xbb, 0xcc));
}

TEST_F(LayerInspectorTest, PicturesAndShapesAreWritten) {
    add(LayerKind::image);
    EXPECT_EQ(options("Fit", page()), QStringList({"Fill the box (crop)", "Fit inside the box"}));
    choose("Fit", "Fit inside the box");
    EXPECT_EQ(layer().imageFit, ImageFit::fit);
    forEachKind({LayerKind::image, LayerKind::shape}, [this] {
        type("Corner radius", "99");
        type("Line width", "2.25");
        EXPECT_EQ(layer().cornerRadiusMM, 99);
        EXPECT_EQ(layer().strokeWidth, 2.25);
    });
    EXPECT_EQ(options("Shape", page()), QStringList({"Rectangle", "Ellipse"}));
    choose("Shape", "Ellipse");
    EXPECT_EQ(layer().shape, ShapeKind::ellipse);
}

TEST_F(LayerInspectorTest, OptionalColoursBeginWithTheirFallbacks) {
    forEachKind(allKinds, [this] {
        change([](Layer& changed) { changed.fill = changed.stroke = std::nullopt; });
        const bool isPicture = layer().kind == LayerKind::image;
        const QString fill = isPicture ? "Background" : "Fill";
        click(fill);
        EXPECT_EQ(layer().fill, isPicture ? RGBA(0.85, 0.85, 0.85, 1) : RGBA::white);
        click("Line");
        EXPECT_EQ(layer().stroke, RGBA::black);
        pick(fill, "#123456");
        EXPECT_EQ(layer().fill, RGBA::bytes(0x12, 0x34, 0x56));
        click(fill);
        EXPECT_EQ(layer().fill, std::nullopt);
        EXPECT_FALSE(isShown(find<ColorWell>(page(), fill)));
        model.undo();
        EXPECT_TRUE(isShown(find<ColorWell>(page(), fill)));
    });
}

TEST_F(LayerInspectorTest, TheFontsAreThoseOfTheRenderer) {
    add(LayerKind::text);
    const QStringList offered = options("Font", page());
    EXPECT_EQ(offered.size(), int(FontList::families().size()) + 1);
    EXPECT_EQ(offered.first(), "Helvetica Neue (default)");
    ASSERT_GT(offered.size(), 2);
    choose("Font", offered[2]);
    EXPECT_EQ(layer().style.fontFamily, offered[2].toStdString());
    choose("Font", offered[0]);
    EXPECT_EQ(layer().style.fontFamily, "");
    change([](Layer& changed) { changed.style.fontFamily = "No Such Family"; });
    EXPECT_EQ(chosen("Font"), "No Such Family");
}

TEST_F(LayerInspectorTest, EachTickOfTheOpacityIsAStep) {
    add(LayerKind::shape);
    settle();
    undo->removeAllActions();
    auto* slider = find<OpacitySlider>(page(), "Opacity");
    EXPECT_EQ(slider->width(), 140);
    EXPECT_EQ(slider->spoken(), "100 percent");
    QTest::mousePress(slider, Qt::LeftButton, {}, {70, 12});
    EXPECT_EQ(layer().opacity, 0.5);
    QTest::mouseMove(slider, {40, 12});
    EXPECT_LT(layer().opacity, 0.3);
    QTest::mouseMove(slider, {-500, 12});
    EXPECT_EQ(layer().opacity, 0);
    QTest::mouseRelease(slider, Qt::LeftButton, {}, {-500, 12});
    EXPECT_EQ(steps(), 3U);
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(layer().opacity, 0.01);
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_EQ(layer().opacity, 1);
    EXPECT_EQ(steps(), 5U);
    model.undo();
    EXPECT_EQ(slider->spoken(), "1 percent");
}

TEST_F(LayerInspectorTest, ShowingAnOpacityDoesNotRoundIt) {
    add(LayerKind::shape);
    change([](Layer& changed) { changed.opacity = 0.123456; });
    settle();
    EXPECT_EQ(layer().opacity, 0.123456);
    EXPECT_EQ(find<OpacitySlider>(page(), "Opacity")->spoken(), "12 percent");
}

TEST_F(LayerInspectorTest, ContentIsStoredWithEveryKeyAndKeepsItsCursor) {
    forEachKind(kindsWithContent, [this] {
        change([](Layer& changed) { changed.content = "ac"; });
        undo->removeAllActions();
        content()->setFocus();
        content()->moveCursor(QTextCursor::Start);
        content()->moveCursor(QTextCursor::Right);
        QTest::keyClicks(content(), "xy");
        QTest::keyClick(content(), Qt::Key_Return);
        EXPECT_EQ(layer().content, "axy\nc");
        EXPECT_EQ(content()->textCursor().position(), 4);
        EXPECT_EQ(steps(), 3U);
        model.undo();
        model.undo();
        EXPECT_EQ(layer().content, "axc");
        EXPECT_EQ(content()->content(), "axc");
        EXPECT_EQ(content()->textCursor().position(), 2);
        QTest::keyClicks(content(), "z");
        EXPECT_EQ(layer().content, "axzc");
    });
}

TEST_F(LayerInspectorTest, UndoKeysInATextAreLeftToTheProgram) {
    add(LayerKind::text);
    content()->setFocus();
    QTest::keyClicks(content(), "ab");
    const std::string before = layer().content;
    for (QWidget* field : {static_cast<QWidget*>(content()), static_cast<QWidget*>(find<QLineEdit>(page(), "Name"))}) {
        field->setFocus();
        for (const QKeySequence::StandardKey keys : {QKeySequence::Undo, QKeySequence::Redo}) {
            const QKeyCombination key = QKeySequence(keys)[0];
            QKeyEvent shortcut(QEvent::ShortcutOverride, key.key(), key.keyboardModifiers());
            shortcut.ignore();
            QCoreApplication::sendEvent(field, &shortcut);
            EXPECT_FALSE(shortcut.isAccepted());
            QTest::keyClick(field, key.key(), key.keyboardModifiers());
        }
    }
    EXPECT_EQ(layer().content, before);
}

TEST_F(LayerInspectorTest, FieldsAreInsertedAtTheEnd) {
    forEachKind(kindsWithContent, [this] {
        change([](Layer& changed) { changed.content = "abc"; });
        undo->removeAllActions();
        EXPECT_EQ(entriesOf("Insert Field"),
                  QStringList({"title", "text", "cost", "type", "art", "icons", "quantity", "Power && Glory"}));
        content()->setFocus();
        content()->moveCursor(QTextCursor::Start);
        chooseInMenu("Insert Field", "Power && Glory");
        EXPECT_EQ(layer().content, "abc{{Power & Glory}}");
        EXPECT_EQ(content()->content(), "abc{{Power & Glory}}");
        EXPECT_EQ(steps(), 1U);
    });
}

TEST_F(LayerInspectorTest, IconsAreInsertedIntoTextsOnly) {
    forEachKind({LayerKind::image, LayerKind::icons}, [this] { EXPECT_FALSE(words().contains("Insert Icon")); });
    add(LayerKind::text);
    QStringList names;
    for (const std::string_view name : IconSet::names) names += QString::fromUtf8(name.data(), qsizetype(name.size()));
    EXPECT_EQ(entriesOf("Insert Icon"), names);
    chooseInMenu("Insert Icon", "star");
    EXPECT_EQ(layer().content, "{{title}}{icon:star}");
}

TEST_F(LayerInspectorTest, AContentGrowsAndThenScrolls) {
    add(LayerKind::text);
    settle();
    EXPECT_EQ(content()->height(), 60);
    change([](Layer& changed) { changed.content = "1\n2\n3\n4\n5"; });
    settle();
    EXPECT_GT(content()->height(), 60);
    EXPECT_LT(content()->height(), 120);
    change([](Layer& changed) { changed.content = std::string(40, '\n'); });
    settle();
    EXPECT_EQ(content()->height(), 120);
}

TEST_F(LayerInspectorTest, ALayerThatIsGoneIsEmptyAndNotWritten) {
    add(LayerKind::shape);
    settle();
    auto* name = find<QLineEdit>(page(), "Name");
    auto* hidden = find<QCheckBox>(page(), "Hidden");
    auto* left = find<QLineEdit>(page(), "Left");
    inspector->hide();  // and so it hasn't heard of it
    changeDesign([this](CardTemplate& changed) { std::erase(changed.front, layer()); });
    const CardTemplate before = design();
    hidden->click();
    EXPECT_EQ(design(), before);
    EXPECT_EQ(name->text(), "");
    EXPECT_EQ(left->text(), "0");
    EXPECT_FALSE(hidden->isChecked());
}

TEST_F(LayerInspectorTest, AWheelOverAControlScrollsTheForm) {
    add(LayerKind::text);
    settle();
    const Layer before = layer();
    for (QWidget* control : {static_cast<QWidget*>(find<QComboBox>(page(), "Font")),
                             static_cast<QWidget*>(find<QComboBox>(page(), "Shape")),
                             static_cast<QWidget*>(find<OpacitySlider>(page(), "Opacity"))}) {
        for (const bool hasFocus : {false, true}) {
            if (hasFocus) control->setFocus();
            QWheelEvent event(QPointF(5, 5), control->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(control, &event);
            EXPECT_FALSE(event.isAccepted());
        }
    }
    EXPECT_EQ(layer(), before);
}

}  // namespace quorvel
