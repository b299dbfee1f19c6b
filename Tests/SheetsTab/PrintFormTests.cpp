#include "Controls/NumberField.h"
#include "Controls/WarningLabel.h"
#include "SheetsViewTest.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <random>

namespace quorvel {

namespace {

class PrintFormTest : public SheetsViewTest {
protected:
    void SetUp() override { start(); }

    QStringList options(const QString& picker) {
        QStringList options;
        const auto* box = find<QComboBox>(*view, picker);
        for (int i = 0; i < box->count(); ++i) options += box->itemText(i);
        return options;
    }

    bool isTooBigShown() { return view->findChild<WarningLabel*>()->isVisibleTo(view.get()); }
};

class PrintFormWithoutDeckTest : public SheetsViewTest {
protected:
    void SetUp() override {
        view = std::make_unique<SheetsView>(model);
        show(*view);
        settle();
    }
};

}  // namespace

TEST_F(PrintFormTest, TheFormShowsTheRecord) {
    expectFormShows(project());
    change([](DeckProject& changed) {
        changed.sheet = {.paper = Paper::a4,
                         .orientation = Orientation::landscape,
                         .spacing = Spacing::separated,
                         .gutterMM = 2.5,
                         .marginMM = 10,
                         .includeBleed = true,
                         .cutMarks = false,
                         .duplex = true,
                         .flip = DuplexFlip::shortEdge,
                         .backOffsetXMM = -0.75,
                         .backOffsetYMM = 1.25};
        changed.imageBleed = false;
        changed.imageDPI = 600;
    });
    expectFormShows(project());
}

TEST_F(PrintFormTest, PickersOfferWhatThereIs) {
    EXPECT_EQ(options("Paper"), QStringList({"US Letter", "A4"}));
    EXPECT_EQ(options("Orientation"), QStringList({"Most cards per page", "Portrait", "Landscape"}));
    EXPECT_EQ(options("Cards"), QStringList({"Touching (one cut between cards)", "Apart (each with its own bleed)"}));
    EXPECT_EQ(options("Flip on"), QStringList({"Long edge", "Short edge"}));
    EXPECT_EQ(options("Resolution"), QStringList({"300 dpi", "600 dpi"}));
}

TEST_F(PrintFormTest, EveryRowWritesItsField) {
    choose("Paper", "A4");
    EXPECT_EQ(sheet().paper, Paper::a4);
    choose("Orientation", "Landscape");
    EXPECT_EQ(sheet().orientation, Orientation::landscape);
    choose("Orientation", "Portrait");
    EXPECT_EQ(sheet().orientation, Orientation::portrait);
    choose("Orientation", "Most cards per page");
    EXPECT_EQ(sheet().orientation, Orientation::auto_);
    type("Margins", "7.5");
    EXPECT_EQ(sheet().marginMM, 7.5);
    choose("Cards", "Apart (each with its own bleed)");
    EXPECT_EQ(sheet().spacing, Spacing::separated);
    type("Gap", "3.25");
    EXPECT_EQ(sheet().gutterMM, 3.25);
    click("Print the bleed");
    EXPECT_TRUE(sheet().includeBleed);
    click("Cut marks");
    EXPECT_FALSE(sheet().cutMarks);
    click("Double-sided: a back page after each front");
    EXPECT_TRUE(sheet().duplex);
    choose("Flip on", "Short edge");
    EXPECT_EQ(sheet().flip, DuplexFlip::shortEdge);
    type("Back offset right", "-1.5");
    EXPECT_EQ(sheet().backOffsetXMM, -1.5);
    type("Back offset down", "250");
    EXPECT_EQ(sheet().backOffsetYMM, 250);
    click("Include the bleed");
    EXPECT_FALSE(project().imageBleed);
    choose("Resolution", "600 dpi");
    EXPECT_EQ(project().imageDPI, 600);
    expectFormShows(project());
    EXPECT_FALSE(undo->canUndo());
}

TEST_F(PrintFormTest, CheckBoxesAnswerTheSpaceBar) {
    press(Qt::Key_Space, "Cut marks");
    EXPECT_FALSE(sheet().cutMarks);
    press(Qt::Key_Space, "Cut marks");
    EXPECT_TRUE(sheet().cutMarks);
}

TEST_F(PrintFormTest, MarginsAndGapsAreClamped) {
    choose("Cards", "Apart (each with its own bleed)");
    const struct {
        const char* field;
        const char* typed;
        double SheetSettings::* place;
        double stored;
    } cases[] = {
        {"Margins", "50", &SheetSettings::marginMM, 40},
        {"Margins", "50", &SheetSettings::marginMM, 40},  // once more: the field shows 40 although nothing changes
        {"Margins", "-3", &SheetSettings::marginMM, 0},
        {"Margins", "0", &SheetSettings::marginMM, 0},
        {"Margins", "40", &SheetSettings::marginMM, 40},
        {"Margins", "12.25", &SheetSettings::marginMM, 12.25},
        {"Margins", "twelve", &SheetSettings::marginMM, 12.25},
        {"Gap", "35", &SheetSettings::gutterMM, 30},
        {"Gap", "1e300", &SheetSettings::gutterMM, 30},
        {"Gap", "-1", &SheetSettings::gutterMM, 0},
        {"Gap", "inf", &SheetSettings::gutterMM, 0},
        {"Back offset right", "-400", &SheetSettings::backOffsetXMM, -400},
        {"Back offset down", "1e300", &SheetSettings::backOffsetYMM, 1e300},
    };
    for (const auto& each : cases) {
        type(each.field, each.typed);
        EXPECT_EQ(sheet().*each.place, each.stored) << each.field << " " << each.typed;
        EXPECT_EQ(number(each.field), NumberField::print(each.stored, view->locale()));
        settle();
    }
}

TEST_F(PrintFormTest, TheGapIsKeptWhileItIsHidden) {
    choose("Cards", "Apart (each with its own bleed)");
    type("Gap", "4");
    choose("Cards", "Touching (one cut between cards)");
    EXPECT_FALSE(isShown<NumberField>("Gap"));
    EXPECT_EQ(sheet().gutterMM, 4);
    choose("Cards", "Apart (each with its own bleed)");
    EXPECT_TRUE(isShown<NumberField>("Gap"));
    EXPECT_EQ(number("Gap"), "4");
}

TEST_F(PrintFormTest, TheOffsetsAreKeptWhileTheyAreHidden) {
    click("Double-sided: a back page after each front");
    choose("Flip on", "Short edge");
    type("Back offset right", "1.5");
    type("Back offset down", "-2");
    click("Double-sided: a back page after each front");
    expectFormShows(project());
    EXPECT_FALSE(sheet().duplex);
    EXPECT_EQ(sheet().flip, DuplexFlip::shortEdge);
    EXPECT_EQ(sheet().backOffsetXMM, 1.5);
    EXPECT_EQ(sheet().backOffsetYMM, -2);
}

TEST_F(PrintFormTest, TheSummaryCountsCardsAndPages) {
    EXPECT_TRUE(reads("9 cards a page (3 × 3, portrait): 4 pages for 30 cards."));
    choose("Orientation", "Landscape");
    EXPECT_TRUE(reads("8 cards a page (4 × 2, landscape): 4 pages for 30 cards."));
    // Backs are not counted, and the plurals are not adjusted.
    click("Double-sided: a back page after each front");
    EXPECT_TRUE(reads("8 cards a page (4 × 2, landscape): 4 pages for 30 cards."));
    open("one.csv", table(1));
    EXPECT_TRUE(reads("8 cards a page (4 × 2, landscape): 1 pages for 1 cards."));
    open("none.csv", table(3, 0));
    EXPECT_TRUE(reads("8 cards a page (4 × 2, landscape): 0 pages for 0 cards."));
}

TEST_F(PrintFormTest, OneCardAPageIsWrittenWithTheFixedPlural) {
    change([](DeckProject& changed) { changed.template_.size = CardSize::custom(120, 180); });
    type("Margins", "40");
    EXPECT_TRUE(reads("1 cards a page (1 × 1, portrait): 30 pages for 30 cards."));
}

TEST_F(PrintFormTest, ACardThatDoesNotFitIsWarnedOf) {
    EXPECT_FALSE(isTooBigShown());
    makeCardTooBig();
    EXPECT_TRUE(isTooBigShown());
    EXPECT_TRUE(reads("The card doesn’t fit inside the margins on this paper."));
    EXPECT_EQ(lineThatBegins("9 cards"), "");
    change([](DeckProject& changed) { changed.template_.size = CardSize::poker; });
    EXPECT_FALSE(isTooBigShown());
    EXPECT_TRUE(reads("9 cards a page (3 × 3, portrait): 4 pages for 30 cards."));
}

TEST_F(PrintFormTest, TheSizeLineIsWhatTheFileWillMeasure) {
    EXPECT_TRUE(reads("Each card: 821 × 1121 pixels."));
    click("Include the bleed");
    EXPECT_TRUE(reads("Each card: 750 × 1050 pixels."));
    choose("Resolution", "600 dpi");
    EXPECT_TRUE(reads("Each card: 1500 × 2100 pixels."));
    change([](DeckProject& changed) { changed.template_.size = CardSize::tarot; });
    EXPECT_EQ(lineThatBegins("Each card: 1500"), "");
    EXPECT_NE(lineThatBegins("Each card: "), "");
}

TEST_F(PrintFormTest, FootersAreToTheLetter) {
    EXPECT_TRUE(
        reads("Copies follow the quantity column. Touching cards fit the most per page; apart cards are easier to cut "
              "cleanly."));
    EXPECT_TRUE(reads(
        "Most printers shift the back a little. Print the calibration page double-sided, hold it to a light, and enter "
        "how far the back’s cross sits from the front’s centre (left and up are negative)."));
    for (const char* title : {"Paper", "Layout", "Backs", "Card images (PNG)", "Export"}) EXPECT_TRUE(reads(title));
}

TEST_F(PrintFormTest, ExportsAndTheCalibrationPageAskWhereToSave) {
    click("Export Print Sheets (PDF)…");
    click("Export Card Images (PNG)…");
    click("Export for Tabletop Simulator…");
    click("Double-sided: a back page after each front");
    click("Print a Calibration Page…");
    ASSERT_EQ(desktop.asked.size(), 4U);
    EXPECT_EQ(std::get<SavePanel>(desktop.asked[0]).title, "Choose Where to Save the Print Sheets");
    EXPECT_EQ(model.exports().size(), 0U);
}

TEST_F(PrintFormTest, AnExportOfACardThatDoesNotFitFailsWithItsWords) {
    makeCardTooBig();
    desktop.answers.push_back(desktop.folder.path() / "sheets.pdf");
    click("Export Print Sheets (PDF)…");
    settle();
    EXPECT_TRUE(model.state()._error.has_value());
}

TEST_F(PrintFormTest, ShowingAValueNeverWritesIt) {
    change([](DeckProject& changed) {
        changed.sheet.marginMM = 55;       // beyond what may be typed
        changed.sheet.gutterMM = 1.23456;  // more decimals than are shown
        changed.imageDPI = 450;            // not on offer
    });
    const DeckProject before = project();
    settle();
    for (const char* field : {"Margins", "Gap"}) {
        press(Qt::Key_Return, field);
        press(Qt::Key_Tab, field);
    }
    view->hide();
    view->show();
    settle();
    EXPECT_EQ(project(), before);
    EXPECT_EQ(number("Margins"), "55");
    EXPECT_EQ(chosen("Resolution"), "");
}

TEST_F(PrintFormTest, ChoosingWhatIsChosenSavesNothing) {
    settle();
    const std::size_t timers = scheduler.timerCount();
    auto* paper = find<QComboBox>(*view, "Paper");
    Q_EMIT paper->activated(paper->currentIndex());
    EXPECT_EQ(scheduler.timerCount(), timers);
}

TEST_F(PrintFormTest, WhatIsBeingTypedOutlivesOtherChanges) {
    auto* input = find<QLineEdit>(*view, "Margins");
    input->setFocus();
    input->selectAll();
    QTest::keyClicks(input, "12");
    change([](DeckProject& changed) { changed.sheet.cutMarks = false; });
    model.setSheetPage(2);
    settle();
    EXPECT_EQ(input->text(), "12");
    change([](DeckProject& changed) { changed.sheet.marginMM = 9; });
    EXPECT_EQ(input->text(), "9");
}

TEST_F(PrintFormTest, WhatIsTypedForOneDeckDoesNotReachAnother) {
    const UUID first = project().id;
    model.duplicateDeck(first);
    settle();
    const UUID second = model.state()._decks.back().id;
    model.setSelection(first);
    settle();
    auto* input = find<QLineEdit>(*view, "Margins");
    input->setFocus();
    input->selectAll();
    QTest::keyClicks(input, "12");
    model.setSelection(second);
    settle();
    EXPECT_EQ(input->text(), "6.35");
    QTest::keyClick(input, Qt::Key_Return);
    for (const DeckProject& each : model.state()._decks) EXPECT_EQ(each.sheet.marginMM, 6.35);
}

TEST_F(PrintFormTest, TheWheelScrollsTheFormAndChangesNothing) {
    const DeckProject before = project();
    view->resize(800, 300);
    settle();
    auto* paper = find<QComboBox>(*view, "Paper");
    paper->setFocus();
    wheel(*paper, {0, -120});
    EXPECT_EQ(project(), before);
    EXPECT_GT(view->findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
}

TEST_F(PrintFormTest, NothingIsCutOffWhereTheFormIsNarrowest) {
    change([](DeckProject& changed) {
        changed.sheet.duplex = true;
        changed.sheet.spacing = Spacing::separated;
    });
    view->resize(view->minimumSizeHint().width(), 600);
    settle();
    const auto* form = view->findChild<QScrollArea*>();
    EXPECT_EQ(form->width(), 320);
    EXPECT_LE(form->widget()->width(), form->viewport()->width());
    EXPECT_EQ(form->horizontalScrollBar()->maximum(), 0);
    const auto* box = find<QAbstractButton>(*view, "Double-sided: a back page after each front");
    EXPECT_GE(box->height(), box->heightForWidth(box->width()));
    EXPECT_GT(box->height(), find<QAbstractButton>(*view, "Cut marks")->height()) << "two lines";
}

TEST_F(PrintFormTest, ThousandsOfCopiesAreCounted) {
    open("many.csv", table(5000, 999));
    EXPECT_TRUE(reads("9 cards a page (3 × 3, portrait): 555000 pages for 4995000 cards."));
}

TEST_F(PrintFormTest, TheTabOrderGoesDownTheForm) {
    change([](DeckProject& changed) {
        changed.sheet.duplex = true;
        changed.sheet.spacing = Spacing::separated;
    });
    settle();
    find<QComboBox>(*view, "Paper")->setFocus();
    QStringList names;
    for (int i = 0; i < 18; ++i) {
        QWidget* focus = view->focusWidget();
        ASSERT_TRUE(focus);
        names += nameOf(*focus);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    EXPECT_EQ(names, QStringList({"Paper", "Orientation", "Margins", "Cards", "Gap", "Print the bleed", "Cut marks",
                                  "Double-sided: a back page after each front", "Flip on", "Back offset right",
                                  "Back offset down", "Print a Calibration Page…", "Include the bleed", "Resolution",
                                  "Export Print Sheets (PDF)…", "Export Card Images (PNG)…",
                                  "Export for Tabletop Simulator…", "Next Page"}));
}

TEST_F(PrintFormTest, AnyRunOfOperationsLeavesFormAndRecordAlike) {
    model.duplicateDeck(project().id);
    settle();
    std::mt19937 random(5);
    const auto below = [&](unsigned count) { return int(random() % count); };
    const QString pickers[] = {"Paper", "Orientation", "Cards", "Flip on", "Resolution"};
    const QString boxes[] = {"Print the bleed", "Cut marks", "Double-sided: a back page after each front",
                             "Include the bleed"};
    const QString fields[] = {"Margins", "Gap", "Back offset right", "Back offset down"};
    const QString numbers[] = {"0", "-1", "3.5", "12.345", "50", "1e300", "x", "", "7,5", "-0"};
    for (int round = 0; round < 2000; ++round) {
        switch (below(9)) {
            case 0:
            case 1: {
                const QString& picker = pickers[below(5)];
                if (!isShown<QComboBox>(picker)) break;
                const QStringList all = options(picker);
                choose(picker, all[below(unsigned(all.size()))]);
                break;
            }
            case 2:
            case 3:
                press(Qt::Key_Space, boxes[below(4)]);
                break;
            case 4:
            case 5: {
                const QString& field = fields[below(4)];
                if (isShown<NumberField>(field)) type(field, numbers[below(10)]);
                break;
            }
            case 6:
                change([&](DeckProject& changed) {
                    changed.sheet.marginMM = below(45);
                    changed.sheet.duplex = below(2) == 0;
                    changed.template_.size = CardSize(below(2) == 0 ? CardSize::Preset::mini : CardSize::Preset::tarot);
                });
                break;
            case 7:
                model.setSheetPage(below(6));
                model.setSheetBack(below(2) == 0);
                break;
            case 8:
                model.setSelection(model.state()._decks[std::size_t(below(2))].id);
                break;
        }
        if (round % 50 == 0) settle();
        expectFormShows(project());
        ASSERT_FALSE(HasFailure()) << "after operation " << round;
    }
}

TEST_F(PrintFormWithoutDeckTest, TheDefaultsAreShownAndNothingIsWritten) {
    ASSERT_EQ(model.currentProject(), nullptr);
    expectFormShows(DeckProject{});
    EXPECT_TRUE(reads("Each card: 821 × 1121 pixels."));
    EXPECT_TRUE(reads("9 cards a page (3 × 3, portrait): 0 pages for 0 cards."));
    press(Qt::Key_Space, "Cut marks");
    click("Double-sided: a back page after each front");
    Q_EMIT find<NumberField>(*view, "Margins")->valueEdited(20);
    settle();
    expectFormShows(DeckProject{});
    EXPECT_TRUE(model.state()._decks.empty());
    EXPECT_EQ(preview(), "No cards yet.");
}

}  // namespace quorvel
