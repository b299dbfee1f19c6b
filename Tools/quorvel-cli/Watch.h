#pragma once

#include "Commands.h"

namespace quorvel::CommandLine {

/// Exports, and exports again after every save of the spreadsheet, until a signal ends the program with exit code 0.
/// Each export prints a line, each that fails the sentence of its failure on standard error, with the time of day in
/// front; what was made before then stays. Returns only with a failure: when the first export fails, or when nothing
/// can be printed any more.
Result watch(const Options& options, Export make);

}  // namespace quorvel::CommandLine
