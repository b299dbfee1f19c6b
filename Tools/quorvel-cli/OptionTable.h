#pragma once

#include "Options.h"

#include <expected>
#include <span>
#include <string>
#include <string_view>

/// The one table of commands and options, from which parsing, the help and the checks are made, so that they agree.
namespace quorvel::CommandLine {

struct CommandEntry {
    Command command;
    std::string_view name;
    std::string_view operand;    ///< what must follow, "FILE"; empty for none
    std::string_view output;     ///< what -o names, "OUT.pdf"; empty for a command without -o
    std::string_view proposed;   ///< behind a deck's name, of what is made without -o; empty where -o must be given
    std::string_view summary;    ///< one line
    std::string_view explained;  ///< some sentences for the command's own help
};

class CommandSet {
public:
    template <class... C>
    constexpr explicit CommandSet(C... commands) : bits_((0u | ... | (1u << unsigned(commands)))) {}
    constexpr bool contains(Command command) const { return (bits_ >> unsigned(command) & 1u) != 0; }

private:
    unsigned bits_;
};

struct OptionEntry {
    std::string_view name;       ///< "--kind"
    std::string_view shortName;  ///< "-o", or empty
    std::string_view argument;   ///< what its value is called, "FILE"; empty when it takes none
    CommandSet commands;         ///< those that take it
    std::string_view summary;

    /// Stores the value, "" for an option without one. Fails with what stands behind the option's name in a sentence:
    /// "takes classic, tarot or mini, and not “poker”".
    std::expected<void, std::string> (*read)(const std::string& value, Options& options);
};

std::span<const CommandEntry> commandTable();
std::span<const OptionEntry> optionTable();

const CommandEntry& entry(Command command);

/// Whether the command takes the option of this name, "--deck".
bool takes(const CommandEntry& command, std::string_view option);

}  // namespace quorvel::CommandLine
