#pragma once

#include "Shots/Stage.h"

#include <QSize>
#include <vector>

namespace quorvel {

/// One picture of the window.
struct Screen {
    const char* name;       ///< of its file
    void (*bring)(Stage&);  ///< from a window without decks to what is to be seen
    QSize size = {1280, 820};
};

/// Every screen and every state that is worth a look.
const std::vector<Screen>& screens();

}  // namespace quorvel
