#pragma once

#include <filesystem>
#include <optional>
#include <vector>

class QMimeData;

/// Which of the files that are dropped on the window it takes.
namespace quorvel::DroppedFiles {

/// The files on this machine, in their order.
std::vector<std::filesystem::path> of(const QMimeData& data);

/// The first with the extension of a spreadsheet, in any case. A Numbers file is one, so that its loading can say how
/// to get a file that can be read.
std::optional<std::filesystem::path> spreadsheet(const std::vector<std::filesystem::path>& files);

}  // namespace quorvel::DroppedFiles
