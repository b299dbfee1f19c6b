#include "OptionTable.h"

#include "Foundation/EnumText.h"
#include "Foundation/Text.h"
#include "Printing/ExportWork.h"
#include "Wording.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace quorvel::CommandLine {
namespace {

using enum Command;
using Read = std::expected<void, std::string>;

constexpr std::int64_t lowestDPI = 36;
constexpr std::int64_t highestDPI = 1200;

constexpr std::array commands{
    CommandEntry{sample, "sample", "FOLDER", "", "",
                 "write the sample deck: a spreadsheet, its pictures and a template",
                 "Writes “Orchard Couriers.csv”, the folder “art” with its pictures and “template.json” into FOLDER."},
    CommandEntry{sheets, "sheets", "FILE", "OUT.pdf", ExportWork::sheetsSuffix, "make print sheets as one PDF",
                 "Lays out the cards of the spreadsheet FILE, each as often as its quantity says, on sheets of paper. "
                 "The settings of paper and layout are those of a new deck unless --settings or --set change them."},
    CommandEntry{images, "images", "FILE", "FOLDER", ExportWork::imagesSuffix, "make a PNG image of each card",
                 "Makes a PNG of each card of the spreadsheet FILE and of its back, or a single back.png where all "
                 "cards share one back. Cards with quantity 0 are left out."},
    CommandEntry{tts, "tts", "FILE", "FOLDER", ExportWork::ttsSuffix, "make deck sheets for Tabletop Simulator",
                 "Makes deck sheets of 10 × 7 places from the spreadsheet FILE, the back, and a README.txt that says "
                 "how to load them."},
    CommandEntry{calibration, "calibration", "", "OUT.pdf", "", "make the page that measures a printer’s duplex offset",
                 "Makes two pages to be printed on both sides of one sheet. What they show is entered with --set "
                 "backOffsetXMM=… and --set backOffsetYMM=…. The paper and its orientation are those of the print "
                 "sheets made with the same options."},
    CommandEntry{table, "table", "FILE", "", "", "print the spreadsheet’s table as JSON",
                 "Prints the headers, rows and row numbers of the spreadsheet FILE as they were read."},
    CommandEntry{worksheets, "worksheets", "FILE", "", "", "print the names of a workbook’s worksheets as JSON",
                 "Prints the names of the worksheets of the workbook FILE in order; a text file has none. The first is "
                 "the one that --sheet 1 reads."},
    CommandEntry{cards, "cards", "FILE", "", "", "print the cards as JSON",
                 "Prints which column feeds which field, every card, the rows whose quantity isn’t a number, the "
                 "pictures that can’t be found, and the number of copies."},
    CommandEntry{decks, "decks", "", "", "", "list the decks of the application’s library",
                 "Prints one line for each deck, the oldest first: its id, its name and the path of its spreadsheet, "
                 "or “no spreadsheet”, with a tab between them."},
};

template <auto Member>
Read readPath(const std::string& value, Options& options) {
    if (value.empty()) return std::unexpected("needs a name behind it");
    options.*Member = std::filesystem::path(value);
    return {};
}

template <auto Member, auto value>
Read choose(const std::string&, Options& options) {
    options.*Member = value;
    return {};
}

/// A whole number from `lowest` to `highest`.
std::optional<std::int64_t> wholeNumber(const std::string& value, std::int64_t lowest, std::int64_t highest) {
    const auto number = Text::parseInteger(value);
    return number && *number >= lowest && *number <= highest ? number : std::nullopt;
}

Read readKind(const std::string& value, Options& options) {
    const auto kind = parseEnum<SampleTemplates::Kind>(value);
    if (!kind)
        return std::unexpected("takes " + enumeration(namesOf<SampleTemplates::Kind>(), "or") + ", and not “" + value +
                               "”");
    options.kind = *kind;
    return {};
}

Read readSheet(const std::string& value, Options& options) {
    const auto number = wholeNumber(value, 1, std::numeric_limits<std::int64_t>::max());
    if (!number) return std::unexpected("takes a whole number from 1, and not “" + value + "”");
    options.sheet = *number;
    return {};
}

Read readDPI(const std::string& value, Options& options) {
    const auto number = wholeNumber(value, lowestDPI, highestDPI);
    if (!number) return std::unexpected("takes a whole number from 36 to 1200, and not “" + value + "”");
    options.dpi = *number;
    return {};
}

Read readName(const std::string& value, Options& options) {
    options.name = value;
    return {};
}

Read readSetting(const std::string& value, Options& options) {
    auto assignment = parseSetting(value);
    if (!assignment) return std::unexpected(std::move(assignment.error()));
    options.assignments.push_back(std::move(*assignment));
    return {};
}

Read readDeck(const std::string& value, Options& options) {
    if (value.empty()) return std::unexpected("needs a name or an id behind it");
    options.deck = value;
    return {};
}

constexpr CommandSet folderWriters(sample, images, tts);
constexpr CommandSet exports(sheets, images, tts);

constexpr std::array options{
    OptionEntry{"--output", "-o", "OUT", CommandSet(sheets, images, tts, calibration),
                "what to make; the folder around it must be there", readPath<&Options::output>},
    OptionEntry{"--deck", "", "DECK", exports, "a deck of the library, by its name or its id", readDeck},
    OptionEntry{"--library", "", "FOLDER", CommandSet(sheets, images, tts, decks),
                "the application’s folder for data, if it isn’t the usual one", readPath<&Options::library>},
    OptionEntry{"--json", "", "", CommandSet(decks), "print the list as JSON",
                choose<&Options::listForm, ListForm::json>},
    OptionEntry{"--watch", "", "", exports,
                "export again after every save of the spreadsheet, until Ctrl-C; a save that can’t be used is told, "
                "and what was made before stays. In a folder, only the files of this run are replaced and removed",
                choose<&Options::repetition, Repetition::afterEachSave>},
    OptionEntry{"--replace", "", "", folderWriters,
                "put the new folder in the place of an old one, whose files are removed",
                choose<&Options::existing, Existing::replace>},
    OptionEntry{"--sheet", "", "N", CommandSet(sheets, images, tts, table, cards),
                "the worksheet of a workbook, counted from 1; 1 unless given", readSheet},
    OptionEntry{"--template", "", "FILE", CommandSet(sheets, images, tts, calibration, cards),
                "the card design, a template file", readPath<&Options::template_>},
    OptionEntry{"--kind", "", "KIND", CommandSet(sample, sheets, images, tts, calibration, cards),
                "the card design, one of those that come along: classic, tarot or mini; classic unless given",
                readKind},
    OptionEntry{"--name", "", "NAME", CommandSet(sheets, images, tts),
                "the game’s name, on the back of a design that comes along and in the PDF; the spreadsheet’s name "
                "unless given",
                readName},
    OptionEntry{"--art", "", "FOLDER", CommandSet(sheets, images, tts, cards),
                "where pictures are looked for first; the spreadsheet’s own folder comes last",
                readPath<&Options::art>},
    OptionEntry{"--icons", "", "FOLDER", CommandSet(sheets, images, tts),
                "pictures that take the place of icons: coin.png, leaf.png and so on", readPath<&Options::icons>},
    OptionEntry{"--settings", "", "FILE", CommandSet(sheets, calibration),
                "the settings of print sheets, a JSON object", readPath<&Options::settings>},
    OptionEntry{"--set", "", "KEY=VALUE", CommandSet(sheets, calibration),
                "one setting of print sheets, over those of --settings; may be given several times", readSetting},
    OptionEntry{"--dpi", "", "N", CommandSet(images), "dots per inch, a whole number from 36 to 1200; 300 unless given",
                readDPI},
    OptionEntry{"--bleed", "", "", CommandSet(images), "show the bleed around each card, as is the default",
                choose<&Options::bleed, true>},
    OptionEntry{"--no-bleed", "", "", CommandSet(images), "end each image at the card’s edge",
                choose<&Options::bleed, false>},
    OptionEntry{"--quiet", "", "", CommandSet(sample, sheets, images, tts, calibration), "say nothing but failures",
                choose<&Options::talk, Talk::quiet>},
};

}  // namespace

std::span<const CommandEntry> commandTable() {
    return commands;
}

std::span<const OptionEntry> optionTable() {
    return options;
}

bool takes(const CommandEntry& command, std::string_view option) {
    const auto found = std::ranges::find(options, option, &OptionEntry::name);
    return found != options.end() && found->commands.contains(command.command);
}

const CommandEntry& entry(Command command) {
    return *std::ranges::find(commands, command, &CommandEntry::command);
}

}  // namespace quorvel::CommandLine
