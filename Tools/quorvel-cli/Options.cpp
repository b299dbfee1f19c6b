#include "Options.h"

#include "OptionTable.h"
#include "Wording.h"

#include <algorithm>
#include <iterator>

namespace quorvel::CommandLine {
namespace {

bool isHelp(std::string_view argument) {
    return argument == "--help" || argument == "-h";
}

const CommandEntry* findCommand(std::string_view name) {
    const auto table = commandTable();
    const auto found = std::ranges::find(table, name, &CommandEntry::name);
    return found == table.end() ? nullptr : &*found;
}

const OptionEntry* findOption(std::string_view name) {
    for (const OptionEntry& option : optionTable())
        if (option.name == name || (!option.shortName.empty() && option.shortName == name)) return &option;
    return nullptr;
}

UsageFailure noCommand(std::string_view instead) {
    std::vector<std::string_view> names;
    for (const CommandEntry& each : commandTable()) names.push_back(each.name);
    const std::string known = "the commands are " + enumeration(names, "and") + ".";
    if (instead.empty()) return {"A command is missing; " + known, {}};
    return {"There is no command “" + std::string(instead) + "”; " + known, {}};
}

/// Reads the arguments behind the command's name into options.
class CommandParser {
public:
    CommandParser(const CommandEntry& command, std::vector<std::string> arguments)
        : command_(command), arguments_(std::move(arguments)) {
        options_.command = command.command;
    }

    Request parse() {
        bool optionsEnded = false;
        for (next_ = 0; next_ < arguments_.size() && failure_.empty();) {
            const std::string& argument = arguments_[next_++];
            if (!optionsEnded && argument == "--")
                optionsEnded = true;
            else if (!optionsEnded && argument.size() > 1 && argument.front() == '-')
                readOption(argument);
            else
                readOperand(argument);
        }
        if (failure_.empty()) checkWhole();
        if (!failure_.empty()) return UsageFailure{failure_, command_.command};
        return std::move(options_);
    }

private:
    void readOption(const std::string& argument) {
        const auto equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const std::string name = argument.substr(0, equals);
        const OptionEntry* option = findOption(name);
        if (!option) return fail("There is no option “" + name + "”.");
        if (!option->commands.contains(command_.command))
            return fail("“" + std::string(command_.name) + "” takes no " + name + ".");

        std::string value;
        if (option->argument.empty()) {
            if (equals != std::string::npos) return fail(name + " takes no value.");
        } else if (equals != std::string::npos) {
            value = argument.substr(equals + 1);
        } else if (next_ < arguments_.size()) {
            value = arguments_[next_++];
        } else {
            return fail(name + " needs " + std::string(option->argument) + " behind it.");
        }
        if (const auto read = option->read(value, options_); !read) return fail(name + " " + read.error() + ".");
        given_.push_back(option);
    }

    void readOperand(const std::string& argument) {
        if (argument.empty()) return fail("A file or folder can’t have an empty name.");
        if (command_.operand.empty() || !options_.input.empty())
            return fail("“" + argument + "” is one argument too many.");
        options_.input = argument;
    }

    void checkWhole() {
        const std::string name = "“" + std::string(command_.name) + "”";
        if (options_.deck && !options_.input.empty()) return fail("Give either a FILE or --deck.");
        if (!command_.operand.empty() && options_.input.empty() && !options_.deck)
            return fail(name + " needs a " + std::string(command_.operand) +
                        (takes(command_, "--deck") ? " or --deck." : "."));
        if (takes(command_, "--deck") && options_.library && !options_.deck) return fail("--library goes with --deck.");
        if (!command_.output.empty() && options_.output.empty() && !options_.deck)
            return fail(name + " needs -o " + std::string(command_.output) + ".");
        if (wasGiven("--template") && wasGiven("--kind")) return fail("Give either --template or --kind.");
    }

    bool wasGiven(std::string_view name) const {
        return std::ranges::find(given_, name, &OptionEntry::name) != given_.end();
    }

    void fail(std::string sentence) { failure_ = std::move(sentence); }

    const CommandEntry& command_;
    std::vector<std::string> arguments_;
    std::size_t next_ = 0;
    Options options_;
    std::vector<const OptionEntry*> given_;
    std::string failure_;
};

}  // namespace

Request parse(const std::vector<std::string>& arguments) {
    if (arguments.empty()) return noCommand("");
    const CommandEntry* command = findCommand(arguments.front());

    const auto optionsEnd = std::ranges::find(arguments, "--");
    if (std::any_of(arguments.begin(), optionsEnd, isHelp))
        return HelpRequest{command ? std::optional(command->command) : std::nullopt};
    if (!command && arguments.front() == "--version" && arguments.size() == 1) return VersionRequest{};
    if (!command) return noCommand(arguments.front());
    return CommandParser(*command, {std::next(arguments.begin()), arguments.end()}).parse();
}

}  // namespace quorvel::CommandLine
