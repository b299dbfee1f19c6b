#include "Shell/Alert.h"
#include "Shell/DeckList.h"
#include "Shell/RootView.h"
#include "Shell/ShellTest.h"

#include <QListWidget>
#include <QPushButton>
#include <QSplitterHandle>
#include <QToolButton>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

class DeckListTest : public ShellTest {
protected:
    QListWidget& rows() const { return *window.findChild<QListWidget*>(); }

    DeckListTest() {
        for (const char* name : {"Dragons", "Kings & Queens", "Ships"}) {
            model.newDeck(SampleTemplates::Kind::mini, name);
            settle();
        }
    }

    QPoint middle(int row) const { return rows().visualItemRect(rows().item(row)).center(); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(rows().viewport(), Qt::LeftButton, modifiers, middle(row));
    }

    /// Opens the context menu as the platform would.
    QMenu* contextMenu(QPoint place) {
        QTest::mousePress(rows().viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, rows().viewport()->mapToGlobal(place));
        QApplication::sendEvent(rows().viewport(), &event);
        QTest::mouseRelease(rows().viewport(), Qt::RightButton, {}, place);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }

    void chooseInContextMenu(int row, const QString& words) {
        QMenu* menu = contextMenu(middle(row));
        ASSERT_NE(menu, nullptr);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item(*menu, words)).center());
    }

    QStringList shownNames() const {
        QStringList names;
        for (int row = 0; row < rows().count(); ++row) names << rows().item(row)->text();
        return names;
    }
};

TEST_F(DeckListTest, EveryDeckHasARowWithItsHint) {
    EXPECT_EQ(shownNames(), QStringList({"Dragons", "Kings & Queens", "Ships"}));
    for (int row = 0; row < rows().count(); ++row) {
        EXPECT_EQ(rows().item(row)->data(Qt::AccessibleDescriptionRole).toString(), "Opens this deck");
        EXPECT_FALSE(rows().item(row)->icon().isNull());
    }
    EXPECT_EQ(rows().accessibleName(), "Decks");
    EXPECT_EQ(rows().selectionMode(), QAbstractItemView::SingleSelection);
}

TEST_F(DeckListTest, ItFollowsTheModelsSelection) {
    EXPECT_EQ(rows().currentRow(), 2);
    model.setSelection(deck(0).id);
    EXPECT_EQ(rows().currentRow(), 0);
    EXPECT_TRUE(rows().item(0)->isSelected());
    model.setSelection(std::nullopt);
    EXPECT_TRUE(rows().selectedItems().isEmpty());
}

TEST_F(DeckListTest, AClickOpensADeck) {
    clickRow(1);
    EXPECT_EQ(model.state()._selection, deck(1).id);
}

TEST_F(DeckListTest, ArrowKeysOpenTheNextDeck) {
    clickRow(0);
    QTest::keyClick(&rows(), Qt::Key_Down);
    EXPECT_EQ(model.state()._selection, deck(1).id);
    QTest::keyClick(&rows(), Qt::Key_End);
    EXPECT_EQ(model.state()._selection, deck(2).id);
    QTest::keyClick(&rows(), Qt::Key_Home);
    EXPECT_EQ(model.state()._selection, deck(0).id);
}

TEST_F(DeckListTest, AClickWithControlClosesTheOpenDeck) {
    clickRow(1);
    clickRow(1, Qt::ControlModifier);
    EXPECT_EQ(model.state()._selection, std::nullopt);
}

TEST_F(DeckListTest, AClickBelowTheRowsChangesNothing) {
    clickRow(1);
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, QPoint(30, rows().viewport()->height() - 5));
    EXPECT_EQ(model.state()._selection, deck(1).id);
}

TEST_F(DeckListTest, TheContextMenuIsForTheRowBelowItAndOpensNothing) {
    clickRow(2);
    QMenu* menu = contextMenu(middle(0));
    ASSERT_NE(menu, nullptr);
    QStringList words;
    for (const QAction* each : menu->actions()) words << (each->isSeparator() ? "-" : each->text());
    EXPECT_EQ(words, QStringList({"Rename…", "Duplicate", "-", "Delete…"}));
    menu->close();
    EXPECT_EQ(model.state()._selection, deck(2).id);
}

TEST_F(DeckListTest, BelowTheRowsThereIsNoContextMenu) {
    EXPECT_EQ(contextMenu(QPoint(30, rows().viewport()->height() - 5)), nullptr);
}

TEST_F(DeckListTest, DuplicateCopiesTheRow) {
    chooseInContextMenu(0, "Duplicate");
    ASSERT_EQ(model.state()._decks.size(), 4U);
    EXPECT_EQ(shownNames().last(), text(deck(3).name));
    EXPECT_EQ(model.state()._selection, deck(3).id);
    EXPECT_EQ(rows().currentRow(), 3);
}

TEST_F(DeckListTest, RenameAsksForTheName) {
    chooseInContextMenu(1, "Rename…");
    QDialog* rename = dialog();
    ASSERT_NE(rename, nullptr);
    EXPECT_EQ(rename->windowTitle(), "Rename Deck");
    EXPECT_EQ(words(*rename).toStdString(), "Rename Deck\nName");
    auto* field = find<QLineEdit>(*rename, "Name");
    EXPECT_EQ(field->text(), "Kings & Queens");
    EXPECT_EQ(field->selectedText(), field->text());
    EXPECT_EQ(rename->windowModality(), Qt::WindowModal);
    QTest::keyClicks(field, "Knights");
    click(find<QPushButton>(*rename, "Rename"));
    EXPECT_EQ(deckNames(), std::vector<std::string>({"Dragons", "Knights", "Ships"}));
    EXPECT_EQ(shownNames(), QStringList({"Dragons", "Knights", "Ships"}));
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(DeckListTest, RenameByKeys) {
    clickRow(0);
    QTest::keyClick(&rows(), Qt::Key_F2);
    ASSERT_NE(dialog(), nullptr);
    auto* field = find<QLineEdit>(*dialog(), "Name");
    QTest::keyClicks(field, "Drakes");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(deck(0).name, "Drakes");
}

TEST_F(DeckListTest, ACancelledRenameChangesNothing) {
    for (const bool byKey : {true, false}) {
        clickRow(0);
        QTest::keyClick(&rows(), Qt::Key_F2);
        auto* field = find<QLineEdit>(*dialog(), "Name");
        QTest::keyClicks(field, "Other");
        if (byKey)
            QTest::keyClick(field, Qt::Key_Escape);
        else
            click(find<QPushButton>(*dialog(), "Cancel"));
        EXPECT_EQ(dialog(), nullptr);
        EXPECT_EQ(deck(0).name, "Dragons");
    }
}

TEST_F(DeckListTest, AnEmptyNameLeavesTheOldOne) {
    clickRow(0);
    QTest::keyClick(&rows(), Qt::Key_F2);
    auto* field = find<QLineEdit>(*dialog(), "Name");
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(deck(0).name, "Dragons");
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(DeckListTest, DeleteAsksFirst) {
    chooseInContextMenu(1, "Delete…");
    auto* question = dialog<Alert>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(words(*question).toStdString(),
              "Delete “Kings & Queens”?\n"
              "The deck’s template and settings are removed. Your spreadsheet and pictures stay where they are.");
    EXPECT_EQ(question->windowModality(), Qt::WindowModal);
    EXPECT_THAT(unnamedControls(*question), testing::IsEmpty());
    auto* remove = find<QPushButton>(*question, "Delete Deck");
    EXPECT_FALSE(remove->isDefault());
    click(remove);
    EXPECT_EQ(deckNames(), std::vector<std::string>({"Dragons", "Ships"}));
    EXPECT_EQ(shownNames(), QStringList({"Dragons", "Ships"}));
}

TEST_F(DeckListTest, ALongNameIsAskedForToItsEnd) {
    model.newDeck(SampleTemplates::Kind::mini, std::string(300, 'W'));
    rows().setFocus();
    QTest::keyClick(&rows(), Qt::Key_Delete);
    ASSERT_NE(dialog(), nullptr);
    for (const QLabel* each : dialog()->findChildren<QLabel*>())
        EXPECT_LE(each->minimumSizeHint().width(), each->width()) << each->text().toStdString();
}

TEST_F(DeckListTest, ACancelledDeleteKeepsTheDeck) {
    clickRow(0);
    QTest::keyClick(&rows(), Qt::Key_Delete);
    ASSERT_NE(dialog<Alert>(), nullptr);
    QTest::keyClick(dialog<Alert>(), Qt::Key_Return);  // the careful answer is the nearest
    EXPECT_EQ(dialog<Alert>(), nullptr);
    QTest::keyClick(&rows(), Qt::Key_Delete);
    QTest::keyClick(dialog<Alert>(), Qt::Key_Escape);
    EXPECT_EQ(model.state()._decks.size(), 3U);
}

TEST_F(DeckListTest, DeletingTheLastDeckLeadsToTheWelcomeScreen) {
    while (!model.state()._decks.empty()) model.deleteDeck(deck(0).id);
    EXPECT_EQ(rows().count(), 0);
    EXPECT_EQ(model.currentProject(), nullptr);
    QTest::keyClick(&rows(), Qt::Key_Delete);
    QTest::keyClick(&rows(), Qt::Key_F2);
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(DeckListTest, ADeckThatGoesWhileItsMenuIsOpenIsLeftAlone) {
    QMenu* menu = contextMenu(middle(0));
    model.deleteDeck(deck(0).id);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item(*menu, "Rename…")).center());
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(DeckListTest, ThePlusMenuAddsDecks) {
    auto* plus = find<QToolButton>(window, "Add Deck");
    EXPECT_EQ(plus->toolTip(), "Add a deck");
    QMenu& menu = *plus->menu();
    ASSERT_EQ(menu.actions().size(), 2);
    item(menu, "Open the Sample Deck")->trigger();
    settle();
    EXPECT_EQ(model.state()._decks.size(), 4U);
    item(menu, "New Deck…")->trigger();
    EXPECT_TRUE(model.state()._showNewDeck);
}

TEST_F(DeckListTest, AnEditDoesNotTouchTheRows) {
    const QListWidgetItem* before = rows().item(2);
    model.addLayer(LayerKind::text);
    EXPECT_EQ(rows().item(2), before);
    EXPECT_EQ(rows().currentRow(), 2);
}

TEST_F(DeckListTest, NamesFromTheUserAreShownAsTheyAre) {
    for (const char* name : {"<b>Bold</b>", "& both &&", "[*]", "ünïcödé 🂡", "a\tb"}) {
        model.renameDeck(deck(0).id, name);
        EXPECT_EQ(rows().item(0)->text(), QString::fromUtf8(name));
    }
}

TEST_F(DeckListTest, TheSidebarKeepsItsWidth) {
    const auto& list = *window.findChild<DeckList*>();
    EXPECT_EQ(list.width(), 220);
    QSplitterHandle& handle = *window.findChild<RootView*>()->handle(1);
    for (const auto& [by, width] : {std::pair(400, 300), std::pair(-400, 190), std::pair(40, 230)}) {
        const QPoint start = handle.rect().center();
        QTest::mousePress(&handle, Qt::LeftButton, {}, start);
        QTest::mouseMove(&handle, start + QPoint(by, 0));
        QTest::mouseRelease(&handle, Qt::LeftButton, {}, start);
        EXPECT_NEAR(list.width(), width, 2);
    }
    show(window, {900, 600});
    EXPECT_GE(list.width(), 190) << "it gives way to what the content needs";
}

}  // namespace
}  // namespace quorvel
