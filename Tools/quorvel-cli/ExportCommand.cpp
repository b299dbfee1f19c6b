#include "Commands.h"
#include "OptionTable.h"
#include "Printing/ExportWork.h"
#include "Watch.h"

namespace quorvel::CommandLine {
namespace {

/// The options with what they leave open decided: the place of the output, and which deck a name means, so that neither
/// a new name nor a second deck of that name leads the run elsewhere.
Options settled(Options options, const DeckSource& source) {
    if (options.output.empty())
        options.output = ExportWork::proposedName(source.project.name, entry(options.command).proposed);
    if (options.deck) options.deck = source.project.id.text();
    return options;
}

}  // namespace

Result exportCommand(const Options& options, Export make) {
    const auto source = DeckSource::find(options);
    if (!source) return std::unexpected(source.error());
    if (options.repetition == Repetition::afterEachSave) return watch(settled(options, *source), make);
    OwnFiles own;
    const auto notice = make(settled(options, *source), *source, own);
    return notice ? Result(*notice + "\n") : notice;
}

}  // namespace quorvel::CommandLine
