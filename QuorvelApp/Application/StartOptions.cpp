#include "Application/StartOptions.h"

#include <string_view>
#include <system_error>

namespace quorvel {

namespace {

std::filesystem::path absolute(std::string_view argument) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(argument, error);
    return error ? std::filesystem::path(argument) : path;
}

}  // namespace

StartOptions StartOptions::parse(std::span<const char* const> arguments) {
    StartOptions options;
    bool onlyFiles = false;
    for (const std::string_view argument : arguments) {
        if (onlyFiles || !argument.starts_with('-')) {
            if (!argument.empty()) options.files.push_back(absolute(argument));
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--version") {
            options.kind = Kind::version;
            return options;
        } else if (argument == "--help" || argument == "-h") {
            options.kind = Kind::help;
            return options;
        } else if (options.kind == Kind::run) {
            options.kind = Kind::wrong;
            options.wrong = argument;
        }
    }
    return options;
}

bool StartOptions::isQuestion(std::span<const char* const> arguments) {
    const Kind kind = parse(arguments).kind;
    return kind == Kind::version || kind == Kind::help;
}

const char* StartOptions::help() {
    return "Usage: quorvel [FILE]\n"
           "Turns a spreadsheet into print-and-play cards.\n"
           "\n"
           "FILE is a spreadsheet (.csv, .tsv, .txt or .xlsx); it becomes that of the open deck, or of a new one, as "
           "if\n"
           "it had been dropped on the window. If Quorvel is running, it opens the file there.\n"
           "\n"
           "  --help     says this\n"
           "  --version  says which version this is\n"
           "\n"
           "quorvel-cli makes cards without a window: quorvel-cli --help.\n";
}

}  // namespace quorvel
