#pragma once

#include "Options.h"

#include <optional>
#include <string>

namespace quorvel::CommandLine {

/// The text of --help: of the program, or of one command.
std::string help(std::optional<Command> command);

}  // namespace quorvel::CommandLine
