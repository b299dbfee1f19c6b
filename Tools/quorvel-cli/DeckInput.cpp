#include "DeckInput.h"

#include "Cards/Placeholders.h"
#include "Foundation/FileBytes.h"
#include "Foundation/TextEncoding.h"
#include "Spreadsheet/DataLoader.h"
#include "Templates/SheetSettingsJSON.h"
#include "Templates/TemplateJSON.h"
#include "Wording.h"

#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace quorvel::CommandLine {
namespace {

namespace fs = std::filesystem;

/// No design comes near it, and a mistaken file doesn't fill the memory.
constexpr std::uint64_t largestJSONFile = 64u << 20;

std::expected<std::string, std::string> readJSONFile(const fs::path& file) {
    auto text = FileBytes::read(file, largestJSONFile);
    if (!text) return std::unexpected(text.error().description());
    return std::move(*text);
}

/// "“print.json” doesn’t hold print settings: paper must be one of letter, a4."
std::unexpected<std::string> notReadable(const fs::path& file, std::string_view verdict, const JSONFailure& failure) {
    return std::unexpected(quotedName(file) + " " + std::string(verdict) + ": " +
                           (failure.path.empty() ? "it" : failure.path) + " " + failure.reason + ".");
}

std::expected<void, std::string> checkFolder(const std::optional<fs::path>& folder) {
    if (!folder) return {};
    std::error_code error;
    const auto status = fs::status(*folder, error);
    if (fs::is_directory(status)) return {};
    if (fs::exists(status)) return std::unexpected(quotedName(*folder) + " is a file, not a folder.");
    return std::unexpected(FileFailure{*folder, error ? error.value() : ENOENT}.description());
}

/// Where pictures are looked for, the chosen folder before the spreadsheet's own.
std::vector<fs::path> pictureFolders(const Options& options) {
    std::vector<fs::path> folders;
    if (options.art) folders.push_back(*options.art);
    folders.push_back(options.input.has_parent_path() ? options.input.parent_path() : fs::path("."));
    return folders;
}

std::string deckName(const Options& options) {
    return TextEncoding::repairedUTF8(options.name ? *options.name : options.input.stem().string());
}

}  // namespace

std::expected<DataTable, std::string> readTable(const Options& options) {
    auto loaded = DataLoader::load(options.input, options.sheet - 1);
    if (!loaded) return std::unexpected(loaded.error().description());

    // A file without worksheets counts as one, but what is wrong with it is told before a number too high.
    const bool hasSheets = !loaded->sheetNames.empty();
    if (!hasSheets && !loaded->result) return std::unexpected(DataLoader::description(loaded->result.error()));
    const auto count = hasSheets ? std::int64_t(loaded->sheetNames.size()) : 1;
    if (options.sheet > count)
        return std::unexpected("There is no sheet " + std::to_string(options.sheet) + " in " +
                               quotedName(options.input) + ": it has " +
                               (count == 1 ? "only one." : std::to_string(count) + "."));
    if (!loaded->result) return std::unexpected(DataLoader::description(loaded->result.error()));
    return std::move(*loaded->result);
}

std::expected<CardTemplate, std::string> readTemplate(const Options& options, std::string_view gameName) {
    if (!options.template_) return SampleTemplates::make(options.kind, gameName);
    const auto text = readJSONFile(*options.template_);
    if (!text) return std::unexpected(text.error());
    auto design = templateFromFileText(*text);
    if (!design) return notReadable(*options.template_, "isn’t a Quorvel template", design.error());
    return std::move(*design);
}

std::expected<SheetSettings, std::string> readSettings(const Options& options) {
    SheetSettings settings;
    if (options.settings) {
        const auto text = readJSONFile(*options.settings);
        if (!text) return std::unexpected(text.error());
        const auto json = parseJSON(*text);
        const auto read = json ? sheetSettingsFromJSON(*json) : std::unexpected(json.error());
        if (!read) return notReadable(*options.settings, "doesn’t hold print settings", read.error());
        settings = *read;
    }
    for (const SettingAssignment& assign : options.assignments) assign(settings);
    return settings;
}

std::expected<DeckInput, std::string> DeckInput::read(const Options& options) {
    for (const auto& folder : {options.art, options.icons})
        if (const auto checked = checkFolder(folder); !checked) return std::unexpected(checked.error());
    auto table = readTable(options);
    if (!table) return std::unexpected(table.error());
    DeckInput input;
    input.name = deckName(options);
    auto design = readTemplate(options, input.name);
    if (!design) return std::unexpected(design.error());

    input.mapping = FieldMapping::guess(table->headers);
    input.deck = Deck(std::move(*table), input.mapping);
    input.renderer = {std::move(*design), std::make_shared<Assets>(pictureFolders(options), options.icons),
                      CardRenderer::MissingPictures::leaveBlank};
    return input;
}

std::expected<DeckInput, std::string> DeckInput::readForExport(const Options& options) {
    auto input = read(options);
    if (input && input->deck.cards.empty())
        return std::unexpected("There are no cards in " + quotedName(options.input) +
                               ": nothing stands below its headers.");
    return input;
}

std::vector<std::string> DeckInput::pictureNames() const {
    std::vector<const Layer*> layers;
    for (const Side side : {Side::front, Side::back})
        for (const Layer& layer : renderer.template_.layers(side))
            if (layer.kind == LayerKind::image) layers.push_back(&layer);

    std::vector<std::string> names;
    for (const Card& card : deck.cards)
        for (const Layer* layer : layers) names.push_back(Placeholders::resolve(layer->content, &card));
    return names;
}

std::vector<fs::path> filesRead(const Options& options) {
    std::vector<fs::path> files;
    // The operand of the sample is what it writes.
    if (options.command != Command::sample && !options.input.empty()) files.push_back(options.input);
    for (const auto& each : {options.template_, options.settings, options.art, options.icons})
        if (each) files.push_back(*each);
    return files;
}

}  // namespace quorvel::CommandLine
