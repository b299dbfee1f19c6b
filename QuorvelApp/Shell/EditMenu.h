#pragma once

#include "Model/AppModel.h"

#include <QMenu>
#include <QPointer>
#include <map>

namespace quorvel {

/// Undo and Redo of the design, and what text fields do with the clipboard. While a text field is worked in, the keys
/// of text are its own: the field undoes its typing, and Backspace with any key beside it deletes text, not layers.
class EditMenu : public QMenu {
    Q_OBJECT
public:
    /// `undo` is the stack that the model was given.
    EditMenu(AppModel& model, std::shared_ptr<const UndoStack> undo, QWidget* parent);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void addTextCommand(const QString& words, QKeySequence::StandardKey keys, const char* slot);
    void refreshUndo();
    void refreshTextCommands();
    void follow(QWidget* focus);

    AppModel& model_;
    std::shared_ptr<const UndoStack> steps_;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    std::map<QAction*, const char*> textCommands_;  ///< by the slot that text fields have for it
    QPointer<QWidget> target_;                      ///< what had the focus last, the menu bar aside
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
