#pragma once

#include <cstddef>
#include <string>

/// Spreadsheets of real-world size, as comma-separated text. The same call gives the same text.
namespace quorvel::SpreadsheetTexts {

/// A deck of `rows` cards with a name, a cost, a type, a quoted rules text, a picture's name and a count.
std::string deck(std::size_t rows);

/// Two cards; the rules of the first are one cell of `bytes` bytes with commas, line ends and doubled quotes in it.
std::string longCell(std::size_t bytes);

/// One header row and `rows` rows of `columns` columns; the cell in row 3 of column 7 is "r3c7", the headers are "c1"
/// and so on.
std::string wide(std::size_t columns, std::size_t rows);

}  // namespace quorvel::SpreadsheetTexts
