#include "Spreadsheet/CSV.h"

#include "Foundation/Text.h"
#include "Foundation/TextEncoding.h"

#include <algorithm>
#include <utility>

namespace quorvel::CSV {

namespace {

using TextEncoding::ByteOrder;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string decodeUTF16(std::string_view bytes, ByteOrder order) {
    std::string text = TextEncoding::fromUTF16(bytes, order).value_or(std::string());
    std::size_t marks = 0;
    while (std::string_view(text).substr(marks).starts_with(byteOrderMark)) marks += byteOrderMark.size();
    text.erase(0, marks);
    return text;
}

bool needsQuotes(std::string_view cell) {
    return cell.find_first_of(",\"\r\n") != std::string_view::npos;
}

bool isBadScalar(char32_t scalar) {
    if (scalar < 0x20) return scalar != '\t' && scalar != '\n' && scalar != '\r';
    return (scalar >= 0x7F && scalar <= 0x9F) || scalar == 0xFFFD;
}

}  // namespace

std::string_view decode(std::string_view bytes, std::string& storage) {
    if (bytes.starts_with("\xFF\xFE")) return storage = decodeUTF16(bytes, ByteOrder::littleEndian);
    if (bytes.starts_with("\xFE\xFF")) return storage = decodeUTF16(bytes, ByteOrder::bigEndian);
    const bool marked = bytes.starts_with(byteOrderMark);
    if (marked) bytes.remove_prefix(byteOrderMark.size());
    if (TextEncoding::isValidUTF8(bytes)) return bytes;
    if (!marked) {
        if (auto text = TextEncoding::fromWindows1252(bytes)) return storage = std::move(*text);
    }
    return storage = TextEncoding::repairedUTF8(bytes);
}

std::string decode(std::string_view bytes) {
    std::string storage;
    const std::string_view text = decode(bytes, storage);
    return text.data() == storage.data() ? std::move(storage) : std::string(text);
}

char32_t detectDelimiter(std::string_view text) {
    std::size_t commas = 0;
    std::size_t tabs = 0;
    std::size_t semicolons = 0;
    bool inQuotes = false;
    for (const char c : text) {
        if (c == '"') {
            inQuotes = !inQuotes;
        } else if (!inQuotes) {
            if (c == '\n' || c == '\r') break;
            commas += c == ',';
            tabs += c == '\t';
            semicolons += c == ';';
        }
    }
    if (commas >= tabs && commas >= semicolons) return U',';
    return tabs >= semicolons ? U'\t' : U';';
}

bool looksLikeText(std::string_view text) {
    constexpr std::size_t mostScalars = 65'536;
    constexpr std::size_t goodPerBad = 50;
    std::size_t scalars = 0;
    std::size_t bad = 0;
    for (std::size_t offset = 0; offset < text.size() && scalars < mostScalars; ++scalars)
        bad += isBadScalar(Text::nextScalar(text, offset));
    return bad * goodPerBad <= scalars;
}

DataTable table(std::string_view bytes, std::string sourceName) {
    std::string storage;
    return {parse(decode(bytes, storage)), std::move(sourceName)};
}

std::string write(const TextRows& rows) {
    std::string result;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        for (std::size_t column = 0; column < rows.cellCount(row); ++column) {
            if (column > 0) result += ',';
            const std::string_view cell = rows.cell(row, column);
            if (needsQuotes(cell)) {
                result += '"';
                result += Text::replaceAll(cell, "\"", "\"\"");
                result += '"';
            } else {
                result += cell;
            }
        }
        result += '\n';
    }
    return result;
}

}  // namespace quorvel::CSV
