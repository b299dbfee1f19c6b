#include "Commands.h"
#include "FolderExport.h"

namespace quorvel::CommandLine {

Result imagesCommand(const Options& options) {
    const auto work = [&](const DeckInput& input, const ExportWork::Sink& sink, const ExportWork::Progress& progress) {
        const auto printed = Deck::printedCards(input.deck.cards);
        const ExportWork::ImageSettings settings{.bleed = options.bleed, .dpi = options.dpi};
        return ExportWork::images(Deck::uniquePrintedCards(printed), input.renderer, settings, sink, progress);
    };
    return runFolderExport(options, {"Saving card images…", "card images", work});
}

}  // namespace quorvel::CommandLine
