#include "CommandLineTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace quorvel {
namespace {

using OptionsTests = CommandLineTest;

struct Wrong {
    std::vector<std::string> arguments;
    std::string_view reason;
};

TEST_F(OptionsTests, WrongUsageIsRefusedWithTheReason) {
    write("cards.csv", smallDeck);
    const auto before = listing();
    const Wrong cases[] = {
        {{}, "A command is missing"},
        {{"print"}, "no command “print”"},
        {{""}, "A command is missing"},
        {{"--quiet"}, "no command “--quiet”"},
        {{"--version", "more"}, "no command “--version”"},
        {{"sheets"}, "“sheets” needs a FILE or --deck."},
        {{"tts", "-o", "x"}, "“tts” needs a FILE or --deck."},
        {{"sheets", "cards.csv", "--deck", "Game", "-o", "x.pdf"}, "Give either a FILE or --deck."},
        {{"images", "--deck", "Game", "cards.csv"}, "Give either a FILE or --deck."},
        {{"images", "--deck", ""}, "--deck needs a name or an id behind it."},
        {{"images", "--deck"}, "--deck needs DECK behind it."},
        {{"images", "--deck", "Game", "--library", ""}, "--library needs a name behind it."},
        {{"images", "cards.csv", "-o", "x", "--library", "."}, "--library goes with --deck."},
        {{"cards", "--deck", "Game"}, "“cards” takes no --deck."},
        {{"table", "cards.csv", "--watch"}, "“table” takes no --watch."},
        {{"calibration", "-o", "x.pdf", "--watch"}, "“calibration” takes no --watch."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--watch=yes"}, "--watch takes no value."},
        {{"sheets", "cards.csv", "--watch"}, "“sheets” needs -o OUT.pdf."},
        {{"decks", "cards.csv"}, "“cards.csv” is one argument too many."},
        {{"decks", "-o", "x"}, "“decks” takes no -o."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--json"}, "“sheets” takes no --json."},
        {{"sheets", "cards.csv"}, "“sheets” needs -o OUT.pdf."},
        {{"sheets", "cards.csv", "more.csv", "-o", "x.pdf"}, "“more.csv” is one argument too many."},
        {{"sheets", "", "-o", "x.pdf"}, "empty name"},
        {{"sheets", "cards.csv", "-o"}, "-o needs OUT behind it."},
        {{"sheets", "cards.csv", "-o", ""}, "-o needs a name behind it."},
        {{"sheets", "cards.csv", "--output="}, "--output needs a name behind it."},
        {{"sheets", "cards.csv", "-x"}, "no option “-x”"},
        {{"sheets", "cards.csv", "--papre=a4"}, "no option “--papre”"},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--quiet=yes"}, "--quiet takes no value."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--kind", "poker"},
         "--kind takes classic, tarot or mini, and not “poker”."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--kind", "mini", "--template", "t.json"},
         "either --template or --kind"},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--sheet", "0"}, "--sheet takes a whole number from 1, and not “0”."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--sheet", "-1"}, "--sheet takes a whole number"},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--sheet", "one"}, "--sheet takes a whole number"},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--sheet", "99999999999999999999"}, "--sheet takes a whole number"},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--dpi", "300"}, "“sheets” takes no --dpi."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--no-bleed"}, "“sheets” takes no --no-bleed."},
        {{"sheets", "cards.csv", "-o", "x.pdf", "--replace"}, "“sheets” takes no --replace."},
        {{"images", "cards.csv", "-o", "x", "--settings", "s.json"}, "“images” takes no --settings."},
        {{"images", "cards.csv", "-o", "x", "--set", "paper=a4"}, "“images” takes no --set."},
        {{"images", "cards.csv", "-o", "x", "--dpi", "35"},
         "--dpi takes a whole number from 36 to 1200, and not “35”."},
        {{"images", "cards.csv", "-o", "x", "--dpi", "1201"}, "--dpi takes a whole number from 36 to 1200"},
        {{"images", "cards.csv", "-o", "x", "--dpi", "300.5"}, "--dpi takes a whole number from 36 to 1200"},
        {{"images", "cards.csv", "-o", "x", "--dpi="}, "--dpi takes a whole number from 36 to 1200"},
        {{"tts", "cards.csv", "-o", "x", "--dpi", "300"}, "“tts” takes no --dpi."},
        {{"table", "cards.csv", "-o", "x"}, "“table” takes no -o."},
        {{"table", "cards.csv", "--quiet"}, "“table” takes no --quiet."},
        {{"cards", "cards.csv", "--name", "x"}, "“cards” takes no --name."},
        {{"cards"}, "“cards” needs a FILE."},
        {{"calibration", "-o", "x.pdf", "cards.csv"}, "“cards.csv” is one argument too many."},
        {{"calibration"}, "“calibration” needs -o OUT.pdf."},
        {{"sample"}, "“sample” needs a FOLDER."},
        {{"sample", "x", "--kind", ""}, "--kind takes classic, tarot or mini"},
        {{"sample", "--", "x", "--kind"}, "“--kind” is one argument too many."},
    };
    for (const Wrong& each : cases) {
        std::string line;
        for (const auto& argument : each.arguments) line += argument + " ";
        EXPECT_TRUE(refusedWith(run(each.arguments), each.reason)) << line;
    }
    EXPECT_EQ(listing(), before) << "nothing is made";
}

TEST_F(OptionsTests, SettingsNameTheirChoices) {
    write("cards.csv", smallDeck);
    const struct {
        std::string setting;
        std::string_view reason;
    } cases[] = {
        {"paper=b5", "--set paper takes letter or a4, and not “b5”."},
        {"paper=A4", "--set paper takes letter or a4"},
        {"paper", "--set takes KEY=VALUE"},
        {"", "--set takes KEY=VALUE"},
        {"=a4", "--set knows no “”, only paper, orientation,"},
        {"margin=5",
         "--set knows no “margin”, only paper, orientation, spacing, gutterMM, marginMM, includeBleed, "
         "cutMarks, duplex, flip, backOffsetXMM and backOffsetYMM."},
        {"orientation=upright", "orientation takes auto, portrait or landscape"},
        {"spacing=none", "spacing takes butted or separated"},
        {"flip=short", "flip takes longEdge or shortEdge"},
        {"duplex=yes", "duplex takes true or false, and not “yes”."},
        {"cutMarks=0", "cutMarks takes true or false"},
        {"includeBleed=", "includeBleed takes true or false"},
        {"marginMM=wide", "marginMM takes a number of millimetres"},
        {"gutterMM=nan", "gutterMM takes a number of millimetres"},
        {"backOffsetXMM=inf", "backOffsetXMM takes a number of millimetres"},
        {"backOffsetYMM=1e999", "backOffsetYMM takes a number of millimetres"},
        {"marginMM=5mm", "marginMM takes a number of millimetres"},
    };
    for (const auto& each : cases)
        EXPECT_TRUE(refusedWith(run({"sheets", "cards.csv", "-o", "x.pdf", "--set", each.setting}), each.reason))
            << each.setting;
}

TEST_F(OptionsTests, TheLaterOfTwoCountsAndADoubleDashEndsTheOptions) {
    write("-deck.csv", smallDeck);
    EXPECT_TRUE(succeeded(run({"cards", "--kind", "mini", "--kind=tarot", "--", "-deck.csv"})));
    EXPECT_TRUE(succeeded(run({"cards", "./-deck.csv"})));
    EXPECT_TRUE(refusedWith(run({"cards", "-deck.csv"}), "no option “-deck.csv”"));
}

const std::vector<std::string> commands{"sample", "sheets",     "images", "tts",  "calibration",
                                        "table",  "worksheets", "cards",  "decks"};

TEST_F(OptionsTests, HelpIsAnsweredWhereverItStands) {
    const auto general = run({"--help"});
    EXPECT_TRUE(succeeded(general));
    EXPECT_EQ(run({"-h"}).output, general.output);
    EXPECT_EQ(run({"print", "--help"}).output, general.output);
    for (const auto& command : commands) {
        EXPECT_NE(general.output.find("\n  " + command + " "), std::string::npos) << command;
        const auto end = run({command, "--help"});
        EXPECT_TRUE(succeeded(end));
        EXPECT_TRUE(end.output.starts_with("Usage: quorvel-cli " + command)) << end.output;
        EXPECT_EQ(run({command, "-x", "--papre", "-h"}).output, end.output);
    }
    EXPECT_TRUE(refusedWith(run({"table", "--", "--help", "x"}), "“x” is one argument too many."));
}

TEST_F(OptionsTests, HelpKeepsWithinATerminal) {
    for (const auto& command : commands) {
        const std::string text = run({command, "--help"}).output;
        std::size_t width = 0;
        for (const char c : text) {
            if (c == '\n')
                width = 0;
            else if ((c & 0xc0) != 0x80)
                ++width;
            EXPECT_LT(width, 80u) << text;
        }
    }
}

TEST_F(OptionsTests, VersionIsOneLine) {
    const auto end = run({"--version"});
    EXPECT_TRUE(succeeded(end));
    EXPECT_TRUE(end.output.starts_with("quorvel-cli "));
    EXPECT_EQ(std::ranges::count(end.output, '\n'), 1);
}

/// Every word of `text` that looks like a long option.
std::vector<std::string> longOptions(const std::string& text) {
    std::vector<std::string> found;
    for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at + 2)) {
        std::size_t end = at + 2;
        while (end < text.size() && (std::islower(static_cast<unsigned char>(text[end])) || text[end] == '-')) ++end;
        if (end > at + 2) found.push_back(text.substr(at, end - at));
    }
    std::ranges::sort(found);
    const auto repeats = std::ranges::unique(found);
    found.erase(repeats.begin(), repeats.end());
    return found;
}

TEST_F(OptionsTests, TheManualPageTellsOfEveryCommandOptionAndSetting) {
    std::ifstream file(QUORVEL_SOURCE_DIR "/Packaging/quorvel-cli.1");
    ASSERT_TRUE(file);
    std::string manual(std::istreambuf_iterator<char>(file), {});
    for (std::size_t at; (at = manual.find("\\-")) != std::string::npos;) manual.replace(at, 2, "-");

    std::string help = run({"--help"}).output;
    for (const auto& command : commands) {
        EXPECT_NE(manual.find(".B " + command), std::string::npos) << command;
        help += run({command, "--help"}).output;
    }
    EXPECT_EQ(longOptions(manual), longOptions(help));
    const std::string settings = help.substr(help.find("Settings of print sheets:\n"));
    for (std::size_t at = settings.find("\n  "); at != std::string::npos; at = settings.find("\n  ", at + 1)) {
        const std::string key = settings.substr(at + 3, settings.find(':', at) - at - 3);
        if (key.find(' ') != std::string::npos) break;
        EXPECT_NE(manual.find(key), std::string::npos) << key;
    }
}

}  // namespace
}  // namespace quorvel
