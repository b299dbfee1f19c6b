#include "Library/BookmarkData.h"

#include <charconv>

namespace quorvel {

namespace {

constexpr std::string_view firstVersion = "quorvel-bookmark 1";

/// Takes `text` from the front of `rest`.
bool take(std::string_view& rest, std::string_view text) {
    if (!rest.starts_with(text)) return false;
    rest.remove_prefix(text.size());
    return true;
}

/// Takes a number from the front of `rest`.
template <class Number>
bool takeNumber(std::string_view& rest, Number& number) {
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error != std::errc()) return false;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return true;
}

bool takeBirth(std::string_view& rest, std::optional<FileIdentity::Time>& birth) {
    if (take(rest, "-")) return true;
    FileIdentity::Time time;
    if (!takeNumber(rest, time.seconds) || !take(rest, " ") || !takeNumber(rest, time.nanoseconds)) return false;
    birth = time;
    return true;
}

}  // namespace

std::string BookmarkData::encoded() const {
    std::string data(firstVersion);
    if (identity) {
        data += " " + std::to_string(identity->device) + " " + std::to_string(identity->inode) + " ";
        data += identity->birth
                    ? std::to_string(identity->birth->seconds) + " " + std::to_string(identity->birth->nanoseconds)
                    : "-";
    }
    return data + "\n" + path;
}

std::optional<BookmarkData> BookmarkData::decode(std::string_view data) {
    if (!take(data, firstVersion)) return std::nullopt;
    BookmarkData result;
    if (!take(data, "\n")) {
        FileIdentity identity;
        const bool isWhole = take(data, " ") && takeNumber(data, identity.device) && take(data, " ") &&
                             takeNumber(data, identity.inode) && take(data, " ") && takeBirth(data, identity.birth) &&
                             take(data, "\n");
        if (!isWhole) return std::nullopt;
        result.identity = identity;
    }
    if (!data.starts_with('/')) return std::nullopt;
    result.path = data;
    return result;
}

}  // namespace quorvel
