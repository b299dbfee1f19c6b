// ReadCorpus FILE...: what the readers make of each file, as one line of JSON: the sheets of workbooks, the members of
// archives, the rows of text. For compare.py, which knows what others make of them.

#include "Foundation/FileBytes.h"
#include "Foundation/JSON.h"
#include "Foundation/Text.h"
#include "Spreadsheet/CSV.h"
#include "Spreadsheet/XLSX.h"
#include "Spreadsheet/ZipReader.h"

#include <iostream>

using namespace quorvel;

namespace {

JSON rowsToJSON(const TextRows& rows) {
    JSON result = JSON::array();
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        JSON cells = JSON::array();
        for (std::size_t column = 0; column < rows.cellCount(row); ++column) cells.push_back(rows.cell(row, column));
        while (!cells.empty() && cells.back() == "") cells.erase(cells.size() - 1);
        result.push_back(std::move(cells));
    }
    return result;
}

JSON workbookToJSON(std::string_view bytes) {
    JSON result = JSON::object();
    const auto names = XLSX::sheetNames(bytes);
    if (!names) return {{"error", names.error().message}};
    result["sheets"] = JSON::array();
    for (std::size_t i = 0; i < names->size(); ++i) {
        const auto rows = XLSX::rows(bytes, static_cast<std::int64_t>(i));
        JSON sheet = {{"name", (*names)[i]}};
        if (rows) {
            sheet["rows"] = rowsToJSON(*rows);
        } else {
            sheet["error"] = rows.error().message;
        }
        result["sheets"].push_back(std::move(sheet));
    }
    return result;
}

JSON archiveToJSON(std::string_view bytes) {
    const auto entries = ZipReader::entries(bytes);
    if (!entries) return {{"error", entries.error().message}};
    JSON members = JSON::array();
    for (const auto& entry : *entries) {
        const auto content = ZipReader::read(entry, bytes);
        JSON member = {{"path", entry.path}, {"size", entry.size}, {"crc32", entry.crc32}};
        if (!content) member["error"] = content.error().message;
        members.push_back(std::move(member));
    }
    return {{"members", std::move(members)}};
}

JSON fileToJSON(const std::string& path, std::string_view bytes) {
    const std::string extension = Text::lowercasedExtension(path);
    if (extension == "zip") return archiveToJSON(bytes);
    if (extension == "csv") return {{"rows", rowsToJSON(CSV::parse(CSV::decode(bytes)))}};
    return workbookToJSON(bytes);
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const auto bytes = FileBytes::read(argv[i]);
        JSON line = bytes ? fileToJSON(argv[i], *bytes) : JSON{{"error", bytes.error().description()}};
        line["file"] = argv[i];
        std::cout << line.dump(-1, ' ', false, JSON::error_handler_t::replace) << '\n';
    }
}
