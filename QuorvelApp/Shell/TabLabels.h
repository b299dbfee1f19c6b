#pragma once

#include "Controls/Wording.h"
#include "Model/Tab.h"

namespace quorvel {

/// The symbol that stands for a tab.
constexpr std::string_view symbol(Tab tab) {
    switch (tab) {
        case Tab::cards:
            return "rectangle.grid.3x2";
        case Tab::template_:
            return "rectangle.and.pencil.and.ellipsis";
        case Tab::sheets:
            return "printer";
        case Tab::data:
            return "tablecells";
    }
    return {};
}

/// A tab's title as menus and buttons want it: there a single "&" would mark a key.
inline QString label(Tab tab) {
    return text(title(tab)).replace('&', "&&");
}

}  // namespace quorvel
