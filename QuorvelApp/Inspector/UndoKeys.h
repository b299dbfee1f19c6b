#pragma once

class QEvent;

namespace quorvel {

/// Whether a text field that stores every key at once should leave the event alone: the keys for Undo and Redo. Its
/// text is the design's, and the design has its own steps; those of the field beside them would undo what is undone.
/// An event that is left alone is ignored.
bool leaveToUndo(QEvent& event);

}  // namespace quorvel
