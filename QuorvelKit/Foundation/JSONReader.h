#pragma once

#include "Foundation/EnumText.h"
#include "Foundation/JSON.h"
#include "Foundation/RGBA.h"
#include "Foundation/UUID.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace quorvel {

/// The value of one JSON element, or a failure with an empty path. For bool, double, std::int64_t (3.0 is an integer),
/// std::string, UUID, RGBA (a text that isn't a colour is black) and enumerations with an EnumText.
template <class T>
std::expected<T, JSONFailure> valueFromJSON(const JSON& json);

template <>
std::expected<bool, JSONFailure> valueFromJSON(const JSON& json);
template <>
std::expected<double, JSONFailure> valueFromJSON(const JSON& json);
template <>
std::expected<std::int64_t, JSONFailure> valueFromJSON(const JSON& json);
template <>
std::expected<std::string, JSONFailure> valueFromJSON(const JSON& json);
template <>
std::expected<UUID, JSONFailure> valueFromJSON(const JSON& json);
template <>
std::expected<RGBA, JSONFailure> valueFromJSON(const JSON& json);

template <class E>
    requires std::is_enum_v<E>
std::expected<E, JSONFailure> valueFromJSON(const JSON& json) {
    if (json.is_string())
        if (const auto value = parseEnum<E>(json.get_ref<const std::string&>())) return *value;
    std::string names;
    for (const auto& [value, text] : EnumText<E>::cases) names += (names.empty() ? "" : ", ") + std::string(text);
    return std::unexpected(JSONFailure{"", "must be one of " + names});
}

/// valueFromJSON as a value; compilers differ in picking one of several function templates by its name alone.
template <class T>
inline constexpr auto valueReader = [](const JSON& json) { return valueFromJSON<T>(json); };

/// Reads a record out of a JSON object, key by key, straight into its fields:
///
///     JSONReader reader(json);
///     Layer layer;
///     reader.read("name", layer.name);
///     reader.read("frame", layer.frame, frameFromJSON);
///     reader.readIfPresent("fill", layer.fill);
///     reader.readList("rules", layer.rules, styleRuleFromJSON);
///     return reader.finish(std::move(layer));
///
/// The first failure is kept and makes every later call do nothing. The functions that read a part take a JSON and give
/// a std::expected<T, JSONFailure>; the place of their failures is completed here. The object must outlive the reader.
class JSONReader {
public:
    /// Fails at once when `json` isn't an object.
    explicit JSONReader(const JSON& json);

    /// The element must be there.
    template <class T>
    void read(std::string_view key, T& value) {
        read(key, value, valueReader<T>);
    }
    template <class T, class Read>
    void read(std::string_view key, T& value, Read readElement) {
        if (const JSON* element = required(key)) store(key, value, readElement(*element));
    }

    /// The element may be missing or null; then the value stays as it is.
    template <class T>
    void readIfPresent(std::string_view key, T& value) {
        readIfPresent(key, value, valueReader<T>);
    }
    template <class T>
    void readIfPresent(std::string_view key, std::optional<T>& value) {
        readIfPresent(key, value, valueReader<T>);
    }
    template <class T, class Read>
    void readIfPresent(std::string_view key, T& value, Read readElement) {
        if (const JSON* element = present(key)) store(key, value, readElement(*element));
    }

    /// A list that must be there, each element read by itself.
    template <class T>
    void readList(std::string_view key, std::vector<T>& values) {
        readList(key, values, valueReader<T>);
    }
    template <class T, class Read>
    void readList(std::string_view key, std::vector<T>& values, Read readElement) {
        if (const JSON* list = required(key)) storeList(key, values, *list, readElement);
    }
    template <class T, class Read>
    void readListIfPresent(std::string_view key, std::vector<T>& values, Read readElement) {
        if (const JSON* list = present(key)) storeList(key, values, *list, readElement);
    }

    /// The element of this key as it is, null when missing or when something failed before.
    const JSON* find(std::string_view key) const;

    /// Makes the whole reading fail, unless it has failed before.
    void fail(JSONFailure failure);

    /// The record, or the first failure.
    template <class T>
    std::expected<T, JSONFailure> finish(T record) {
        if (failure_) return std::unexpected(std::move(*failure_));
        return record;
    }

private:
    const JSON* required(std::string_view key);
    const JSON* present(std::string_view key) const;

    template <class T, class Result>
    void store(std::string_view key, T& value, Result result) {
        if (result) {
            value = std::move(*result);
        } else {
            fail(result.error().inside(key));
        }
    }

    template <class T, class Read>
    void storeList(std::string_view key, std::vector<T>& values, const JSON& list, Read readElement) {
        if (!list.is_array()) return fail({std::string(key), "must be a list"});
        values.clear();
        values.reserve(list.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            auto result = readElement(list[i]);
            if (!result) return fail(result.error().inside(i).inside(key));
            values.push_back(std::move(*result));
        }
    }

    const JSON& json_;
    std::optional<JSONFailure> failure_;
};

}  // namespace quorvel
