#pragma once

#include "Desktop/Desktop.h"

#include <QString>
#include <filesystem>
#include <optional>

class QWidget;

/// The panels as dialogs: the system's own where it has some.
namespace quorvel::FilePanels {

using Path = std::filesystem::path;

/// Each shows a modal dialog for `window`, which may be null, and answers nothing when it is cancelled. It opens at
/// `folder` unless the panel says where.
std::optional<Path> chooseFile(const OpenPanel& panel, const Path& folder, QWidget* window);
std::optional<Path> chooseFolder(const FolderPanel& panel, const Path& folder, QWidget* window);
std::optional<Path> chooseSaveFile(const SavePanel& panel, const Path& folder, QWidget* window);

/// "Excel workbook (*.xlsx *.XLSX)": what a dialog's filter says. File names here tell capitals apart.
QString filter(const FileType& type);

/// The path with the type's first extension added, unless it ends with one of them already, in any case.
Path withExtension(const Path& path, const FileType& type);

}  // namespace quorvel::FilePanels
