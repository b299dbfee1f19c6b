#pragma once

#include "Cards/Card.h"

#include <string>
#include <string_view>
#include <vector>

/// `{{name}}` in the text of a layer. A name ends at the first "}}"; there is no nesting and no escape, and "{{"
/// without an end stays as it is, with all that follows. Blanks and tabs around a name don't count, line breaks do.
namespace quorvel::Placeholders {

/// Whether there is anything to resolve or to vary from card to card: the text has a "{{", closed or not.
bool mayOccurIn(std::string_view text);

/// Every placeholder replaced by the card's value, or by "[name]" when `card` is null. What comes in isn't read again.
std::string resolve(std::string_view text, const Card* card);

/// The names used, lower-cased, one for each occurrence, in order; empty names are left out.
std::vector<std::string> names(std::string_view text);

}  // namespace quorvel::Placeholders
