#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quorvel {

/// The characters of a text as a reader counts them, by index. A text of ASCII, which most cells are, costs nothing to
/// take apart: there every byte is a character, unless CR LF occurs.
class CharacterList {
public:
    /// Views into `text`, which must outlive this object.
    explicit CharacterList(std::string_view text);

    std::size_t size() const { return characters_.empty() ? text_.size() : characters_.size(); }

    std::string_view operator[](std::size_t index) const {
        return characters_.empty() ? text_.substr(index, 1) : characters_[index];
    }

    /// Whether there is a character at `index` and it is exactly this one.
    bool has(std::string_view character, std::size_t index) const {
        return index < size() && (*this)[index] == character;
    }

    /// The text from the character at `first` up to the one at `end`, which isn't part of it.
    std::string_view slice(std::size_t first, std::size_t end) const;

private:
    std::string_view text_;
    std::vector<std::string_view> characters_;  // empty when every byte is a character
};

}  // namespace quorvel
