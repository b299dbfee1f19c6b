#include "Commands.h"
#include "DeckInput.h"
#include "OutputFile.h"
#include "Printing/ExportWork.h"
#include "ProgressBar.h"

namespace quorvel::CommandLine {

Result sheetsExport(const Options& options, const DeckSource& source, OwnFiles&) {
    if (const auto checked = checkOutputFile(options.output, source.needed); !checked)
        return std::unexpected(checked.error());
    const auto input = DeckInput::readForExport(options, source);
    if (!input) return std::unexpected(input.error());

    std::expected<ExportWork::Outcome, ExportWork::Failure> outcome;
    {
        ProgressBar bar(std::string(ExportWork::sheetsBusyText), options.talk);
        outcome = ExportWork::sheets(Deck::printedCards(input->deck->cards), input->renderer, input->project.sheet,
                                     input->project.name, options.output.filename().string(), fileSink(options.output),
                                     bar.function());
    }
    if (!outcome) return std::unexpected(ExportWork::description(outcome.error()));
    return ExportWork::notice(*outcome, options.output);
}

}  // namespace quorvel::CommandLine
