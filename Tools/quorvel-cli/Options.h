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

enum class Command { sample, sheets, images, tts, calibration, table, worksheets, cards };

enum class Existing { keep, replace };
enum class Talk { normal, quiet };

/// What the command line asks for. Which fields a command reads follows from the options it takes; the others keep
/// their defaults, which are those of a new deck.
struct Options {
    Command command = Command::sheets;
    std::filesystem::path input;   ///< FILE; of `sample` the FOLDER
    std::filesystem::path output;  ///< of -o
    std::int64_t sheet = 1;        ///< counted from 1
    std::optional<std::filesystem::path> template_;
    SampleTemplates::Kind kind = SampleTemplates::Kind::classic;
    std::optional<std::string> name;
    std::optional<std::filesystem::path> art;
    std::optional<std::filesystem::path> icons;
    std::optional<std::filesystem::path> settings;
    std::vector<SettingAssignment> assignments;  ///< of --set, in order
    double dpi = 300;
    bool bleed = true;
    Existing existing = Existing::keep;
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
