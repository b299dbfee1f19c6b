#include "Foundation/FileBytes.h"
#include "Model/ExportFlowTest.h"
#include "Printing/CalibrationPage.h"
#include "Printing/SheetPDF.h"
#include "Rendering/CardImage.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

CardRenderer rendererOf(const ExportFlow::Input& input) {
    return {input.project.template_, input.assets, CardRenderer::MissingPictures::leaveBlank};
}

TEST_F(ExportFlowTest, PrintSheetsAskForAFileAndSaveThePDF) {
    onScreen->project.sheet.duplex = true;
    const auto file = folder / "mine.pdf";
    begin(ExportKind::sheets, file);
    EXPECT_THAT(desktop.asked,
                ElementsAre(SavePanel{
                    "Choose Where to Save the Print Sheets", {"PDF document", {"pdf"}}, "Orchard print sheets.pdf"}));
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…"));
    EXPECT_FALSE(std::filesystem::exists(file)) << "all of the work is done in the background";
    EXPECT_EQ(scheduler.backgroundCount(), 1u);

    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Making the PDF…", "idle", "notice: Saved 2 pages to “mine.pdf”."));
    EXPECT_THAT(desktop.revealed, ElementsAre(file));
    EXPECT_THAT(revealedAtNotices, ElementsAre(0u)) << "the sentence first, then the file";
    const auto printed = Deck::printedCards(onScreen->deck->cards);
    ASSERT_EQ(printed.size(), 6u);
    EXPECT_TRUE(FileBytes::read(file) ==
                SheetPDF::make(printed, rendererOf(*onScreen), onScreen->project.sheet, "Orchard").value());
}

TEST_F(ExportFlowTest, AnExistingPDFIsReplaced) {
    const auto file = folder / "mine.pdf";
    ASSERT_TRUE(FileBytes::write(file, "old"));
    export_(ExportKind::sheets, file);
    EXPECT_EQ(SheetPDF::pageCount(*FileBytes::read(file)), 1);
    EXPECT_THAT(listing(folder.path()), ElementsAre("mine.pdf"));
}

TEST_F(ExportFlowTest, CardImagesAskForAFolderAndFillANewOneInIt) {
    begin(ExportKind::images, folder.path());
    EXPECT_THAT(desktop.asked,
                ElementsAre(FolderPanel{"Choose Where to Save the Card Images", "", "Export Here", std::nullopt}));
    EXPECT_THAT(said, ElementsAre("busy: Saving card images…"));
    const auto made = folder / "Orchard card images";
    EXPECT_TRUE(std::filesystem::is_empty(made)) << "all of the work is done in the background";

    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Saving card images…", "idle",
                                  "notice: Saved 2 card images to “Orchard card images”."));
    EXPECT_THAT(desktop.revealed, ElementsAre(made));
    EXPECT_THAT(revealedAtNotices, ElementsAre(0u));
    EXPECT_THAT(listing(made), ElementsAre("001 Rain Barrel.png", "002 Hand Cart.png", "back.png"));
}

TEST_F(ExportFlowTest, DeckSheetsAskForAFolderAndFillANewOneInIt) {
    begin(ExportKind::tts, folder.path());
    EXPECT_THAT(desktop.asked, ElementsAre(FolderPanel{"Choose Where to Save the Tabletop Simulator Images", "",
                                                       "Export Here", std::nullopt}));
    EXPECT_THAT(said, ElementsAre("busy: Saving deck sheets…"));

    scheduler.settle();
    EXPECT_THAT(said, ElementsAre("busy: Saving deck sheets…", "idle",
                                  "notice: Saved 1 deck sheets to “Orchard Tabletop Simulator”."));
    const auto made = folder / "Orchard Tabletop Simulator";
    EXPECT_THAT(desktop.revealed, ElementsAre(made));
    EXPECT_THAT(revealedAtNotices, ElementsAre(0u));
    EXPECT_THAT(listing(made), ElementsAre("Back.png", "Deck sheet 1.png", "README.txt"));
    EXPECT_THAT(*FileBytes::read(made / "README.txt"), testing::EndsWith("\n\nDeck sheet 1.png: 6\n"));
}

TEST_F(ExportFlowTest, ABackOfItsOwnForEachCard) {
    onScreen = smallDeck(varying);
    export_(ExportKind::images, folder.path());
    export_(ExportKind::tts, folder.path());
    EXPECT_THAT(listing(folder / "Orchard card images"), ElementsAre("001 Rain Barrel back.png", "001 Rain Barrel.png",
                                                                     "002 Hand Cart back.png", "002 Hand Cart.png"));
    EXPECT_THAT(listing(folder / "Orchard Tabletop Simulator"),
                ElementsAre("Back sheet 1.png", "Back.png", "Deck sheet 1.png", "README.txt"));
}

TEST_F(ExportFlowTest, SeventyCardsTakeTwoDeckSheets) {
    onScreen = deckOf(numberedCards(70));
    export_(ExportKind::tts, folder.path());
    EXPECT_THAT(*FileBytes::read(folder / "Orchard Tabletop Simulator/README.txt"),
                testing::EndsWith("\n\nDeck sheet 1.png: 69\nDeck sheet 2.png: 1\n"));
    EXPECT_EQ(said.back(), "notice: Saved 2 deck sheets to “Orchard Tabletop Simulator”.");
}

TEST_F(ExportFlowTest, ResolutionAndBleedAreThoseOfCardImagesOnly) {
    const auto sizes = [&](bool bleed, std::int64_t dpi) {
        onScreen->project.imageBleed = bleed;
        onScreen->project.imageDPI = dpi;
        const TemporaryFolder place;
        export_(ExportKind::images, place.path());
        export_(ExportKind::tts, place.path());
        EXPECT_EQ(sizeOf(place / "Orchard Tabletop Simulator/Deck sheet 1.png"), std::pair(600, 210));
        EXPECT_EQ(sizeOf(place / "Orchard Tabletop Simulator/Back.png"), std::pair(60, 30));
        EXPECT_EQ(sizeOf(place / "Orchard card images/back.png"),
                  sizeOf(place / "Orchard card images/001 Rain Barrel.png"));
        return sizeOf(place / "Orchard card images/001 Rain Barrel.png");
    };
    EXPECT_EQ(sizes(false, 300), std::pair(60, 30));
    EXPECT_EQ(sizes(true, 300), std::pair(90, 60));
    EXPECT_EQ(sizes(true, 600), std::pair(180, 120));
}

TEST_F(ExportFlowTest, MissingPicturesLeaveNoMark) {
    const auto pixels = [&](CardRenderer::MissingPictures missing) {
        CardRenderer renderer = rendererOf(*onScreen);
        renderer.missingPictures = missing;
        const auto image = CardImage::render(&onScreen->deck->cards[0], Side::front, renderer,
                                             CardImage::Bleed::included, CardImage::Corners::square, 300);
        return *CardImage::pngData(*image, 300);
    };
    export_(ExportKind::images, folder.path());
    const auto bytes = FileBytes::read(folder / "Orchard card images/001 Rain Barrel.png");
    EXPECT_TRUE(bytes == pixels(CardRenderer::MissingPictures::leaveBlank));
    EXPECT_FALSE(bytes == pixels(CardRenderer::MissingPictures::mark));
}

TEST_F(ExportFlowTest, AnExportNeverWritesIntoAFolderThatIsThere) {
    for (int i = 0; i < 3; ++i) export_(ExportKind::images, folder.path());
    EXPECT_THAT(listing(folder.path()),
                ElementsAre("Orchard card images", "Orchard card images 2", "Orchard card images 3"));
    EXPECT_EQ(said.back(), "notice: Saved 2 card images to “Orchard card images 3”.");
    EXPECT_EQ(desktop.revealed.back(), folder / "Orchard card images 3");

    // What isn't a folder takes the name just as well.
    ASSERT_TRUE(FileBytes::write(folder / "Orchard Tabletop Simulator", ""));
    std::filesystem::create_symlink("nowhere", folder / "Orchard Tabletop Simulator 2");
    export_(ExportKind::tts, folder.path());
    EXPECT_EQ(said.back(), "notice: Saved 1 deck sheets to “Orchard Tabletop Simulator 3”.");
}

TEST_F(ExportFlowTest, AFolderIsMadeWithItsParents) {
    export_(ExportKind::images, folder / "not/yet there");
    EXPECT_THAT(listing(folder / "not/yet there/Orchard card images"), SizeIs(3));
}

TEST_F(ExportFlowTest, NamesOfDecksBecomeNamesOfFiles) {
    onScreen->project.name = "Cats/Dogs\n2";
    export_(ExportKind::images, folder.path());
    export_(ExportKind::sheets, std::nullopt);
    EXPECT_THAT(listing(folder.path()), ElementsAre("Cats Dogs 2 card images"));
    EXPECT_EQ(std::get<SavePanel>(desktop.asked.back()).fileName, "Cats Dogs 2 print sheets.pdf");
}

TEST_F(ExportFlowTest, ACancelledPanelDoesNothing) {
    for (const auto& [kind, name] : EnumText<ExportKind>::cases) export_(kind, std::nullopt);
    saveCalibrationPage(std::nullopt);
    EXPECT_THAT(desktop.asked, SizeIs(4));
    EXPECT_THAT(said, IsEmpty());
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_THAT(desktop.revealed, IsEmpty());
}

TEST_F(ExportFlowTest, WithoutCardsNothingIsAsked) {
    for (const auto& without : {std::optional<ExportFlow::Input>(), std::optional(deckOf({}))})
        for (const auto& [kind, name] : EnumText<ExportKind>::cases) {
            onScreen = without;
            said.clear();
            export_(kind, folder.path());
            EXPECT_THAT(said, ElementsAre("error: There are no cards yet. Choose a spreadsheet first.")) << name;
        }
    EXPECT_THAT(desktop.asked, IsEmpty());
    EXPECT_THAT(listing(folder.path()), IsEmpty());
}

TEST_F(ExportFlowTest, CardsThatAreAllPrintedZeroTimes) {
    onScreen = deckOf(cardsFrom({{"Title", "Quantity"}, {"Never", "0"}, {"Nor this", "0"}}), varying);
    export_(ExportKind::sheets, folder / "a.pdf");
    EXPECT_THAT(
        said, ElementsAre("busy: Making the PDF…", "idle", "error: There are no cards to print: every quantity is 0."));
    EXPECT_THAT(listing(folder.path()), IsEmpty());
    EXPECT_THAT(desktop.revealed, IsEmpty());

    export_(ExportKind::images, folder.path());
    EXPECT_EQ(said.back(), "notice: Saved 0 card images to “Orchard card images”.");
    EXPECT_THAT(listing(folder / "Orchard card images"), IsEmpty());

    export_(ExportKind::tts, folder.path());
    EXPECT_EQ(said.back(), "notice: Saved 0 deck sheets to “Orchard Tabletop Simulator”.");
    EXPECT_THAT(listing(folder / "Orchard Tabletop Simulator"), ElementsAre("Back.png", "README.txt"));
}

TEST_F(ExportFlowTest, TheCalibrationPageNeedsNoCards) {
    onScreen = deckOf({});
    const auto file = folder / "page.pdf";
    saveCalibrationPage(file);
    EXPECT_THAT(desktop.asked,
                ElementsAre(SavePanel{
                    "Choose Where to Save the Calibration Page", {"PDF document", {"pdf"}}, "Duplex calibration.pdf"}));
    EXPECT_THAT(said, ElementsAre("notice: Saved the calibration page. Print it double-sided at 100%."));
    EXPECT_THAT(desktop.revealed, ElementsAre(file));
    EXPECT_THAT(revealedAtNotices, ElementsAre(0u));
    EXPECT_EQ(scheduler.backgroundCount(), 0u);
    EXPECT_TRUE(FileBytes::read(file) == SheetPDF::calibrationPage({}, false).value());
}

TEST_F(ExportFlowTest, TheCalibrationPageLiesLikeThePrintSheets) {
    const struct {
        double widthMM, heightMM;
        Orientation orientation;
        bool landscape;
    } cases[] = {
        {63.5, 88.9, Orientation::portrait, false},
        {63.5, 88.9, Orientation::landscape, true},
        {250, 100, Orientation::auto_, true},
        {900, 500, Orientation::landscape, false},  // too big for the paper
    };
    for (const auto& each : cases) {
        DeckProject& project = onScreen->project;
        project.template_.size = {CardSize::Preset::custom, each.widthMM, each.heightMM};
        project.sheet.orientation = each.orientation;
        saveCalibrationPage(folder / "page.pdf");
        EXPECT_TRUE(FileBytes::read(folder / "page.pdf") ==
                    SheetPDF::calibrationPage(project.sheet, each.landscape).value())
            << each.widthMM;
    }
}

}  // namespace
}  // namespace quorvel
