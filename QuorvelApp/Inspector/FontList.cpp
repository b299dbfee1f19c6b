#include "Inspector/FontList.h"

#include "Drawing/Fonts.h"

#include <algorithm>
#include <utility>

namespace quorvel::FontList {

const std::vector<std::string>& families() {
    static const std::vector<std::string> families = offered(Fonts::families());
    return families;
}

std::vector<std::string> offered(std::vector<std::string> all) {
    std::erase_if(all, [](const std::string& family) { return family.starts_with('.'); });
    std::ranges::sort(all);
    return all;
}

}  // namespace quorvel::FontList
