#include "Cards/Placeholders.h"

#include "Foundation/Text.h"

namespace quorvel::Placeholders {

namespace {

constexpr std::string_view opening = "{{";
constexpr std::string_view closing = "}}";

/// Calls `found(before, name)` for each placeholder with the text since the last one, and answers what is left. Every
/// step either moves on behind a closing mark or ends, so the work grows with the length alone.
template <class Found>
std::string_view scan(std::string_view text, Found found) {
    for (;;) {
        const std::size_t open = text.find(opening);
        if (open == std::string_view::npos) return text;
        const std::size_t nameStart = open + opening.size();
        const std::size_t close = text.find(closing, nameStart);
        if (close == std::string_view::npos) return text;
        found(text.substr(0, open), Text::trimBlanks(text.substr(nameStart, close - nameStart)));
        text.remove_prefix(close + closing.size());
    }
}

}  // namespace

bool mayOccurIn(std::string_view text) {
    return text.find(opening) != std::string_view::npos;
}

std::string resolve(std::string_view text, const Card* card) {
    if (!mayOccurIn(text)) return std::string(text);
    std::string result;
    const std::string_view rest = scan(text, [&](std::string_view before, std::string_view name) {
        result += before;
        if (card) {
            result += card->value(name);
        } else {
            result += '[';
            result += name;
            result += ']';
        }
    });
    result += rest;
    return result;
}

std::vector<std::string> names(std::string_view text) {
    std::vector<std::string> result;
    scan(text, [&](std::string_view, std::string_view name) {
        if (!name.empty()) result.push_back(Text::lowercased(name));
    });
    return result;
}

}  // namespace quorvel::Placeholders
