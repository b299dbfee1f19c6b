#pragma once

#include "Foundation/EnumText.h"

namespace quorvel {

/// The parts of the window.
enum class Tab { cards, template_, sheets, data };

template <>
struct EnumText<Tab> {
    static constexpr std::array cases{
        std::pair{Tab::cards, std::string_view("cards")}, std::pair{Tab::template_, std::string_view("template")},
        std::pair{Tab::sheets, std::string_view("sheets")}, std::pair{Tab::data, std::string_view("data")}};
};

/// What the user reads.
constexpr std::string_view title(Tab tab) {
    switch (tab) {
        case Tab::cards:
            return "Cards";
        case Tab::template_:
            return "Template";
        case Tab::sheets:
            return "Print & Export";
        case Tab::data:
            return "Spreadsheet";
    }
    return {};
}

}  // namespace quorvel
