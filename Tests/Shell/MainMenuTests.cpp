#include "Shell/ShellTest.h"

#include <QClipboard>
#include <QSignalSpy>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class MainMenuTest : public ShellTest {
protected:
    void makeDeck() { model.newDeck(SampleTemplates::Kind::classic, "Cards"); }
    std::size_t layerCount() const { return model.layers(Side::front).size(); }
    void selectFirstLayer() { model.selectLayer(model.layers(Side::front).front().id); }
};

TEST_F(MainMenuTest, TheMenusAreInThisOrder) {
    QStringList titles;
    for (const QAction* each : window.menuBar()->actions()) titles << read(*each);
    EXPECT_EQ(titles, QStringList({"File", "Edit", "Deck", "Layer", "Help"}));
}

TEST_F(MainMenuTest, EveryMenuHasItsItemsAndKeys) {
    struct Row {
        const char* menu;
        const char* items;
    };
    for (const Row& row :
         {Row{"File",
              "New Deck… [Ctrl+N]\nOpen the Sample Deck\n-\nChoose Spreadsheet… [Ctrl+O]\n"
              "Reload Spreadsheet [Ctrl+R]\n-\nExport\n-\nSettings… [Ctrl+,]\n-\nQuit [Ctrl+Q]"},
          Row{"Edit",
              "Undo [Ctrl+Z]\nRedo [Ctrl+Shift+Z]\n-\nCut [Ctrl+X]\nCopy [Ctrl+C]\nPaste [Ctrl+V]\n"
              "Select All [Ctrl+A]"},
          Row{"Export",
              "Print Sheets (PDF)… [Ctrl+E]\nCard Images (PNG)… [Ctrl+Shift+E]\nTabletop Simulator Deck Sheet…\n-\n"
              "Duplex Calibration Page…"},
          Row{"Deck",
              "Cards [Ctrl+1]\nTemplate [Ctrl+2]\nPrint & Export [Ctrl+3]\nSpreadsheet [Ctrl+4]\n-\n"
              "Choose Art Folder…\nChoose Icons Folder…"},
          Row{"Layer",
              "Add Layer\nDuplicate Layer [Ctrl+D]\nBring Forward [Ctrl+]]\nSend Backward [Ctrl+[]\n-\n"
              "Delete Layer [Ctrl+Backspace]"},
          Row{"Add Layer", "Text\nPicture\nShape\nIcon Row"}, Row{"Help", "About Quorvel\nCheck for Updates…"}}) {
        QStringList lines;
        for (const QAction* each : menu(row.menu)->actions()) {
            QString line = each->isSeparator() ? "-" : read(*each);
            if (!each->shortcut().isEmpty()) line += " [" + each->shortcut().toString() + "]";
            lines << line;
        }
        EXPECT_EQ(lines.join('\n').toStdString(), row.items) << row.menu;
    }
}

TEST_F(MainMenuTest, ItemsAreEnabledByWhatThereIs) {
    // For each: without a deck, with one, with a spreadsheet, with a selected layer.
    struct Row {
        const char* menu;
        const char* item;
        std::array<bool, 4> enabled;
    };
    const std::array<bool, 4> always{true, true, true, true};
    const std::array<bool, 4> withDeck{false, true, true, true};
    const std::array<bool, 4> withSource{false, false, true, true};
    const std::array<bool, 4> withLayer{false, false, false, true};
    const Row rows[] = {{"File", "New Deck…", always},
                        {"File", "Open the Sample Deck", always},
                        {"File", "Choose Spreadsheet…", always},
                        {"File", "Reload Spreadsheet", withSource},
                        {"File", "Export", withDeck},
                        {"File", "Settings…", always},
                        {"File", "Quit", always},
                        {"Export", "Print Sheets (PDF)…", withDeck},
                        {"Export", "Card Images (PNG)…", withDeck},
                        {"Export", "Tabletop Simulator Deck Sheet…", withDeck},
                        {"Export", "Duplex Calibration Page…", withDeck},
                        {"Deck", "Cards", always},
                        {"Deck", "Template", always},
                        {"Deck", "Print & Export", always},
                        {"Deck", "Spreadsheet", always},
                        {"Deck", "Choose Art Folder…", withDeck},
                        {"Deck", "Choose Icons Folder…", withDeck},
                        {"Layer", "Add Layer", withDeck},
                        {"Add Layer", "Text", withDeck},
                        {"Add Layer", "Icon Row", withDeck},
                        {"Layer", "Duplicate Layer", withLayer},
                        {"Layer", "Bring Forward", withLayer},
                        {"Layer", "Send Backward", withLayer},
                        {"Layer", "Delete Layer", withLayer},
                        {"Help", "About Quorvel", always},
                        {"Help", "Check for Updates…", always}};
    const auto check = [&](std::size_t state) {
        for (const Row& row : rows)
            EXPECT_EQ(item(row.menu, row.item)->isEnabled(), row.enabled[state]) << row.item << " in state " << state;
    };
    check(0);
    makeDeck();
    check(1);
    open("cards.csv", threeCards);
    check(2);
    selectFirstLayer();
    check(3);
    model.setSelection(std::nullopt);
    check(0);
}

TEST_F(MainMenuTest, ALayerThatAnUndoTookAwayIsNotSelected) {
    makeDeck();
    model.addLayer(LayerKind::text);
    EXPECT_TRUE(item("Layer", "Delete Layer")->isEnabled());
    model.undo();
    EXPECT_FALSE(item("Layer", "Delete Layer")->isEnabled());
}

TEST_F(MainMenuTest, KeysChooseTheTab) {
    makeDeck();
    for (const auto& [key, tab] : {std::pair(Qt::Key_1, Tab::cards), std::pair(Qt::Key_2, Tab::template_),
                                   std::pair(Qt::Key_3, Tab::sheets), std::pair(Qt::Key_4, Tab::data)}) {
        press(key, Qt::ControlModifier);
        EXPECT_EQ(model.state()._tab, tab);
        EXPECT_TRUE(item("Deck", text(title(tab)))->isChecked());
    }
}

TEST_F(MainMenuTest, ATabMayBeChosenForLater) {
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(model.state()._tab, Tab::sheets);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(model.state()._tab, Tab::cards);
    EXPECT_EQ(model.currentProject(), nullptr);
}

TEST_F(MainMenuTest, FileCommandsReachTheModel) {
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(model.state()._showNewDeck);
    model.setShowNewDeck(false);

    item("File", "Open the Sample Deck")->trigger();
    settle();
    EXPECT_THAT(deckNames(), testing::SizeIs(1));

    desktop.answers = {write("mine.csv", threeCards)};
    press(Qt::Key_O, Qt::ControlModifier);
    settle();
    EXPECT_EQ(model.state().open._deck->cards.size(), 3U);

    write("mine.csv", "Name\nOne\n");
    press(Qt::Key_R, Qt::ControlModifier);
    settle();
    EXPECT_EQ(model.state().open._deck->cards.size(), 1U);
}

TEST_F(MainMenuTest, ExportCommandsAskWhereToSave) {
    open("cards.csv", threeCards);
    const auto asksFor = [this](const std::string& title) {
        return desktop.asked.size() == 1 && [&] {
            const auto asked = desktop.asked.front();
            desktop.asked.clear();
            return std::visit([](const auto& panel) { return panel.title; }, asked) == title;
        }();
    };
    desktop.asked.clear();
    press(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(asksFor("Choose Where to Save the Print Sheets"));
    press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(asksFor("Choose Where to Save the Card Images"));
    item("Export", "Tabletop Simulator Deck Sheet…")->trigger();
    EXPECT_TRUE(asksFor("Choose Where to Save the Tabletop Simulator Images"));
    item("Export", "Duplex Calibration Page…")->trigger();
    EXPECT_EQ(desktop.asked.size(), 1U);
}

TEST_F(MainMenuTest, FoldersAreAskedFor) {
    makeDeck();
    const auto folder = desktop.folder / "art";
    std::filesystem::create_directories(folder);
    desktop.answers = {folder, folder};
    item("Deck", "Choose Art Folder…")->trigger();
    EXPECT_TRUE(model.currentProject()->artFolder);
    EXPECT_FALSE(model.currentProject()->iconFolder);
    item("Deck", "Choose Icons Folder…")->trigger();
    EXPECT_TRUE(model.currentProject()->iconFolder);
}

TEST_F(MainMenuTest, LayersOfEachKindAreAdded) {
    makeDeck();
    for (const auto& [words, kind] : {std::pair("Text", LayerKind::text), std::pair("Picture", LayerKind::image),
                                      std::pair("Shape", LayerKind::shape), std::pair("Icon Row", LayerKind::icons)}) {
        item("Add Layer", words)->trigger();
        ASSERT_NE(model.selectedLayerValue(), nullptr);
        EXPECT_EQ(model.selectedLayerValue()->kind, kind);
    }
}

TEST_F(MainMenuTest, KeysEditTheSelectedLayer) {
    makeDeck();
    selectFirstLayer();
    const UUID id = *model.state()._selectedLayer;
    press(Qt::Key_BracketRight, Qt::ControlModifier);
    EXPECT_EQ(model.layers(Side::front)[1].id, id);
    press(Qt::Key_BracketLeft, Qt::ControlModifier);
    EXPECT_EQ(model.layers(Side::front)[0].id, id);
    const std::size_t before = layerCount();
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(layerCount(), before + 1);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(layerCount(), before);
    EXPECT_EQ(model.selectedLayerValue(), nullptr);
}

TEST_F(MainMenuTest, UndoAndRedoSayWhatTheyTakeBack) {
    const auto undoItem = menu("Edit")->actions().at(0);
    const auto redoItem = menu("Edit")->actions().at(1);
    EXPECT_EQ(undoItem->text(), "Undo");
    EXPECT_FALSE(undoItem->isEnabled());
    EXPECT_EQ(redoItem->text(), "Redo");
    EXPECT_FALSE(redoItem->isEnabled());

    makeDeck();
    const std::size_t before = layerCount();
    model.addLayer(LayerKind::text);
    EXPECT_EQ(undoItem->text(), "Undo Edit Template");
    model.beginLayerDrag();
    model.nudgeSelectedLayer(1, 1);
    model.endLayerDrag();
    EXPECT_EQ(undoItem->text(), "Undo Move Layer");
    EXPECT_TRUE(undoItem->isEnabled());

    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undoItem->text(), "Undo Edit Template");
    EXPECT_TRUE(redoItem->text().startsWith("Redo "));
    EXPECT_TRUE(redoItem->isEnabled());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(layerCount(), before);
    EXPECT_FALSE(undoItem->isEnabled());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(layerCount(), before + 1);
    undoItem->trigger();
    EXPECT_EQ(layerCount(), before);
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(layerCount(), before + 1);
}

TEST_F(MainMenuTest, AnotherDeckHasNothingToUndo) {
    makeDeck();
    model.addLayer(LayerKind::text);
    makeDeck();
    EXPECT_FALSE(menu("Edit")->actions().at(0)->isEnabled());
    EXPECT_EQ(menu("Edit")->actions().at(0)->text(), "Undo");
}

TEST_F(MainMenuTest, TextFieldsKeepTheKeysOfText) {
    makeDeck();
    selectFirstLayer();
    model.duplicateSelectedLayer();
    const std::size_t layers = layerCount();
    QLineEdit field(&window);
    field.show();
    field.setFocus();
    QTest::keyClicks(&field, "two words");

    QTest::keyClick(&field, Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "two ");
    EXPECT_EQ(layerCount(), layers) << "the layer was deleted instead";

    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "two words");
    EXPECT_EQ(layerCount(), layers) << "the design was undone instead";

    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "");
    QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "two words");
}

TEST_F(MainMenuTest, TextCommandsActOnTheFieldWithTheFocus) {
    QMenu& edit = *menu("Edit");
    const auto enabled = [&] {
        Q_EMIT edit.aboutToShow();
        QString letters;
        for (const char* each : {"Cut", "Copy", "Paste", "Select All"})
            if (item(edit, each)->isEnabled()) letters += each[2];
        return letters.toStdString();
    };
    QLineEdit field(&window);
    field.show();
    window.setFocus();
    EXPECT_EQ(enabled(), "");
    field.setFocus();
    field.setText("words");
    EXPECT_EQ(enabled(), "sl");
    item(edit, "Select All")->trigger();
    EXPECT_EQ(enabled(), "tpsl");
    item(edit, "Copy")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "words");
    item(edit, "Cut")->trigger();
    EXPECT_EQ(field.text(), "");
    item(edit, "Paste")->trigger();
    EXPECT_EQ(field.text(), "words");
    field.setReadOnly(true);
    field.selectAll();
    EXPECT_EQ(enabled(), "pl");
}

TEST_F(MainMenuTest, TheMenuBarIsNotTakenForTheFieldWithTheFocus) {
    QLineEdit field(&window);
    field.show();
    field.setFocus();
    field.setText("words");
    window.menuBar()->setFocus(Qt::MenuBarFocusReason);
    Q_EMIT menu("Edit")->aboutToShow();
    EXPECT_TRUE(item("Edit", "Select All")->isEnabled());
}

TEST_F(MainMenuTest, AFieldThatHasGoneIsForgotten) {
    {
        QLineEdit field(&window);
        field.show();
        field.setFocus();
        field.setText("words");
    }
    Q_EMIT menu("Edit")->aboutToShow();
    EXPECT_FALSE(item("Edit", "Select All")->isEnabled());
    press(Qt::Key_A, Qt::ControlModifier);
}

TEST_F(MainMenuTest, UpdatesAreCheckedByTheUpdater) {
    const QSignalSpy answered(&updater, &Updater::upToDate);
    item("Help", "Check for Updates…")->trigger();
    settle();
    EXPECT_EQ(answered.count(), 1);
}

TEST_F(MainMenuTest, AboutTellsNameAndVersion) {
    QCoreApplication::setApplicationVersion("1.2");
    item("Help", "About Quorvel")->trigger();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(words(*dialog()).toStdString(), "Quorvel\nVersion 1.2\nTurn a spreadsheet into print-and-play cards");
    QTest::keyClick(dialog(), Qt::Key_Return);
    EXPECT_EQ(dialog(), nullptr);
    QCoreApplication::setApplicationVersion({});
}

TEST_F(MainMenuTest, QuitClosesTheWindow) {
    const QSignalSpy closed(&window, &MainWindow::closed);
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace quorvel
