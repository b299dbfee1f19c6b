#include "DeckSource.h"

#include "DeckLookup.h"
#include "Foundation/FileBytes.h"
#include "Foundation/TextEncoding.h"
#include "Model/DeckLoading.h"
#include "QtPlatform/Platform.h"
#include "Templates/SheetSettingsJSON.h"
#include "Templates/TemplateJSON.h"
#include "Wording.h"

#include <cerrno>
#include <cstdint>
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

/// A new deck of FILE.
std::expected<DeckSource, std::string> newDeck(const Options& options) {
    std::error_code error;
    if (fs::status(options.input, error).type() == fs::file_type::not_found)
        return std::unexpected(FileFailure{options.input, ENOENT}.description());

    DeckSource source;
    source.project.name = TextEncoding::repairedUTF8(options.input.stem().string());
    source.spreadsheet = options.input;
    source.pictureFolders.push_back(options.input.has_parent_path() ? options.input.parent_path() : fs::path("."));
    return source;
}

std::expected<DeckSource, std::string> storedDeck(const Options& options) {
    const auto library = libraryOf(options);
    if (!library) return std::unexpected(library.error());
    const auto project = findDeck(library->loadDecks(), *options.deck);
    if (!project) return std::unexpected(project.error());
    if (!project->source) return std::unexpected("The deck “" + project->name + "” has no spreadsheet yet.");

    DeckLoading::Files files = DeckLoading::find(*project);
    if (!files.source) return std::unexpected(DeckLoading::notFoundMessage(project->source->name));
    DeckSource source{.project = std::move(files.refreshed),
                      .spreadsheet = std::move(*files.source),
                      .pictureFolders = std::move(files.pictureFolders),
                      .iconFolder = std::move(files.iconFolder),
                      .needed = {}};
    source.needed = source.pictureFolders;
    source.needed.pop_back();  // the spreadsheet's own folder, in which something new may well be made
    source.needed.push_back(source.spreadsheet);
    if (source.iconFolder) source.needed.push_back(*source.iconFolder);
    source.needed.push_back(library->applicationSupport);
    source.needed.push_back(library->deckFile(source.project.id));
    return source;
}

/// Puts what the options name in the place of what the deck has.
std::expected<void, std::string> applyOptions(const Options& options, DeckSource& source) {
    DeckProject& project = source.project;
    if (options.name) project.name = TextEncoding::repairedUTF8(*options.name);
    if (!options.deck || options.template_ || options.kind) {
        auto design = readTemplate(options, project.name);
        if (!design) return std::unexpected(design.error());
        project.template_ = std::move(*design);
    }
    const auto settings = readSettings(options, project.sheet);
    if (!settings) return std::unexpected(settings.error());
    project.sheet = *settings;
    if (options.sheet) project.sheetIndex = *options.sheet - 1;
    if (options.bleed) project.imageBleed = *options.bleed;
    if (options.dpi) project.imageDPI = *options.dpi;
    if (options.art) source.pictureFolders = {*options.art, source.pictureFolders.back()};
    if (options.icons) source.iconFolder = options.icons;
    const auto named = filesRead(options);
    source.needed.insert(source.needed.end(), named.begin(), named.end());
    return {};
}

}  // namespace

std::expected<DeckSource, std::string> DeckSource::find(const Options& options) {
    for (const auto& folder : {options.art, options.icons})
        if (const auto checked = checkFolder(folder); !checked) return std::unexpected(checked.error());
    auto source = options.deck ? storedDeck(options) : newDeck(options);
    if (!source) return source;
    if (const auto applied = applyOptions(options, *source); !applied) return std::unexpected(applied.error());
    return source;
}

std::expected<Library, std::string> libraryOf(const Options& options) {
    if (const auto checked = checkFolder(options.library); !checked) return std::unexpected(checked.error());
    return Library{options.library ? *options.library : Platform::applicationSupport()};
}

std::expected<CardTemplate, std::string> readTemplate(const Options& options, std::string_view gameName) {
    if (!options.template_)
        return SampleTemplates::make(options.kind.value_or(SampleTemplates::Kind::classic), gameName);
    const auto text = readJSONFile(*options.template_);
    if (!text) return std::unexpected(text.error());
    auto design = templateFromFileText(*text);
    if (!design) return notReadable(*options.template_, "isn’t a Quorvel template", design.error());
    return std::move(*design);
}

std::expected<SheetSettings, std::string> readSettings(const Options& options, SheetSettings settings) {
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

std::vector<fs::path> filesRead(const Options& options) {
    std::vector<fs::path> files;
    // The operand of the sample is what it writes.
    if (options.command != Command::sample && !options.input.empty()) files.push_back(options.input);
    for (const auto& each : {options.template_, options.settings, options.art, options.icons})
        if (each) files.push_back(*each);
    return files;
}

}  // namespace quorvel::CommandLine
