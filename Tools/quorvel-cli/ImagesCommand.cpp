#include "Commands.h"
#include "FolderExport.h"

namespace quorvel::CommandLine {

Result imagesExport(const Options& options, const DeckSource& source, OwnFiles& own) {
    const auto work = [](const DeckInput& input, const ExportWork::Sink& sink, const ExportWork::Progress& progress) {
        const auto printed = Deck::printedCards(input.deck->cards);
        const ExportWork::ImageSettings settings{.bleed = input.project.imageBleed,
                                                 .dpi = double(input.project.imageDPI)};
        return ExportWork::images(Deck::uniquePrintedCards(printed), input.renderer, settings, sink, progress);
    };
    return runFolderExport(options, source, own, {std::string(ExportWork::imagesBusyText), work});
}

}  // namespace quorvel::CommandLine
