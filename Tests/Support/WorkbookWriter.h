#pragma once

#include "Support/ZipWriter.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::test {

/// A workbook in parts, as XML that needn't be sound. A part that isn't set is left out of the file.
struct WorkbookParts {
    struct Sheet {
        std::string name;
        std::string xml;
    };

    std::vector<Sheet> sheets{};
    std::optional<std::string> sharedStrings{};
    std::optional<std::string> styles{};
    std::optional<std::string> relationships{};
    std::optional<std::string> workbook{};  ///< instead of the list made from `sheets`
    std::string workbookProperties{};       ///< elements in front of that list
};

/// The members of the workbook; the sheets are "xl/worksheets/sheet1.xml" and so on.
ZipWriter workbookArchive(const WorkbookParts& parts, ZipWriter::Method method = ZipWriter::Method::deflated);
std::string workbookBytes(const WorkbookParts& parts, ZipWriter::Method method = ZipWriter::Method::deflated);

/// A workbook of one sheet called "Sheet1" with what stands in its `sheetData`.
std::string workbookBytes(std::string_view sheetData, const WorkbookParts& others = {});

std::string worksheetXML(std::string_view sheetData);
std::string sharedStringsXML(const std::vector<std::string>& items);  ///< each item is XML inside `si`

/// Cell styles 0, 1 and so on that show these format codes.
std::string stylesXML(const std::vector<std::string>& codes);
/// Cell styles 0, 1 and so on with these built-in formats.
std::string builtInStylesXML(const std::vector<int>& ids);

std::string escapedXML(std::string_view text);

}  // namespace quorvel::test
