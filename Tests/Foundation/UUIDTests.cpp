#include "Foundation/UUID.h"

#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

namespace quorvel {
namespace {

TEST(UUID, survivesItsTextForm) {
    for (int i = 0; i < 100; ++i) {
        const UUID id = UUID::random();
        EXPECT_EQ(UUID::parse(id.text()), id);
    }
    EXPECT_EQ(UUID().text(), "00000000-0000-0000-0000-000000000000");
}

TEST(UUID, isRandomOfVersion4) {
    std::set<UUID> seen;
    for (int i = 0; i < 1'000; ++i) {
        const UUID id = UUID::random();
        const std::string text = id.text();
        EXPECT_EQ(text[14], '4');
        EXPECT_NE(std::string_view("89AB").find(text[19]), std::string_view::npos);
        EXPECT_TRUE(seen.insert(id).second);
    }
}

TEST(UUID, isMadeOnAnyThread) {
    std::vector<std::vector<UUID>> made(4);
    {
        std::vector<std::jthread> threads;
        for (auto& ids : made)
            threads.emplace_back([&ids] {
                for (int i = 0; i < 100; ++i) ids.push_back(UUID::random());
            });
    }
    std::set<UUID> seen;
    for (const auto& ids : made) seen.insert(ids.begin(), ids.end());
    EXPECT_EQ(seen.size(), 400u);
}

TEST(UUID, readsEitherCaseAndNothingElse) {
    const auto id = UUID::parse("0123abcd-4567-89Ab-cDEF-0123456789ab");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->text(), "0123ABCD-4567-89AB-CDEF-0123456789AB");
    for (const char* text : {"", "0123abcd", "0123abcd456789abcdef0123456789ab",
                             "{0123abcd-4567-89ab-cdef-0123456789ab}", "0123abcd-4567-89ab-cdef-0123456789ag",
                             "0123abcd-4567-89ab-cdef-0123456789ab ", "0123abcd-4567-89ab-cdef0-123456789ab",
                             "0123abcd-4567-89ab-cdef-0123456789-b", "+123abcd-4567-89ab-cdef-0123456789ab"})
        EXPECT_EQ(UUID::parse(text), std::nullopt) << text;
}

}  // namespace
}  // namespace quorvel
