#include "Wording.h"

#include "Foundation/Text.h"

#include <exception>
#include <new>

namespace quorvel::CommandLine {

std::string enumeration(const std::vector<std::string_view>& texts, std::string_view conjunction) {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) joined += i + 1 == texts.size() ? " " + std::string(conjunction) + " " : ", ";
        joined += texts[i];
    }
    return joined;
}

std::string unforeseen() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "There isn’t enough memory.";
    } catch (const std::exception& error) {
        return std::string("Something unforeseen went wrong: ") + error.what() + ".";
    }
}

std::string quotedName(const std::filesystem::path& path) {
    const std::string whole = path.string();
    const std::string_view last = Text::lastPathComponent(whole);
    return "“" + std::string(last.empty() ? std::string_view(whole) : last) + "”";
}

}  // namespace quorvel::CommandLine
