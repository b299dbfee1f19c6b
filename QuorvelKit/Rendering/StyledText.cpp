#include "Rendering/StyledText.h"

#include "Cards/Markup.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <glib.h>

namespace quorvel {

namespace {

constexpr char32_t iconPlace = 0xFFFC;
constexpr char32_t softHyphen = 0xAD;

bool endsParagraph(char32_t scalar) {
    return scalar == '\n' || scalar == '\r' || scalar == 0x0B || scalar == 0x0C || scalar == 0x85 || scalar == 0x2028 ||
           scalar == 0x2029;
}

bool shows(char32_t scalar) {
    const bool control = (scalar < 0x20 && scalar != '\t') || (scalar >= 0x7F && scalar <= 0x9F);
    return !control && scalar != iconPlace;
}

/// After text was taken from the end.
void clampPieces(StyledText& styled) {
    const std::size_t length = styled.text.size();
    for (auto piece = styled.pieces.rbegin(); piece != styled.pieces.rend() && piece->end > length; ++piece) {
        piece->end = length;
        piece->begin = std::min(piece->begin, length);
    }
}

void endParagraph(StyledText& styled) {
    auto& text = styled.text;
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.pop_back();
    clampPieces(styled);
}

/// Marks and invisible characters in a row beyond this are left out. No script stacks as many; some cells do, to look
/// haunted, and shaping takes the square of their number.
constexpr int mostWithoutWidth = 24;

void append(const MarkupText& run, StyledText& styled) {
    int withoutWidth = 0;
    styled.pieces.push_back({styled.text.size(), styled.text.size(), run.bold, run.italic});
    const std::string_view text = run.text;
    for (std::size_t offset = 0; offset < text.size();) {
        const char32_t scalar = Text::nextScalar(text, offset);
        if (scalar == '\r' && offset < text.size() && text[offset] == '\n') continue;
        if (endsParagraph(scalar)) {
            endParagraph(styled);
            styled.text += '\n';
        } else if (shows(scalar)) {
            withoutWidth = g_unichar_iszerowidth(scalar) || scalar == softHyphen ? withoutWidth + 1 : 0;
            if (withoutWidth > mostWithoutWidth) continue;
            Text::appendScalar(styled.text, scalar);
        }
        styled.pieces.back().end = styled.text.size();
    }
}

void append(const MarkupIcon& run, StyledText& styled) {
    styled.icons.push_back({styled.text.size(), run.name});
    Text::appendScalar(styled.text, iconPlace);
}

}  // namespace

StyledText StyledText::from(std::string_view text) {
    StyledText styled;
    for (const auto& run : Markup::parse(text)) {
        std::visit([&](const auto& it) { append(it, styled); }, run);
    }
    endParagraph(styled);
    if (styled.text.ends_with('\n')) {
        // It ends the last paragraph and begins no other.
        styled.text.pop_back();
        clampPieces(styled);
    }
    std::erase_if(styled.pieces, [](const Piece& piece) { return piece.begin == piece.end; });
    return styled;
}

}  // namespace quorvel
