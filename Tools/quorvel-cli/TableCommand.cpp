#include "Commands.h"
#include "DeckInput.h"
#include "Foundation/JSON.h"
#include "Spreadsheet/DataTableJSON.h"

namespace quorvel::CommandLine {

Result tableCommand(const Options& options) {
    const auto table = readTable(options);
    if (!table) return std::unexpected(table.error());
    return prettyJSON(toJSON(*table));
}

}  // namespace quorvel::CommandLine
