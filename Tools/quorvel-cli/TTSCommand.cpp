#include "Commands.h"
#include "FolderExport.h"

namespace quorvel::CommandLine {

Result ttsCommand(const Options& options) {
    const auto work = [](const DeckInput& input, const ExportWork::Sink& sink, const ExportWork::Progress& progress) {
        return ExportWork::tts(Deck::printedCards(input.deck.cards), input.renderer, sink, progress);
    };
    return runFolderExport(options, {"Saving deck sheets…", "deck sheets", work});
}

}  // namespace quorvel::CommandLine
