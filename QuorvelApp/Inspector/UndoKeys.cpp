#include "Inspector/UndoKeys.h"

#include <QKeyEvent>

namespace quorvel {

bool leaveToUndo(QEvent& event) {
    if (event.type() != QEvent::KeyPress && event.type() != QEvent::ShortcutOverride) return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    if (!key.matches(QKeySequence::Undo) && !key.matches(QKeySequence::Redo)) return false;
    event.ignore();
    return true;
}

}  // namespace quorvel
