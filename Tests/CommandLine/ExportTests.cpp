#include "CommandLineTest.h"
#include "Foundation/JSON.h"
#include "Foundation/Units.h"
#include "Printing/SheetPDF.h"
#include "Samples/SampleDeck.h"
#include "Support/Images/ReadPNG.h"
#include "Support/Images/RenderPDFPage.h"
#include "Templates/TemplateJSON.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class ExportTests : public CommandLineTest {
protected:
    ExportTests() { write("deck.csv", smallDeck); }

    /// The PDF of `sheets` for the small deck with more arguments.
    std::string sheets(std::vector<std::string> more) const {
        std::vector<std::string> arguments{"sheets", "deck.csv", "-o", "out.pdf"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_TRUE(succeeded(run(arguments)));
        return read("out.pdf");
    }
};

TEST_F(ExportTests, SampleWritesADeckThatEveryCommandTakes) {
    const auto made = run({"sample", "orchard"});
    EXPECT_TRUE(succeeded(made));
    EXPECT_EQ(made.output, "Saved the sample deck to “orchard”.\n");
    EXPECT_EQ(listing("orchard").size(), 17u);
    EXPECT_TRUE(fs::exists(*this / "orchard/Orchard Couriers.csv"));
    EXPECT_TRUE(fs::exists(*this / "orchard/art/penny.png"));

    const std::string file = "orchard/Orchard Couriers.csv";
    EXPECT_EQ(run({"sheets", file, "-o", "a.pdf"}).output, "Saved 3 pages to “a.pdf”.\n");
    EXPECT_EQ(run({"images", file, "-o", "images"}).output, "Saved 14 card images to “images”.\n");
    EXPECT_EQ(run({"tts", file, "-o", "tts"}).output, "Saved 1 deck sheets to “tts”.\n");
    EXPECT_EQ(parseJSON(run({"cards", file}).output)->at("missingPictures"), JSON::array());
}

TEST_F(ExportTests, SampleWritesTheDesignOfTheKind) {
    const struct {
        std::string kind;
        CardSize::Preset size;
    } cases[] = {
        {"classic", CardSize::Preset::poker}, {"tarot", CardSize::Preset::tarot}, {"mini", CardSize::Preset::mini}};
    for (const auto& each : cases) {
        ASSERT_TRUE(succeeded(run({"sample", each.kind, "--kind", each.kind})));
        const auto design = templateFromFileText(read(each.kind + "/template.json"));
        ASSERT_TRUE(design) << each.kind;
        EXPECT_EQ(design->size.preset, each.size);
        EXPECT_EQ(design->back.back().content, "ORCHARD COURIERS");
        std::set<UUID> ids;
        std::size_t count = 0;
        for (const auto* layers : {&design->front, &design->back})
            for (const Layer& layer : *layers) {
                ids.insert(layer.id), ++count;
                for (const StyleRule& rule : layer.rules) ids.insert(rule.id), ++count;
            }
        EXPECT_EQ(ids.size(), count) << "ids are unique";
    }
}

TEST_F(ExportTests, TheDesignFileAndTheKindGiveTheSameCards) {
    ASSERT_TRUE(succeeded(run({"sample", "orchard", "--kind", "tarot"})));
    const std::string file = "orchard/Orchard Couriers.csv";
    ASSERT_TRUE(succeeded(run({"images", file, "-o", "a", "--dpi", "72", "--kind", "tarot"})));
    ASSERT_TRUE(succeeded(run({"images", file, "-o", "b", "--dpi", "72", "--template", "orchard/template.json"})));
    EXPECT_EQ(contents("a"), contents("b"));
}

TEST_F(ExportTests, SheetsCountsPagesAndTakesTheDefaultsOfANewDeck) {
    const auto end = run({"sheets", "deck.csv", "-o", "out.pdf"});
    EXPECT_TRUE(succeeded(end));
    EXPECT_EQ(end.output, "Saved 1 pages to “out.pdf”.\n");
    const std::string pdf = read("out.pdf");
    EXPECT_EQ(pdfPageSizes(pdf), std::vector{(Size{612, 792})});
    const std::string text = pdfPageText(pdf, 0);
    EXPECT_NE(text.find("Rain Barrel"), std::string::npos);
    EXPECT_EQ(text.find("Old Mule"), std::string::npos) << "quantity 0";
    EXPECT_NE(pdf.find("/Title (deck)"), std::string::npos);
}

TEST_F(ExportTests, SettingsComeFromTheFileAndThenFromEachSet) {
    write("settings.json", R"({"paper": "a4", "orientation": "landscape", "duplex": true})");
    const double width = Units::points(210);
    const double height = Units::points(297);
    const auto sizes = [&](std::vector<std::string> more) { return pdfPageSizes(sheets(std::move(more))); };
    const auto near = [](const Size& size, double w, double h) {
        return std::abs(size.width - w) < 0.01 && std::abs(size.height - h) < 0.01;
    };

    auto pages = sizes({"--settings", "settings.json"});
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_TRUE(near(pages[0], height, width));

    pages = sizes({"--settings", "settings.json", "--set", "orientation=portrait", "--set=duplex=false"});
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_TRUE(near(pages[0], width, height));

    pages = sizes({"--set", "orientation=portrait", "--settings", "settings.json"});
    EXPECT_TRUE(near(pages[0], width, height)) << "--set stands over the file wherever it stands";

    pages = sizes({"--set", "paper=a4", "--set", "paper=letter"});
    EXPECT_TRUE(near(pages[0], 612, 792)) << "the later counts";
}

TEST_F(ExportTests, EverySettingChangesTheSheets) {
    const std::string plain = sheets({"--set", "duplex=true"});
    for (const std::string setting :
         {"paper=a4", "orientation=landscape", "gutterMM=4", "marginMM=12.5", "includeBleed=true", "cutMarks=false",
          "duplex=false", "flip=shortEdge", "backOffsetXMM=1.5", "backOffsetYMM=-2"}) {
        const bool separated = setting.starts_with("gutter");
        const std::string spacing = separated ? "spacing=separated" : "spacing=butted";
        const std::string before = separated ? sheets({"--set", "duplex=true", "--set", spacing}) : plain;
        EXPECT_NE(sheets({"--set", "duplex=true", "--set", spacing, "--set", setting}), before) << setting;
    }
    EXPECT_EQ(sheets({"--set", "duplex=true", "--set", "cutMarks=true", "--set", "marginMM=6.35"}), plain)
        << "the defaults, written out";
}

TEST_F(ExportTests, SheetsReplacesAnOldFileAndKeepsItsLink) {
    write("old/real.pdf", "old");
    fs::create_symlink("old/real.pdf", *this / "out.pdf");
    EXPECT_TRUE(sheets({}).starts_with("%PDF"));
    EXPECT_TRUE(fs::is_symlink(*this / "out.pdf"));
    EXPECT_TRUE(read("old/real.pdf").starts_with("%PDF"));
}

TEST_F(ExportTests, TheNameStandsOnTheBackAndInThePDF) {
    const std::string pdf = sheets({"--name", "Owls & Elks", "--set", "duplex=true"});
    EXPECT_NE(pdf.find("/Title (Owls & Elks)"), std::string::npos);
    EXPECT_NE(pdfPageText(pdf, 1).find("OWLS & ELKS"), std::string::npos);
    EXPECT_NE(pdfPageText(sheets({"--set", "duplex=true"}), 1).find("DECK"), std::string::npos);
    // Neither an empty name nor one that isn't UTF-8 stops the work.
    EXPECT_EQ(SheetPDF::pageCount(sheets({"--name", ""})), 1);
    EXPECT_EQ(SheetPDF::pageCount(sheets({"--name", "\xff\xfe"})), 1);
}

TEST_F(ExportTests, ACardTooBigForThePaperIsAFailure) {
    write("old.pdf", "old");
    EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "old.pdf", "--set", "marginMM=100"}),
                           "The card is bigger than the printable area of the paper. Choose a smaller card or smaller "
                           "margins."));
    EXPECT_EQ(read("old.pdf"), "old");
    for (const std::string setting : {"marginMM=1e300", "marginMM=-1e300", "gutterMM=1e300", "gutterMM=-1e300",
                                      "gutterMM=-63.5", "backOffsetXMM=1e300"}) {
        const auto end = run({"sheets", "deck.csv", "-o", "x.pdf", "--set", "spacing=separated", "--set", "duplex=true",
                              "--set", setting});
        EXPECT_EQ(end.signal, 0) << setting;
        EXPECT_TRUE(end.exitCode == 0 || end.exitCode == 1) << setting << end.errors;
    }
}

TEST_F(ExportTests, NothingToPrintIsAFailureOfSheetsOnly) {
    write("none.csv", "Name,Qty\nOwl,0\nElk,0\n");
    EXPECT_TRUE(
        failedWith(run({"sheets", "none.csv", "-o", "x.pdf"}), "There are no cards to print: every quantity is 0."));
    EXPECT_FALSE(fs::exists(*this / "x.pdf"));
    EXPECT_EQ(run({"images", "none.csv", "-o", "images"}).output, "Saved 0 card images to “images”.\n");
    EXPECT_EQ(listing("images"), std::vector<std::string>{});
    EXPECT_EQ(run({"tts", "none.csv", "-o", "tts"}).output, "Saved 0 deck sheets to “tts”.\n");
    EXPECT_EQ(listing("tts"), (std::vector<std::string>{"Back.png", "README.txt"}));
}

TEST_F(ExportTests, ASpreadsheetWithoutCardsIsAFailure) {
    write("none.csv", "Name,Qty\n");
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"sheets", "none.csv", "-o", "x.pdf"}, {"images", "none.csv", "-o", "x"}, {"tts", "none.csv", "-o", "x"}})
        EXPECT_TRUE(failedWith(run(arguments), "There are no cards in “none.csv”: nothing stands below its headers."));
    EXPECT_EQ(listing(), (std::vector<std::string>{"deck.csv", "none.csv"}));
}

TEST_F(ExportTests, ImagesMakesAFileForEachPrintedCard) {
    EXPECT_EQ(run({"images", "deck.csv", "-o", "out"}).output, "Saved 2 card images to “out”.\n");
    EXPECT_EQ(listing("out"), (std::vector<std::string>{"001 Rain Barrel.png", "002 Lost Map.png", "back.png"}));
    const Image card = readPNG(*this / "out/001 Rain Barrel.png");
    EXPECT_EQ(card.width(), 821);
    EXPECT_EQ(card.height(), 1121);
}

TEST_F(ExportTests, BleedAndResolutionDecideTheSize) {
    const struct {
        std::vector<std::string> options;
        int width, height;
    } cases[] = {
        {{"--no-bleed"}, 750, 1050},
        {{"--no-bleed", "--bleed"}, 821, 1121},
        {{"--no-bleed", "--dpi", "600"}, 1500, 2100},
        {{"--no-bleed", "--dpi=36"}, 90, 126},
        {{"--no-bleed", "--kind=mini"}, 525, 750},
    };
    for (const auto& each : cases) {
        std::vector<std::string> arguments{"images", "deck.csv", "-o", "out", "--replace"};
        arguments.insert(arguments.end(), each.options.begin(), each.options.end());
        ASSERT_TRUE(succeeded(run(arguments)));
        const Image card = readPNG(*this / "out/001 Rain Barrel.png");
        EXPECT_EQ(card.width(), each.width);
        EXPECT_EQ(card.height(), each.height);
    }
}

TEST_F(ExportTests, ABackThatVariesIsMadeForEachCard) {
    ASSERT_TRUE(succeeded(run({"sample", "orchard"})));
    JSON design = *parseJSON(read("orchard/template.json"));
    design["back"].back()["content"] = "{{title}}";
    write("varying.json", design.dump());
    ASSERT_TRUE(succeeded(run({"images", "deck.csv", "-o", "images", "--template", "varying.json", "--dpi", "72"})));
    EXPECT_EQ(listing("images"), (std::vector<std::string>{"001 Rain Barrel back.png", "001 Rain Barrel.png",
                                                           "002 Lost Map back.png", "002 Lost Map.png"}));
    ASSERT_TRUE(succeeded(run({"tts", "deck.csv", "-o", "tts", "--template", "varying.json"})));
    EXPECT_EQ(listing("tts"),
              (std::vector<std::string>{"Back sheet 1.png", "Back.png", "Deck sheet 1.png", "README.txt"}));
}

TEST_F(ExportTests, TheArtAndIconFoldersAreUsed) {
    write("art.csv", "Name,Art,Icons\nOwl,owl.png,coin\n");
    writePicture("pictures/owl.png");
    writePicture("icons/coin.png");
    const auto image = [&](std::vector<std::string> more) {
        std::vector<std::string> arguments{"images", "art.csv", "-o", "out", "--replace", "--dpi", "100"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_TRUE(succeeded(run(arguments)));
        return read("out/001 Owl.png");
    };
    const std::string plain = image({});
    const std::string withArt = image({"--art", "pictures"});
    const std::string withIcons = image({"--icons", "icons"});
    EXPECT_NE(withArt, plain);
    EXPECT_NE(withIcons, plain);
    EXPECT_NE(withIcons, withArt);
    EXPECT_NE(sheets({"--icons", "icons"}), "");
}

TEST_F(ExportTests, DeckSheetsTellHowManyCardsTheyHold) {
    write("many.csv", "Name,Qty\nOwl,69\nElk,1\n");
    EXPECT_EQ(run({"tts", "many.csv", "-o", "tts", "--kind", "mini"}).output, "Saved 2 deck sheets to “tts”.\n");
    EXPECT_EQ(listing("tts"),
              (std::vector<std::string>{"Back.png", "Deck sheet 1.png", "Deck sheet 2.png", "README.txt"}));
    EXPECT_TRUE(read("tts/README.txt").ends_with("\n\nDeck sheet 1.png: 69\nDeck sheet 2.png: 1\n"));
}

TEST_F(ExportTests, TheCalibrationPageLiesAsThePrintSheetsDo) {
    const auto size = [&](std::vector<std::string> more) {
        std::vector<std::string> arguments{"calibration", "-o", "c.pdf"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto end = run(arguments);
        EXPECT_TRUE(succeeded(end));
        EXPECT_EQ(end.output, "Saved the calibration page. Print it double-sided at 100%.\n");
        const auto sizes = pdfPageSizes(read("c.pdf"));
        EXPECT_EQ(sizes.size(), 2u);
        return sizes.at(0);
    };
    EXPECT_EQ(size({}), (Size{612, 792}));
    EXPECT_EQ(size({"--set", "orientation=landscape"}), (Size{792, 612}));
    EXPECT_NEAR(size({"--set", "paper=a4"}).height, Units::points(297), 0.01);
    EXPECT_EQ(size({"--set", "orientation=landscape", "--set", "marginMM=500"}), (Size{612, 792}))
        << "a card too big leaves the page upright";
    EXPECT_EQ(size({"--kind", "mini"}), (Size{792, 612})) << "more small cards fit on a turned page";
}

TEST_F(ExportTests, QuietSaysNothing) {
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"sample", "s", "--quiet"},
                                                                       {"sheets", "deck.csv", "-o", "x.pdf", "--quiet"},
                                                                       {"images", "deck.csv", "-o", "i", "--quiet"},
                                                                       {"tts", "deck.csv", "-o", "t", "--quiet"},
                                                                       {"calibration", "-o", "c.pdf", "--quiet"}}) {
        const auto end = run(arguments);
        EXPECT_TRUE(succeeded(end));
        EXPECT_EQ(end.output, "");
    }
    EXPECT_TRUE(failedWith(run({"sample", "s", "--quiet"}), "“s” isn’t empty"));
}

TEST_F(ExportTests, LargeDecksGoThrough) {
    write("rows.csv", deckOf(5000));
    EXPECT_EQ(run({"sheets", "rows.csv", "-o", "x.pdf"}).output, "Saved 556 pages to “x.pdf”.\n");

    std::string header, cells;
    for (int column = 0; column < 300; ++column) {
        header += (column ? ",c" : "Name,c") + std::to_string(column);
        cells += column ? ",cell" : "Owl,cell";
    }
    write("wide.csv", header + "\n" + cells + "\n");
    EXPECT_EQ(run({"sheets", "wide.csv", "-o", "w.pdf"}).output, "Saved 1 pages to “w.pdf”.\n");

    std::string text;
    while (text.size() < 100'000) text += "**long** {icon:coin} text ";
    write("cell.csv", "Name,Text,Icons\n" + text + ",\"" + text + "\",9999999999999999999 coin x9999999999999\n");
    EXPECT_TRUE(succeeded(run({"images", "cell.csv", "-o", "cell", "--dpi", "72"})));
    EXPECT_EQ(listing("cell").size(), 2u);
}

TEST_F(ExportTests, HostileDesignsAreDrawnOrRefusedButDontCrash) {
    ASSERT_TRUE(succeeded(run({"sample", "orchard"})));
    const JSON design = *parseJSON(read("orchard/template.json"));
    const std::vector<std::pair<std::string, JSON>> changes{{"/size/widthMM", 0},
                                                            {"/size/widthMM", -63.5},
                                                            {"/size/widthMM", 1e300},
                                                            {"/size/heightMM", 1e-300},
                                                            {"/bleedMM", -5},
                                                            {"/bleedMM", 1e300},
                                                            {"/front/2/frame/x", 1e300},
                                                            {"/front/2/frame/width", -10},
                                                            {"/front/2/strokeWidth", -1},
                                                            {"/front/9/style/size", 0},
                                                            {"/front/9/style/size", 1e300},
                                                            {"/front/9/opacity", 7},
                                                            {"/front/10/iconSizeMM", 0},
                                                            {"/front/10/iconSizeMM", -3},
                                                            {"/front/10/iconSpacingMM", 1e300},
                                                            {"/front/2/cornerRadiusMM", 1e300}};
    for (const auto& [place, value] : changes) {
        JSON changed = design;
        changed[JSON::json_pointer(place)] = value;
        write("hostile.json", changed.dump());
        for (const auto& arguments :
             std::vector<std::vector<std::string>>{{"sheets", "deck.csv", "-o", "x.pdf"},
                                                   {"images", "deck.csv", "-o", "i", "--replace"},
                                                   {"tts", "deck.csv", "-o", "t", "--replace"}}) {
            auto all = arguments;
            all.insert(all.end(), {"--template", "hostile.json"});
            const auto end = run(all);
            EXPECT_EQ(end.signal, 0) << place << " " << value << " " << arguments.front();
            EXPECT_TRUE(end.exitCode == 0 || end.exitCode == 1) << place << " " << value << end.errors;
            EXPECT_EQ(end.errors.find("unforeseen"), std::string::npos) << place << " " << value << end.errors;
        }
    }
}

}  // namespace
}  // namespace quorvel
