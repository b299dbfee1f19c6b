#include "Foundation/FileFailure.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using Operation = FileFailure::Operation;

TEST(FileFailure, speaksToTheUser) {
    const auto read = [](int code) { return FileFailure{"/decks/cards.csv", code}.description(); };
    EXPECT_EQ(read(ENOENT), "“cards.csv” doesn’t exist.");
    EXPECT_EQ(read(EISDIR), "“cards.csv” is a folder, not a file.");
    EXPECT_EQ(read(EINVAL), "“cards.csv” isn’t a file.");
    EXPECT_EQ(read(EACCES), "You aren’t allowed to read “cards.csv”.");
    EXPECT_EQ(read(EFBIG), "“cards.csv” couldn’t be read: it is too large.");
    EXPECT_EQ(read(EIO), "“cards.csv” couldn’t be read: the disk reports an error.");

    const auto write = [](int code) { return FileFailure{"/decks/out.pdf", code, Operation::write}.description(); };
    EXPECT_EQ(write(ENOENT), "The folder for “out.pdf” doesn’t exist.");
    EXPECT_EQ(write(EACCES), "You aren’t allowed to write “out.pdf”.");
    EXPECT_EQ(write(ENOSPC), "“out.pdf” couldn’t be written: the disk is full.");
    EXPECT_EQ(write(EROFS), "“out.pdf” couldn’t be written: the disk is read-only.");
    EXPECT_EQ(write(EISDIR), "“out.pdf” couldn’t be written: a folder of this name is in its place.");

    const auto make = [](int code) { return FileFailure{"/decks/out", code, Operation::makeFolder}.description(); };
    EXPECT_EQ(make(EACCES), "You aren’t allowed to make “out”.");
    EXPECT_EQ(make(EEXIST), "“out” couldn’t be made: something of this name is already there.");
}

TEST(FileFailure, namesWhatHasNoPlainName) {
    EXPECT_EQ((FileFailure{"/decks/out/", EISDIR}).description(), "“out” is a folder, not a file.");
    EXPECT_EQ((FileFailure{"/", EISDIR}).description(), "“/” is a folder, not a file.");
}

TEST(FileFailure, hasASentenceForEveryCode) {
    for (const auto operation : {Operation::read, Operation::write, Operation::makeFolder})
        for (int code = 0; code < 200; ++code) {
            const std::string text = FileFailure{"a", code, operation}.description();
            EXPECT_NE(text.find("“a”"), std::string::npos) << text;
            EXPECT_TRUE(text.ends_with('.')) << text;
        }
}

}  // namespace
}  // namespace quorvel
