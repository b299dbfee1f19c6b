#include "Inspector/Binding.h"
#include "Templates/Layer.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvel {

TEST(Binding, AValueIsItsIndexInTheChoices) {
    std::string value = "b";
    const Binding<int> index =
        byIndex<std::string>({"a", "b", "c"}, {[&] { return value; }, [&](std::string written) { value = written; }});
    EXPECT_EQ(index.read(), 1);
    index.write(2);
    EXPECT_EQ(value, "c");
    for (const int outside : {-1, 3}) {
        index.write(outside);
        EXPECT_EQ(value, "c");
    }
    value = "d";
    EXPECT_EQ(index.read(), -1);
}

TEST(Binding, ACaseIsItsPlaceInTheEnumeration) {
    StyleRule::Match match = StyleRule::Match::isEmpty;
    const Binding<int> index =
        byIndex<StyleRule::Match>({[&] { return match; }, [&](StyleRule::Match written) { match = written; }});
    EXPECT_EQ(index.read(), 2);
    index.write(0);
    EXPECT_EQ(match, StyleRule::Match::equals);
}

}  // namespace quorvel
