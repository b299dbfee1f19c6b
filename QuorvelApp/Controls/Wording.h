#pragma once

#include <QString>
#include <string_view>

/// The words of this platform. Texts in the source stay as the design has them; what a user of another platform should
/// read instead ("this Mac" is "this computer", "⌘" is "Ctrl+") is decided here, in one table.
namespace quorvel {

/// The text as it is shown, for every text of the interface that may name the platform.
QString shown(std::string_view text);

/// UTF-8 as the toolkit's text, unchanged: for what comes from the user's files.
inline QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

/// The same words for a label that wraps: what has no place for a line to end, a file's name of hundreds of letters,
/// gets an unseen one after each `longest` characters.
QString breakable(const QString& words, int longest = 32);

}  // namespace quorvel
