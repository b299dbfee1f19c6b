#include "Cards/CharacterList.h"

#include "Foundation/Text.h"

#include <algorithm>

namespace quorvel {

namespace {

bool everyByteIsACharacter(std::string_view text) {
    const bool ascii = std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    return ascii && text.find("\r\n") == std::string_view::npos;
}

}  // namespace

CharacterList::CharacterList(std::string_view text) : text_(text) {
    if (!everyByteIsACharacter(text)) characters_ = Text::characters(text);
}

std::string_view CharacterList::slice(std::size_t first, std::size_t end) const {
    if (first >= end) return {};
    if (characters_.empty()) return text_.substr(first, end - first);
    const std::string_view last = characters_[end - 1];
    const char* start = characters_[first].data();
    return {start, static_cast<std::size_t>(last.data() + last.size() - start)};
}

}  // namespace quorvel
