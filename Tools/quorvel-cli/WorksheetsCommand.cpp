#include "Commands.h"
#include "Foundation/FileBytes.h"
#include "Foundation/JSON.h"
#include "Spreadsheet/DataLoader.h"

namespace quorvel::CommandLine {

Result worksheetsCommand(const Options& options) {
    const auto bytes = FileBytes::read(options.input);
    if (!bytes) return std::unexpected(bytes.error().description());
    const std::string name = options.input.filename().string();
    // The names alone: no worksheet is parsed, however large, nor can one that is damaged keep them back.
    const std::vector<std::string> names = DataLoader::sheetNames(*bytes, name);
    if (names.empty())
        if (const auto table = DataLoader::table(*bytes, name, 0); !table)
            return std::unexpected(DataLoader::description(table.error()));
    return prettyJSON(names);
}

}  // namespace quorvel::CommandLine
