#include "DataTab/TextWidths.h"

#include "Foundation/Text.h"

#include <QString>

namespace quorvel {
namespace {

// Scripts of thousands of characters that are all as wide as one another.
constexpr char32_t ideographs = 0x2E80;
constexpr char32_t anIdeograph = U'漢';
constexpr char32_t pictographs = 0x1F000;
constexpr char32_t aPictograph = U'😀';
constexpr char32_t moreIdeographs = 0x20000;

bool isInvisible(char32_t scalar) {
    return scalar == 0x200D || (scalar >= 0xFE00 && scalar <= 0xFE0F);  // joiner, variation selectors
}

}  // namespace

TextWidths::TextWidths(const QFont& font) : metrics_(font) {
    for (char32_t scalar = 0; scalar < ascii_.size(); ++scalar)
        ascii_[scalar] = metrics_.horizontalAdvance(QChar(scalar < 0x20 || scalar == 0x7F ? U' ' : scalar));
}

double TextWidths::width(std::string_view utf8, double limit) {
    double sum = 0;
    for (std::size_t offset = 0; offset < utf8.size() && sum <= limit;) {
        const auto byte = static_cast<unsigned char>(utf8[offset]);
        if (byte < ascii_.size()) {
            sum += ascii_[byte];
            ++offset;
        } else {
            sum += widthOf(Text::nextScalar(utf8, offset));
        }
    }
    return sum;
}

double TextWidths::widthOf(char32_t scalar) {
    if (isInvisible(scalar)) return 0;
    if (scalar >= moreIdeographs) return measured(anIdeograph);
    if (scalar >= pictographs) return measured(aPictograph);
    return measured(scalar >= ideographs ? anIdeograph : scalar);
}

double TextWidths::measured(char32_t scalar) {
    const auto [place, isNew] = others_.try_emplace(scalar, 0);
    if (isNew) place->second = metrics_.horizontalAdvance(QString::fromUcs4(&scalar, 1));
    return place->second;
}

}  // namespace quorvel
