#pragma once

#include "Templates/SheetSettings.h"

#include <optional>
#include <string>

namespace quorvel::SheetPDF {

/// The words of the calibration page.
struct CalibrationText {
    std::string frontTitle = "Duplex calibration: front";
    std::string backTitle = "Duplex calibration: back";
    std::string steps = defaultSteps();

    /// The four numbered lines.
    static std::string defaultSteps();
};

/// Two pages to be printed on both sides of one sheet: scales on the front, crosses on the back that stand on the
/// scales' centres when the back offset of `settings` is right. Nothing when the PDF can't be made.
std::optional<std::string> calibrationPage(const SheetSettings& settings, bool landscape,
                                           const CalibrationText& text = {});

}  // namespace quorvel::SheetPDF
