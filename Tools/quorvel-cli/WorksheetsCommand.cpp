#include "Commands.h"
#include "Foundation/JSON.h"
#include "Spreadsheet/DataLoader.h"

namespace quorvel::CommandLine {

Result worksheetsCommand(const Options& options) {
    const auto loaded = DataLoader::load(options.input, 0);
    if (!loaded) return std::unexpected(loaded.error().description());
    // A worksheet that can't be read is no reason to keep back the names of the others.
    if (loaded->sheetNames.empty() && !loaded->result)
        return std::unexpected(DataLoader::description(loaded->result.error()));
    return prettyJSON(loaded->sheetNames);
}

}  // namespace quorvel::CommandLine
