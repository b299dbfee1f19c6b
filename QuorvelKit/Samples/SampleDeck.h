#pragma once

#include "Foundation/FileFailure.h"
#include "Spreadsheet/DataTable.h"

#include <expected>
#include <filesystem>
#include <string_view>

/// "Orchard Couriers", a small finished game.
namespace quorvel::SampleDeck {

inline constexpr std::string_view name = "Orchard Couriers";
inline constexpr std::string_view fileName = "Orchard Couriers.csv";

/// The header row and the fourteen cards.
TextRows rows();

/// The same as a spreadsheet that has been read.
DataTable table();

/// Writes the pictures into "art" below `folder`, which is made with its parents where it is missing, then the
/// spreadsheet, so that whoever sees the spreadsheet finds its pictures. Existing files of these names are replaced. A
/// picture that can't be painted is left out; a file that can't be written ends the work, and what was written stays.
std::expected<void, FileFailure> write(const std::filesystem::path& folder);

}  // namespace quorvel::SampleDeck
