#include "DeckInput.h"

#include "Model/DeckLoading.h"
#include "Model/MissingArt.h"
#include "Spreadsheet/DataLoader.h"
#include "Wording.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

namespace quorvel::CommandLine {
namespace {

/// The sentence when the worksheet that the options ask for isn't among those of the file, which then read another. A
/// file without worksheets counts as one.
std::optional<std::string> missingSheet(const Options& options, const std::filesystem::path& file,
                                        std::size_t sheetCount, std::int64_t sheetRead) {
    if (!options.sheet || *options.sheet - 1 == sheetRead) return std::nullopt;
    return "There is no sheet " + std::to_string(*options.sheet) + " in " + quotedName(file) + ": it has " +
           (sheetCount <= 1 ? "only one." : std::to_string(sheetCount) + ".");
}

}  // namespace

std::expected<DataTable, std::string> readTable(const Options& options) {
    auto loaded = DataLoader::load(options.input, options.sheet.value_or(1) - 1);
    if (!loaded) return std::unexpected(loaded.error().description());

    // What is wrong with a file is told before a number too high, unless its worksheets are known.
    if (!loaded->result && loaded->sheetNames.empty())
        return std::unexpected(DataLoader::description(loaded->result.error()));
    if (auto sentence = missingSheet(options, options.input, loaded->sheetNames.size(), loaded->sheet))
        return std::unexpected(std::move(*sentence));
    if (!loaded->result) return std::unexpected(DataLoader::description(loaded->result.error()));
    return std::move(*loaded->result);
}

std::expected<DeckInput, std::string> DeckInput::read(const Options& options, const DeckSource& source) {
    auto loaded = DeckLoading::load(source.spreadsheet, source.project.sheetIndex, source.project.mapping);
    if (!loaded.result && loaded.sheetNames.empty()) return std::unexpected(loaded.result.error());
    if (auto sentence = missingSheet(options, source.spreadsheet, loaded.sheetNames.size(), loaded.sheetIndex))
        return std::unexpected(std::move(*sentence));
    if (!loaded.result) return std::unexpected(loaded.result.error());
    return DeckInput{
        .project = source.project,
        .mapping = std::move(loaded.result->mapping),
        .deck = std::move(loaded.result->deck),
        .renderer = {source.project.template_, std::make_shared<Assets>(source.pictureFolders, source.iconFolder),
                     CardRenderer::MissingPictures::leaveBlank}};
}

std::expected<DeckInput, std::string> DeckInput::readForExport(const Options& options, const DeckSource& source) {
    auto input = read(options, source);
    if (input && input->deck->cards.empty())
        return std::unexpected("There are no cards in " + quotedName(source.spreadsheet) +
                               ": nothing stands below its headers.");
    return input;
}

std::vector<std::string> DeckInput::pictureNames() const {
    return MissingArt::pictureNames(renderer.template_, deck->cards);
}

}  // namespace quorvel::CommandLine
