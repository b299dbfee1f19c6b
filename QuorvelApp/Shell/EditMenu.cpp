#include "Shell/EditMenu.h"

#include "Controls/Wording.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <string_view>

namespace quorvel {
namespace {

/// Text fields of every kind, and views that can be copied from, say so by the slots that they have.
bool has(const QWidget* widget, const char* slot) {
    return widget && widget->metaObject()->indexOfMethod((QByteArray(slot) + "()").constData()) >= 0;
}

bool isReadOnly(const QWidget& widget) {
    return widget.property("readOnly").toBool();
}

bool isTextField(const QWidget* widget) {
    return has(widget, "paste") && !isReadOnly(*widget);
}

bool isPossible(const QWidget* widget, std::string_view slot) {
    if (!has(widget, slot.data()) || !widget->isEnabled()) return false;
    const QVariant selected = widget->property("hasSelectedText");  // most don't tell
    if ((slot == "cut" || slot == "copy") && selected.isValid() && !selected.toBool()) return false;
    return (slot != "cut" && slot != "paste") || !isReadOnly(*widget);
}

QString titleOf(const QString& verb, const std::optional<std::string>& action) {
    return action ? verb + " " + text(*action).replace('&', "&&") : verb;
}

}  // namespace

EditMenu::EditMenu(AppModel& model, std::shared_ptr<const UndoStack> undo, QWidget* parent)
    : QMenu("&Edit", parent), model_(model), steps_(std::move(undo)) {
    undo_ = addAction("Undo", this, [this] { model_.undo(); });
    undo_->setShortcut(Qt::CTRL | Qt::Key_Z);
    redo_ = addAction("Redo", this, [this] { model_.redo(); });
    redo_->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    addSeparator();
    addTextCommand("Cut", QKeySequence::Cut, "cut");
    addTextCommand("Copy", QKeySequence::Copy, "copy");
    addTextCommand("Paste", QKeySequence::Paste, "paste");
    addTextCommand("Select All", QKeySequence::SelectAll, "selectAll");

    connect(this, &QMenu::aboutToShow, this, &EditMenu::refreshTextCommands);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
    follow(QApplication::focusWidget());
    subscription_ = model_.subscribe([this](Changes changes) {
        if (changes.has(Change::undo)) refreshUndo();
    });
    refreshUndo();
}

void EditMenu::addTextCommand(const QString& words, QKeySequence::StandardKey keys, const char* slot) {
    QAction* action = addAction(words, this, [this, slot] {
        if (isPossible(target_, slot)) QMetaObject::invokeMethod(target_, slot);
    });
    action->setShortcut(QKeySequence::keyBindings(keys).value(0));
    textCommands_[action] = slot;
}

void EditMenu::refreshUndo() {
    undo_->setText(titleOf("Undo", steps_->undoName()));
    undo_->setEnabled(steps_->canUndo());
    redo_->setText(titleOf("Redo", steps_->redoName()));
    redo_->setEnabled(steps_->canRedo());
}

void EditMenu::refreshTextCommands() {
    for (const auto& [action, slot] : textCommands_) action->setEnabled(isPossible(target_, slot));
}

void EditMenu::follow(QWidget* focus) {
    // Menus take the focus, or it is nowhere while they are open: what they act on had it before.
    if (qobject_cast<QMenu*>(focus) || qobject_cast<QMenuBar*>(focus)) return;
    if (target_) target_->removeEventFilter(this);
    target_ = focus;
    if (isTextField(target_)) target_->installEventFilter(this);
    refreshTextCommands();
}

bool EditMenu::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) return QMenu::eventFilter(object, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Backspace && key != Qt::Key_Delete) return QMenu::eventFilter(object, event);
    event->accept();
    return true;
}

}  // namespace quorvel
