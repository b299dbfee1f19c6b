#include "Commands.h"
#include "DeckSource.h"
#include "OutputFile.h"
#include "Printing/ExportWork.h"

namespace quorvel::CommandLine {

Result calibrationCommand(const Options& options) {
    if (const auto checked = checkOutputFile(options.output, filesRead(options)); !checked)
        return std::unexpected(checked.error());
    const auto settings = readSettings(options);
    if (!settings) return std::unexpected(settings.error());
    const auto design = readTemplate(options, "");
    if (!design) return std::unexpected(design.error());

    const auto saved =
        ExportWork::calibrationPage(*design, *settings, options.output.filename().string(), fileSink(options.output));
    if (!saved) return std::unexpected(ExportWork::description(saved.error()));
    return std::string(ExportWork::calibrationNotice) + "\n";
}

}  // namespace quorvel::CommandLine
