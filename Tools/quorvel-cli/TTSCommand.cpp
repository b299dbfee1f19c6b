#include "Commands.h"
#include "FolderExport.h"

namespace quorvel::CommandLine {

Result ttsExport(const Options& options, const DeckSource& source, OwnFiles& own) {
    const auto work = [](const DeckInput& input, const ExportWork::Sink& sink, const ExportWork::Progress& progress) {
        return ExportWork::tts(Deck::printedCards(input.deck->cards), input.renderer, sink, progress);
    };
    return runFolderExport(options, source, own, {std::string(ExportWork::ttsBusyText), work});
}

}  // namespace quorvel::CommandLine
