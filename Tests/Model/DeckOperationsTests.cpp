#include "Model/DeckOperations.h"
#include "Samples/SampleDeck.h"
#include "Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

namespace quorvel::DeckOperations {
namespace {

namespace fs = std::filesystem;
using Kind = SampleTemplates::Kind;

TEST(NewDeck, isEmptyUnderItsName) {
    for (const Kind kind : {Kind::classic, Kind::tarot, Kind::mini}) {
        const DeckProject made = newDeck(kind, "Dragons", 123.5);
        DeckProject expected;
        expected.id = made.id;
        expected.name = "Dragons";
        expected.template_ = made.template_;
        expected.created = 123.5;
        EXPECT_EQ(made, expected);
        EXPECT_EQ(made.template_.name, SampleTemplates::make(kind, "Dragons").name);
        EXPECT_EQ(made.template_.size, SampleTemplates::make(kind, "Dragons").size);
        EXPECT_NE(made.id, newDeck(kind, "Dragons", 123.5).id);
        EXPECT_NE(made.template_.id, newDeck(kind, "Dragons", 123.5).template_.id);
    }
}

TEST(NewDeck, startsWithTheSettingsOfEveryNewDeck) {
    const DeckProject made = newDeck(Kind::classic, "Dragons", 0);
    EXPECT_TRUE(made.mapping.columns.empty());
    EXPECT_EQ(made.sheet, SheetSettings());
    EXPECT_FALSE(made.source || made.artFolder || made.iconFolder);
    EXPECT_EQ(made.sheetIndex, 0);
    EXPECT_TRUE(made.imageBleed);
    EXPECT_EQ(made.imageDPI, 300);
}

TEST(NewDeck, trimsItsName) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"  Dragons\t\n", "Dragons"},           {"Two  words", "Two  words"},
        {"\u00A0\u2028Dragons\r\n", "Dragons"}, {"", "New Deck"},
        {" \t\r\n\u2029", "New Deck"},          {"a\xFFz", "a\uFFFDz"},
    };
    for (const auto& [given, expected] : rows) {
        const DeckProject made = newDeck(Kind::classic, given, 0);
        EXPECT_EQ(made.name, expected);
        EXPECT_EQ(made.template_.name, SampleTemplates::make(Kind::classic, expected).name);
    }
}

TEST(SampleDeck, standsOnItsFolder) {
    const UUID id = UUID::random();
    const fs::path folder = "/support/Sample Deck/" + id.text();
    const DeckProject made = sampleDeck(Kind::tarot, id, folder, 7);
    DeckProject expected = newDeck(Kind::tarot, "Orchard Couriers", 7);
    expected.id = id;
    expected.template_ = made.template_;
    expected.source = Bookmark{std::nullopt, "Orchard Couriers.csv", (folder / "Orchard Couriers.csv").string()};
    expected.artFolder = Bookmark{std::nullopt, "The sample deck’s folder", folder.string()};
    EXPECT_EQ(made, expected);
    EXPECT_EQ(made.template_.size, CardSize::tarot);
}

TEST(Renamed, isTrimmedOrNothing) {
    EXPECT_EQ(renamed("Dragons"), "Dragons");
    EXPECT_EQ(renamed("\n Dragons \t"), "Dragons");
    EXPECT_EQ(renamed("0"), "0");
    for (const char* nothing : {"", " ", "   \t\n", "\u00A0\u3000"}) EXPECT_EQ(renamed(nothing), std::nullopt);
}

TEST(Duplicate, keepsAllButIdsNameAndDate) {
    DeckProject source = newDeck(Kind::mini, "Dragons", 1);
    source.mapping.setColumn(Field::title, "Name");
    source.sheet.duplex = true;
    source.source = Bookmark{"data", "cards.csv", "/cards.csv"};
    source.artFolder = Bookmark{"data", "art", "/art"};
    source.iconFolder = Bookmark{"data", "icons", "/icons"};
    source.sheetIndex = 2;
    source.imageBleed = false;
    source.imageDPI = 600;
    const DeckProject copy = duplicate(source, 9);
    EXPECT_NE(copy.id, source.id);
    EXPECT_NE(copy.template_.id, source.template_.id);
    DeckProject expected = source;
    expected.id = copy.id;
    expected.template_.id = copy.template_.id;
    expected.name = "Dragons copy";
    expected.created = 9;
    EXPECT_EQ(copy, expected);
    EXPECT_EQ(duplicate(copy, 10).name, "Dragons copy copy");
}

TEST(WithSpreadsheet, startsTheReadingAnew) {
    DeckProject before = newDeck(Kind::classic, "Dragons", 1);
    before.mapping.setColumn(Field::title, "Name");
    before.sheetIndex = 3;
    before.source = Bookmark{"old", "old.csv", "/old.csv"};
    before.artFolder = Bookmark{"data", "art", "/art"};
    const Bookmark source{"new", "new.csv", "/new.csv"};
    DeckProject expected = before;
    expected.source = source;
    expected.mapping = {};
    expected.sheetIndex = 0;
    EXPECT_EQ(withSpreadsheet(before, source), expected);
}

TEST(WithSpreadsheet, namesADeckThatNobodyHasNamed) {
    struct Row {
        std::string deck, file, after;
    };
    const Row rows[] = {
        {"New Deck", "Dragons.csv", "Dragons"},   {"New Deck", "Dragons.v2.xlsx", "Dragons.v2"},
        {"New Deck", "Dragons", "Dragons"},       {"New Deck", " Dragons .csv", "Dragons"},
        {"New Deck", " .csv", "New Deck"},        {"New Deck", "", "New Deck"},
        {"New Deck", "caf\xE9.csv", "caf\uFFFD"}, {"New Deck ", "Dragons.csv", "New Deck "},
        {"new deck", "Dragons.csv", "new deck"},  {"Knights", "Dragons.csv", "Knights"},
    };
    for (const auto& [deck, file, after] : rows) {
        DeckProject project;
        project.name = deck;
        EXPECT_EQ(withSpreadsheet(project, Bookmark{"data", file, "/" + file}).name, after) << deck << ", " << file;
    }
}

/// An application's folder with a deck's sample folder in it.
class FolderToRemove : public testing::Test {
protected:
    TemporaryFolder root;
    fs::path top = fs::canonical(root.path());
    Library library{top / "Support"};
    fs::path sample = library.sampleFolder();
    fs::path folder = sample / "5B1F0E2C";
    fs::path file = folder / "Orchard Couriers.csv";

    void SetUp() override {
        fs::create_directories(folder);
        std::ofstream(file) << "Name\n";
    }

    static DeckProject deckOn(const fs::path& source, std::optional<std::string> data = {}) {
        DeckProject project;
        project.id = UUID::random();
        project.source = Bookmark{std::move(data), "cards.csv", source.native()};
        return project;
    }

    std::optional<fs::path> removed(const fs::path& source, const std::vector<DeckProject>& remaining = {}) {
        return folderToRemove(deckOn(source), remaining, library);
    }
};

TEST_F(FolderToRemove, isTheSampleFolderOfTheDeck) {
    EXPECT_EQ(removed(file), folder);
    EXPECT_EQ(folderToRemove(sampleDeck(Kind::classic, UUID::random(), folder, 0), {}, library), folder);
    EXPECT_EQ(removed(sample / "gone" / "cards.csv"), sample / "gone") << "whether it exists or not";
}

TEST_F(FolderToRemove, needsAPlainReference) {
    EXPECT_EQ(folderToRemove(deckOn(file, "data"), {}, library), std::nullopt);
    EXPECT_EQ(folderToRemove(deckOn(file, ""), {}, library), std::nullopt);
    DeckProject none;
    EXPECT_EQ(folderToRemove(none, {}, library), std::nullopt);
    none.artFolder = Bookmark{std::nullopt, "art", folder.native()};
    EXPECT_EQ(folderToRemove(none, {}, library), std::nullopt) << "the source alone decides";
}

TEST_F(FolderToRemove, isReadComponentByComponent) {
    const fs::path support = library.applicationSupport;
    const std::pair<fs::path, bool> rows[] = {
        {sample / "." / folder.filename() / "cards.csv", true},
        {sample / "other" / ".." / folder.filename() / "cards.csv", true},
        {sample.native() + "//" + folder.filename().native() + "//cards.csv", true},
        {folder / "cards.csv/", true},
        {sample / "cards.csv", false},
        {sample, false},
        {sample.native() + "/", false},
        {folder, false},
        {folder.native() + "/", false},
        {folder / ".", false},
        {folder / "..", false},
        {folder / ".." / "cards.csv", false},
        {folder / ".." / ".." / "cards.csv", false},
        {folder / ".." / ".." / "Decks" / "cards.csv", false},
        {folder / ".." / ".." / ".." / "home" / "cards.csv", false},
        {folder / "deeper" / "cards.csv", false},
        {support / "Sample Deck 2" / "mine" / "cards.csv", false},
        {support / "Sample Deck 2" / "cards.csv", false},
        {support / "sample deck" / "mine" / "cards.csv", false},
        {support / "Decks" / "cards.csv", false},
        {support / "cards.csv", false},
        {"/Sample Deck/mine/cards.csv", false},
        {"Sample Deck/mine/cards.csv", false},
        {"/cards.csv", false},
        {"/", false},
        {"..", false},
        {"", false},
    };
    for (const auto& [source, goes] : rows) {
        EXPECT_EQ(removed(source), goes ? std::optional(folder) : std::nullopt) << source;
    }
}

TEST_F(FolderToRemove, takesAnyFormOfTheApplicationsFolder) {
    library.applicationSupport = top / "Support" / "." / "";
    EXPECT_EQ(removed(file), folder);
    library.applicationSupport = top / "other" / ".." / "Support";
    EXPECT_EQ(removed(file), folder);
    library.applicationSupport = top / "elsewhere";
    EXPECT_EQ(removed(file), std::nullopt);
}

TEST_F(FolderToRemove, staysWhileAnotherDeckRefersToIt) {
    using Change = std::optional<Bookmark> DeckProject::*;
    const fs::path paths[] = {file, folder, folder.native() + "/", folder / "art" / "a.png", sample / "x/../5B1F0E2C"};
    for (const Change bookmark : {&DeckProject::source, &DeckProject::artFolder, &DeckProject::iconFolder})
        for (const fs::path& path : paths)
            for (const auto& data : {std::optional<std::string>(), std::optional<std::string>("data")}) {
                DeckProject other;
                other.*bookmark = Bookmark{data, "name", path.native()};
                EXPECT_EQ(removed(file, {DeckProject(), other}), std::nullopt) << path;
                EXPECT_EQ(removed(file, {DeckProject()}), folder);
            }
}

TEST_F(FolderToRemove, goesWhenOthersOnlyStandNearIt) {
    std::vector<DeckProject> others;
    for (const fs::path& path : {sample, sample / "5B1F0E2C 2" / "cards.csv", folder / ".." / "other" / "cards.csv",
                                 library.applicationSupport, top / "cards.csv", fs::path("/"), fs::path("")})
        others.push_back(deckOn(path));
    EXPECT_EQ(removed(file, others), folder);
}

TEST_F(FolderToRemove, twoDecksOnOneFolderRemoveItWithTheSecond) {
    const DeckProject first = deckOn(file);
    const DeckProject second = duplicate(first, 1);
    EXPECT_EQ(folderToRemove(first, {second}, library), std::nullopt);
    EXPECT_EQ(folderToRemove(second, {}, library), folder);
}

TEST_F(FolderToRemove, isNothingThatLinksLeadOutTo) {
    const fs::path mine = top / "mine";
    fs::create_directories(mine / "inner");
    fs::create_directory_symlink(mine, sample / "link");
    fs::create_directory_symlink(mine / "inner", folder / "out");
    EXPECT_EQ(removed(sample / "link" / "cards.csv"), std::nullopt);
    EXPECT_EQ(removed(sample / "link" / "inner" / "cards.csv"), std::nullopt);
    EXPECT_EQ(removed(folder / "out" / "cards.csv"), std::nullopt);
}

TEST_F(FolderToRemove, isFoundThroughALinkedApplicationsFolder) {
    fs::create_directory_symlink(library.applicationSupport, top / "linked");
    const fs::path linked = top / "linked" / "Sample Deck" / folder.filename();
    EXPECT_EQ(removed(linked / "cards.csv"), folder);
    library.applicationSupport = top / "linked";
    EXPECT_EQ(removed(linked / "cards.csv"), folder);
    EXPECT_EQ(removed(file), folder);
    EXPECT_EQ(removed(file, {deckOn(linked / "cards.csv")}), std::nullopt);
    EXPECT_EQ(removed(linked / "cards.csv", {deckOn(file)}), std::nullopt);
}

TEST_F(FolderToRemove, staysWhileAnotherDeckReachesItByALink) {
    fs::create_directory_symlink(folder, top / "shortcut");
    fs::create_symlink(file, top / "cards.csv");
    EXPECT_EQ(removed(file, {deckOn(top / "shortcut" / "other.csv")}), std::nullopt);
    EXPECT_EQ(removed(file, {deckOn(top / "cards.csv")}), std::nullopt);
}

TEST_F(FolderToRemove, staysWhileAnotherDeckUsesALinkInIt) {
    std::ofstream(top / "mine.csv") << "Name\n";
    fs::create_symlink(top / "mine.csv", folder / "mine.csv");
    EXPECT_EQ(removed(file, {deckOn(folder / "mine.csv")}), std::nullopt);
    EXPECT_EQ(removed(folder / "mine.csv"), folder) << "its own file may be a link";
}

TEST_F(FolderToRemove, standsLinksThatLeadNowhere) {
    fs::create_directory_symlink(sample / "b", sample / "a");
    fs::create_directory_symlink(sample / "a", sample / "b");
    fs::create_directory_symlink(top / "nowhere", sample / "dangling");
    EXPECT_EQ(removed(file, {deckOn(sample / "a" / "cards.csv"), deckOn(sample / "dangling" / "cards.csv")}), folder);
}

TEST_F(FolderToRemove, standsPathsNoSystemTakes) {
    EXPECT_EQ(removed(sample / std::string(300, 'x') / "cards.csv"), sample / std::string(300, 'x'));
    EXPECT_EQ(removed(fs::path(std::string(10'000, '/') + "cards.csv")), std::nullopt);
    for (const std::string& name : {std::string("\0x", 2), "5B1F0E2C" + std::string("\0x", 2)})
        EXPECT_EQ(removed(sample / name / "cards.csv"), std::nullopt) << "the system reads it up to the zero only";
    EXPECT_EQ(removed(file, {deckOn(sample / std::string("\0x", 2) / "cards.csv")}), folder);
}

}  // namespace
}  // namespace quorvel::DeckOperations
