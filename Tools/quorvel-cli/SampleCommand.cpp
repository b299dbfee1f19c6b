#include "Commands.h"
#include "Foundation/AtomicFile.h"
#include "Interruption.h"
#include "OutputFolder.h"
#include "Samples/SampleDeck.h"
#include "Templates/TemplateJSON.h"
#include "Wording.h"

#include <cstdint>

namespace quorvel::CommandLine {
namespace {

/// Ids in order of place instead of random ones, so that the same command writes the same file. They have to be unique
/// within one design only.
class PlainIDs {
public:
    UUID next() {
        UUID id;
        id.bytes[6] = 0x40;
        id.bytes[8] = 0x80;
        ++count_;
        id.bytes[14] = std::uint8_t(count_ >> 8);
        id.bytes[15] = std::uint8_t(count_);
        return id;
    }

private:
    unsigned count_ = 0;
};

CardTemplate withPlainIDs(CardTemplate design) {
    PlainIDs ids;
    design.id = ids.next();
    for (auto* layers : {&design.front, &design.back})
        for (Layer& layer : *layers) {
            layer.id = ids.next();
            for (StyleRule& rule : layer.rules) rule.id = ids.next();
        }
    return design;
}

}  // namespace

Result sampleCommand(const Options& options) {
    auto folder = OutputFolder::make(options.input, options.existing, {});
    if (!folder) return std::unexpected(folder.error());
    {
        const auto writing = Interruption::postpone();
        auto written = SampleDeck::write(folder->path());
        if (written) {
            const CardTemplate design =
                SampleTemplates::make(options.kind.value_or(SampleTemplates::Kind::classic), SampleDeck::name);
            written = AtomicFile::write(folder->path() / "template.json", templateFileText(withPlainIDs(design)));
        }
        if (!written) return std::unexpected(written.error().description());
    }
    OwnFiles own;
    if (const auto finished = folder->finish(own); !finished) return std::unexpected(finished.error());
    return "Saved the sample deck to " + quotedName(options.input) + ".\n";
}

}  // namespace quorvel::CommandLine
