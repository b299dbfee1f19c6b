#include "Drawing/PDFResources.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace quorvel::PDFResources {

namespace {

/// Takes a number from the front of `text`; 0 when there is none.
std::size_t takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \n"), text.size()));
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return 0;
    text.remove_prefix(std::size_t(end - text.data()));
    return number;
}

/// Where the objects begin, by the table at the file's end: the bytes of pictures between them may look like anything.
std::vector<std::size_t> objectOffsets(std::string_view pdf) {
    constexpr std::string_view tableKey = "xref\n0 ";
    constexpr std::string_view startKey = "startxref";
    constexpr std::size_t lineLength = 20;
    const std::size_t start = pdf.rfind(startKey);
    if (start == pdf.npos) return {};
    std::string_view rest = pdf.substr(start + startKey.size());
    rest = pdf.substr(std::min(takeNumber(rest), pdf.size()));
    if (!rest.starts_with(tableKey)) return {};
    rest.remove_prefix(tableKey.size());
    const std::size_t count = takeNumber(rest);
    rest.remove_prefix(std::min<std::size_t>(1, rest.size()));

    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < count && rest.size() >= lineLength; ++i, rest.remove_prefix(lineLength)) {
        std::string_view line = rest.substr(0, lineLength);
        const std::size_t offset = takeNumber(line);
        if (line.ends_with("n \n") && offset < pdf.size()) offsets.push_back(offset);
    }
    return offsets;
}

/// Blanks out what names a picture again in the text between "<<" and ">>", such as " /x7 7 0 R /x7 7 0 R ".
void blankRepeats(char* begin, char* end) {
    std::unordered_set<std::string_view> seen;
    for (char* entry = std::find(begin, end, '/'); entry != end;) {
        char* const next = std::find(entry + 1, end, '/');
        if (!seen.emplace(entry, next - entry).second) std::fill(entry, next, ' ');
        entry = next;
    }
}

}  // namespace

void nameOnce(std::string& pdf) {
    constexpr std::string_view key = "/XObject <<";
    for (const std::size_t object : objectOffsets(pdf)) {
        const std::string_view all = pdf;
        const std::string_view upToStream = all.substr(0, all.find("stream", object));
        const std::string_view text = upToStream.substr(0, upToStream.find("endobj", object));
        for (std::size_t list = text.find(key, object); list != text.npos; list = text.find(key, list)) {
            list += key.size();
            const std::size_t end = text.find(">>", list);
            if (end == text.npos) break;
            blankRepeats(pdf.data() + list, pdf.data() + end);
        }
    }
}

}  // namespace quorvel::PDFResources
