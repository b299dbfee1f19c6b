#include "Cards/Markup.h"

#include "Cards/CharacterList.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace quorvel::Markup {

namespace {

using std::string_view;

bool isIconNameCharacter(string_view character) {
    return character == "-" || character == "_" || Text::isLetterOrNumber(character);
}

/// Where a closing mark follows, for every place of a text, found in one pass from the end. Searching anew at each
/// opening mark would take the square of the length for a cell full of stars.
class ClosingMarks {
public:
    explicit ClosingMarks(const CharacterList& text) : follows_(text.size() + 2) {
        for (std::size_t i = text.size(); i-- > 0;) {
            if (text.has("\\", i)) {
                follows_[i] = follows_[i + 2];
            } else if (!text.has("*", i)) {
                follows_[i] = follows_[i + 1];
            } else if (text.has("*", i + 1)) {
                follows_[i] = {true, follows_[i + 2].star};
            } else {
                follows_[i] = {follows_[i + 1].twoStars, true};
            }
        }
    }

    /// Whether a search from `index` (at most the text's length) finds "**", or a star that stands alone.
    bool hasTwoStars(std::size_t index) const { return follows_[index].twoStars; }
    bool hasStar(std::size_t index) const { return follows_[index].star; }

private:
    struct Follows {
        bool twoStars = false;
        bool star = false;
    };
    std::vector<Follows> follows_;
};

class Parser {
public:
    explicit Parser(string_view text) : text_(text) {}

    std::vector<MarkupRun> run() && {
        while (position_ < text_.size()) step();
        flush();
        return std::move(runs_);
    }

private:
    void step() {
        const string_view character = text_[position_];
        if (character == "\\" && position_ + 1 < text_.size()) {
            const string_view escaped = text_[position_ + 1];
            buffer_ += escaped == "n" ? "\n" : escaped;
            position_ += 2;
        } else if (character == "*") {
            stars();
        } else if (character != "{" || !icon()) {
            buffer_ += character == "\r" ? "\n" : character;
            position_ += 1;
        }
    }

    void stars() {
        if (!closing_) closing_.emplace(text_);
        if (text_.has("*", position_ + 1)) {
            position_ += 2;
            toggle(bold_, closing_->hasTwoStars(position_), "**");
        } else {
            position_ += 1;
            toggle(italic_, closing_->hasStar(position_), "*");
        }
    }

    void toggle(bool& flag, bool hasPartner, string_view literal) {
        if (flag || hasPartner) {
            flush();
            flag = !flag;
        } else {
            buffer_ += literal;
        }
    }

    /// Takes the icon that begins at the brace here; false, with nothing changed, when it isn't well-formed.
    bool icon() {
        constexpr string_view prefix = "{icon:";
        const std::size_t first = position_ + prefix.size();
        if (first >= text_.size()) return false;
        const string_view start = text_.slice(position_, first);
        if (start.size() != prefix.size() || Text::lowercased(start) != prefix) return false;

        std::size_t end = first;
        while (end < text_.size() && isIconNameCharacter(text_[end])) ++end;
        if (end == first || !text_.has("}", end)) return false;

        flush();
        runs_.push_back(MarkupIcon{Text::lowercased(text_.slice(first, end))});
        position_ = end + 1;
        return true;
    }

    void flush() {
        if (buffer_.empty()) return;
        auto* last = runs_.empty() ? nullptr : std::get_if<MarkupText>(&runs_.back());
        if (last && last->bold == bold_ && last->italic == italic_) {
            last->text += buffer_;
        } else {
            runs_.push_back(MarkupText{buffer_, bold_, italic_});
        }
        buffer_.clear();
    }

    CharacterList text_;
    std::optional<ClosingMarks> closing_;  // made at the first star: most texts have none
    std::size_t position_ = 0;
    std::vector<MarkupRun> runs_;
    std::string buffer_;
    bool bold_ = false;
    bool italic_ = false;
};

/// Reads an icon row that is written in words, from left to right.
class IconRowReader {
public:
    explicit IconRowReader(string_view text) : lowercased_(Text::lowercased(text)), text_(lowercased_) {}

    std::vector<std::string> run() && {
        std::size_t first = 0;
        for (std::size_t i = 0; i <= text_.size() && names_.size() < maximumIconNames; ++i) {
            if (i < text_.size() && !isSeparator(text_[i])) continue;
            if (i > first) token(first, i);
            first = i + 1;
        }
        return std::move(names_);
    }

private:
    static constexpr std::int64_t maximumCountOfName = 50;

    static bool isSeparator(string_view character) {
        return character == "," || character == ";" || character == " " || character == "\n" || character == "\t";
    }

    bool isTimesSign(std::size_t index) const { return text_.has("x", index) || text_.has("×", index); }

    std::optional<std::int64_t> integer(std::size_t first, std::size_t end) const {
        return Text::parseInteger(text_.slice(first, end));
    }

    void token(std::size_t first, std::size_t end) {
        const bool startsWithTimes = isTimesSign(first);
        const std::size_t countFirst = startsWithTimes ? first + 1 : first;
        const std::size_t countEnd = end > countFirst && isTimesSign(end - 1) ? end - 1 : end;
        if (const auto count = unsignedInteger(countFirst, countEnd)) {
            if (!names_.empty() && !pending_ && startsWithTimes) {
                add(names_.back(), *count - 1);
            } else {
                pending_ = count;
            }
        } else {
            name(first, end);
        }
    }

    /// Digits alone, no sign.
    std::optional<std::int64_t> unsignedInteger(std::size_t first, std::size_t end) const {
        if (text_.has("+", first) || text_.has("-", first)) return std::nullopt;
        return integer(first, end);
    }

    void name(std::size_t first, std::size_t end) {
        std::int64_t count = pending_.value_or(1);
        const auto find = [&](auto matches) {
            std::size_t i = first;
            while (i < end && !matches(i)) ++i;
            return i;
        };
        if (const std::size_t star = find([&](std::size_t i) { return text_.has("*", i); }); star < end) {
            if (const auto behind = integer(star + 1, end)) {
                count = *behind;
                end = star;
            }
        }
        if (const std::size_t times = find([&](std::size_t i) { return isTimesSign(i); }); times < end) {
            if (const auto before = integer(first, times)) {
                count = *before;
                first = times + 1;
            }
        }
        std::string kept;
        for (std::size_t i = first; i < end; ++i)
            if (isIconNameCharacter(text_[i])) kept += text_[i];
        if (!kept.empty()) add(kept, std::min(count, maximumCountOfName));
        pending_.reset();
    }

    void add(const std::string& name, std::int64_t count) {
        if (count <= 0) return;
        const std::size_t room = maximumIconNames - names_.size();
        const std::string copy = name;  // `name` may live in the list that grows
        names_.insert(names_.end(), std::min(room, static_cast<std::size_t>(count)), copy);
    }

    std::string lowercased_;
    CharacterList text_;
    std::vector<std::string> names_;
    std::optional<std::int64_t> pending_;  // a count that waits for its name
};

std::vector<std::string> inlineIconNames(const std::vector<MarkupRun>& runs) {
    std::vector<std::string> names;
    for (const MarkupRun& run : runs) {
        if (names.size() == maximumIconNames) break;
        if (const auto* icon = std::get_if<MarkupIcon>(&run)) names.push_back(icon->name);
    }
    return names;
}

}  // namespace

std::vector<MarkupRun> parse(string_view text) {
    return Parser(text).run();
}

std::string plainText(string_view text) {
    std::string result;
    for (const MarkupRun& run : parse(text)) {
        if (const auto* icon = std::get_if<MarkupIcon>(&run)) {
            result += "[" + icon->name + "]";
        } else {
            result += std::get<MarkupText>(run).text;
        }
    }
    return result;
}

std::vector<std::string> iconNames(string_view text) {
    const std::vector<std::string> names = inlineIconNames(parse(text));
    return names.empty() ? IconRowReader(text).run() : names;
}

}  // namespace quorvel::Markup
