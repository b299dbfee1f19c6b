#include "Foundation/JSON.h"

#include <algorithm>

namespace quorvel {

namespace {

/// Brackets outside of strings, counted without judging the rest: a text that isn't JSON fails later anyway.
bool isNestedTooDeep(std::string_view text) {
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') {
                ++i;
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > deepestJSON) return true;
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return false;
}

/// "line 3, column 7", both from 1, of the byte at `offset`; columns count bytes.
std::string place(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0, the start of the text
    return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - lineStart + 1);
}

}  // namespace

std::string JSONFailure::description() const {
    return (path.empty() ? "The JSON" : path) + " " + reason + ".";
}

JSONFailure JSONFailure::inside(std::string_view key) const {
    std::string outer(key);
    if (!path.empty() && path.front() != '[') outer += '.';
    return {outer + path, reason};
}

JSONFailure JSONFailure::inside(std::size_t index) const {
    std::string outer = "[" + std::to_string(index) + "]";
    if (!path.empty() && path.front() != '[') outer += '.';
    return {outer + path, reason};
}

std::expected<JSON, JSONFailure> parseJSON(std::string_view text) {
    if (isNestedTooDeep(text)) return std::unexpected(JSONFailure{"", "is nested too deep"});
    try {
        return JSON::parse(text);
    } catch (const JSON::parse_error& error) {
        const std::size_t offset = error.byte > 0 ? error.byte - 1 : 0;
        return std::unexpected(JSONFailure{"", "can’t be understood at " + place(text, offset)});
    } catch (const JSON::exception&) {
        return std::unexpected(JSONFailure{"", "holds a number out of range"});
    }
}

std::string prettyJSON(const JSON& value) {
    return value.dump(2, ' ', false, JSON::error_handler_t::replace) + "\n";
}

}  // namespace quorvel
