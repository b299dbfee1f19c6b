#include "Commands.h"
#include "DeckInput.h"
#include "OutputFile.h"
#include "Printing/CalibrationPage.h"
#include "Printing/SheetLayout.h"
#include "Printing/SheetPDF.h"

namespace quorvel::CommandLine {

Result calibrationCommand(const Options& options) {
    if (const auto checked = checkOutputFile(options.output, filesRead(options)); !checked)
        return std::unexpected(checked.error());
    const auto settings = readSettings(options);
    if (!settings) return std::unexpected(settings.error());
    const auto design = readTemplate(options, "");
    if (!design) return std::unexpected(design.error());

    // The orientation of the print sheets; a card too big for the paper is no reason not to measure the printer.
    const auto layout = SheetLayout::make(*settings, design->size.widthMM, design->size.heightMM, design->bleedMM);
    const auto pdf = SheetPDF::calibrationPage(*settings, layout && layout->landscape);
    if (!pdf) return std::unexpected(std::string(SheetPDF::description(SheetPDF::Failure::couldNotWrite)));
    const auto written = fileSink(options.output)("", *pdf);
    if (!written) return std::unexpected(written.error().description());
    return "Saved the calibration page. Print it double-sided at 100%.\n";
}

}  // namespace quorvel::CommandLine
