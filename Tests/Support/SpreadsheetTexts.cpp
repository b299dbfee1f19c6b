#include "Support/SpreadsheetTexts.h"

#include <array>
#include <string_view>

namespace quorvel::SpreadsheetTexts {

std::string deck(std::size_t rows) {
    constexpr std::array<std::string_view, 4> names{"Ember Fox", "Élan", "Tide Caller", "Glass Orchard"};
    constexpr std::array<std::string_view, 3> types{"Creature", "Spell", "Place"};
    constexpr std::array<std::string_view, 3> rules{"\"Draw two cards, then discard one.\"",
                                                    "\"\"\"Haste\"\", at dusk.\nGain {coin}.\"", "Costs **1** less."};
    std::string text = "Name,Cost,Type,Rules,Art,Copies\n";
    for (std::size_t row = 1; row <= rows; ++row) {
        text += names[row % names.size()];
        text += ' ' + std::to_string(row) + ',' + std::to_string(row % 10) + ',';
        text += types[row % types.size()];
        text += ',';
        text += rules[row % rules.size()];
        text += ",art/" + std::to_string(row % 100) + ".png," + std::to_string(row % 4) + '\n';
    }
    return text;
}

std::string longCell(std::size_t bytes) {
    constexpr std::string_view sentence = "Draw a card, discard a card.\n";
    std::string cell = "He said \"\"now\"\". ";
    std::size_t size = cell.size() - 2;  // as it reads once the quotes are undoubled
    while (size < bytes) {
        const std::string_view part = sentence.substr(0, bytes - size);
        cell += part;
        size += part.size();
    }
    return "Name,Rules\nFirst,\"" + cell + "\"\nSecond,Short.\n";
}

std::string wide(std::size_t columns, std::size_t rows) {
    std::string text;
    for (std::size_t row = 0; row <= rows; ++row) {
        for (std::size_t column = 1; column <= columns; ++column) {
            if (column > 1) text += ',';
            if (row > 0) text += 'r' + std::to_string(row);
            text += 'c' + std::to_string(column);
        }
        text += '\n';
    }
    return text;
}

}  // namespace quorvel::SpreadsheetTexts
