#include "Check.h"
#include "Foundation/Text.h"
#include "Foundation/TextEncoding.h"
#include "Spreadsheet/DataLoader.h"
#include "Spreadsheet/XLSX.h"
#include "Support/WorkbookWriter.h"

#include <string>
#include <string_view>

using namespace quorvel;

namespace {

void checkRows(const TextRows& rows) {
    CHECK(rows.rowCount() <= 100'000);
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        CHECK(rows.cellCount(row) == rows.cellCount(0) && rows.cellCount(row) <= 500);
    const DataTable table(rows, "fuzz.xlsx");
    CHECK(table.rows.rowCount() == table.rowNumbers.size());
}

std::string utf16(std::string_view text) {
    std::string bytes = "\xFF\xFE";
    const auto append = [&](char32_t unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    for (std::size_t i = 0; i < text.size();) {
        const char32_t scalar = Text::nextScalar(text, i);
        if (scalar < 0x10000) {
            append(scalar);
        } else {
            append(0xD800 + ((scalar - 0x10000) >> 10));
            append(0xDC00 + ((scalar - 0x10000) & 0x3FF));
        }
    }
    return bytes;
}

/// A workbook in which one part is as given; `kind` says which.
std::string workbookOf(char kind, std::string part) {
    test::WorkbookParts parts;
    parts.sharedStrings = test::sharedStringsXML({"<t>zero</t>", "<t> </t>", "<t/>", "<t>three</t>"});
    parts.styles = test::stylesXML({"General", "yyyy-mm-dd", "hh:mm", "0%", "000"});
    parts.relationships = "<R><Relationship Id='rId1' Target='worksheets/sheet1.xml'/></R>";
    parts.sheets = {
        {"Sheet", test::worksheetXML("<c r='B2' t='s'><v>3</v></c><c s='1'><v>45000</v></c><c s='4'><v>7</v></c>")}};
    switch (kind) {
        case 't':
            parts.sharedStrings = std::move(part);
            break;
        case 'y':
            parts.styles = std::move(part);
            break;
        case 'r':
            parts.relationships = std::move(part);
            break;
        case 'w':
            parts.workbook = std::move(part);
            break;
        default:
            parts.sheets.front().xml = std::move(part);
    }
    return test::workbookBytes(parts, test::ZipWriter::Method::stored);
}

}  // namespace

// A file that begins like an archive is taken as a whole; otherwise the first byte says which part the others are,
// since XML that is packed is hard to vary.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] == 'P') {
        const std::string_view bytes(reinterpret_cast<const char*>(data), size);
        const auto names = XLSX::sheetNames(bytes);
        const std::size_t count = names ? names->size() : 1;
        for (std::size_t i = 0; i < count && i < 3; ++i) {
            const auto rows = XLSX::rows(bytes, static_cast<std::int64_t>(i));
            if (rows) checkRows(*rows);
            if (!rows) CHECK(!rows.error().message.empty());
        }
        (void)DataLoader::table(bytes, "fuzz.xlsx", 0);
        return 0;
    }
    const char kind = static_cast<char>(data[0]);
    const auto rows = XLSX::rows(workbookOf(kind, std::string(rest)), 0);
    if (rows) checkRows(*rows);
    // In another encoding no cell goes past the parser, and all must be the same.
    if (!TextEncoding::isValidUTF8(rest) || rest.find("encoding") != std::string_view::npos ||
        rest.starts_with("\xEF\xBB\xBF"))
        return 0;
    const auto slow = XLSX::rows(workbookOf(kind, utf16(rest)), 0);
    CHECK(slow.has_value() == rows.has_value());
    if (rows) CHECK(*slow == *rows);
    return 0;
}
