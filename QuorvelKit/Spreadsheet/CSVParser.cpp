#include "Foundation/Text.h"
#include "Spreadsheet/CSV.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace quorvel::CSV {

namespace {

using Word = std::uint64_t;
constexpr std::size_t wordSize = sizeof(Word);

constexpr Word everyByte(char value) {
    return Word{0x0101010101010101} * static_cast<unsigned char>(value);
}

/// The high bit of every byte of `word` that equals the byte that `pattern` repeats; exact for each byte.
constexpr Word matches(Word word, Word pattern) {
    constexpr Word low = everyByte(0x7F);
    const Word difference = word ^ pattern;
    return ~(((difference & low) + low) | difference | low);
}

/// Walks the bytes: all that matters is ASCII or a delimiter, and neither begins inside another character of UTF-8.
/// Cells are written one behind the other into one buffer; they are never longer than what they were read from.
class Parser {
public:
    Parser(std::string_view text, std::string_view delimiter)
        : text_(text), delimiter_(delimiter), delimiters_(everyByte(delimiter.front())) {}

    TextRows run() {
        cellEnds_.reserve(expectedCells());
        std::string cells;
        cells.resize_and_overwrite(text_.size() + wordSize, [&](char* buffer, std::size_t) {
            cells_ = buffer;
            readAll();
            return written_;
        });
        return {std::move(cells), std::move(cellEnds_), rowEnds_};
    }

private:
    /// A guess from the beginning of the text, generous enough that the list rarely has to move.
    std::size_t expectedCells() const {
        constexpr std::size_t sampleSize = 65'536;
        const std::string_view sample = text_.substr(0, sampleSize);
        const auto stops =
            static_cast<std::size_t>(std::count_if(sample.begin(), sample.end(), [this](char c) { return isStop(c); }));
        if (sample.size() == text_.size()) return stops + 1;
        return (stops + stops / 8) * (text_.size() / sampleSize + 1);
    }

    void readAll() {
        bool unclosed = false;
        while (position_ < text_.size()) {
            unclosed = text_[position_] == '"' && !readQuoted();
            readPlain();
            readStop();
        }
        // What the last line end leaves behind is no row.
        const std::size_t rowStart = rowEnds_.empty() ? 0 : rowEnds_.back();
        const std::size_t cellStart = cellEnds_.empty() ? 0 : cellEnds_.back();
        if (unclosed || cellEnds_.size() > rowStart || written_ > cellStart) {
            endCell();
            endRow();
        }
    }

    void endCell() { cellEnds_.push_back(written_); }
    void endRow() { rowEnds_.push_back(cellEnds_.size()); }

    void copyUntil(std::size_t end) {
        std::memcpy(cells_ + written_, text_.data() + position_, end - position_);
        written_ += end - position_;
        position_ = end;
    }

    /// From an opening quote behind the closing one; false when the text ends before it.
    bool readQuoted() {
        ++position_;
        for (;;) {
            const std::size_t quote = text_.find('"', position_);
            if (quote == std::string_view::npos) {
                copyUntil(text_.size());
                return false;
            }
            const bool doubled = quote + 1 < text_.size() && text_[quote + 1] == '"';
            copyUntil(doubled ? quote + 1 : quote);
            position_ = doubled ? quote + 2 : quote + 1;
            if (!doubled) return true;
        }
    }

    /// Up to the delimiter or line end that ends the field.
    void readPlain() {
        copyToStop();
        // A longer delimiter shares its first byte with other characters.
        while (position_ < text_.size() && text_[position_] == delimiter_.front() && !atDelimiter()) {
            copyUntil(position_ + 1);
            copyToStop();
        }
    }

    /// Copies up to the next line end or first byte of a delimiter, a word at a time: what a word has beyond it is
    /// written too and overwritten by what follows.
    void copyToStop() {
        while (position_ + wordSize <= text_.size()) {
            Word word = 0;
            std::memcpy(&word, text_.data() + position_, wordSize);
            std::memcpy(cells_ + written_, &word, wordSize);
            const Word stops =
                matches(word, delimiters_) | matches(word, everyByte('\n')) | matches(word, everyByte('\r'));
            const auto plain = static_cast<std::size_t>(
                (std::endian::native == std::endian::little ? std::countr_zero(stops) : std::countl_zero(stops)) / 8);
            position_ += plain;
            written_ += plain;
            if (plain < wordSize) return;
        }
        while (position_ < text_.size() && !isStop(text_[position_])) cells_[written_++] = text_[position_++];
    }

    bool isStop(char c) const { return c == delimiter_.front() || c == '\n' || c == '\r'; }

    void readStop() {
        if (position_ == text_.size()) return;
        endCell();
        if (atDelimiter()) {
            position_ += delimiter_.size();
            return;
        }
        endRow();
        position_ += text_.substr(position_).starts_with("\r\n") ? 2 : 1;
    }

    bool atDelimiter() const {
        if (delimiter_.size() == 1) return text_[position_] == delimiter_.front();
        return text_.substr(position_).starts_with(delimiter_);
    }

    std::string_view text_;
    std::string_view delimiter_;
    Word delimiters_;
    std::size_t position_ = 0;

    char* cells_ = nullptr;
    std::size_t written_ = 0;
    std::vector<std::uint64_t> cellEnds_;
    std::vector<std::uint64_t> rowEnds_;
};

}  // namespace

TextRows parse(std::string_view text, std::optional<char32_t> delimiter) {
    std::string encoded;
    Text::appendScalar(encoded, delimiter ? *delimiter : detectDelimiter(text));
    return Parser(text, encoded).run();
}

}  // namespace quorvel::CSV
