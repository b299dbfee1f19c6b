#include "Shell/DeckList.h"

#include "Controls/Style.h"
#include "Controls/SymbolButton.h"
#include "Controls/Symbols.h"
#include "Controls/Wording.h"
#include "Shell/Alert.h"
#include "Shell/DeckRowDelegate.h"
#include "Shell/RenameDialog.h"

#include <QEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvel {
namespace {

constexpr int idRole = Qt::UserRole;

QString idOf(const DeckProject& deck) {
    return text(deck.id.text());
}

}  // namespace

DeckList::DeckList(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    setMinimumWidth(narrowest);
    setMaximumWidth(widest);

    auto* heading = new QLabel("Decks");
    heading->setFont(Style::font(Style::TextSize::caption, QFont::DemiBold));
    heading->setContentsMargins(Style::small + Style::small, Style::medium, Style::small, Style::tight);
    Style::makeSecondary(heading);

    rows_ = new QListWidget;
    rows_->setAccessibleName("Decks");
    rows_->setSelectionMode(QAbstractItemView::SingleSelection);
    rows_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    rows_->setItemDelegate(new DeckRowDelegate(rows_));
    rows_->setFrameShape(QFrame::NoFrame);
    rows_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rows_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    rows_->setMouseTracking(true);
    rows_->viewport()->setAutoFillBackground(false);
    rows_->viewport()->installEventFilter(this);
    rows_->setContextMenuPolicy(Qt::CustomContextMenu);
    heading->setBuddy(rows_);
    connect(rows_, &QWidget::customContextMenuRequested, this, &DeckList::showMenu);
    connect(rows_, &QListWidget::itemSelectionChanged, this, &DeckList::openSelected);
    const auto bindKey = [this](QKeySequence key, void (DeckList::*ask)(const DeckProject&)) {
        auto* shortcut = new QShortcut(key, rows_);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, ask] {
            if (const DeckProject* current = deck(rows_->currentItem())) (this->*ask)(*current);
        });
    };
    bindKey(Qt::Key_F2, &DeckList::askForName);
    bindKey(Qt::Key_Delete, &DeckList::askBeforeDeleting);

    auto* add = new SymbolButton(u"plus", "Add Deck");
    add->setToolTip("Add a deck");
    add->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu("Add Deck", add);
    menu->addAction("New Deck…", this, [this] { model_.setShowNewDeck(true); });
    menu->addAction("Open the Sample Deck", this, [this] { model_.openSampleDeck(SampleTemplates::Kind::classic); });
    add->setMenu(menu);
    auto* below = new QHBoxLayout;
    below->setContentsMargins(Style::small, Style::tight, Style::small, Style::small);
    below->addWidget(add);
    below->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(heading);
    column->addWidget(rows_, 1);
    column->addLayout(below);

    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
    showDecks();
    showSelection();
}

void DeckList::refresh(Changes changes) {
    if (changes.has(Change::decks)) showDecks();
    if (changes.has(Change::decks) || changes.has(Change::selection)) showSelection();
}

void DeckList::showDecks() {
    const QSignalBlocker quiet(rows_);
    const std::vector<DeckProject>& decks = model_.state()._decks;
    // Rows keep their place where they can: a record changes with every edit, the list hardly ever.
    while (rows_->count() > int(decks.size())) delete rows_->takeItem(rows_->count() - 1);
    for (int i = 0; i < int(decks.size()); ++i) {
        const DeckProject& deck = decks[std::size_t(i)];
        if (i == rows_->count()) {
            auto* row = new QListWidgetItem(Symbols::icon(u"rectangle.portrait.on.rectangle.portrait"), {}, rows_);
            row->setData(Qt::AccessibleDescriptionRole, "Opens this deck");
        }
        QListWidgetItem* row = rows_->item(i);
        if (row->text() != text(deck.name)) row->setText(text(deck.name));
        if (row->data(idRole) != idOf(deck)) row->setData(idRole, idOf(deck));
    }
}

void DeckList::showSelection() {
    const QSignalBlocker quiet(rows_);
    const auto& selection = model_.state()._selection;
    const auto& decks = model_.state()._decks;
    const auto found = selection ? std::ranges::find(decks, *selection, &DeckProject::id) : decks.end();
    if (found == decks.end()) {
        rows_->clearSelection();
        rows_->setCurrentItem(nullptr);
    } else if (const int row = int(found - decks.begin());
               rows_->currentRow() != row || !rows_->item(row)->isSelected()) {
        rows_->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
    }
    rows_->viewport()->update();
}

void DeckList::openSelected() {
    const auto selected = rows_->selectedItems();
    const DeckProject* chosen = selected.isEmpty() ? nullptr : deck(selected.front());
    model_.setSelection(chosen ? std::optional(chosen->id) : std::nullopt);
}

const DeckProject* DeckList::deck(const QListWidgetItem* row) const {
    if (!row) return nullptr;
    const auto id = UUID::parse(row->data(idRole).toString().toStdString());
    const auto& decks = model_.state()._decks;
    const auto found = id ? std::ranges::find(decks, *id, &DeckProject::id) : decks.end();
    return found == decks.end() ? nullptr : &*found;
}

bool DeckList::eventFilter(QObject* object, QEvent* event) {
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (isPress) {
        // The menu of a deck is no reason to open it, and a click beside the decks none to close one.
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() != Qt::LeftButton || !rows_->itemAt(press->position().toPoint())) return true;
    }
    return QWidget::eventFilter(object, event);
}

void DeckList::showMenu(QPoint place) {
    const DeckProject* found = deck(rows_->itemAt(place));
    if (!found) return;
    auto* menu = new QMenu(text(found->name), this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The list may change while the menu is open.
    const auto add = [&](const QString& words, auto act) {
        menu->addAction(words, this, [this, act, id = found->id] {
            const auto& decks = model_.state()._decks;
            const auto still = std::ranges::find(decks, id, &DeckProject::id);
            if (still != decks.end()) act(*still);
        });
    };
    add("Rename…", [this](const DeckProject& deck) { askForName(deck); });
    add("Duplicate", [this](const DeckProject& deck) { model_.duplicateDeck(deck.id); });
    menu->addSeparator();
    add("Delete…", [this](const DeckProject& deck) { askBeforeDeleting(deck); });
    menu->popup(rows_->viewport()->mapToGlobal(place));
}

void DeckList::askForName(const DeckProject& deck) {
    (new RenameDialog(model_, deck, window()))->open();
}

void DeckList::askBeforeDeleting(const DeckProject& deck) {
    auto* question = new Alert(
        text("Delete “" + deck.name + "”?"),
        "The deck’s template and settings are removed. Your spreadsheet and pictures stay where they are.", window());
    question->addButton("Cancel", QDialogButtonBox::RejectRole, Alert::Answer::default_);
    const auto* remove = question->addButton("Delete Deck", QDialogButtonBox::DestructiveRole);
    connect(remove, &QPushButton::clicked, this, [this, id = deck.id] { model_.deleteDeck(id); });
    question->open();
}

}  // namespace quorvel
