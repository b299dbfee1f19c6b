#pragma once

#include "Foundation/EnumText.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace quorvel {

/// One value of the design as a control sees it: read anew each time, and written through the model, which may make
/// something else of it.
template <class Value>
struct Binding {
    std::function<Value()> read;
    std::function<void(Value)> write;
};

/// A value as its index in a list of choices, -1 for one that isn't offered.
template <class Value>
Binding<int> byIndex(std::vector<Value> choices, Binding<Value> binding) {
    return {[choices, read = std::move(binding.read)] {
                const auto found = std::ranges::find(choices, read());
                return found == choices.end() ? -1 : int(found - choices.begin());
            },
            [choices, write = std::move(binding.write)](int index) {
                if (index >= 0 && index < int(choices.size())) write(choices[std::size_t(index)]);
            }};
}

/// Of all cases of an enumeration, in their order.
template <class Enum>
Binding<int> byIndex(Binding<Enum> binding) {
    std::vector<Enum> cases;
    for (const auto& each : EnumText<Enum>::cases) cases.push_back(each.first);
    return byIndex(std::move(cases), std::move(binding));
}

}  // namespace quorvel
