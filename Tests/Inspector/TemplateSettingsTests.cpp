#include "Inspector/ColorWell.h"
#include "InspectorTest.h"

#include <QComboBox>
#include <QLineEdit>
#include <cmath>
#include <fstream>

namespace quorvel {

namespace {

class TemplateSettingsTest : public InspectorTest {};

const Layer& firstLayer(const CardTemplate& design) {
    return design.front.front();
}

}  // namespace

TEST_F(TemplateSettingsTest, TheRowsStandInOrder) {
    const QStringList before{"Template", "Name", "Card size", "Size"};
    const QStringList behind{
        "Bleed",
        "mm",
        "Safe zone",
        "mm",
        "Corner radius",
        "mm",
        "Bleed is the art past the cut line (3 mm, or 1/8 in = 3.175 mm, for most print shops). Keep text inside the "
        "safe zone (dashed).",
        "Front",
        "Background",
        "Select a layer on the card or in the list to edit it.",
        "Template",
        "Start Over from a Sample Template",
        "Export Template…",
        "Import Template…"};
    EXPECT_EQ(words(), before + behind);
    choose("Size", "Custom");
    settle();
    EXPECT_EQ(words(), before + QStringList({"Width", "mm", "Height", "mm"}) + behind);
}

TEST_F(TemplateSettingsTest, TheNameIsStoredWithEveryKey) {
    auto* name = find<QLineEdit>(page(), "Name");
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, "Oak");
    EXPECT_EQ(design().name, "Oak");
    EXPECT_EQ(steps(), 3U);
    EXPECT_EQ(undo->undoName(), "Edit Template");
}

TEST_F(TemplateSettingsTest, TheSizesAreOffered) {
    EXPECT_EQ(options("Size", page()),
              QStringList({"Poker, 63.5 × 88.9 mm (2.5 × 3.5 in)", "Bridge, 57.2 × 88.9 mm (2.25 × 3.5 in)",
                           "Tarot, 69.9 × 120.7 mm (2.75 × 4.75 in)", "Mini, 44.5 × 63.5 mm (1.75 × 2.5 in)",
                           "Square, 63.5 × 63.5 mm (2.5 in)", "Custom"}));
    EXPECT_EQ(chosen("Size"), "Poker, 63.5 × 88.9 mm (2.5 × 3.5 in)");
}

TEST_F(TemplateSettingsTest, APresetRescalesTheLayersInOneStep) {
    const Frame before = firstLayer(design()).frame;
    auto* size = find<QComboBox>(page(), "Size");
    size->setFocus();
    QTest::keyClick(size, Qt::Key_Down);
    EXPECT_EQ(design().size, CardSize::bridge);
    EXPECT_EQ(firstLayer(design()).frame.width, before.width * (57.15 / 63.5));
    EXPECT_EQ(firstLayer(design()).frame.height, before.height);
    EXPECT_EQ(steps(), 1U);
}

TEST_F(TemplateSettingsTest, WidthAndHeightAppearForCustomOnlyFilledWithTheSize) {
    EXPECT_FALSE(isShown(find<QLineEdit>(page(), "Width")));
    EXPECT_FALSE(isShown(find<QLineEdit>(page(), "Height")));
    changeDesign([](CardTemplate& changed) { changed.size = CardSize::tarot; });
    undo->removeAllActions();
    choose("Size", "Custom");
    EXPECT_TRUE(isShown(find<QLineEdit>(page(), "Width")));
    EXPECT_TRUE(isShown(find<QLineEdit>(page(), "Height")));
    EXPECT_EQ(typed("Width"), inspector->locale().toString(63.5, 'f', 1));  // by way of the presets between
    EXPECT_EQ(typed("Height"), inspector->locale().toString(63.5, 'f', 1));
    EXPECT_EQ(design().size, CardSize(CardSize::Preset::custom, 63.5, 63.5));
    choose("Size", "Square, 63.5 × 63.5 mm (2.5 in)");
    EXPECT_FALSE(isShown(find<QLineEdit>(page(), "Width")));
}

TEST_F(TemplateSettingsTest, ATypedSizeIsAtLeastTenAndRescales) {
    changeDesign([](CardTemplate& changed) { changed.size.preset = CardSize::Preset::custom; });
    undo->removeAllActions();
    const Frame before = firstLayer(design()).frame;
    type("Width", "127");
    EXPECT_EQ(design().size, CardSize::custom(127, 88.9));
    EXPECT_EQ(firstLayer(design()).frame.width, before.width * 2);
    EXPECT_EQ(steps(), 1U);
    type("Height", "4");
    EXPECT_EQ(design().size, CardSize::custom(127, 10));
    EXPECT_EQ(typed("Height"), "10");
    type("Height", "3");  // nothing changes, and still the field shows what is stored
    EXPECT_EQ(typed("Height"), "10");
    EXPECT_EQ(steps(), 2U);
}

TEST_F(TemplateSettingsTest, NumbersAreKeptWithinTheirLimits) {
    const struct {
        const char* field;
        const char* typed;
        double CardTemplate::* place;
        double stored;
    } cases[] = {
        {"Bleed", "12", &CardTemplate::bleedMM, 10},
        {"Bleed", "12", &CardTemplate::bleedMM, 10},  // once more: the field shows 10 although nothing changes
        {"Bleed", "-1", &CardTemplate::bleedMM, 0},
        {"Bleed", "3.175", &CardTemplate::bleedMM, 3.175},
        {"Bleed", "three", &CardTemplate::bleedMM, 3.175},
        {"Safe zone", "20", &CardTemplate::safeMM, 15},
        {"Safe zone", "-0.5", &CardTemplate::safeMM, 0},
        {"Safe zone", "15", &CardTemplate::safeMM, 15},
        {"Corner radius", "1e9", &CardTemplate::cornerRadiusMM, 10},
        {"Corner radius", "-1e9", &CardTemplate::cornerRadiusMM, 0},
        {"Corner radius", "inf", &CardTemplate::cornerRadiusMM, 0},
        {"Corner radius", "2.5", &CardTemplate::cornerRadiusMM, 2.5},
    };
    for (const auto& each : cases) {
        type(each.field, each.typed);
        EXPECT_EQ(design().*each.place, each.stored) << each.field << " " << each.typed;
        EXPECT_NEAR(typed(each.field).toDouble(), each.stored, 0.006) << each.field << " " << each.typed;
    }
}

TEST_F(TemplateSettingsTest, TheBackgroundIsThatOfTheSide) {
    pick("Background", "#102030");
    EXPECT_EQ(design().background, RGBA::bytes(0x10, 0x20, 0x30));
    const RGBA back = design().backBackground;
    model.setSide(Side::back);
    EXPECT_TRUE(reads("Back"));
    EXPECT_FALSE(reads("Front"));
    EXPECT_EQ(find<ColorWell>(page(), "Background")->color(), back);
    pick("Background", "#405060");
    EXPECT_EQ(design().backBackground, RGBA::bytes(0x40, 0x50, 0x60));
    EXPECT_EQ(design().background, RGBA::bytes(0x10, 0x20, 0x30));
    model.setSide(Side::front);
    EXPECT_TRUE(reads("Front"));
    EXPECT_EQ(find<ColorWell>(page(), "Background")->color(), RGBA::bytes(0x10, 0x20, 0x30));
}

TEST_F(TemplateSettingsTest, StartOverBringsASampleInOneStep) {
    EXPECT_EQ(entriesOf("Start Over from a Sample Template"),
              QStringList({"Classic (poker size)", "Tall (tarot size)", "Mini"}));
    chooseInMenu("Start Over from a Sample Template", "Tall (tarot size)");
    EXPECT_EQ(design().size, CardSize::tarot);
    EXPECT_EQ(chosen("Size"), "Tarot, 69.9 × 120.7 mm (2.75 × 4.75 in)");
    EXPECT_EQ(steps(), 1U);
    model.undo();
    EXPECT_EQ(design().size, CardSize::poker);
    EXPECT_EQ(chosen("Size"), "Poker, 63.5 × 88.9 mm (2.5 × 3.5 in)");
}

TEST_F(TemplateSettingsTest, TheTemplateGoesToAFileAndComesBack) {
    const auto file = desktop.folder / "design.json";
    desktop.answers.push_back(file);
    click("Export Template…");
    EXPECT_TRUE(std::filesystem::exists(file));
    const std::string name = design().name;
    type("Name", "Other");
    desktop.answers.push_back(file);
    click("Import Template…");
    EXPECT_EQ(design().name, name);
    EXPECT_EQ(typed("Name"), QString::fromStdString(name));
}

TEST_F(TemplateSettingsTest, UndoAndRedoAreShownAtOnce) {
    type("Bleed", "5");
    type("Name", "Oak");
    for (int step = 0; step < 4; ++step) model.undo();
    EXPECT_EQ(typed("Bleed"), "3");
    EXPECT_EQ(typed("Name"), "Classic");
    for (int step = 0; step < 4; ++step) model.redo();
    EXPECT_EQ(typed("Bleed"), "5");
    EXPECT_EQ(typed("Name"), "Oak");
}

}  // namespace quorvel
