#include "Inspector/FontList.h"

#include <gtest/gtest.h>

namespace quorvel {

TEST(FontList, LeavesOutDotsAndSortsByCharacters) {
    EXPECT_EQ(FontList::offered({"beta", ".Hidden", "Zeta", "Äta", "alpha", ".", "Alpha"}),
              std::vector<std::string>({"Alpha", "Zeta", "alpha", "beta", "Äta"}));
    EXPECT_EQ(&FontList::families(), &FontList::families());
    EXPECT_FALSE(FontList::families().empty());
}

}  // namespace quorvel
