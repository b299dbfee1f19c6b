#pragma once

#include "Model/OpenDeck.h"

#include <QString>
#include <vector>

namespace quorvel {

/// What is said above the grid about trouble in the data.
struct Banner {
    enum class Tone { quiet, warning };
    enum class Action { none, chooseSpreadsheet, chooseArtFolder };

    QString symbol;
    Tone tone = Tone::quiet;
    QString text;
    Action action = Action::none;

    bool operator==(const Banner&) const = default;

    /// What stands on the button; empty for `none`.
    static QString title(Action action);
};

/// The banners of an open deck, the gravest first: the spreadsheet that couldn't be read anew, pictures that aren't
/// found, quantities that are none.
std::vector<Banner> bannersFor(const OpenDeck& open);

}  // namespace quorvel
