#pragma once

#include "Cards/Deck.h"
#include "DeckSource.h"
#include "Rendering/CardRenderer.h"
#include "Spreadsheet/DataTable.h"

#include <expected>
#include <memory>
#include <string>
#include <vector>

/// What the commands read, with failures as sentences.
namespace quorvel::CommandLine {

/// The table of options.input and options.sheet.
std::expected<DataTable, std::string> readTable(const Options& options);

/// A deck as the application would open it from the same files.
struct DeckInput {
    DeckProject project;
    FieldMapping mapping;
    std::shared_ptr<const Deck> deck;  ///< never null
    CardRenderer renderer;

    static std::expected<DeckInput, std::string> read(const Options& options, const DeckSource& source);

    /// The same for an export, which fails when there are no cards at all.
    static std::expected<DeckInput, std::string> readForExport(const Options& options, const DeckSource& source);

    /// The names in the image layers of the design, repeats and empty names included.
    std::vector<std::string> pictureNames() const;
};

}  // namespace quorvel::CommandLine
