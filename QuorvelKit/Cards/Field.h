#pragma once

#include "Foundation/EnumText.h"

namespace quorvel {

/// What a template can speak of whatever the spreadsheet's columns are called. The order is the order of matching.
enum class Field { title, text, cost, type, art, icons, quantity };

template <>
struct EnumText<Field> {
    static constexpr std::array cases{
        std::pair{Field::title, std::string_view("title")},       std::pair{Field::text, std::string_view("text")},
        std::pair{Field::cost, std::string_view("cost")},         std::pair{Field::type, std::string_view("type")},
        std::pair{Field::art, std::string_view("art")},           std::pair{Field::icons, std::string_view("icons")},
        std::pair{Field::quantity, std::string_view("quantity")},
    };
};

}  // namespace quorvel
