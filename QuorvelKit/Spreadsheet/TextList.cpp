#include "Spreadsheet/TextList.h"

#include "Foundation/Text.h"

namespace quorvel {

void TextList::unifyLineEnds() {
    if (buffer_.find('\r') == std::string::npos) return;
    std::size_t read = 0;
    std::size_t written = 0;
    for (std::uint64_t& end : ends_) {
        for (; read < end; ++read) {
            const char c = buffer_[read];
            if (c == '\r') {
                buffer_[written++] = '\n';
                if (read + 1 < end && buffer_[read + 1] == '\n') ++read;
            } else {
                buffer_[written++] = c;
            }
        }
        end = written;
    }
    buffer_.resize(written);
}

std::vector<bool> TextList::filled() const {
    std::vector<bool> result(size());
    for (std::size_t i = 0; i < size(); ++i) result[i] = !Text::trimBlanks((*this)[i]).empty();
    return result;
}

}  // namespace quorvel
