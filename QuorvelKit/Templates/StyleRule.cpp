#include "Templates/StyleRule.h"

#include "Foundation/Text.h"

#include <utility>

namespace quorvel {

StyleRule::StyleRule(std::string fieldName, Match test, std::string operand, std::optional<RGBA> newFill,
                     std::optional<RGBA> newStroke, std::optional<RGBA> newTextColor, bool hides)
    : id(UUID::random()),
      field(std::move(fieldName)),
      match(test),
      value(std::move(operand)),
      fill(newFill),
      stroke(newStroke),
      textColor(newTextColor),
      hide(hides) {}

bool StyleRule::matches(const Card& card) const {
    const std::string_view cell = Text::trimWhitespaceAndNewlines(card.value(field));
    switch (match) {
        case Match::equals:
            return Text::equalsIgnoringCaseAndMarks(Text::trimBlanks(value), cell);
        case Match::contains:
            return !value.empty() && Text::containsIgnoringCaseAndMarks(cell, value);
        case Match::isEmpty:
            return cell.empty();
        case Match::isNotEmpty:
            return !cell.empty();
    }
    return false;
}

}  // namespace quorvel
