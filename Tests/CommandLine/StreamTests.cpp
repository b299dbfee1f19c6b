#include "CommandLineTest.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class StreamTests : public CommandLineTest {
protected:
    StreamTests() { write("deck.csv", smallDeck); }

    ProgramEnd run(std::vector<std::string> arguments, ProgramCall::Output output) const {
        return runProgram({.arguments = std::move(arguments), .folder = folder_.path(), .output = output});
    }
};

TEST_F(StreamTests, OutputThatCantBePrintedIsAFailure) {
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"table", "deck.csv"}, {"cards", "deck.csv"}, {"--help"}, {"--version"}, {"images", "--help"}}) {
        EXPECT_TRUE(failedWith(run(arguments, ProgramCall::Output::closed), "couldn’t be printed: it leads nowhere."));
        EXPECT_TRUE(failedWith(run(arguments, ProgramCall::Output::fullDisk), "the disk is full."));
        EXPECT_TRUE(failedWith(run(arguments, ProgramCall::Output::readerGone), "its reader has gone."));
    }
}

TEST_F(StreamTests, LargeOutputToAReaderThatLeavesIsAFailure) {
    write("rows.csv", deckOf(5000));
    EXPECT_TRUE(failedWith(run({"cards", "rows.csv"}, ProgramCall::Output::readerGone), "its reader has gone."));
}

TEST_F(StreamTests, AnExportWithoutStandardOutputIsMadeAllTheSame) {
    EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "x.pdf"}, ProgramCall::Output::closed), "printed"));
    EXPECT_TRUE(read("x.pdf").starts_with("%PDF")) << "and nothing else was written into it";
    EXPECT_TRUE(read("x.pdf").ends_with("%%EOF\n"));
    EXPECT_TRUE(succeeded(run({"images", "deck.csv", "-o", "images", "--quiet"}, ProgramCall::Output::closed)));
    EXPECT_EQ(listing("images").size(), 3u);
}

/// What the program shows on a terminal of 80 columns, and its exit code. Ctrl-C is pressed when it shows
/// `interruptAt`.
std::pair<std::string, int> shownOnTerminal(const fs::path& folder, std::vector<std::string> arguments,
                                            std::string_view interruptAt = "\x03") {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    int terminal = -1;
    const pid_t process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0) {
        std::vector<char*> pointers{const_cast<char*>(QUORVEL_CLI)};
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        if (chdir(folder.c_str()) != 0) _exit(126);
        execv(QUORVEL_CLI, pointers.data());
        _exit(127);
    }
    std::string shown;
    char buffer[4096];
    bool interrupted = false;
    for (ssize_t count; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
        shown.append(buffer, std::size_t(count));
        if (interrupted || shown.find(interruptAt) == std::string::npos) continue;
        interrupted = write(terminal, "\x03", 1) == 1;
    }
    close(terminal);
    int status = 0;
    waitpid(process, &status, 0);
    return {shown, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

TEST_F(StreamTests, ATerminalShowsTheProgressAndKeepsTheNotice) {
    const auto [shown, code] = shownOnTerminal(folder_.path(), {"images", "deck.csv", "-o", "out"});
    EXPECT_EQ(code, 0);
    EXPECT_NE(shown.find("Saving card images…"), std::string::npos) << shown;
    EXPECT_NE(shown.find("█ 2 of 2"), std::string::npos) << shown;
    EXPECT_TRUE(shown.ends_with("\r\x1b[KSaved 2 card images to “out”.\r\n")) << shown;
}

TEST_F(StreamTests, QuietShowsNoProgress) {
    const auto [shown, code] = shownOnTerminal(folder_.path(), {"images", "deck.csv", "-o", "out", "--quiet"});
    EXPECT_EQ(code, 0);
    EXPECT_EQ(shown, "");
}

TEST_F(StreamTests, OnATerminalAFailureStandsAlone) {
    write("none.csv", "Name,Qty\nOwl,0\n");
    const auto [shown, code] = shownOnTerminal(folder_.path(), {"sheets", "none.csv", "-o", "x.pdf"});
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(shown.ends_with("\r\x1b[KThere are no cards to print: every quantity is 0.\r\n")) << shown;
}

TEST_F(StreamTests, AWatchSaysHowItEndsAndEndsByThat) {
    const std::string_view hint = "Waiting for the next save of “deck.csv”; Ctrl-C ends it.";
    const auto [shown, code] = shownOnTerminal(folder_.path(), {"sheets", "deck.csv", "-o", "x.pdf", "--watch"}, hint);
    EXPECT_EQ(code, 0) << shown;
    EXPECT_NE(shown.find(" Saved 1 pages to “x.pdf”.\r\n" + std::string(hint) + "\r\n"), std::string::npos) << shown;
}

}  // namespace
}  // namespace quorvel
