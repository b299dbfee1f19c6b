#include "Spreadsheet/XLSXWorksheet.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <utility>

namespace quorvel::XLSX {

namespace {

constexpr std::int64_t lastRow = 2'000'000;  // in references and row numbers, from 1
constexpr std::int64_t lastColumn = 20'000;  // in references, from 1
constexpr std::uint32_t rowStride = 512;     // places in a row, a power of two above the columns kept

static_assert(Worksheet::mostColumns <= rowStride);

std::uint32_t rowOf(std::uint32_t place) {
    return place / rowStride;
}

/// Moves a text to where another is expected, without a copy if there is nothing yet.
void append(std::string& text, std::string& more) {
    if (text.empty()) {
        text.swap(more);
    } else {
        text += more;
    }
}

}  // namespace

std::optional<CellPlace> parseReference(std::string_view reference) {
    std::int64_t column = 0;
    std::int64_t row = 0;
    bool inDigits = false;
    for (const char c : reference) {
        const char upper = static_cast<char>(c & ~0x20);
        if (c >= '0' && c <= '9') {
            inDigits = true;
            row = row * 10 + (c - '0');
            if (row > lastRow) return std::nullopt;
        } else if (upper >= 'A' && upper <= 'Z') {
            if (inDigits) return std::nullopt;
            column = column * 26 + (upper - 'A' + 1);
            if (column > lastColumn) return std::nullopt;
        } else if (c != '$') {
            return std::nullopt;
        }
    }
    if (column == 0 || row == 0) return std::nullopt;
    return CellPlace{row - 1, column - 1};
}

Worksheet::Worksheet(TextList sharedStrings, const std::vector<NumberFormat>& formats, DateSystem dates)
    : texts_(std::move(sharedStrings)), sharedCount_(texts_.size()), formats_(formats), dates_(dates) {}

Worksheet::Type Worksheet::typeNamed(std::string_view name) {
    if (name == "s") return Type::sharedString;
    if (name == "inlineStr") return Type::inlineString;
    if (name == "d") return Type::date;
    if (name == "str") return Type::string;
    if (name == "b") return Type::boolean;
    return Type::number;  // errors too: their words are no numbers and are shown as they stand
}

void Worksheet::start(std::string_view name, const XMLAttributes& attributes) {
    if (name == "c") {
        startCell(attributes.find("r"), attributes.find("s"), attributes.find("t"));
    } else if (name == "row") {
        startRow(attributes);
    } else if (name == "is") {
        inInline_ = true;
    }
}

void Worksheet::end(std::string_view name, std::string& text) {
    if (name == "c") {
        endCell();
    } else if (name == "v") {
        value_.swap(text);
    } else if (name == "t") {
        if (inInline_) append(inlineText_, text);
    } else if (name == "is") {
        inInline_ = false;
    }
}

void Worksheet::startRow(const XMLAttributes& attributes) {
    const auto reference = attributes.find("r");
    const auto number = reference ? Text::parseInteger(*reference) : std::nullopt;
    row_ = number && *number >= 1 && *number <= lastRow ? *number - 1 : std::min(row_ + 1, lastRow);
    nextColumn_ = 0;
}

void Worksheet::cell(const PlainCell& cell) {
    startCell(cell.reference, cell.style, cell.type);
    value_ = cell.value;
    endCell();
}

void Worksheet::startCell(std::optional<std::string_view> reference, std::optional<std::string_view> style,
                          std::optional<std::string_view> type) {
    if (const auto place = reference ? parseReference(*reference) : std::nullopt) {
        row_ = place->row;
        column_ = place->column;
    } else {
        column_ = nextColumn_;
    }
    nextColumn_ = column_ + 1;
    type_ = type ? typeNamed(*type) : Type::number;
    style_ = style ? Text::parseInteger(*style).value_or(0) : 0;
    value_.clear();
    inlineText_.clear();
}

void Worksheet::endCell() {
    if (row_ < 0 || row_ >= mostRows || column_ >= mostColumns) return;
    const auto place = static_cast<std::uint32_t>(row_) * rowStride + static_cast<std::uint32_t>(column_);
    switch (type_) {
        case Type::sharedString: {
            // Cells refer to the string that they share, however many they are.
            const auto index = Text::parseInteger(value_);
            if (index && *index >= 0 && static_cast<std::uint64_t>(*index) < sharedCount_ &&
                !texts_[static_cast<std::size_t>(*index)].empty())
                store(place, static_cast<std::uint32_t>(*index));
            return;
        }
        case Type::inlineString:
            return storeText(place, inlineText_);
        case Type::date: {
            std::string_view date = value_;
            if (constexpr std::string_view midnight = "T00:00:00"; date.ends_with(midnight))
                date.remove_suffix(midnight.size());
            return storeText(place, date);
        }
        case Type::string:
            return storeText(place, value_);
        case Type::boolean:
            return storeText(place, value_ == "1" ? "TRUE" : "FALSE");
        case Type::number: {
            if (value_.empty()) return;
            const bool known = style_ >= 0 && static_cast<std::uint64_t>(style_) < formats_.size();
            const NumberFormat format = known ? formats_[static_cast<std::size_t>(style_)] : NumberFormat();
            appendDisplayText(texts_.open(), value_, format, dates_);
            return storeText(place, {});
        }
    }
}

/// Stores what was written at the open end of the texts, and `text` behind it; nothing when that is empty.
void Worksheet::storeText(std::uint32_t place, std::string_view text) {
    texts_.open() += text;
    if (texts_.openSize() == 0) return;
    store(place, static_cast<std::uint32_t>(texts_.size()));
    texts_.close();
}

void Worksheet::store(std::uint32_t place, std::uint32_t text) {
    if (!cells_.empty() && cells_.back().column >= place) inOrder_ = false;
    cells_.push_back({text, place});
}

/// Into the order of the sheet; of cells at one place the last is kept.
void Worksheet::sortCells() {
    if (inOrder_) return;
    std::stable_sort(cells_.begin(), cells_.end(), [](const auto& a, const auto& b) { return a.column < b.column; });
    std::size_t kept = 0;
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (i + 1 == cells_.size() || cells_[i].column != cells_[i + 1].column) cells_[kept++] = cells_[i];
    cells_.resize(kept);
}

TextRows Worksheet::rows() && {
    sortCells();
    std::vector<TextRows::Row> rows;
    std::uint32_t width = 0;
    if (!cells_.empty()) rows.resize(rowOf(cells_.back().column) + std::size_t{1});
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        TextRows::Row& row = rows[rowOf(cells_[i].column)];
        if (row.storedCells++ == 0) row.firstCell = i;
        cells_[i].column %= rowStride;
        width = std::max(width, cells_[i].column + 1);
    }
    for (TextRows::Row& row : rows) row.width = width;
    return {std::move(texts_), std::move(cells_), std::move(rows)};
}

}  // namespace quorvel::XLSX
