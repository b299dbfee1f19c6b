#pragma once

class QDropEvent;

namespace quorvel {

/// Whether files are dragged, which a text leaves to the window: it would take their names, and the window opens them.
bool bringsFiles(const QDropEvent& event);

}  // namespace quorvel
