#include "Commands.h"
#include "Help.h"
#include "Interruption.h"
#include "OptionTable.h"
#include "StandardOutput.h"
#include "Wording.h"

#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

namespace quorvel::CommandLine {
namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

int tell(const std::string& sentence) {
    std::cerr << sentence << '\n';
    return failed;
}

int print(const std::string& text) {
    const auto printed = StandardOutput::print(text);
    return printed ? 0 : tell(printed.error());
}

Result run(const Options& options) {
    switch (options.command) {
        case Command::sample:
            return sampleCommand(options);
        case Command::sheets:
            return exportCommand(options, sheetsExport);
        case Command::images:
            return exportCommand(options, imagesExport);
        case Command::tts:
            return exportCommand(options, ttsExport);
        case Command::calibration:
            return calibrationCommand(options);
        case Command::table:
            return tableCommand(options);
        case Command::worksheets:
            return worksheetsCommand(options);
        case Command::cards:
            return cardsCommand(options);
        case Command::decks:
            return decksCommand(options);
    }
    return {};
}

int answer(const Options& options) {
    const Result result = run(options);
    if (!result) return tell(result.error());
    return options.talk == Talk::quiet ? 0 : print(*result);
}

int answer(const HelpRequest& request) {
    return print(help(request.command));
}

int answer(const VersionRequest&) {
    return print("quorvel-cli " QUORVEL_VERSION "\n");
}

int answer(const UsageFailure& failure) {
    const std::string command = failure.command ? std::string(entry(*failure.command).name) + " " : "";
    tell(failure.sentence + "\n“quorvel-cli " + command + "--help” tells more.");
    return wrongUsage;
}

int runProgram(const std::vector<std::string>& arguments) {
    try {
        return std::visit([](const auto& request) { return answer(request); }, parse(arguments));
    } catch (const std::exception&) {
        return tell(unforeseen());
    }
}

}  // namespace
}  // namespace quorvel::CommandLine

int main(int count, char** arguments) {
    using namespace quorvel::CommandLine;
    // Writing that can't go on is told by its error, not by a death that leaves things behind.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    StandardOutput::holdPlaces();
    Interruption::watch();
    return runProgram({arguments + std::min(count, 1), arguments + count});
}
