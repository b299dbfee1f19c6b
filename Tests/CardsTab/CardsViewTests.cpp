// The Cards tab as a user meets it: real events on real widgets, with a clock that is moved by hand.

#include "CardsTab/CardGrid.h"
#include "CardsTab/CardsColumn.h"
#include "CardsTab/CardsHeader.h"
#include "CardsTab/CardsView.h"
#include "CardsTab/LoadingView.h"
#include "CardsTab/NoSpreadsheetView.h"
#include "Controls/BusyButton.h"
#include "Controls/EmptyState.h"
#include "Controls/LinkButton.h"
#include "Controls/TintedPanel.h"
#include "Controls/Wording.h"
#include "Support/Widgets/WindowTest.h"

#include <QAccessible>
#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>
#include <fstream>

namespace quorvel {
namespace {

class CardsViewTest : public WindowTest {
protected:
    CardsView view{model};

    template <class Page>
    bool shows() const {
        return qobject_cast<Page*>(view.currentWidget()) != nullptr;
    }

    /// All that can be read on the page that is shown.
    QString words() const {
        QStringList all;
        for (const QLabel* label : view.currentWidget()->findChildren<QLabel*>())
            if (label->isVisible()) all << label->text();
        return all.join(QLatin1Char('\n'));
    }

    void save(const std::string& name, std::string_view text) {
        write(name, text);
        model.reloadSpreadsheet();
        settle();
    }

    QTimer& moment() { return *view.findChild<LoadingView*>()->findChild<QTimer*>(); }
    void passMoment() {
        QTimerEvent event(moment().timerId());
        QCoreApplication::sendEvent(&moment(), &event);
    }
};

TEST_F(CardsViewTest, WithoutASpreadsheetExplainsTheColumns) {
    model.newDeck(SampleTemplates::Kind::classic, "Orchard");
    show(view);
    ASSERT_TRUE(shows<NoSpreadsheetView>());
    for (const char* part :
         {"Choose the spreadsheet of cards",
          "One row per card. Columns the template knows (any order, any of these names):", "Title",
          "Name, Title, Card Name", "Text, Rules, Effect: “Gain 2 {icon:coin}. **Draw** a card.”",
          "Cost, Price, Points", "Type, Kind, Category (rules can colour frames by it)",
          "Art, Image: art/pear.png, a path next to the spreadsheet", "Icons: “coin, coin, star” or “2 leaf”",
          "Qty, Count, Copies: blank means 1, 0 leaves it out"})
        EXPECT_TRUE(words().contains(QString::fromUtf8(part))) << part;
    EXPECT_FALSE(words().contains(QLatin1Char('`'))) << "code is told by its letters, not by marks";
    find<QLabel>(view, QStringLiteral("In text cells: **bold**, *italic* and {icon:coin} for an icon. Other columns "
                                      "work too, as {{Column Name}}."));

    desktop.answers = {write("cards.csv", "Name\nPear\n")};
    QTest::mouseClick(find<QPushButton>(*view.currentWidget(), QStringLiteral("Choose Spreadsheet…")), Qt::LeftButton);
    EXPECT_EQ(desktop.asked.size(), 1u);
    settle();
    EXPECT_TRUE(shows<CardsColumn>());
}

TEST_F(CardsViewTest, WithoutASpreadsheetOffersTheSample) {
    model.newDeck(SampleTemplates::Kind::classic, "Orchard");
    show(view);
    QTest::mouseClick(find<QPushButton>(*view.currentWidget(), QStringLiteral("Open the Sample Deck")), Qt::LeftButton);
    settle();
    EXPECT_EQ(model.state()._decks.size(), 2u);
    EXPECT_TRUE(shows<CardsColumn>());
}

TEST_F(CardsViewTest, AnErrorWithoutCardsIsAScreen) {
    show(view);
    open("cards.csv", "");
    ASSERT_TRUE(model.state().open._loadError);
    ASSERT_TRUE(shows<EmptyState>());
    EXPECT_TRUE(words().contains(QStringLiteral("The spreadsheet couldn’t be opened")));
    EXPECT_TRUE(words().contains(QString::fromStdString(*model.state().open._loadError)));

    desktop.answers = {write("better.csv", "Name\nPear\n")};
    QTest::mouseClick(find<QPushButton>(*view.currentWidget(), QStringLiteral("Choose Spreadsheet…")), Qt::LeftButton);
    settle();
    EXPECT_TRUE(shows<CardsColumn>());
}

TEST_F(CardsViewTest, AnErrorAfterCardsStandsAboveThem) {
    show(view);
    open("cards.csv", "Name\nPear\nApple\n");
    save("cards.csv", "");
    ASSERT_TRUE(model.state().open._loadError);
    ASSERT_TRUE(shows<CardsColumn>());
    EXPECT_EQ(view.findChild<CardGrid*>()->count(), 2);
    EXPECT_TRUE(words().contains(QString::fromStdString(*model.state().open._loadError)));

    desktop.answers = {write("better.csv", "Name\nPear\nApple\nFig\n")};
    QTest::mouseClick(find<LinkButton>(*view.currentWidget(), QStringLiteral("Choose Spreadsheet…")), Qt::LeftButton);
    settle();
    EXPECT_EQ(view.findChild<CardGrid*>()->count(), 3);
    for (const LinkButton* button : view.currentWidget()->findChildren<LinkButton*>())
        EXPECT_FALSE(button->isVisible()) << "the error has gone";
}

TEST_F(CardsViewTest, HeadersWithoutRowsAreNoCardsYet) {
    show(view);
    open("cards.csv", "Name,Text\n");
    ASSERT_TRUE(shows<EmptyState>());
    EXPECT_TRUE(words().contains(QStringLiteral("No cards yet")));
    EXPECT_TRUE(words().contains(QStringLiteral(
        "The spreadsheet has headers but no rows. Add a row for each card and save: the preview updates by itself.")));
    model.reloadSpreadsheet();
    EXPECT_TRUE(shows<EmptyState>()) << "nothing blinks while it is read anew";
}

TEST_F(CardsViewTest, TheFirstLoadShowsThatItReadsAfterAMoment) {
    show(view);
    model.useSpreadsheet(write("cards.csv", "Name\nPear\n"));
    ASSERT_TRUE(shows<LoadingView>());
    EXPECT_EQ(words(), QString());
    EXPECT_EQ(moment().remainingTime() > 0, true);
    passMoment();
    EXPECT_EQ(words(), QStringLiteral("Reading “cards.csv”…"));
    settle();
    EXPECT_TRUE(shows<CardsColumn>());
    EXPECT_FALSE(moment().isActive());
}

TEST_F(CardsViewTest, TheHeaderCountsAndSaysWhereFrom) {
    show(view);
    open("cards.csv", "Name,Qty\nPear,3\nApple,0\nFig,\n");
    const QTime time = QDateTime::fromMSecsSinceEpoch(std::chrono::duration_cast<std::chrono::milliseconds>(
                                                          model.state().open._lastLoaded->time_since_epoch())
                                                          .count())
                           .time();
    EXPECT_TRUE(words().contains(QStringLiteral("3 cards, 4 with copies")));
    EXPECT_TRUE(words().contains(QStringLiteral("From “cards.csv”, read at ") +
                                 QLocale().toString(time, QLocale::ShortFormat) +
                                 QStringLiteral(". Save the spreadsheet and the preview updates.")));
}

TEST_F(CardsViewTest, TheHeaderExportsPrintSheets) {
    show(view);
    open("cards.csv", "Name\nPear\n");
    QTest::mouseClick(find<QPushButton>(*view.currentWidget(), QStringLiteral("Export Print Sheets…")), Qt::LeftButton);
    ASSERT_EQ(desktop.asked.size(), 1u);
    EXPECT_TRUE(std::holds_alternative<SavePanel>(desktop.asked[0]));
}

TEST_F(CardsViewTest, BannersSayWhatIsWrongAndHelp) {
    show(view);
    open("cards.csv", "Name,Art,Qty\nPear,art/pear.png,many\nApple,,1\n");
    EXPECT_TRUE(words().contains(QStringLiteral("1 pictures can’t be opened (art/pear.png). ")));
    EXPECT_TRUE(words().contains(QStringLiteral("Rows 2 have a quantity that isn’t a number; they print once.")));
    auto* const button = find<LinkButton>(*view.currentWidget(), QStringLiteral("Choose Art Folder…"));
    for (const auto key : {Qt::Key_Space, Qt::Key_Return}) QTest::keyClick(button, key);
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_EQ(desktop.asked.size(), 3u);
    for (const auto& panel : desktop.asked) EXPECT_TRUE(std::holds_alternative<FolderPanel>(panel));
}

TEST_F(CardsViewTest, WhatIsWrongIsAnAlertToScreenReaders) {
    show(view);
    const auto alert = [](QWidget* widget) {
        QAccessibleInterface* item = QAccessible::queryAccessibleInterface(widget);
        return item->role() == QAccessible::AlertMessage ? item->text(QAccessible::Name) : QString();
    };
    open("cards.csv", "");
    EXPECT_EQ(alert(view.currentWidget()), text("The spreadsheet couldn’t be opened"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(view.currentWidget())->text(QAccessible::Description),
              text("“cards.csv” is empty."));
    save("cards.csv", "Name,Qty\nPear,many\n");
    QStringList alerts;
    for (TintedPanel* banner : view.currentWidget()->findChildren<TintedPanel*>())
        if (banner->isVisible()) alerts << alert(banner);
    EXPECT_EQ(alerts, QStringList({text("Rows 2 have a quantity that isn’t a number; they print once.")}));
}

TEST_F(CardsViewTest, NamesOfTheUserAreLeftAsTheyAre) {
    show(view);
    open("this Mac ⌘.csv", "");
    EXPECT_TRUE(words().contains(text("“this Mac ⌘.csv” is empty.")));
    open("this Mac ⌘2.csv", "Name\nPear\n");
    save("this Mac ⌘2.csv", "");
    EXPECT_TRUE(words().contains(text("“this Mac ⌘2.csv” is empty.")));
}

TEST_F(CardsViewTest, LongNamesAreSeenToTheirEnd) {
    show(view, {680, 520});
    const auto isWhole = [this] {
        for (const QLabel* label : view.currentWidget()->findChildren<QLabel*>())
            if (label->isVisible() && label->minimumSizeHint().width() > label->width()) return label->text();
        return QString();
    };
    const std::string name = std::string(200, 'w') + ".csv";
    open(name, "");
    EXPECT_EQ(isWhole(), "");
    open(name, "Name\nPear\n");
    EXPECT_EQ(isWhole(), "");
    save(name, "");
    EXPECT_EQ(isWhole(), "");
}

TEST_F(CardsViewTest, TheSampleIsWaitedFor) {
    model.newDeck(SampleTemplates::Kind::classic, "Orchard");
    show(view);
    auto* const sample = find<BusyButton>(*view.currentWidget(), QStringLiteral("Open the Sample Deck"));
    QTest::mouseClick(sample, Qt::LeftButton);
    EXPECT_TRUE(sample->isBusy());
    QTest::mouseClick(sample, Qt::LeftButton);
    scheduler.settle();
    EXPECT_FALSE(sample->isBusy());
    EXPECT_EQ(model.state()._decks.size(), 2u);
}

TEST_F(CardsViewTest, EveryScreenHasItsNames) {
    show(view);
    EXPECT_EQ(unnamedControls(view), std::vector<std::string>());
    open("cards.csv", "Name,Art,Qty\nPear,pear.png,many\n");
    EXPECT_EQ(unnamedControls(view), std::vector<std::string>());
    save("cards.csv", "");
    EXPECT_EQ(unnamedControls(view), std::vector<std::string>());
    save("cards.csv", "Name\n");
    EXPECT_EQ(unnamedControls(view), std::vector<std::string>());
}

TEST_F(CardsViewTest, AnotherDeckBeginsAtItsStart) {
    show(view, {600, 500});
    std::string rows = "Name\n";
    for (int i = 0; i < 200; ++i) rows += "Card\n";
    open("cards.csv", rows);
    auto* const bar = view.findChild<CardsColumn*>()->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    const auto first = model.state()._selection;
    model.newDeck(SampleTemplates::Kind::classic, "Two");
    open("other.csv", rows);
    EXPECT_EQ(bar->value(), 0);
    model.setSelection(first);
    settle();
    EXPECT_EQ(view.findChild<CardGrid*>()->count(), 200);
    EXPECT_TRUE(model.thumbnails().contains(0)) << "the tiles of a deck that is opened again are drawn anew";
}

}  // namespace
}  // namespace quorvel
