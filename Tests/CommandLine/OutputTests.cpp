#include "Appearance.h"
#include "CommandLineTest.h"

#include <algorithm>
#include <csignal>
#include <sys/stat.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class OutputTests : public CommandLineTest {
protected:
    OutputTests() { write("deck.csv", smallDeck); }

    ProgramEnd images(const std::string& output, std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments{"images", "deck.csv", "-o", output, "--dpi", "40"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
};

const std::vector<std::string> imageFiles{"001 Rain Barrel.png", "002 Lost Map.png", "back.png"};

TEST_F(OutputTests, AFolderIsMadeOrAnEmptyOneFilled) {
    EXPECT_TRUE(succeeded(images("new")));
    EXPECT_EQ(listing("new"), imageFiles);
    EXPECT_TRUE(succeeded(images("slash/")));
    EXPECT_EQ(listing("slash"), imageFiles);

    fs::create_directory(*this / "empty");
    fs::permissions(*this / "empty", fs::perms::owner_all | fs::perms::group_all);
    EXPECT_TRUE(succeeded(images("empty")));
    EXPECT_EQ(listing("empty"), imageFiles);
    EXPECT_EQ(fs::status(*this / "empty").permissions(), fs::perms::owner_all | fs::perms::group_all);

    fs::create_directory(*this / "real");
    fs::create_symlink("real", *this / "link");
    EXPECT_TRUE(succeeded(images("link")));
    EXPECT_EQ(listing("real"), imageFiles);
    EXPECT_TRUE(fs::is_symlink(*this / "link"));
    EXPECT_EQ(std::ranges::count_if(listing(), [](const std::string& name) { return name.starts_with("."); }), 0);
}

TEST_F(OutputTests, NewFoldersHaveTheUsualPermissions) {
    const mode_t old = umask(027);
    const auto end = images("new");
    umask(old);
    EXPECT_TRUE(succeeded(end));
    EXPECT_EQ(fs::status(*this / "new").permissions(),
              fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec);
    EXPECT_EQ(fs::status(*this / "new/back.png").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(OutputTests, AFolderThatIsNotEmptyStopsEveryCommand) {
    write("old/notes.txt", "keep");
    write("hidden/.notes", "keep");
    const auto before = listing();
    for (const std::string folder : {"old", "hidden"}) {
        const std::string sentence = "“" + folder + "” isn’t empty; name a new folder, or replace it with --replace.";
        EXPECT_TRUE(failedWith(run({"sample", folder}), sentence));
        EXPECT_TRUE(failedWith(run({"images", "deck.csv", "-o", folder}), sentence));
        EXPECT_TRUE(failedWith(run({"tts", "deck.csv", "-o", folder}), sentence));
    }
    EXPECT_EQ(listing(), before);
}

TEST_F(OutputTests, ReplaceSwapsInTheNewFolderWhole) {
    write("old/notes.txt", "gone");
    write("old/below/deep.txt", "gone");
    EXPECT_TRUE(succeeded(images("old", {"--replace"})));
    EXPECT_EQ(listing("old"), imageFiles);
    EXPECT_TRUE(succeeded(run({"sample", "old", "--replace"})));
    EXPECT_EQ(listing("old").size(), 17u);
    EXPECT_TRUE(succeeded(images("absent", {"--replace"}))) << "nothing to replace";
    EXPECT_EQ(std::ranges::count_if(listing(), [](const std::string& name) { return name.starts_with("."); }), 0);
}

TEST_F(OutputTests, AFailureLeavesTheOldFolder) {
    write("old/notes.txt", "keep");
    write("broken.csv", "");
    EXPECT_TRUE(failedWith(run({"images", "broken.csv", "-o", "old", "--replace"}), "is empty"));
    EXPECT_EQ(listing("old"), std::vector<std::string>{"notes.txt"});
}

TEST_F(OutputTests, NothingThatIsNeededIsSweptAway) {
    write("work/deck.csv", "Name,Art\nOwl,art/owl.png\n");
    writePicture("work/art/owl.png");
    write("design/template.json", "");
    write("design/settings.json", "");
    const auto before = listing();
    const auto refused = [&](const fs::path& folder, std::vector<std::string> arguments, std::string_view part) {
        const ProgramCall call{.arguments = std::move(arguments),
                               .folder = *this / folder,
                               .environment = {{"HOME", (*this / "home/me").string()}}};
        EXPECT_TRUE(failedWith(runProgram(call), part)) << part;
    };
    fs::create_directories(*this / "home/me");
    refused("", {"images", "work/deck.csv", "-o", "work", "--replace"}, "“work” holds “deck.csv”, which the command");
    refused("", {"images", "work/deck.csv", "-o", "work/art", "--replace"}, "“art” holds “owl.png”, which the command");
    refused("", {"images", "deck.csv", "-o", "work/art", "--art", "work/art", "--replace"}, "“art” holds “art”");
    refused("", {"images", "deck.csv", "-o", "work", "--icons", "work/art", "--replace"}, "“work” holds “art”");
    refused("work", {"images", "../deck.csv", "-o", ".", "--replace"}, "The command runs within “work”");
    refused("work/art", {"sample", "..", "--replace"}, "The command runs within “work”");
    refused("", {"sample", "home", "--replace"}, "“home” holds your home folder");
    refused("home/me", {"sample", "."}, "The command runs within “me”");
    fs::remove_all(*this / "home");
    EXPECT_EQ(listing(), before);
}

TEST_F(OutputTests, PlacesWhereAFolderCantBe) {
    write("file", "text");
    fs::create_symlink("nowhere", *this / "dangling");
    const auto before = listing();
    for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--replace"}}) {
        EXPECT_TRUE(failedWith(images("file", more), "“file” is a file, not a folder."));
        EXPECT_TRUE(failedWith(images("file/new", more), "“new”"));
        EXPECT_TRUE(failedWith(images("absent/new", more), "The folder for “new” doesn’t exist."));
        EXPECT_TRUE(failedWith(images("dangling", more), "“dangling”"));
        EXPECT_TRUE(failedWith(images("/dev/null", more), "“null” is a file, not a folder."));
        EXPECT_TRUE(failedWith(images("/", more), "“/”"));
        EXPECT_TRUE(failedWith(images(std::string(300, 'x'), more), "too long"));
    }
    EXPECT_EQ(listing(), before);
}

TEST_F(OutputTests, PlacesWhereAPDFCantBe) {
    fs::create_directory(*this / "folder");
    ASSERT_EQ(mkfifo((*this / "pipe").c_str(), 0666), 0);
    const auto before = listing();
    const struct {
        std::string output;
        std::string_view part;
    } cases[] = {
        {"folder", "“folder” couldn’t be written: a folder of this name is in its place."},
        {"folder/", "couldn’t be written: a folder of this name is in its place."},
        {"absent/x.pdf", "The folder for “x.pdf” doesn’t exist."},
        {"deck.csv/x.pdf", "“x.pdf” couldn’t be written"},
        {"pipe", "“pipe” couldn’t be written: what is in its place isn’t a file."},
        {"/dev/null", "“null” couldn’t be written"},
        {"/dev/full", "“full” couldn’t be written"},
        {"deck.csv", "The command reads “deck.csv” and can’t write over it."},
        {"./folder/../deck.csv", "The command reads “deck.csv”"},
        {std::string(300, 'x'), "too long"},
    };
    for (const auto& each : cases) {
        EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", each.output}), each.part)) << each.output;
        if (!each.part.starts_with("The command reads")) {
            EXPECT_TRUE(failedWith(run({"calibration", "-o", each.output}), each.part)) << each.output;
        }
    }
    EXPECT_EQ(listing(), before);
}

TEST_F(OutputTests, FoldersThatMayNotBeWrittenIn) {
    fs::permissions(folder_.path(),
                    fs::perms::owner_all | fs::perms::group_all | fs::perms::others_read | fs::perms::others_exec);
    fs::create_directories(*this / "closed/old");
    write("closed/old/notes.txt", "keep");
    fs::permissions(*this / "closed",
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    const auto before = listing();
    const auto run = [&](std::vector<std::string> arguments) {
        return runProgram({.arguments = std::move(arguments), .folder = folder_.path(), .prefix = withoutRoot()});
    };
    EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "closed/x.pdf"}), "You aren’t allowed to write “x.pdf”."));
    EXPECT_TRUE(failedWith(run({"calibration", "-o", "closed/x.pdf"}), "You aren’t allowed to write “x.pdf”."));
    EXPECT_TRUE(failedWith(run({"images", "deck.csv", "-o", "closed/x"}), "You aren’t allowed to make “x”."));
    EXPECT_TRUE(
        failedWith(run({"tts", "deck.csv", "-o", "closed/old", "--replace"}), "You aren’t allowed to make “old”."));
    EXPECT_TRUE(failedWith(run({"sample", "closed/x"}), "You aren’t allowed to make “x”."));
    EXPECT_EQ(listing(), before);
    fs::permissions(*this / "closed", fs::perms::owner_all);
}

TEST_F(OutputTests, AFileLargerThanAllowedIsAFailureThatLeavesNothing) {
    write("old.pdf", "old");
    const auto before = listing();
    const auto run = [&](std::vector<std::string> arguments) {
        return runProgram({.arguments = std::move(arguments),
                           .folder = folder_.path(),
                           .prefix = {"prlimit", "--core=0", "--fsize=4096"}});
    };
    const std::string_view sentence = "couldn’t be written: it is larger than the disk allows.";
    EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "old.pdf"}), sentence));
    EXPECT_TRUE(failedWith(run({"images", "deck.csv", "-o", "new"}), sentence));
    EXPECT_TRUE(failedWith(run({"tts", "deck.csv", "-o", "new"}), sentence));
    EXPECT_TRUE(failedWith(run({"sample", "new"}), sentence));
    EXPECT_EQ(listing(), before);
    EXPECT_EQ(read("old.pdf"), "old");
}

TEST_F(OutputTests, ASignalEndsTheWorkAndLeavesNothing) {
    write("rows.csv", deckOf(3000));
    write("old/notes.txt", "keep");
    const auto before = listing();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        for (const std::string output : {"new", "old"}) {
            Appearance appearance(folder_.path());
            RunningProgram program({.arguments = {"images", "rows.csv", "-o", output, "--replace", "--dpi", "72"},
                                    .folder = folder_.path()});
            EXPECT_TRUE(appearance.next().starts_with(".quorvel-"));
            program.send(signal);
            const auto end = program.wait();
            EXPECT_EQ(end.signal, signal) << end.exitCode << end.errors;
            EXPECT_EQ(end.output, "");
            EXPECT_EQ(listing(), before);
        }
    }
}

TEST_F(OutputTests, ASignalBeforeThePDFIsDoneLeavesNoPDF) {
    write("rows.csv", deckOf(5000));
    write("old.pdf", "old");
    const auto before = listing();
    Appearance reading(folder_.path(), IN_CLOSE_NOWRITE);
    RunningProgram program({.arguments = {"sheets", "rows.csv", "-o", "old.pdf"}, .folder = folder_.path()});
    EXPECT_EQ(reading.next(), "rows.csv") << "the work has begun";
    program.send(SIGTERM);
    EXPECT_EQ(program.wait().signal, SIGTERM);
    EXPECT_EQ(listing(), before);
    EXPECT_EQ(read("old.pdf"), "old");
}

TEST_F(OutputTests, AnIgnoredSignalStaysIgnored) {
    Appearance appearance(folder_.path());
    RunningProgram program({.arguments = {"images", "deck.csv", "-o", "new"},
                            .folder = folder_.path(),
                            .prefix = {"env", "--ignore-signal=HUP"}});
    EXPECT_TRUE(appearance.next().starts_with(".quorvel-"));
    program.send(SIGHUP);
    EXPECT_TRUE(succeeded(program.wait()));
    EXPECT_EQ(listing("new"), imageFiles);
}

}  // namespace
}  // namespace quorvel
