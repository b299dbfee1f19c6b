#include "Library/BookmarkData.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(BookmarkData, HasThisForm) {
    const FileIdentity identity{64769, 18446744073709551615U, FileIdentity::Time{-5, 123}};
    EXPECT_EQ((BookmarkData{"/a b\n\xff", identity}.encoded()),
              "quorvel-bookmark 1 64769 18446744073709551615 -5 123\n/a b\n\xff");
    EXPECT_EQ((BookmarkData{"/a", FileIdentity{1, 2, std::nullopt}}.encoded()), "quorvel-bookmark 1 1 2 -\n/a");
    EXPECT_EQ((BookmarkData{"/a", std::nullopt}.encoded()), "quorvel-bookmark 1\n/a");
}

TEST(BookmarkData, ThereAndBack) {
    for (const std::string path : {"/", "/a", "/a\n/b", "/\xff\xfe", "/é"})
        for (const std::optional<FileIdentity>& identity :
             {std::optional<FileIdentity>(), std::optional(FileIdentity{1, 2, std::nullopt}),
              std::optional(FileIdentity{3, 4, FileIdentity::Time{5, 999'999'999}})}) {
            const BookmarkData data{path, identity};
            EXPECT_EQ(BookmarkData::decode(data.encoded()), data);
        }
}

TEST(BookmarkData, RefusesWhatIsCutOffOrForeign) {
    const std::string whole = BookmarkData{"/a", FileIdentity{1, 2, FileIdentity::Time{3, 4}}}.encoded();
    for (std::size_t length = 0; length + 1 < whole.size(); ++length)
        EXPECT_FALSE(BookmarkData::decode(whole.substr(0, length))) << length;
    for (const char* data :
         {"book\x10\x02", "quorvel-bookmark 2 1 2 -\n/a", "quorvel-bookmark 12 1 2 -\n/a", "quorvel-bookmark 1\na",
          "quorvel-bookmark 1 1 2 -3\n/a", "quorvel-bookmark 1 -1 2 -\n/a", "quorvel-bookmark 1 x 2 -\n/a",
          "quorvel-bookmark 1 99999999999999999999 2 -\n/a", "quorvel-bookmark 1 1 2 - \n/a", "/a"})
        EXPECT_FALSE(BookmarkData::decode(data)) << data;
}

}  // namespace
}  // namespace quorvel
