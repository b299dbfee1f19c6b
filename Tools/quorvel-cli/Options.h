#pragma once

#include "Samples/SampleTemplates.h"
#include "SettingAssignment.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvel::CommandLine {

enum class Command { sample, sheets, images, tts, calibration, table, worksheets, cards, decks };

enum class Existing { keep, replace };
enum class Talk { normal, quiet };
enum class Repetition { once, afterEachSave };
enum class ListForm { lines, json };

/// What the command line asks for. Which fields a command reads follows from the options it takes. What isn't given is
/// that of the stored deck, where one is named, or else of a new one.
struct Options {
    Command command = Command::sheets;
    std::filesystem::path input;                   ///< FILE; of `sample` the FOLDER
    std::optional<std::string> deck;               ///< the name or id of a stored one, instead of FILE
    std::optional<std::filesystem::path> library;  ///< the folder that stored decks are in, if not the usual one
    std::filesystem::path output;                  ///< of -o; empty for the name that the application proposes
    std::optional<std::int64_t> sheet;             ///< counted from 1
    std::optional<std::filesystem::path> template_;
    std::optional<SampleTemplates::Kind> kind;
    std::optional<std::string> name;
    std::optional<std::filesystem::path> art;
    std::optional<std::filesystem::path> icons;
    std::optional<std::filesystem::path> settings;
    std::vector<SettingAssignment> assignments;  ///< of --set, in order
    std::optional<std::int64_t> dpi;
    std::optional<bool> bleed;
    Existing existing = Existing::keep;
    Repetition repetition = Repetition::once;
    ListForm listForm = ListForm::lines;
    Talk talk = Talk::normal;
};

/// A question about the program itself instead of work.
struct HelpRequest {
    std::optional<Command> command;
};
struct VersionRequest {};

/// Why the command line can't be followed.
struct UsageFailure {
    std::string sentence;
    std::optional<Command> command;  ///< whose help explains it
};

using Request = std::variant<Options, HelpRequest, VersionRequest, UsageFailure>;

/// Reads the arguments behind the program's name. "--option VALUE" and "--option=VALUE" are the same; of an option
/// given twice the later counts, but --set adds up; "--" ends the options. A question for help is answered wherever it
/// stands.
Request parse(const std::vector<std::string>& arguments);

}  // namespace quorvel::CommandLine
