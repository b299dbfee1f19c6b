#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// A marked-up text made ready for layout: one string of valid UTF-8 whose line feeds stand between paragraphs, the
/// styles of its pieces, and the places of its inline icons.
struct StyledText {
    struct Piece {
        std::size_t begin = 0;  ///< in bytes
        std::size_t end = 0;
        bool bold = false;
        bool italic = false;
        bool operator==(const Piece&) const = default;
    };

    /// An icon's place is held by one U+FFFC, three bytes from `offset`.
    struct Icon {
        std::size_t offset = 0;
        std::string name;
        bool operator==(const Icon&) const = default;
    };

    static constexpr std::size_t iconLength = 3;

    std::string text;
    std::vector<Piece> pieces;
    std::vector<Icon> icons;

    /// Parses the markup of any bytes. What can't show is left out: control characters, a U+FFFC of the user's own, and
    /// blanks at the end of a paragraph, which would push centred text aside. Every kind of line break is a line feed.
    static StyledText from(std::string_view text);
};

}  // namespace quorvel
