#include "Support/WorkbookWriter.h"

#include <utility>

namespace quorvel::test {

namespace {

constexpr std::string_view declaration = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";
constexpr std::string_view mainNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

std::string document(std::string_view element, std::string_view content) {
    std::string xml(declaration);
    xml += '<';
    xml += element;
    xml += " xmlns=\"";
    xml += mainNamespace;
    xml += R"(" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)";
    xml += content;
    xml += "</";
    xml += element;
    return xml += '>';
}

std::string sheetList(const WorkbookParts& parts) {
    std::string list = parts.workbookProperties + "<sheets>";
    for (std::size_t i = 1; i <= parts.sheets.size(); ++i) {
        const std::string number = std::to_string(i);
        list += "<sheet name=\"" + escapedXML(parts.sheets[i - 1].name) + "\" sheetId=\"" + number + "\" r:id=\"rId" +
                number + "\"/>";
    }
    return document("workbook", list + "</sheets>");
}

std::string stylesOf(std::string_view formats, const std::vector<int>& ids) {
    std::string xml(formats);
    xml += "<cellStyleXfs><xf numFmtId=\"9\"/></cellStyleXfs><cellXfs>";
    for (const int id : ids) xml += "<xf numFmtId=\"" + std::to_string(id) + "\"/>";
    return document("styleSheet", xml + "</cellXfs>");
}

}  // namespace

ZipWriter workbookArchive(const WorkbookParts& parts, ZipWriter::Method method) {
    ZipWriter archive;
    const auto add = [&](std::string path, std::string xml) { archive.add(std::move(path), std::move(xml), method); };
    add("[Content_Types].xml", "<Types/>");
    add("xl/workbook.xml", parts.workbook.value_or(sheetList(parts)));
    if (parts.relationships) add("xl/_rels/workbook.xml.rels", *parts.relationships);
    if (parts.sharedStrings) add("xl/sharedStrings.xml", *parts.sharedStrings);
    if (parts.styles) add("xl/styles.xml", *parts.styles);
    for (std::size_t i = 0; i < parts.sheets.size(); ++i)
        add("xl/worksheets/sheet" + std::to_string(i + 1) + ".xml", parts.sheets[i].xml);
    return archive;
}

std::string workbookBytes(const WorkbookParts& parts, ZipWriter::Method method) {
    return workbookArchive(parts, method).bytes();
}

std::string workbookBytes(std::string_view sheetData, const WorkbookParts& others) {
    WorkbookParts parts = others;
    parts.sheets = {{"Sheet1", worksheetXML(sheetData)}};
    return workbookBytes(parts);
}

std::string worksheetXML(std::string_view sheetData) {
    return document("worksheet", "<sheetData>" + std::string(sheetData) + "</sheetData>");
}

std::string sharedStringsXML(const std::vector<std::string>& items) {
    std::string xml;
    for (const std::string& item : items) xml += "<si>" + item + "</si>";
    return document("sst", xml);
}

std::string stylesXML(const std::vector<std::string>& codes) {
    std::string formats = "<numFmts>";
    std::vector<int> ids;
    for (const std::string& code : codes) {
        ids.push_back(164 + static_cast<int>(ids.size()));
        formats += "<numFmt numFmtId=\"" + std::to_string(ids.back()) + "\" formatCode=\"" + escapedXML(code) + "\"/>";
    }
    return stylesOf(formats + "</numFmts>", ids);
}

std::string builtInStylesXML(const std::vector<int>& ids) {
    return stylesOf("", ids);
}

std::string escapedXML(std::string_view text) {
    std::string xml;
    for (const char c : text) {
        switch (c) {
            case '&':
                xml += "&amp;";
                break;
            case '<':
                xml += "&lt;";
                break;
            case '>':
                xml += "&gt;";
                break;
            case '"':
                xml += "&quot;";
                break;
            default:
                xml += c;
        }
    }
    return xml;
}

}  // namespace quorvel::test
