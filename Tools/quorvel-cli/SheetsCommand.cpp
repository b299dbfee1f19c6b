#include "Commands.h"
#include "DeckInput.h"
#include "OutputFile.h"
#include "Printing/ExportWork.h"
#include "ProgressBar.h"
#include "Wording.h"

namespace quorvel::CommandLine {

Result sheetsCommand(const Options& options) {
    if (const auto checked = checkOutputFile(options.output, filesRead(options)); !checked)
        return std::unexpected(checked.error());
    const auto settings = readSettings(options);
    if (!settings) return std::unexpected(settings.error());
    const auto input = DeckInput::readForExport(options);
    if (!input) return std::unexpected(input.error());

    std::expected<ExportWork::Outcome, ExportWork::Failure> outcome;
    {
        ProgressBar bar("Making the PDF…", options.talk);
        outcome = ExportWork::sheets(Deck::printedCards(input->deck.cards), input->renderer, *settings, input->name,
                                     options.output.filename().string(), fileSink(options.output), bar.function());
    }
    if (!outcome) return std::unexpected(ExportWork::description(outcome.error()));
    return "Saved " + std::to_string(outcome->count) + " pages to " + quotedName(options.output) + ".\n";
}

}  // namespace quorvel::CommandLine
