#include "Foundation/JSONReader.h"

#include <cmath>
#include <limits>

namespace quorvel {

namespace {

std::unexpected<JSONFailure> mustBe(std::string_view what) {
    return std::unexpected(JSONFailure{"", "must be " + std::string(what)});
}

}  // namespace

template <>
std::expected<bool, JSONFailure> valueFromJSON(const JSON& json) {
    if (!json.is_boolean()) return mustBe("true or false");
    return json.get<bool>();
}

template <>
std::expected<double, JSONFailure> valueFromJSON(const JSON& json) {
    if (!json.is_number()) return mustBe("a number");
    return json.get<double>();
}

template <>
std::expected<std::int64_t, JSONFailure> valueFromJSON(const JSON& json) {
    if (json.is_number_unsigned()) {
        const auto value = json.get<std::uint64_t>();
        if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return static_cast<std::int64_t>(value);
    } else if (json.is_number_integer()) {
        return json.get<std::int64_t>();
    } else if (json.is_number_float()) {
        const auto value = json.get<double>();
        if (value == std::trunc(value) && value >= -0x1p63 && value < 0x1p63) return static_cast<std::int64_t>(value);
    }
    return mustBe("a whole number");
}

template <>
std::expected<std::string, JSONFailure> valueFromJSON(const JSON& json) {
    if (!json.is_string()) return mustBe("a text");
    return json.get<std::string>();
}

template <>
std::expected<UUID, JSONFailure> valueFromJSON(const JSON& json) {
    if (json.is_string())
        if (const auto id = UUID::parse(json.get_ref<const std::string&>())) return *id;
    return mustBe("an identifier such as 01234567-89AB-CDEF-0123-456789ABCDEF");
}

template <>
std::expected<RGBA, JSONFailure> valueFromJSON(const JSON& json) {
    if (!json.is_string()) return mustBe("a color such as \"#5E8C4A\"");
    return RGBA::parseHex(json.get_ref<const std::string&>()).value_or(RGBA::black);
}

JSONReader::JSONReader(const JSON& json) : json_(json) {
    if (!json.is_object()) fail({"", "must be an object"});
}

const JSON* JSONReader::find(std::string_view key) const {
    if (failure_) return nullptr;
    const auto found = json_.find(key);
    return found == json_.end() ? nullptr : &*found;
}

void JSONReader::fail(JSONFailure failure) {
    if (!failure_) failure_ = std::move(failure);
}

const JSON* JSONReader::required(std::string_view key) {
    const JSON* element = find(key);
    if (!element) fail({std::string(key), "is missing"});
    return element;
}

const JSON* JSONReader::present(std::string_view key) const {
    const JSON* element = find(key);
    return element && !element->is_null() ? element : nullptr;
}

}  // namespace quorvel
