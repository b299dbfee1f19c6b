#pragma once

#include "Templates/SheetSettings.h"

#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::CommandLine {

/// A checked `key=value` of --set, ready to be applied.
using SettingAssignment = std::function<void(SheetSettings&)>;

/// Reads "paper=a4", "cutMarks=false", "marginMM=5" and the like, for every key of SheetSettings by its name in JSON.
/// Fails with what stands behind “--set” in a sentence and names the choices.
std::expected<SettingAssignment, std::string> parseSetting(std::string_view assignment);

/// Each key with its choices, one a line, "paper: letter or a4", for the help.
std::vector<std::string> settingLines();

}  // namespace quorvel::CommandLine
