#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel {

/// Many texts in one buffer: each costs eight bytes beside its characters. Texts are appended, never changed one by
/// one.
class TextList {
public:
    TextList() = default;

    /// Takes over texts that lie one behind the other in `buffer`, and where each of them ends.
    TextList(std::string buffer, std::vector<std::uint64_t> ends)
        : buffer_(std::move(buffer)), ends_(std::move(ends)) {}

    std::size_t size() const { return ends_.size(); }

    /// Valid as long as this object is unchanged.
    std::string_view operator[](std::size_t index) const {
        const std::uint64_t start = index == 0 ? 0 : ends_[index - 1];
        return {buffer_.data() + start, ends_[index] - start};
    }

    void append(std::string_view text) {
        buffer_ += text;
        close();
    }

    /// The text that is being written, at the end of all text before it; `close` adds it to the list. Only appending is
    /// allowed. Spares a copy to those who make their text piece by piece.
    std::string& open() { return buffer_; }
    std::size_t openSize() const { return buffer_.size() - (ends_.empty() ? 0 : ends_.back()); }
    void close() { ends_.push_back(buffer_.size()); }

    /// Turns every CR LF and every other CR inside a text into LF.
    void unifyLineEnds();

    /// For each text whether it has anything but blanks and tabs.
    std::vector<bool> filled() const;

private:
    std::string buffer_;
    std::vector<std::uint64_t> ends_;  // a text begins where the one before ends
};

}  // namespace quorvel
