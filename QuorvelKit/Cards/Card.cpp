#include "Cards/Card.h"

#include "Foundation/Text.h"

#include <algorithm>

namespace quorvel {

namespace {

std::string_view cell(const Card& card, std::size_t column) {
    const TextRows& rows = card.source->table->rows;
    const auto row = static_cast<std::size_t>(card.id);
    return row < rows.rowCount() ? rows.cell(row, column) : std::string_view();
}

std::map<std::string, std::string> texts(const Card& card, const CardSource::Columns& columns) {
    std::map<std::string, std::string> result;
    for (const auto& [name, column] : columns) result.emplace(name, cell(card, column));
    return result;
}

bool sameTexts(const Card& a, const CardSource::Columns& columnsA, const Card& b, const CardSource::Columns& columnsB) {
    return std::equal(columnsA.begin(), columnsA.end(), columnsB.begin(), columnsB.end(),
                      [&](const auto& entryA, const auto& entryB) {
                          return entryA.first == entryB.first && cell(a, entryA.second) == cell(b, entryB.second);
                      });
}

const CardSource& sourceOf(const Card& card) {
    static const CardSource empty{std::make_shared<const DataTable>(), FieldMapping()};
    return card.source ? *card.source : empty;
}

}  // namespace

CardSource::CardSource(std::shared_ptr<const DataTable> givenTable, const FieldMapping& mapping)
    : table(std::move(givenTable)) {
    for (std::size_t i = 0; i < table->headers.size(); ++i) {
        headerColumns.emplace(table->headers[i], i);
        lowercasedHeaderColumns.emplace(Text::lowercased(table->headers[i]), i);
    }
    for (const auto& [field, header] : mapping.columns)
        if (const auto found = headerColumns.find(header); found != headerColumns.end())
            fieldColumns.emplace(field, found->second);
}

std::optional<std::size_t> CardSource::column(std::string_view name) const {
    name = Text::trimBlanks(name);
    const std::string lower = Text::lowercased(name);
    if (const auto found = fieldColumns.find(lower); found != fieldColumns.end()) return found->second;
    if (const auto found = headerColumns.find(name); found != headerColumns.end()) return found->second;
    if (const auto found = lowercasedHeaderColumns.find(lower); found != lowercasedHeaderColumns.end())
        return found->second;
    // What is left are letters that lower case alone doesn't bring together, such as "ß" and "SS".
    for (std::size_t i = 0; i < table->headers.size(); ++i)
        if (Text::equalsIgnoringCase(table->headers[i], name)) return i;
    return std::nullopt;
}

bool Card::operator==(const Card& other) const {
    if (id != other.id || rowNumber != other.rowNumber || quantity != other.quantity) return false;
    if (source == other.source) return true;
    const CardSource& mine = sourceOf(*this);
    const CardSource& theirs = sourceOf(other);
    return sameTexts(*this, mine.headerColumns, other, theirs.headerColumns) &&
           sameTexts(*this, mine.fieldColumns, other, theirs.fieldColumns);
}

std::string_view Card::value(std::string_view name) const {
    if (!source) return {};
    const auto column = source->column(name);
    return column ? cell(*this, *column) : std::string_view();
}

std::map<std::string, std::string> Card::cells() const {
    return texts(*this, sourceOf(*this).headerColumns);
}

std::map<std::string, std::string> Card::fields() const {
    return texts(*this, sourceOf(*this).fieldColumns);
}

}  // namespace quorvel
