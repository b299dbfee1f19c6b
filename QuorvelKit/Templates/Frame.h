#pragma once

namespace quorvel {

/// The rectangle of a layer in millimetres from the top-left corner of the trimmed card, y growing downward.
struct Frame {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Frame&) const = default;
};

}  // namespace quorvel
