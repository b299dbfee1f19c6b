#pragma once

#include "Spreadsheet/DataTable.h"

#include <optional>
#include <string>
#include <string_view>

/// Delimited text. Nothing here fails: any bytes give rows.
namespace quorvel::CSV {

/// UTF-8 by its mark, UTF-16 by its mark, else strict UTF-8, else Windows-1252, else UTF-8 with repair.
std::string decode(std::string_view bytes);

/// The same without a copy of what is UTF-8 already: the answer lies in `bytes`, or in `storage` where it was
/// converted.
std::string_view decode(std::string_view bytes, std::string& storage);

/// The delimiter of the first record: the most frequent of comma, tab and semicolon outside quotes, preferred in this
/// order; a comma when there is none.
char32_t detectDelimiter(std::string_view text);

/// The raw rows. Quotes open at the start of a field only; a doubled quote inside is one; CR, LF and CR LF end a row.
TextRows parse(std::string_view text, std::optional<char32_t> delimiter = std::nullopt);

/// Whether at most 2% of the first 65,536 scalars are control characters or U+FFFD.
bool looksLikeText(std::string_view text);

DataTable table(std::string_view bytes, std::string sourceName);

/// The rows as comma-separated text, each ended by a line feed; cells with a comma, a double quote or a line end are
/// quoted.
std::string write(const TextRows& rows);

}  // namespace quorvel::CSV
