#include "Help.h"

#include "Foundation/Text.h"
#include "OptionTable.h"

#include <algorithm>
#include <string_view>

namespace quorvel::CommandLine {
namespace {

constexpr std::size_t textWidth = 79;
constexpr std::size_t nameColumn = 2;

std::size_t widthOf(std::string_view text) {
    return Text::characters(text).size();
}

/// `text` broken into lines of at most textWidth; every line but the first begins with `indent` blanks, and the first
/// stands behind `indent` characters that are there already.
std::string wrapped(std::string_view text, std::size_t indent) {
    std::string lines;
    std::size_t column = indent;
    bool lineEmpty = true;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (!lineEmpty && column + 1 + widthOf(word) > textWidth) {
            lines += "\n" + std::string(indent, ' ');
            column = indent;
            lineEmpty = true;
        }
        if (!lineEmpty) lines += ' ', ++column;
        lines += word;
        column += widthOf(word);
        lineEmpty = false;
    }
    return lines + "\n";
}

/// A name and what it means, in two columns.
std::string row(std::string_view name, std::string_view meaning, std::size_t meaningColumn) {
    std::string line = std::string(nameColumn, ' ') + std::string(name);
    const std::size_t used = nameColumn + widthOf(name);
    line += used + 2 > meaningColumn ? "\n" + std::string(meaningColumn, ' ') : std::string(meaningColumn - used, ' ');
    return line + wrapped(meaning, meaningColumn);
}

std::string synopsis(const CommandEntry& command) {
    std::string line = "quorvel-cli " + std::string(command.name);
    if (!command.operand.empty()) line += " " + std::string(command.operand);
    if (!command.output.empty()) line += " -o " + std::string(command.output);
    return line;
}

/// How the command is called, and how on a stored deck.
std::string usage(const CommandEntry& command) {
    std::string lines = "Usage: " + synopsis(command) + " [OPTION…]\n";
    if (takes(command, "--deck"))
        lines += "       quorvel-cli " + std::string(command.name) + " --deck DECK [OPTION…]\n";
    return lines + "\n";
}

/// What --deck means for a command that takes it.
std::string storedDecks(const CommandEntry& command) {
    if (!takes(command, "--deck")) return "";
    return "\n" + wrapped(
                      "With --deck a deck of the application’s library stands in the place of FILE: its spreadsheet, "
                      "design, settings and folders are used wherever an option doesn’t say otherwise, and "
                      "without -o the output is “DECK" +
                          std::string(command.proposed) + "” in the current folder. The library is only read.",
                      0);
}

std::string programHelp() {
    std::string text = "Turns a spreadsheet of cards into print sheets, images and deck sheets.\n\nCommands:\n";
    for (const CommandEntry& command : commandTable())
        text += row(synopsis(command).substr(std::string_view("quorvel-cli ").size()), command.summary, 30);
    text += "\nFILE is a spreadsheet, an Excel workbook, CSV or TSV, one row for each card.\n";
    text += "The exports take a deck of the library in its place, with --deck.\n";
    text += "\n“quorvel-cli COMMAND --help” tells of a command’s options.\n";
    text += "“quorvel-cli --version” prints the version.\n";
    return text;
}

std::string optionName(const OptionEntry& option, const CommandEntry& command) {
    std::string name;
    if (!option.shortName.empty()) name = std::string(option.shortName) + ", ";
    name += option.name;
    const bool isOutput = option.argument == "OUT";
    if (!option.argument.empty()) name += " " + std::string(isOutput ? command.output : option.argument);
    return name;
}

std::string commandHelp(const CommandEntry& command) {
    std::string text = usage(command) + wrapped(command.explained, 0) + storedDecks(command) + "\nOptions:\n";
    bool hasSettings = false;
    for (const OptionEntry& option : optionTable()) {
        if (!option.commands.contains(command.command)) continue;
        text += row(optionName(option, command), option.summary, 24);
        hasSettings = hasSettings || option.name == "--set";
    }
    text += row("-h, --help", "print this text", 24);
    if (hasSettings) {
        text += "\nSettings of print sheets:\n";
        for (const std::string& line : settingLines()) text += "  " + line + "\n";
    }
    return text;
}

}  // namespace

std::string help(std::optional<Command> command) {
    return command ? commandHelp(entry(*command)) : programHelp();
}

}  // namespace quorvel::CommandLine
