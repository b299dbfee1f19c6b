#include "Support/Images/ReadPNG.h"
#include "Support/Process.h"
#include "Support/TemporaryFolder.h"
#include "Walk/Display.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <string>
#include <vector>

// What a user does in the first minutes, with the installed program on a real screen.
namespace quorvel {
namespace {

namespace fs = std::filesystem;

// The first row of cards: beside the decks, above whatever the banner at the bottom says.
constexpr ScreenPart firstCards{240, 140, 1000, 240};

std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::vector<fs::path> filesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

class WalkTest : public testing::Test {
protected:
    TemporaryFolder home;
    const Display display;
    const fs::path program = home / "installed/bin/quorvel";
    const fs::path exports = home / "exports";
    const fs::path library = home / "data/Quorvel";
    int stages = 0;

    WalkTest() {
        for (const char* name : {"config", "cache", "run", "bin", "exports"}) fs::create_directory(home / name);
        fs::permissions(home / "run", fs::perms::owner_all);
        // What a desktop has to open folders with; here it only says what it was asked for.
        const fs::path opener = home / "bin/xdg-open";
        std::ofstream(opener) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >>\"$HOME/opened\"\n";
        fs::permissions(opener, fs::perms::owner_all);
        fs::remove_all(WALK_PICTURES);
        fs::create_directories(WALK_PICTURES);
    }

    void SetUp() override {
        const ProcessResult installed =
            runProcess({"cmake", "--install", QUORVEL_BUILD, "--prefix", home / "installed"});
        ASSERT_EQ(installed.status, 0) << installed.errors;
    }

    ProcessCall start() const {
        const auto in = [this](const char* folder) { return (home / folder).string(); };
        return {.words = {program},
                .folder = home.path(),
                .environment = {{"DISPLAY", display.name()},
                                {"QT_QPA_PLATFORM", "xcb"},
                                {"HOME", home.path()},
                                {"PATH", in("bin") + ":" + variable("PATH")},
                                {"LC_ALL", "C.UTF-8"},
                                {"XDG_DATA_HOME", in("data")},
                                {"XDG_CONFIG_HOME", in("config")},
                                {"XDG_CACHE_HOME", in("cache")},
                                {"XDG_RUNTIME_DIR", in("run")},
                                {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"},
                                // The toolkit's keyboard library cuts words from bytes that don't end with a zero.
                                {"ASAN_OPTIONS", variable("ASAN_OPTIONS") + ":strict_string_checks=0"}}};
    }

    /// Keeps what is on the screen, for whoever looks into a run afterwards.
    Image keep(const std::string& name) {
        Image picture = display.lookAtRest();
        const std::string number = std::to_string(++stages);
        writePNG(picture, fs::path(WALK_PICTURES) / ((stages < 10 ? "0" : "") + number + " " + name + ".png"));
        return picture;
    }

    /// Answers the dialog with this title.
    void answer(const std::string& title, const fs::path& path) {
        ASSERT_TRUE(display.focus(title)) << "no dialog " << title;
        display.press({"ctrl+a"});
        display.type(path);
        keep(title);
        display.press({"Return"});
        ASSERT_TRUE(display.isGone(title));
    }

    std::vector<fs::path> records() const { return filesIn(library / "Decks"); }

    fs::path spreadsheet() const {
        for (const fs::path& file : filesIn(library / "Sample Deck"))
            if (file.extension() == ".csv") return file;
        ADD_FAILURE() << "the sample has no spreadsheet";
        return {};
    }

    std::size_t openedFolders() const {
        const std::string opened = contentsOf(home / "opened");
        return std::size_t(std::ranges::count(opened, '\n'));
    }

    /// What a program that doesn't do its part has said.
    static std::string lastWords(RunningProcess& running) {
        running.send(SIGTERM);
        return running.wait().errors;
    }

    static void expectQuietEnd(RunningProcess& running) {
        const ProcessEnd end = running.wait();
        EXPECT_EQ(end.exitCode, 0) << "signal " << end.signal;
        EXPECT_EQ(end.errors, "");
        EXPECT_EQ(end.output, "");
    }
};

constexpr auto deck = "Orchard Couriers";

TEST_F(WalkTest, FromTheSampleDeckToExportsAndBack) {
    RunningProcess first(start());
    ASSERT_TRUE(display.focus("Quorvel")) << lastWords(first);
    const Image welcome = keep("Welcome");

    // File, Open the Sample Deck.
    display.press({"alt+f", "Down", "Return"});
    ASSERT_TRUE(display.focus(deck));
    const Image sample = keep("Sample deck");
    EXPECT_FALSE(sample == welcome);

    // Another program saves the spreadsheet.
    const Image cardsBefore = display.lookAtRest(firstCards);
    std::string text = contentsOf(spreadsheet());
    const std::string_view name = "Rain Barrel";
    ASSERT_NE(text.find(name), std::string::npos);
    text.replace(text.find(name), name.size(), "Thunder Jar");
    std::ofstream(spreadsheet(), std::ios::binary) << text;
    ASSERT_TRUE(display.changes(firstCards, cardsBefore)) << "the cards didn't follow";
    keep("After a save");
    const Image cards = display.lookAtRest(firstCards);
    EXPECT_FALSE(cards == cardsBefore);

    ASSERT_TRUE(display.focus(deck));
    display.press({"ctrl+e"});
    answer("Choose Where to Save the Print Sheets", exports / "sheets.pdf");
    ASSERT_TRUE(eventually([&] { return fs::exists(exports / "sheets.pdf"); }));
    ASSERT_TRUE(eventually([&] { return openedFolders() == 1; }));
    keep("Print sheets saved");

    ASSERT_TRUE(display.focus(deck));
    display.press({"ctrl+shift+e"});
    answer("Choose Where to Save the Card Images", exports);
    ASSERT_TRUE(eventually([&] { return openedFolders() == 2; }));
    keep("Card images saved");

    // File, Export, Tabletop Simulator Deck Sheet.
    ASSERT_TRUE(display.focus(deck));
    display.press({"alt+f", "Down", "Down", "Down", "Down", "Right", "Down", "Down", "Return"});
    answer("Choose Where to Save the Tabletop Simulator Images", exports);
    ASSERT_TRUE(eventually([&] { return openedFolders() == 3; }));
    keep("Tabletop Simulator saved");

    std::map<fs::path, std::size_t> made;
    for (const fs::path& file : filesIn(exports)) ++made[fs::relative(file, exports).parent_path()];
    EXPECT_THAT(made,
                testing::ElementsAre(testing::Pair("", 1), testing::Pair("Orchard Couriers Tabletop Simulator", 3),
                                     testing::Pair("Orchard Couriers card images", 15)));
    EXPECT_TRUE(contentsOf(exports / "sheets.pdf").starts_with("%PDF-"));

    ASSERT_TRUE(display.focus(deck));
    display.press({"ctrl+q"});
    expectQuietEnd(first);
    ASSERT_EQ(records().size(), 1u);
    const std::string record = contentsOf(records().front());

    RunningProcess second(start());
    ASSERT_TRUE(display.focus(deck)) << "the deck isn't there after a new start. " << lastWords(second);
    ASSERT_TRUE(eventually([&] { return display.look(firstCards) == cards; })) << "the cards aren't there";
    EXPECT_FALSE(keep("The next start") == welcome);
    display.press({"ctrl+q"});
    expectQuietEnd(second);
    ASSERT_EQ(records().size(), 1u);
    EXPECT_EQ(contentsOf(records().front()), record);
}

}  // namespace
}  // namespace quorvel
