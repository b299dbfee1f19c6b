#pragma once

#include "Library/DeckProject.h"
#include "Library/Library.h"
#include "Samples/SampleTemplates.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How the list of decks changes: functions on the records, without state. Only `folderToRemove` looks at the disk.
/// Names may be any bytes, since they come from file names, too; what is stored is UTF-8. Dates are seconds since
/// 2001-01-01 00:00:00 UTC.
namespace quorvel::DeckOperations {

inline constexpr std::string_view newDeckName = "New Deck";
inline constexpr std::string_view sampleFolderLabel = "The sample deck’s folder";

/// An empty deck with the sample design of a kind under its name. White space and line ends around the name go; an
/// empty one becomes "New Deck".
DeckProject newDeck(SampleTemplates::Kind kind, std::string_view name, double created);

/// A deck on the sample files in `folder`.
DeckProject sampleDeck(SampleTemplates::Kind kind, const UUID& id, const std::filesystem::path& folder, double created);

/// The name to store, or nothing when only white space was given.
std::optional<std::string> renamed(std::string_view name);

/// With new ids for the deck and its design, and " copy" behind the name.
DeckProject duplicate(const DeckProject& project, double created);

/// The deck bound to another spreadsheet: first worksheet, mapping yet to be guessed. A deck that nobody has named
/// takes the file's name without its extension.
DeckProject withSpreadsheet(DeckProject project, Bookmark source);

/// The folder that goes when `deleted` goes: its sample folder, if its source is a plain reference to a file directly
/// inside a folder of `library.sampleFolder()`, and no deck of `remaining` refers to anything inside. Symbolic links
/// are followed, so the answer truly lies in the sample folder, and is never the sample folder itself.
std::optional<std::filesystem::path> folderToRemove(const DeckProject& deleted,
                                                    const std::vector<DeckProject>& remaining, const Library& library);

}  // namespace quorvel::DeckOperations
