#include "Printing/CalibrationPage.h"
#include "Printing/ExportWork.h"
#include "Rendering/TestCards.h"
#include "Support/Images/ReadPNG.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <thread>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Steps = std::vector<std::pair<std::size_t, std::size_t>>;

/// Keeps what it is handed, in order; can fail at the n-th file.
struct Folder {
    std::vector<std::string> names;
    std::map<std::string, std::string> files;
    std::size_t failAt = 0;  ///< counted from 1; 0: never

    ExportWork::Sink sink() {
        return [this, caller = std::this_thread::get_id()](const std::string& name,
                                                           std::string_view bytes) -> std::expected<void, FileFailure> {
            EXPECT_EQ(std::this_thread::get_id(), caller);
            if (names.size() + 1 == failAt) return std::unexpected(FileFailure{name, ENOSPC});
            names.push_back(name);
            EXPECT_TRUE(files.emplace(name, bytes).second) << name << " is written twice";
            return {};
        };
    }
};

CardRenderer rendererOf(std::string backText) {
    CardRenderer renderer;
    renderer.template_ = CardTemplate("Test", {CardSize::Preset::custom, 20, 10}, {}, {});
    renderer.template_.front.emplace_back("Title", LayerKind::text, Frame{1, 1, 18, 8}, "{{title}}");
    renderer.template_.back.emplace_back("Back", LayerKind::text, Frame{1, 1, 18, 8}, std::move(backText));
    return renderer;
}

/// The names of the files in which two folders differ.
std::vector<std::string> differing(const Folder& a, const Folder& b) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : a.files)
        if (const auto other = b.files.find(name); other == b.files.end() || other->second != bytes)
            names.push_back(name);
    for (const auto& [name, bytes] : b.files)
        if (!a.files.contains(name)) names.push_back(name);
    return names;
}

const CardRenderer sharedBack = rendererOf("Orchard");
const CardRenderer varyingBack = rendererOf("{{title}}");

std::vector<Card> threeRows() {
    return cardsFrom({{"Title", "Quantity"}, {"Rain Barrel", "3"}, {"Never", "0"}, {"Hand/Cart", "3"}});
}

TEST(ExportWork, ImagesWithOneBack) {
    const auto unique = Deck::uniquePrintedCards(Deck::printedCards(threeRows()));
    Folder folder;
    Steps steps;
    const auto outcome =
        ExportWork::images(unique, sharedBack, {}, folder.sink(),
                           [&](std::size_t done, std::size_t total) { steps.emplace_back(done, total); });
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->count, 2u);
    EXPECT_THAT(folder.names, ElementsAre("001 Rain Barrel.png", "002 Hand Cart.png", "back.png"));
    EXPECT_EQ(steps, (Steps{{1, 2}, {2, 2}}));
}

TEST(ExportWork, ImagesWithABackForEachCard) {
    const auto unique = Deck::uniquePrintedCards(Deck::printedCards(threeRows()));
    Folder folder;
    EXPECT_EQ(ExportWork::images(unique, varyingBack, {}, folder.sink())->count, 2u);
    EXPECT_THAT(folder.names, ElementsAre("001 Rain Barrel.png", "001 Rain Barrel back.png", "002 Hand Cart.png",
                                          "002 Hand Cart back.png"));
    EXPECT_TRUE(folder.files["001 Rain Barrel back.png"] != folder.files["002 Hand Cart back.png"]);
}

TEST(ExportWork, ImagesFollowTheirSettings) {
    const auto sizeWith = [](ExportWork::ImageSettings settings) {
        Folder folder;
        EXPECT_TRUE(ExportWork::images(numberedCards(1), sharedBack, settings, folder.sink()));
        const Image image = decodePNG(folder.files["001 Card 1.png"]);
        const Image back = decodePNG(folder.files["back.png"]);
        EXPECT_EQ(back.width(), image.width());
        return std::pair{image.width(), image.height()};
    };
    EXPECT_EQ(sizeWith({.bleed = false, .dpi = 300}), (std::pair{236, 118}));
    EXPECT_EQ(sizeWith({.bleed = true, .dpi = 300}), (std::pair{307, 189}));
    EXPECT_EQ(sizeWith({.bleed = false, .dpi = 600}), (std::pair{472, 236}));
}

TEST(ExportWork, AnEmptyListWritesNoImagesAndNoBack) {
    for (const CardRenderer* renderer : {&sharedBack, &varyingBack}) {
        Folder folder;
        const auto outcome = ExportWork::images({}, *renderer, {}, folder.sink());
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->count, 0u);
        EXPECT_TRUE(folder.names.empty());
    }
}

TEST(ExportWork, SidesThatCannotBeDrawnAreLeftOutAndStillCounted) {
    CardRenderer renderer = sharedBack;
    renderer.template_.size = {CardSize::Preset::custom, 0, 10};
    renderer.template_.bleedMM = 0;
    Folder folder;
    const auto outcome = ExportWork::images(numberedCards(3), renderer, {}, folder.sink());
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->count, 3u);
    EXPECT_TRUE(folder.names.empty());
}

TEST(ExportWork, AFileThatCannotBeWrittenEndsTheWork) {
    for (unsigned threads : {1u, 3u}) {
        Folder folder;
        folder.failAt = 3;
        const auto outcome = ExportWork::images(numberedCards(50), varyingBack, {}, folder.sink(), {}, threads);
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error(), (FileFailure{"002 Card 2.png", ENOSPC}));
        EXPECT_THAT(folder.names, ElementsAre("001 Card 1.png", "001 Card 1 back.png"));
    }
}

TEST(ExportWork, TheNumberOfThreadsDoesNotShow) {
    Folder one, four;
    ASSERT_TRUE(ExportWork::images(numberedCards(30), varyingBack, {}, one.sink(), {}, 1));
    ASSERT_TRUE(ExportWork::images(numberedCards(30), varyingBack, {}, four.sink(), {}, 4));
    EXPECT_EQ(one.names, four.names);
    EXPECT_THAT(differing(one, four), IsEmpty());
    EXPECT_EQ(one.names.size(), 60u);

    Folder oneSheet, fourSheets;
    ASSERT_TRUE(ExportWork::tts(numberedCards(30), sharedBack, oneSheet.sink(), {}, 1));
    ASSERT_TRUE(ExportWork::tts(numberedCards(30), sharedBack, fourSheets.sink(), {}, 4));
    EXPECT_THAT(differing(oneSheet, fourSheets), IsEmpty());
}

TEST(ExportWork, LongTitlesFitIntoAFileName) {
    std::string title;
    for (int i = 0; i < 70; ++i) title += "क्षि";
    const auto cards = cardsFrom({{"Title"}, {title}});
    Folder folder;
    ASSERT_TRUE(ExportWork::images(cards, varyingBack, {}, folder.sink()));
    ASSERT_EQ(folder.names.size(), 2u);
    for (const std::string& name : folder.names) {
        EXPECT_LE(name.size(), 240u);
        EXPECT_TRUE(name.starts_with("001 क्षिक्षि"));
    }
    EXPECT_TRUE(folder.names[0].ends_with("क्षि.png")) << "cut between characters";
}

constexpr std::string_view paragraph =
    "In Tabletop Simulator: Objects › Components › Cards › Custom Deck. Face: a deck sheet image. Back: Back.png (or "
    "tick Unique Backs and use the back sheet). Width 10, Height 7, Number: the cards on that sheet. Back is Hidden: "
    "on.";

CardRenderer tiny(const CardRenderer& renderer) {
    CardRenderer small = renderer;
    small.template_.size = {CardSize::Preset::custom, 2.54, 2.54};
    return small;
}

TEST(ExportWork, DeckSheetsWithOneBack) {
    Folder folder;
    Steps steps;
    const auto outcome = ExportWork::tts(numberedCards(70), tiny(sharedBack), folder.sink(),
                                         [&](std::size_t done, std::size_t total) { steps.emplace_back(done, total); });
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->count, 2u);
    EXPECT_THAT(folder.names, ElementsAre("Deck sheet 1.png", "Deck sheet 2.png", "Back.png", "README.txt"));
    EXPECT_EQ(folder.files["README.txt"], std::string(paragraph) + "\n\nDeck sheet 1.png: 69\nDeck sheet 2.png: 1\n");
    EXPECT_EQ(decodePNG(folder.files["Deck sheet 1.png"]).width(), 300);
    EXPECT_EQ(decodePNG(folder.files["Back.png"]).width(), 30);
    EXPECT_EQ(steps, (Steps{{1, 2}, {2, 2}}));
}

TEST(ExportWork, DeckSheetsWithABackForEachCard) {
    Folder folder;
    const auto outcome = ExportWork::tts(Deck::printedCards(threeRows()), tiny(varyingBack), folder.sink());
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->count, 1u);
    EXPECT_THAT(folder.names, ElementsAre("Deck sheet 1.png", "Back sheet 1.png", "Back.png", "README.txt"));
    EXPECT_EQ(folder.files["README.txt"], std::string(paragraph) + "\n\nDeck sheet 1.png: 6\n");
}

TEST(ExportWork, AnEmptyDeckHasABackAndAReadMe) {
    Folder folder;
    EXPECT_EQ(ExportWork::tts({}, tiny(varyingBack), folder.sink())->count, 0u);
    EXPECT_THAT(folder.names, ElementsAre("Back.png", "README.txt"));
    EXPECT_EQ(folder.files["README.txt"], std::string(paragraph) + "\n\n\n");
}

TEST(ExportWork, ADeckSheetThatCannotBeWrittenEndsTheWork) {
    const char* last[] = {"Deck sheet 1.png", "Deck sheet 2.png", "Back sheet 1.png",
                          "Back sheet 2.png", "Back.png",         "README.txt"};
    for (std::size_t failAt = 1; failAt <= 6; ++failAt) {
        Folder folder;
        folder.failAt = failAt;
        const auto outcome = ExportWork::tts(numberedCards(70), tiny(varyingBack), folder.sink());
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error().path, last[failAt - 1]);
        EXPECT_EQ(folder.names.size(), failAt - 1);
    }
}

TEST(ExportWork, PrintSheetsAreOneFile) {
    Folder folder;
    SheetSettings settings;
    settings.duplex = true;
    CardRenderer renderer = sharedBack;
    renderer.template_.size = CardSize::poker;
    const auto outcome =
        ExportWork::sheets(numberedCards(10), renderer, settings, "Orchard", "Orchard print sheets.pdf", folder.sink());
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->count, 4u);
    EXPECT_THAT(folder.names, ElementsAre("Orchard print sheets.pdf"));
    EXPECT_TRUE(*SheetPDF::make(numberedCards(10), renderer, settings, "Orchard") ==
                folder.files["Orchard print sheets.pdf"]);
}

TEST(ExportWork, PrintSheetsFailWithoutAFile) {
    Folder folder;
    const auto empty = ExportWork::sheets({}, sharedBack, {}, "", "a.pdf", folder.sink());
    EXPECT_EQ(ExportWork::description(empty.error()), "There are no cards to print: every quantity is 0.");
    CardRenderer big = sharedBack;
    big.template_.size = {CardSize::Preset::custom, 500, 500};
    const auto tooBig = ExportWork::sheets(numberedCards(1), big, {}, "", "a.pdf", folder.sink());
    EXPECT_EQ(ExportWork::description(tooBig.error()),
              "The card is bigger than the printable area of the paper. Choose a smaller card or smaller margins.");
    EXPECT_TRUE(folder.names.empty());
    folder.failAt = 1;
    const auto full = ExportWork::sheets(numberedCards(1), sharedBack, {}, "", "a.pdf", folder.sink());
    EXPECT_EQ(ExportWork::description(full.error()), (FileFailure{"a.pdf", ENOSPC}).description());
}

TEST(ExportWork, NoticesNameWhatWasSaved) {
    const auto notice = [](std::size_t count, std::string_view what, const std::filesystem::path& target) {
        return ExportWork::notice({.count = count, .whatIsSaved = what}, target);
    };
    EXPECT_EQ(notice(4, "pages", "/home/a/Orchard print sheets.pdf"), "Saved 4 pages to “Orchard print sheets.pdf”.");
    EXPECT_EQ(notice(1, "card images", "out/"), "Saved 1 card images to “out”.");

    CardRenderer renderer = tiny(varyingBack);
    Folder folder;
    const auto saidBy = [](const auto& outcome) { return ExportWork::notice(*outcome, "x"); };
    EXPECT_EQ(saidBy(ExportWork::images(numberedCards(2), renderer, {}, folder.sink())), "Saved 2 card images to “x”.");
    EXPECT_EQ(saidBy(ExportWork::tts(numberedCards(70), renderer, folder.sink())), "Saved 2 deck sheets to “x”.");
    EXPECT_EQ(saidBy(ExportWork::sheets(numberedCards(2), renderer, {}, "", "a.pdf", folder.sink())),
              "Saved 1 pages to “x”.");
}

TEST(ExportWork, TheCalibrationPageLiesLikeThePrintSheets) {
    const auto pageFor = [](double widthMM, double heightMM) {
        CardTemplate design = sharedBack.template_;
        design.size = {CardSize::Preset::custom, widthMM, heightMM};
        Folder folder;
        EXPECT_TRUE(ExportWork::calibrationPage(design, {}, "a.pdf", folder.sink()));
        EXPECT_THAT(folder.names, ElementsAre("a.pdf"));
        return folder.files["a.pdf"];
    };
    const std::string portrait = *SheetPDF::calibrationPage({}, false);
    const std::string landscape = *SheetPDF::calibrationPage({}, true);
    ASSERT_TRUE(portrait != landscape);
    EXPECT_TRUE(pageFor(63.5, 88.9) == portrait);
    EXPECT_TRUE(pageFor(250, 100) == landscape);
    EXPECT_TRUE(pageFor(900, 500) == portrait) << "too big for any paper";

    Folder folder;
    folder.failAt = 1;
    const auto failed = ExportWork::calibrationPage(sharedBack.template_, {}, "a.pdf", folder.sink());
    ASSERT_FALSE(failed);
    EXPECT_EQ(ExportWork::description(failed.error()), (FileFailure{"a.pdf", ENOSPC}).description());
}

TEST(ExportWork, ProposedNames) {
    EXPECT_EQ(ExportWork::proposedName("Orchard Couriers", " print sheets.pdf"), "Orchard Couriers print sheets.pdf");
    EXPECT_EQ(ExportWork::proposedName("a/b\nc\x7F", " card images"), "a b c  card images");
    EXPECT_EQ(ExportWork::proposedName("../x", ""), ".. x");
    EXPECT_EQ(ExportWork::proposedName("Café \u0085…", ""), "Café  …");
    EXPECT_EQ(ExportWork::proposedName(std::string(300, 'x'), " card images"), std::string(200, 'x') + " card images");
    EXPECT_EQ(ExportWork::proposedName(std::string(199, 'x') + "é", ""), std::string(199, 'x'));
}

TEST(ExportWork, NewFolderNamesPassOverTheTakenOnes) {
    const auto name = [](std::set<std::string> taken) {
        return ExportWork::newFolderName("Orchard card images",
                                         [taken](const std::string& each) { return taken.contains(each); });
    };
    EXPECT_EQ(name({}), "Orchard card images");
    EXPECT_EQ(name({"Orchard card images"}), "Orchard card images 2");
    EXPECT_EQ(name({"Orchard card images", "Orchard card images 2"}), "Orchard card images 3");
    EXPECT_EQ(name({"Orchard card images", "Orchard card images 3"}), "Orchard card images 2");
}

}  // namespace
}  // namespace quorvel
