#include "Foundation/FileBytes.h"
#include "Model/ExportFlowTest.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Every way to fail ends in silence but for one sentence.
class ExportFlowFailureTest : public ExportFlowTest {
protected:
    void TearDown() override {
        EXPECT_THAT(desktop.revealed, IsEmpty());
        EXPECT_THAT(revealedAtNotices, IsEmpty());
        EXPECT_THAT(flow->runs(), IsEmpty());
    }

    /// Makes a disk that is full at one file of the new folder: a link that leads to a device without room.
    static void fillUpAt(const Path& file) { std::filesystem::create_symlink("/dev/full", file); }
};

TEST_F(ExportFlowFailureTest, ACardBiggerThanThePaper) {
    onScreen->project.template_.size = {CardSize::Preset::custom, 500, 500};
    const auto file = folder / "a.pdf";
    const std::vector<std::string> expected{
        "busy: Making the PDF…", "idle",
        "error: The card is bigger than the printable area of the paper. Choose a smaller card or smaller margins."};
    export_(ExportKind::sheets, file);
    EXPECT_EQ(said, expected);
    EXPECT_THAT(listing(folder.path()), IsEmpty());

    said.clear();
    ASSERT_TRUE(FileBytes::write(file, "an older one"));
    export_(ExportKind::sheets, file);
    EXPECT_EQ(said, expected);
    EXPECT_EQ(FileBytes::read(file), "an older one");
}

TEST_F(ExportFlowFailureTest, APDFThatCannotBeWritten) {
    std::filesystem::create_directory(folder / "a.pdf");
    export_(ExportKind::sheets, folder / "a.pdf");
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…", "idle",
                                  "error: “a.pdf” couldn’t be written: a folder of this name is in its place."));
    said.clear();
    export_(ExportKind::sheets, folder / "gone/a.pdf");
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…", "idle", "error: The folder for “a.pdf” doesn’t exist."));
}

TEST_F(ExportFlowFailureTest, AFolderThatCannotBeMade) {
    ASSERT_TRUE(FileBytes::write(folder / "a file", ""));
    for (const ExportKind kind : {ExportKind::images, ExportKind::tts}) {
        said.clear();
        begin(kind, folder / "a file");
        const std::string name = kind == ExportKind::images ? "Orchard card images" : "Orchard Tabletop Simulator";
        EXPECT_THAT(said,
                    ElementsAre("error: “" + name + "” couldn’t be made: a part of its path is a file, not a folder."));
        EXPECT_EQ(scheduler.backgroundCount(), 0u) << "nothing runs";
    }
    said.clear();
    begin(ExportKind::images, folder / std::string(300, 'x'));
    EXPECT_THAT(said, ElementsAre(testing::EndsWith("couldn’t be made: its name or path is too long.")));
    EXPECT_THAT(listing(folder.path()), ElementsAre("a file"));
    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(ExportFlowFailureTest, APictureThatCannotBeWrittenEndsTheWork) {
    onScreen = deckOf(numberedCards(5), varying);
    begin(ExportKind::images, folder.path());
    const auto made = folder / "Orchard card images";
    fillUpAt(made / "003 Card 3 back.png");
    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Saving card images…", "idle",
                                  "error: “003 Card 3 back.png” couldn’t be written: the disk is full."));
    EXPECT_THAT(listing(made), ElementsAre("001 Card 1 back.png", "001 Card 1.png", "002 Card 2 back.png",
                                           "002 Card 2.png", "003 Card 3 back.png", "003 Card 3.png"))
        << "what was written stays";
}

TEST_F(ExportFlowFailureTest, TheSharedBackCannotBeWritten) {
    begin(ExportKind::images, folder.path());
    std::filesystem::create_directory(folder / "Orchard card images/back.png");
    scheduler.settle();
    EXPECT_EQ(said.back(), "error: “back.png” couldn’t be written: a folder of this name is in its place.");
    EXPECT_THAT(listing(folder / "Orchard card images"),
                ElementsAre("001 Rain Barrel.png", "002 Hand Cart.png", "back.png"));
}

TEST_F(ExportFlowFailureTest, ADeckSheetThatCannotBeWrittenEndsTheWork) {
    onScreen = deckOf(numberedCards(70));
    begin(ExportKind::tts, folder.path());
    const auto made = folder / "Orchard Tabletop Simulator";
    fillUpAt(made / "Deck sheet 2.png");
    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Saving deck sheets…", "idle",
                                  "error: “Deck sheet 2.png” couldn’t be written: the disk is full."));
    EXPECT_THAT(listing(made), ElementsAre("Deck sheet 1.png", "Deck sheet 2.png"));
}

TEST_F(ExportFlowFailureTest, AReadMeThatCannotBeWrittenLeavesTheSheets) {
    begin(ExportKind::tts, folder.path());
    const auto made = folder / "Orchard Tabletop Simulator";
    std::filesystem::create_directory(made / "README.txt");
    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Saving deck sheets…", "idle",
                                  "error: “README.txt” couldn’t be written: a folder of this name is in its place."));
    EXPECT_THAT(listing(made), ElementsAre("Back.png", "Deck sheet 1.png", "README.txt"));
    EXPECT_TRUE(std::filesystem::is_empty(made / "README.txt"));
}

TEST_F(ExportFlowFailureTest, TheNewFolderIsTakenAway) {
    begin(ExportKind::images, folder.path());
    std::filesystem::remove(folder / "Orchard card images");
    scheduler.settle();
    EXPECT_EQ(said.back(), "error: The folder for “001 Rain Barrel.png” doesn’t exist.");
    EXPECT_THAT(listing(folder.path()), IsEmpty());
}

TEST_F(ExportFlowFailureTest, TheCalibrationPageCannotBeWritten) {
    std::filesystem::create_directory(folder / "page.pdf");
    saveCalibrationPage(folder / "page.pdf");
    EXPECT_THAT(said, ElementsAre("error: “page.pdf” couldn’t be written: a folder of this name is in its place."));
}

}  // namespace
}  // namespace quorvel
