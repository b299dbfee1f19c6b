#pragma once

#include "Library/DeckProject.h"
#include "Library/Library.h"
#include "Options.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::CommandLine {

/// The deck that the options mean, before its spreadsheet is read: a stored one, or a new one of FILE, with what the
/// options change. Nothing is written back to the library.
struct DeckSource {
    DeckProject project;
    std::filesystem::path spreadsheet;
    std::vector<std::filesystem::path> pictureFolders;  ///< in the order in which they are searched
    std::optional<std::filesystem::path> iconFolder;
    std::vector<std::filesystem::path> needed;  ///< files and folders that must not be written over

    /// Fails with a sentence.
    static std::expected<DeckSource, std::string> find(const Options& options);
};

/// The library that the options name, or the application's own. Fails with a sentence when the folder that they name
/// isn't there; the application's own need not be.
std::expected<Library, std::string> libraryOf(const Options& options);

/// The design: the template file, else one of those that come along, with `gameName` on its back.
std::expected<CardTemplate, std::string> readTemplate(const Options& options, std::string_view gameName);

/// The print settings: `settings`, or those of the file in their place; then each --set.
std::expected<SheetSettings, std::string> readSettings(const Options& options, SheetSettings settings = {});

/// The files and folders that the options name for reading.
std::vector<std::filesystem::path> filesRead(const Options& options);

}  // namespace quorvel::CommandLine
