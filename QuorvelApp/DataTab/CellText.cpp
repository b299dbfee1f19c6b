#include "DataTab/CellText.h"

#include "Controls/Wording.h"
#include "DataTab/DataTableModel.h"

#include <QTextDocument>
#include <algorithm>
#include <vector>

namespace quorvel::CellText {
namespace {

constexpr std::size_t longestToolTip = 2000;  // bytes

/// The first bytes, without half a scalar at the end.
std::string_view start(std::string_view utf8, std::size_t length) {
    if (utf8.size() <= length) return utf8;
    while (length > 0 && (static_cast<unsigned char>(utf8[length]) & 0xC0) == 0x80) --length;
    return utf8.substr(0, length);
}

void append(std::string& result, std::string_view cell, bool isAlone) {
    const bool isPlain = cell.find_first_of("\t\n\r") == std::string_view::npos && !cell.starts_with('"');
    if (isAlone || isPlain) {
        result += cell;
        return;
    }
    result += '"';
    for (const char each : cell) {
        if (each == '"') result += '"';
        result += each;
    }
    result += '"';
}

}  // namespace

QString oneLine(std::string_view cell) {
    // A unit of UTF-16 takes at most three bytes.
    const std::string_view head = start(cell, std::size_t(longestLine) * 3);
    QString line = text(head);
    bool isCut = head.size() < cell.size();
    if (line.size() > longestLine) {
        isCut = true;
        line.truncate(line[longestLine - 1].isHighSurrogate() ? longestLine - 1 : longestLine);
    }
    for (QChar& each : line) {
        const bool isLineEnd = each == QChar::LineSeparator || each == QChar::ParagraphSeparator;
        if (each.category() == QChar::Other_Control || isLineEnd) each = u' ';
    }
    if (isCut) line += u'…';
    return line;
}

QString toolTip(std::string_view cell) {
    const std::string_view head = start(cell, longestToolTip);
    QString whole = text(head);
    if (head.size() < cell.size()) whole += u'…';
    return Qt::convertFromPlainText(whole, Qt::WhiteSpaceNormal);
}

std::string copied(const DataTable& table, const QItemSelection& selection) {
    const int rowCount = int(table.rows.rowCount());
    const int columnCount = int(table.headers.size()) + 1;
    std::vector<bool> rows(std::size_t(rowCount), false);
    std::vector<bool> columns(std::size_t(columnCount), false);
    for (const QItemSelectionRange& range : selection) {
        for (int row = std::max(0, range.top()); row <= std::min(range.bottom(), rowCount - 1); ++row)
            rows[std::size_t(row)] = true;
        for (int column = std::max(0, range.left()); column <= std::min(range.right(), columnCount - 1); ++column)
            columns[std::size_t(column)] = true;
    }
    std::vector<int> copiedColumns;
    for (int column = 0; column < columnCount; ++column)
        if (columns[std::size_t(column)]) copiedColumns.push_back(column);
    const bool isAlone = copiedColumns.size() == 1 && std::ranges::count(rows, true) == 1;

    std::string result;
    bool isFirstRow = true;
    for (int row = 0; row < rowCount; ++row) {
        if (!rows[std::size_t(row)]) continue;
        if (!isFirstRow) result += '\n';
        isFirstRow = false;
        for (const int column : copiedColumns) {
            if (column != copiedColumns.front()) result += '\t';
            const bool isSelected = std::ranges::any_of(selection, [&](const QItemSelectionRange& range) {
                return range.top() <= row && row <= range.bottom() && range.left() <= column && column <= range.right();
            });
            if (!isSelected) continue;
            if (column == DataTableModel::rowNumberColumn)
                result += std::to_string(table.rowNumbers[std::size_t(row)]);
            else
                append(result, table.rows.cell(std::size_t(row), std::size_t(column - 1)), isAlone);
        }
    }
    return result;
}

}  // namespace quorvel::CellText
