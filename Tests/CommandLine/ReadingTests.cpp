#include "CommandLineTest.h"
#include "Foundation/JSON.h"
#include "Support/WorkbookWriter.h"

#include <sys/stat.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

using ReadingTests = CommandLineTest;

JSON jsonOf(const ProgramEnd& end) {
    EXPECT_TRUE(succeeded(end));
    const auto json = parseJSON(end.output);
    EXPECT_TRUE(json) << end.output.substr(0, 1000);
    return json.value_or(JSON());
}

TEST_F(ReadingTests, TablePrintsWhatWasRead) {
    write("deck.csv", "\xEF\xBB\xBFName;name;\n\nÄpfel;\"two\nlines\";3\n");
    const JSON expected{{"headers", {"Name", "name 2", "Column 3"}},
                        {"rows", {{"Äpfel", "two\nlines", "3"}}},
                        {"rowNumbers", {3}},
                        {"sourceName", "deck.csv"}};
    EXPECT_EQ(jsonOf(run({"table", "deck.csv"})), expected);
    EXPECT_EQ(jsonOf(run({"table", "--sheet", "1", "deck.csv"})), expected);
}

TEST_F(ReadingTests, TableReadsEveryEncodingAndDelimiter) {
    const struct {
        std::string name;
        std::string bytes;
    } cases[] = {
        {"utf16le.csv", std::string("\xFF\xFEN\0,\0\xE4\0\n\0\x31\0,\0\x32\0", 16)},
        {"utf16be.txt", std::string("\xFE\xFF\0N\0,\0\xE4\0\n\0\x31\0,\0\x32", 16)},
        {"windows.csv", "N,\xE4\r\n1,2\r\n"},
        {"tabs.tsv", "N\tä\n1\t2"},
        {"noextension", "N\tä\r1\t2\r"},
    };
    for (const auto& each : cases) {
        write(each.name, each.bytes);
        const JSON table = jsonOf(run({"table", each.name}));
        EXPECT_EQ(table["headers"], JSON({"N", "ä"})) << each.name;
        EXPECT_EQ(table["rows"], JSON::array({{"1", "2"}})) << each.name;
    }
}

TEST_F(ReadingTests, CardsPrintsMappingCardsAndWhatIsAmiss) {
    write("deck.csv",
          "Card Name,Rules Text,Copies,Image,Mood\nOwl,Hoot.,x2,owl.png,calm\nFox,,many,missing.png,sly\n\n"
          "Elk,Bell.,0,missing.png,\nHare,,1,,\n");
    writePicture("owl.png");
    const JSON expected{
        {"mapping",
         {{"columns", {{"title", "Card Name"}, {"text", "Rules Text"}, {"quantity", "Copies"}, {"art", "Image"}}}}},
        {"cards",
         {{{"id", 0},
           {"rowNumber", 2},
           {"fields", {{"title", "Owl"}, {"text", "Hoot."}, {"quantity", "x2"}, {"art", "owl.png"}}},
           {"quantity", 2}},
          {{"id", 1},
           {"rowNumber", 3},
           {"fields", {{"title", "Fox"}, {"text", ""}, {"quantity", "many"}, {"art", "missing.png"}}},
           {"quantity", 1}},
          {{"id", 2},
           {"rowNumber", 5},
           {"fields", {{"title", "Elk"}, {"text", "Bell."}, {"quantity", "0"}, {"art", "missing.png"}}},
           {"quantity", 0}},
          {{"id", 3},
           {"rowNumber", 6},
           {"fields", {{"title", "Hare"}, {"text", ""}, {"quantity", "1"}, {"art", ""}}},
           {"quantity", 1}}}},
        {"badQuantities", {3}},
        {"missingPictures", {"missing.png"}},
        {"totalCopies", 4}};
    EXPECT_EQ(jsonOf(run({"cards", "deck.csv"})), expected);
}

TEST_F(ReadingTests, MissingPicturesAreThoseThatTheDesignNames) {
    write("deck.csv", "Name,Art,Photo\nOwl,gone.png,lost.png\n");
    const auto missing = [&](std::vector<std::string> arguments) {
        return jsonOf(run(std::move(arguments)))["missingPictures"];
    };
    EXPECT_EQ(missing({"cards", "deck.csv"}), JSON({"gone.png"}));
    EXPECT_EQ(missing({"cards", "deck.csv", "--kind", "mini"}), JSON::array()) << "the small card shows no picture";

    ASSERT_TRUE(succeeded(run({"sample", "sample"})));
    JSON design = *parseJSON(read("sample/template.json"));
    for (JSON& layer : design["front"])
        if (layer["kind"] == "image") layer["content"] = "{{Photo}}";
    write("own.json", design.dump());
    EXPECT_EQ(missing({"cards", "deck.csv", "--template", "own.json"}), JSON({"lost.png"}));
}

TEST_F(ReadingTests, TheArtFolderComesBeforeTheSpreadsheetsOwn) {
    write("decks/deck.csv", "Name,Art\nOwl,owl.png\nFox,fox.png\nElk,elk.png\n");
    writePicture("art/owl.png");
    writePicture("decks/fox.png");
    write("decks/owl.png", "no picture at all");
    EXPECT_EQ(jsonOf(run({"cards", "decks/deck.csv"}))["missingPictures"], JSON({"owl.png", "elk.png"}));
    EXPECT_EQ(jsonOf(run({"cards", "decks/deck.csv", "--art", "art"}))["missingPictures"], JSON({"elk.png"}));
}

TEST_F(ReadingTests, ADeckWithoutCardsIsNoFailureHere) {
    write("deck.csv", "Name,Qty\n\n");
    const JSON cards = jsonOf(run({"cards", "deck.csv"}));
    EXPECT_EQ(cards["cards"], JSON::array());
    EXPECT_EQ(cards["badQuantities"], JSON::array());
    EXPECT_EQ(cards["totalCopies"], 0);
    EXPECT_EQ(jsonOf(run({"table", "deck.csv"}))["rows"], JSON::array());
}

TEST_F(ReadingTests, BadSpreadsheetsAreRefusedInOneSentenceByEveryCommand) {
    write("empty.csv", "");
    write("blank.csv", "\n , \n\r\n");
    writePicture("picture.csv");
    write("noise.csv", std::string("\x01\x02\x00\x03\x04", 5));
    write("deck.numbers", "Name\nOwl\n");
    write("deck.XLS", "Name\nOwl\n");
    write("deck.xlsx", "Name\nOwl\n");
    write("workbook.csv", std::string("PK\x03\x04 and so on"));
    fs::create_directory(*this / "folder.csv");
    ASSERT_EQ(mkfifo((*this / "pipe.csv").c_str(), 0666), 0);
    fs::create_symlink("nowhere", *this / "dangling.csv");
    fs::create_symlink("loop.csv", *this / "loop.csv");
    const struct {
        std::string file;
        std::string_view sentence;
    } cases[] = {
        {"empty.csv", "“empty.csv” is empty."},
        {"blank.csv", "“blank.csv” is empty."},
        {"picture.csv", "“picture.csv” doesn’t look like a CSV or Excel file."},
        {"noise.csv", "“noise.csv” doesn’t look like a CSV or Excel file."},
        {"deck.numbers", "“deck.numbers” is a Numbers file."},
        {"deck.XLS", "“deck.XLS” is an older Excel file. Save it as .xlsx or CSV first."},
        {"deck.xlsx", "It isn’t an Excel workbook (.xlsx). Older .xls files need saving as .xlsx or CSV first."},
        {"workbook.csv", "It isn’t an Excel workbook (.xlsx). Older .xls files need saving as .xlsx or CSV first."},
        {"folder.csv", "“folder.csv” is a folder"},
        {"pipe.csv", "“pipe.csv” isn’t a file"},
        {"/dev/zero", "“zero” isn’t a file"},
        {"dangling.csv", "“dangling.csv” doesn’t exist."},
        {"loop.csv", "“loop.csv”"},
        {"absent.csv", "“absent.csv” doesn’t exist."},
        {"absent/deck.csv", "“deck.csv” doesn’t exist."},
        {"empty.csv/deck.csv", "“deck.csv” doesn’t exist."},
        {std::string(300, 'x') + ".csv", "too long"},
    };
    const auto before = listing();
    for (const auto& each : cases) {
        EXPECT_TRUE(failedWith(run({"table", each.file}), each.sentence)) << each.file;
        EXPECT_TRUE(failedWith(run({"cards", each.file}), each.sentence)) << each.file;
        EXPECT_TRUE(failedWith(run({"sheets", each.file, "-o", "out.pdf"}), each.sentence)) << each.file;
        EXPECT_TRUE(failedWith(run({"images", each.file, "-o", "out"}), each.sentence)) << each.file;
        EXPECT_TRUE(failedWith(run({"tts", each.file, "-o", "out"}), each.sentence)) << each.file;
    }
    EXPECT_EQ(listing(), before) << "nothing is made";
}

TEST_F(ReadingTests, AFileThatMayNotBeReadIsSaidToBe) {
    write("deck.csv", smallDeck);
    fs::permissions(folder_.path(), fs::perms::all);
    fs::permissions(*this / "deck.csv", fs::perms::none);
    const ProgramCall call{.arguments = {"table", "deck.csv"}, .folder = folder_.path(), .prefix = withoutRoot()};
    EXPECT_TRUE(failedWith(runProgram(call), "You aren’t allowed to read “deck.csv”."));
}

TEST_F(ReadingTests, ASheetThatIsNotThereIsAFailure) {
    write("deck.csv", smallDeck);
    for (const std::string number : {"2", "9223372036854775807"}) {
        EXPECT_TRUE(failedWith(run({"table", "deck.csv", "--sheet", number}),
                               "There is no sheet " + number + " in “deck.csv”: it has only one."));
        EXPECT_TRUE(failedWith(run({"images", "deck.csv", "-o", "out", "--sheet", number}), "There is no sheet"));
    }
    write("empty.csv", "");
    EXPECT_TRUE(failedWith(run({"table", "empty.csv", "--sheet", "2"}), "“empty.csv” is empty."));
    EXPECT_FALSE(fs::exists(*this / "out"));
}

TEST_F(ReadingTests, ManyRowsManyColumnsAndLargeCells) {
    write("rows.csv", deckOf(5000));
    EXPECT_EQ(jsonOf(run({"table", "rows.csv"}))["rows"].size(), 5000u);
    const JSON cards = jsonOf(run({"cards", "rows.csv"}));
    EXPECT_EQ(cards["cards"].size(), 5000u);
    EXPECT_EQ(cards["cards"][4999]["rowNumber"], 5001);

    std::string wide;
    for (int line = 0; line < 20; ++line)
        for (int column = 0; column < 300; ++column) wide += "c" + std::to_string(column) + (column < 299 ? "," : "\n");
    write("wide.csv", wide);
    EXPECT_EQ(jsonOf(run({"table", "wide.csv"}))["headers"].size(), 300u);
    EXPECT_EQ(jsonOf(run({"cards", "wide.csv"}))["cards"].size(), 19u);

    const std::string text(100'000, 'a');
    write("cell.csv", "Name,Text\nOwl,\"" + text + "\"\n");
    EXPECT_EQ(jsonOf(run({"cards", "cell.csv"}))["cards"][0]["fields"]["text"], text);
}

TEST_F(ReadingTests, TextThatIsNoUTF8IsPrintedAsJSONAllTheSame) {
    write("\xE4r.csv", "Name\nOwl\n");
    EXPECT_EQ(jsonOf(run({"table", "\xE4r.csv"}))["sourceName"], "\uFFFDr.csv");
}

TEST_F(ReadingTests, DesignsAndSettingsThatCantBeReadNameThePlace) {
    write("deck.csv", smallDeck);
    ASSERT_TRUE(succeeded(run({"sample", "sample"})));
    JSON design = *parseJSON(read("sample/template.json"));
    design["front"][2]["frame"]["width"] = "wide";
    write("wide.json", design.dump());
    design["front"][2].erase("frame");
    write("short.json", design.dump());
    write("text.json", "no JSON");
    write("list.json", "[1, 2]");
    write("deep.json", std::string(100'000, '['));
    write("empty.json", "");
    const struct {
        std::string file;
        std::string_view sentence;
    } designs[] = {
        {"wide.json", "“wide.json” isn’t a Quorvel template: front[2].frame.width must be a number."},
        {"short.json", "“short.json” isn’t a Quorvel template: front[2].frame is missing."},
        {"text.json", "“text.json” isn’t a Quorvel template: it can’t be understood at line 1, column"},
        {"list.json", "“list.json” isn’t a Quorvel template: it must be an object."},
        {"deep.json", "“deep.json” isn’t a Quorvel template: it is nested too deep."},
        {"empty.json", "“empty.json” isn’t a Quorvel template: it"},
        {"absent.json", "“absent.json” doesn’t exist."},
        {"sample", "“sample” is a folder"},
    };
    for (const auto& each : designs) {
        EXPECT_TRUE(failedWith(run({"cards", "deck.csv", "--template", each.file}), each.sentence)) << each.file;
        EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "x.pdf", "--template", each.file}), each.sentence));
        EXPECT_TRUE(failedWith(run({"calibration", "-o", "x.pdf", "--template", each.file}), each.sentence));
    }

    write("b5.json", R"({"paper": "b5"})");
    write("margin.json", R"({"marginMM": "wide"})");
    const struct {
        std::string file;
        std::string_view sentence;
    } settings[] = {
        {"b5.json", "“b5.json” doesn’t hold print settings: paper must be one of letter, a4."},
        {"margin.json", "“margin.json” doesn’t hold print settings: marginMM must be a number."},
        {"list.json", "“list.json” doesn’t hold print settings: it must be an object."},
        {"text.json", "“text.json” doesn’t hold print settings: it can’t be understood at line 1, column"},
        {"absent.json", "“absent.json” doesn’t exist."},
    };
    for (const auto& each : settings) {
        EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "x.pdf", "--settings", each.file}), each.sentence));
        EXPECT_TRUE(failedWith(run({"calibration", "-o", "x.pdf", "--settings", each.file}), each.sentence));
    }
    EXPECT_FALSE(fs::exists(*this / "x.pdf"));
}

TEST_F(ReadingTests, FoldersThatAreNotThereAreFailures) {
    write("deck.csv", smallDeck);
    for (const std::string option : {"--art", "--icons"}) {
        EXPECT_TRUE(
            failedWith(run({"sheets", "deck.csv", "-o", "x.pdf", option, "absent"}), "“absent” doesn’t exist."));
        EXPECT_TRUE(failedWith(run({"sheets", "deck.csv", "-o", "x.pdf", option, "deck.csv"}),
                               "“deck.csv” is a file, not a folder."));
    }
    EXPECT_FALSE(fs::exists(*this / "x.pdf"));
}

TEST_F(ReadingTests, WorkbooksAreReadEverywhere) {
    test::WorkbookParts parts;
    const auto sheet = [](std::string_view title, std::string_view quantity) {
        return test::worksheetXML(
            "<row><c t=\"inlineStr\"><is><t>Name</t></is></c><c t=\"inlineStr\"><is><t>Qty</t></is>"
            "</c></row><row><c t=\"inlineStr\"><is><t>" +
            std::string(title) + "</t></is></c><c><v>" + std::string(quantity) + "</v></c></row>");
    };
    parts.sheets = {{"Cards", sheet("Owl", "3")}, {"More & more", sheet("Fox", "2")}};
    write("deck.xlsx", test::workbookBytes(parts));

    EXPECT_EQ(jsonOf(run({"worksheets", "deck.xlsx"})), JSON::array({"Cards", "More & more"}));
    EXPECT_EQ(jsonOf(run({"table", "deck.xlsx"}))["rows"], JSON::array({{"Owl", "3"}}));
    EXPECT_EQ(jsonOf(run({"table", "deck.xlsx", "--sheet", "2"}))["rows"], JSON::array({{"Fox", "2"}}));
    EXPECT_EQ(jsonOf(run({"cards", "deck.xlsx", "--sheet", "2"}))["totalCopies"], 2);
    EXPECT_TRUE(succeeded(run({"sheets", "deck.xlsx", "-o", "deck.pdf"})));
    EXPECT_TRUE(
        failedWith(run({"table", "deck.xlsx", "--sheet", "3"}), "There is no sheet 3 in “deck.xlsx”: it has 2."));
}

TEST_F(ReadingTests, ATextFileHasNoWorksheets) {
    write("deck.csv", "Name\nOwl\n");
    EXPECT_EQ(jsonOf(run({"worksheets", "deck.csv"})), JSON::array());
    write("deck.xlsx", "PK");
    EXPECT_TRUE(failedWith(run({"worksheets", "deck.xlsx"}), "It isn’t an Excel workbook (.xlsx)."));
}

}  // namespace
}  // namespace quorvel
