#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace quorvel {

/// The one text form of an enumeration: specialise with
///     static constexpr std::array cases{std::pair{E::first, std::string_view("first")}, ...};
/// in the order of the declaration. JSON, menus and options all read this table.
template <class E>
struct EnumText;

template <class E>
constexpr std::string_view textOf(E value) {
    for (const auto& [each, text] : EnumText<E>::cases)
        if (each == value) return text;
    return {};
}

/// The case of exactly this name, or nothing.
template <class E>
constexpr std::optional<E> parseEnum(std::string_view text) {
    for (const auto& [each, name] : EnumText<E>::cases)
        if (name == text) return each;
    return std::nullopt;
}

}  // namespace quorvel
