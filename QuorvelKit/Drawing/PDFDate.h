#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvel::PDFDate {

/// The moment that SOURCE_DATE_EPOCH names, as cairo takes it: "2023-11-14T22:13:20+00:00". Nothing when the variable
/// isn't set to a number of seconds up to the end of the year 9999.
std::optional<std::string> fromEnvironment();

/// Gives the date in the finished file the "D:" that the format asks for and cairo 1.16 leaves out. The length stays,
/// so that the file's table of offsets holds.
void complete(std::string& pdf);

}  // namespace quorvel::PDFDate
