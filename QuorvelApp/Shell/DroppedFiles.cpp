#include "Shell/DroppedFiles.h"

#include "Foundation/Text.h"
#include "Spreadsheet/DataLoader.h"

#include <QMimeData>
#include <QUrl>
#include <algorithm>

namespace quorvel::DroppedFiles {

std::vector<std::filesystem::path> of(const QMimeData& data) {
    std::vector<std::filesystem::path> files;
    const QList<QUrl> urls = data.urls();
    for (const QUrl& url : urls)
        if (url.isLocalFile()) files.push_back(url.toLocalFile().toStdU16String());
    return files;
}

std::optional<std::filesystem::path> spreadsheet(const std::vector<std::filesystem::path>& files) {
    const auto found = std::ranges::find_if(files, [](const std::filesystem::path& file) {
        const std::string extension = Text::lowercasedExtension(file.string());
        return extension == "numbers" || std::ranges::count(DataLoader::spreadsheetExtensions, extension) > 0;
    });
    return found == files.end() ? std::nullopt : std::optional(*found);
}

}  // namespace quorvel::DroppedFiles
