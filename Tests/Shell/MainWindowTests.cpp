#include "CardsTab/CardGrid.h"
#include "CardsTab/CardsView.h"
#include "DataTab/DataView.h"
#include "Inspector/ColorWell.h"
#include "SheetsTab/SheetsView.h"
#include "Shell/DropHighlight.h"
#include "Shell/MainWindow.h"
#include "Shell/ShellTest.h"
#include "Shell/TabLabels.h"
#include "Shell/WindowToolbar.h"
#include "TemplateTab/CardSurface.h"
#include "TemplateTab/TemplateEditor.h"

#include <QColorDialog>
#include <QMimeData>
#include <QRadioButton>
#include <QSignalSpy>
#include <QToolButton>
#include <gmock/gmock.h>
#include <set>

namespace quorvel {
namespace {

class MainWindowTest : public ShellTest {
protected:
    WindowToolbar& toolbar = *window.findChild<WindowToolbar*>();
    DropHighlight& highlight = *window.findChild<DropHighlight*>();

    static QMimeData* files(const std::vector<QUrl>& urls) {
        auto* data = new QMimeData;
        data->setUrls(QList<QUrl>(urls.begin(), urls.end()));
        return data;
    }
    static QUrl url(const std::filesystem::path& path) { return QUrl::fromLocalFile(text(path.string())); }

    /// Drags over the middle of the window, and drops there if that is allowed.
    bool drop(const std::vector<QUrl>& urls) { return drop(urls, window.centralWidget()); }
    bool drop(const std::vector<QUrl>& urls, QWidget* below) {
        const std::unique_ptr<QMimeData> data(files(urls));
        if (!urls.empty()) data->setText(urls.front().toString());  // as file managers do
        QDragEnterEvent enter(below->rect().center(), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(below, &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent dropped(below->rect().center(), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(&window, &dropped);
        settle();
        return true;
    }
    std::string openFile() const {
        const auto& url = model.state().open._sourceURL;
        return url ? url->filename().string() : "";
    }
    template <class View>
    bool isShown() const {
        const auto* view = window.findChild<View*>();
        return view && view->isVisible();
    }
};

TEST_F(MainWindowTest, ItHasItsSizes) {
    EXPECT_EQ(window.size(), QSize(1280, 820));
    EXPECT_EQ(window.minimumSize(), QSize(900, 600));
    show(window, {100, 100});
    EXPECT_EQ(window.size(), QSize(900, 600));
}

TEST_F(MainWindowTest, TheTitleIsTheDecksName) {
    EXPECT_EQ(window.windowTitle(), "Quorvel");
    for (const char* name : {"Dragons", "A & B", "50 %1 %2"}) {
        model.newDeck(SampleTemplates::Kind::mini, name);
        EXPECT_EQ(window.windowTitle(), QString::fromUtf8(name));
        model.renameDeck(*model.state()._selection, std::string(name) + "!");
        EXPECT_EQ(window.windowTitle(), QString::fromUtf8(name) + "!");
    }
    model.renameDeck(*model.state()._selection, "a[*]b");
    EXPECT_EQ(window.windowTitle(), "a[*][*]b") << "a single one would be taken for the mark of unsaved changes";
    model.setSelection(std::nullopt);
    EXPECT_EQ(window.windowTitle(), "Quorvel");
}

TEST_F(MainWindowTest, TheToolbarIsThereWithADeck) {
    EXPECT_FALSE(toolbar.isVisible());
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    EXPECT_TRUE(toolbar.isVisible());
    model.setSelection(std::nullopt);
    EXPECT_FALSE(toolbar.isVisible());
}

TEST_F(MainWindowTest, TheToolbarHasItsItems) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    EXPECT_EQ(find<QWidget>(toolbar, "View")->toolTip(),
              "Switch between the cards, the template, printing and the spreadsheet (Ctrl+1–Ctrl+4)");
    EXPECT_EQ(find<QToolButton>(toolbar, "Choose Spreadsheet")->toolTip(),
              "Choose the spreadsheet of cards (CSV, TSV or Excel)");
    auto* share = find<QToolButton>(toolbar, "Export");
    EXPECT_EQ(share->toolTip(), "Export print sheets, card images or a Tabletop Simulator deck");
    QStringList items;
    for (const QAction* each : share->menu()->actions()) items << (each->isSeparator() ? "-" : each->text());
    EXPECT_EQ(items, QStringList({"Print Sheets (PDF)…", "Card Images (PNG)…", "Tabletop Simulator Deck Sheet…", "-",
                                  "Duplex Calibration Page…"}));
}

TEST_F(MainWindowTest, ThePickerShowsAndChoosesTheTab) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    for (const auto& [tab, name] : EnumText<Tab>::cases) {
        auto* segment = find<QRadioButton>(toolbar, text(title(tab)));
        click(segment);
        EXPECT_EQ(model.state()._tab, tab);
        EXPECT_TRUE(segment->isChecked());
    }
    model.setTab(Tab::sheets);
    EXPECT_TRUE(find<QRadioButton>(toolbar, "Print & Export")->isChecked());
    EXPECT_EQ(find<QRadioButton>(toolbar, "Print & Export")->text(), "Print && Export");
}

TEST_F(MainWindowTest, ArrowKeysGoFromTabToTab) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    model.setTab(Tab::cards);
    auto* cards = find<QRadioButton>(toolbar, "Cards");
    cards->setFocus();
    QTest::keyClick(cards, Qt::Key_Right);
    EXPECT_EQ(model.state()._tab, Tab::template_);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    EXPECT_EQ(model.state()._tab, Tab::cards);
}

TEST_F(MainWindowTest, TheKeyboardGoesAlongWithTheTab) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    model.setTab(Tab::cards);
    find<QRadioButton>(toolbar, "Cards")->setFocus();
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_TRUE(find<QRadioButton>(toolbar, "Print & Export")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(model.state()._tab, Tab::data);
}

TEST_F(MainWindowTest, TheKeyboardGoesFromViewToView) {
    openSample();
    window.findChild<CardGrid*>()->setFocus();
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(window.findChild<CardSurface*>()->hasFocus()) << "arrows nudge at once";
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_TRUE(window.findChild<CardsView*>()->isAncestorOf(QApplication::focusWidget()) ||
                window.findChild<CardsView*>()->hasFocus());
}

TEST_F(MainWindowTest, UndoReachesTheDesignWhileAColourIsChosen) {
    openSample();
    model.setTab(Tab::template_);
    settle();
    const CardTemplate before = model.template_();
    for (ColorWell* each : window.findChildren<ColorWell*>())
        if (each->isVisible()) QTest::mouseClick(each, Qt::LeftButton);
    auto* dialog = window.findChild<QColorDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->setCurrentColor(QColor(1, 2, 3));
    ASSERT_NE(model.template_(), before);
    dialog->activateWindow();
    settle();
    ASSERT_EQ(QApplication::activeWindow(), dialog);
    QTest::keyClick(dialog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(model.template_(), before);
}

TEST_F(MainWindowTest, NoButtonHasTheKeyboardAtTheStart) {
    EXPECT_EQ(qobject_cast<QAbstractButton*>(window.focusWidget()), nullptr);
}

TEST_F(MainWindowTest, TheToolbarsButtonsReachTheModel) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    desktop.answers = {write("cards.csv", threeCards)};
    click(find<QToolButton>(toolbar, "Choose Spreadsheet"));
    settle();
    EXPECT_EQ(openFile(), "cards.csv");
    desktop.asked.clear();
    item(*find<QToolButton>(toolbar, "Export")->menu(), "Card Images (PNG)…")->trigger();
    EXPECT_EQ(desktop.asked.size(), 1U);
}

TEST_F(MainWindowTest, EachTabShowsItsView) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    model.setTab(Tab::cards);
    EXPECT_TRUE(isShown<CardsView>());
    model.setTab(Tab::template_);
    EXPECT_TRUE(isShown<TemplateEditor>());
    EXPECT_FALSE(isShown<CardsView>());
    model.setTab(Tab::sheets);
    EXPECT_TRUE(isShown<SheetsView>());
    model.setTab(Tab::data);
    EXPECT_TRUE(isShown<DataView>());
}

TEST_F(MainWindowTest, ATabChosenOnTheWelcomeScreenIsShownLater) {
    model.setTab(Tab::sheets);
    EXPECT_FALSE(isShown<SheetsView>());
    const auto& decks = model.state()._decks;
    EXPECT_TRUE(decks.empty());
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    EXPECT_TRUE(isShown<DataView>()) << "a new deck asks for its spreadsheet";
}

TEST_F(MainWindowTest, SpreadsheetsMayBeDropped) {
    for (const char* name : {"a.csv", "b.TSV", "c.txt", "d.Csv"}) {
        EXPECT_TRUE(drop({url(write(name, threeCards))})) << name;
        EXPECT_EQ(openFile(), name);
    }
    EXPECT_EQ(model.state()._decks.size(), 1U);
}

TEST_F(MainWindowTest, SpreadsheetsMayBeDroppedOnFields) {
    open("first.csv", threeCards);
    model.setTab(Tab::sheets);
    auto* field = find<QLineEdit>(window, "Margins");
    const QString before = field->text();
    EXPECT_TRUE(drop({url(write("second.csv", threeCards))}, field));
    EXPECT_EQ(openFile(), "second.csv");
    EXPECT_EQ(field->text(), before);
}

TEST_F(MainWindowTest, OtherThingsMayNot) {
    for (const char* name : {"a.png", "b.xls", "c", ".csv", "csv", "d.csv.zip", "e.json"})
        EXPECT_FALSE(drop({url(write(name, threeCards))})) << name;
    EXPECT_FALSE(drop({QUrl("https://example.org/cards.csv")}));
    EXPECT_FALSE(drop({}));
    EXPECT_FALSE(highlight.isVisible());
    EXPECT_TRUE(model.state()._decks.empty());
}

TEST_F(MainWindowTest, TheFirstSpreadsheetOfSeveralIsTaken) {
    EXPECT_TRUE(drop({url(write("a.png", "")), url(write("b.csv", threeCards)), url(write("c.csv", threeCards))}));
    EXPECT_EQ(openFile(), "b.csv");
}

TEST_F(MainWindowTest, ANumbersFileIsTakenAndAnswered) {
    EXPECT_TRUE(drop({url(write("Cards.Numbers", "PK"))}));
    EXPECT_EQ(openFile(), "Cards.Numbers");
    ASSERT_TRUE(model.state().open._loadError);
    EXPECT_THAT(*model.state().open._loadError, testing::HasSubstr("Numbers"));
    EXPECT_EQ(model.state()._error, std::nullopt);
}

TEST_F(MainWindowTest, WhatMayBeDroppedIsWelcomedQuietly) {
    const std::unique_ptr<QMimeData> data(files({url(write("a.csv", threeCards))}));
    QDragEnterEvent enter({600, 400}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_TRUE(highlight.isVisible());
    EXPECT_TRUE(highlight.geometry().contains(window.centralWidget()->geometry()));
    EXPECT_TRUE(highlight.testAttribute(Qt::WA_TransparentForMouseEvents));
    QDragLeaveEvent leave;
    QApplication::sendEvent(&window, &leave);
    EXPECT_FALSE(highlight.isVisible());
    EXPECT_TRUE(model.state()._decks.empty());
}

TEST_F(MainWindowTest, FilesGivenAtTheStartOpenAsIfDropped) {
    window.openFiles({});
    window.openFiles({write("a.png", "")});
    EXPECT_TRUE(model.state()._decks.empty());
    window.openFiles({write("a.png", ""), write("b.csv", threeCards)});
    settle();
    EXPECT_EQ(openFile(), "b.csv");
}

TEST_F(MainWindowTest, ClosingHidesAndTells) {
    const QSignalSpy closed(&window, &MainWindow::closed);
    window.close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindowTest, TheModelUsesTheWindowsUndoStack) {
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    model.addLayer(LayerKind::text);
    EXPECT_FALSE(undo->canUndo()) << "that is the stack from before the window";
    EXPECT_TRUE(item("Edit", "Undo Edit Template")->isEnabled());
}

TEST_F(MainWindowTest, AfterTheWindowTheModelGoesOn) {
    {
        const MainWindow other(model, desktop, updater);
    }
    model.newDeck(SampleTemplates::Kind::mini, "Dragons");
    model.addLayer(LayerKind::text);
    model.undo();
    settle();
    EXPECT_EQ(model.state()._decks.size(), 1U);
}

TEST_F(MainWindowTest, EveryControlOfEveryScreenHasAName) {
    EXPECT_THAT(unnamedControls(window), testing::IsEmpty());
    openSample();
    for (const auto& [tab, name] : EnumText<Tab>::cases) {
        model.setTab(tab);
        settle();
        EXPECT_THAT(unnamedControls(window), testing::IsEmpty()) << name;
    }
}

TEST_F(MainWindowTest, TheKeyboardReachesEveryControlAndIsSeenThere) {
    open("cards.csv", "Name,Art,Qty\nFire,fire.png,many\nWater,,2\n");
    DeckProject project = *model.currentProject();
    project.sheet.duplex = true;
    project.sheet.spacing = Spacing::separated;
    model.updateProject(project);
    for (const auto& [tab, name] : EnumText<Tab>::cases) {
        model.setTab(tab);
        settle();
        window.activateWindow();
        auto* start = find<QRadioButton>(toolbar, text(title(tab)));
        start->setFocus();
        std::set<QWidget*> reached;
        for (QWidget* now = start; reached.insert(now).second;) {
            QTest::keyClick(now, Qt::Key_Backtab);  // first away and back, so that it came by the keyboard
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            ASSERT_EQ(QApplication::focusWidget(), now) << name << ": " << nameOf(*now).toStdString();
            const QImage with = now->grab().toImage();
            QTest::keyClick(now, Qt::Key_Tab);
            // On the card the outline of the selected layer says enough.
            if (!qobject_cast<CardSurface*>(now)) {
                EXPECT_NE(now->grab().toImage(), with) << name << ": " << nameOf(*now).toStdString();
            }
            now = QApplication::focusWidget();
        }
        for (QWidget* each : window.findChildren<QWidget*>()) {
            const bool isStop = each->isVisible() && each->isEnabled() && !each->focusProxy() &&
                                (each->focusPolicy() & Qt::TabFocus) != 0;
            EXPECT_EQ(isStop, reached.contains(each))
                << name << ": " << each->metaObject()->className() << " " << nameOf(*each).toStdString();
        }
    }
}

TEST_F(MainWindowTest, ItFitsItsSmallestSize) {
    openSample();
    for (const auto& [tab, name] : EnumText<Tab>::cases) {
        model.setTab(tab);
        show(window, {900, 600});
        EXPECT_EQ(window.size(), QSize(900, 600)) << name;
        EXPECT_TRUE(window.rect().contains(
            QRect(window.centralWidget()->mapTo(&window, QPoint(0, 0)), window.centralWidget()->size())))
            << name;
    }
}

}  // namespace
}  // namespace quorvel
