#pragma once

#include "Cards/Deck.h"
#include "Options.h"
#include "Rendering/CardRenderer.h"
#include "Spreadsheet/DataTable.h"
#include "Templates/SheetSettings.h"

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

/// What the commands read, with failures as sentences.
namespace quorvel::CommandLine {

/// The table of options.input and options.sheet.
std::expected<DataTable, std::string> readTable(const Options& options);

/// The design: the template file, else the one that comes along, with `gameName` on its back.
std::expected<CardTemplate, std::string> readTemplate(const Options& options, std::string_view gameName);

/// The print settings: the defaults, then the file, then each --set.
std::expected<SheetSettings, std::string> readSettings(const Options& options);

/// A deck as the application would open it from the same files.
struct DeckInput {
    std::string name;
    FieldMapping mapping;
    Deck deck;
    CardRenderer renderer;

    static std::expected<DeckInput, std::string> read(const Options& options);

    /// The same for an export, which fails when there are no cards at all.
    static std::expected<DeckInput, std::string> readForExport(const Options& options);

    /// The names in the image layers of the design, front before back, card by card; repeats and empty names included.
    std::vector<std::string> pictureNames() const;
};

/// The files and folders that the options name for reading.
std::vector<std::filesystem::path> filesRead(const Options& options);

}  // namespace quorvel::CommandLine
