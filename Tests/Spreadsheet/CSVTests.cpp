#include "Spreadsheet/CSV.h"
#include "Spreadsheet/Rows.h"
#include "Support/SpreadsheetTexts.h"

#include <gmock/gmock.h>
#include <random>

namespace quorvel::CSV {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::ElementsAre;

TEST(CSVDecode, goesByTheMark) {
    EXPECT_EQ(decode("\xEF\xBB\xBF"
                     "é"),
              "é");
    EXPECT_EQ(decode("\xEF\xBB\xBF\xEF\xBB\xBF"
                     "a"),
              "\uFEFFa")
        << "three bytes are dropped, once";
    EXPECT_EQ(decode("\xEF\xBB\xBF"
                     "caf\xE9"),
              "caf\uFFFD")
        << "with a mark it is UTF-8, repaired";
    EXPECT_EQ(decode("\xFF\xFE\xE9\0a\0"sv), "éa");
    EXPECT_EQ(decode("\xFE\xFF\0\xE9\0a"sv), "éa");
    EXPECT_EQ(decode("\xFF\xFE\xFF\xFE\xFF\xFE"
                     "a\0"sv),
              "a")
        << "all leading marks go";
    EXPECT_EQ(decode("\xFF\xFE"
                     "abc"),
              "")
        << "half a character";
    EXPECT_EQ(decode("\xFE\xFF\xD8\x3D"), "") << "half a pair";
    EXPECT_EQ(decode("\xFF\xFE"), "");
}

TEST(CSVDecode, guessesWithoutAMark) {
    EXPECT_EQ(decode(""), "");
    EXPECT_EQ(decode("é 漢"), "é 漢");
    EXPECT_EQ(decode("Don\x92t"), "Don’t");
    EXPECT_EQ(decode("caf\xE9 \x81"), "caf\uFFFD \uFFFD") << "no code page has this byte";
    EXPECT_EQ(decode("a\0b\0"sv), "a\0b\0"sv) << "no UTF-16 without a mark";
}

TEST(CSVDecode, copiesNoUTF8) {
    std::string storage;
    const std::string_view bytes = "plain é";
    EXPECT_EQ(decode(bytes, storage).data(), bytes.data());
    EXPECT_EQ(decode("\xE9", storage).data(), storage.data());
}

TEST(CSVDetectDelimiter, countsTheFirstRecord) {
    const auto expect = [](std::string_view text, char32_t delimiter) {
        EXPECT_EQ(detectDelimiter(text), delimiter) << text;
    };
    expect("", U',');
    expect("abc", U',');
    expect("a;b;c\n1,5;2,5;3,5\n", U';');
    expect("a\tb\n", U'\t');
    expect("a,b;c\n", U',');
    expect("a\tb;c\n", U'\t');
    expect("a,b\tc;d\n", U',');
    expect("a,b;c;d\r;;;", U';');
    expect("\"a,b,c\";d\n", U';');
    expect("\"a\n,,,\n\";d\n", U';');
    expect("\"a\"\",,\";d\n", U';');
    expect("\n;;;", U',');
    expect("\"unclosed,,,,", U',');
}

struct Case {
    std::string_view text;
    RowList rows;
};

TEST(CSVParse, splitsRecords) {
    const Case cases[] = {
        {"", {}},
        {"a,b\n1,2,3\n", {{"a", "b"}, {"1", "2", "3"}}},
        {"x\r\ny\rz\n", {{"x"}, {"y"}, {"z"}}},
        {"a", {{"a"}}},
        {"a\n\nb", {{"a"}, {""}, {"b"}}},
        {"\n", {{""}}},
        {"\r\n\r", {{""}, {""}}},
        {",", {{"", ""}}},
        {"a,", {{"a", ""}}},
        {"a,\n", {{"a", ""}}},
        {"\"a\nb\",c\n", {{"a\nb", "c"}}},
        {"\"a\r\nb\"", {{"a\r\nb"}}},
        {"\"a\"\"b\"", {{"a\"b"}}},
        {"\"\"\"\"", {{"\""}}},
        {"\"abc\"def,x", {{"abcdef", "x"}}},
        {"\"a\"\"\"b\"c,d", {{"a\"b\"c", "d"}}},
        {"a\"b\"c,\"d\"", {{"a\"b\"c", "d"}}},
        {" \"a\"", {{" \"a\""}}},
        {"\"a,b", {{"a,b"}}},
        {"\"a\"", {{"a"}}},
        {"x\n\"", {{"x"}, {""}}},
        {"\"", {{""}}},
        {"\"\"", {}},
        {"x\n\"\"", {{"x"}}},
        {"\"\",", {{"", ""}}},
        {"\"\"\n", {{""}}},
        {"a,\"\"", {{"a", ""}}},
        {"\"a\"\n\"b", {{"a"}, {"b"}}},
        {"a\0b,\0"sv, {{"a\0b"s, "\0"s}}},
        {"é,漢\u2028字", {{"é", "漢\u2028字"}}},
    };
    for (const Case& each : cases) EXPECT_EQ(listOf(parse(each.text, U',')), each.rows) << each.text;
}

TEST(CSVParse, takesAnyDelimiter) {
    EXPECT_EQ(parse("a;b,c;d", U';'), (TextRows{{"a", "b,c", "d"}}));
    EXPECT_EQ(parse("a,b\tc", U'\t'), (TextRows{{"a,b", "c"}}));
    EXPECT_EQ(parse("a,b\tc;d"), (TextRows{{"a", "b\tc;d"}}));
    EXPECT_EQ(parse("a·b¶\"c·\"·\"\"\"·\n·", U'·'), (TextRows{{"a", "b¶\"c", "·\"", ""}, {"", ""}}));
    EXPECT_EQ(parse("\u2028a→b→", U'→'), (TextRows{{"\u2028a", "b", ""}}));
}

/// The rules as one walks through them by hand, one byte at a time.
RowList parseByHand(std::string_view text, char delimiter) {
    RowList rows;
    std::vector<std::string> row;
    std::string field;
    bool inQuotes = false;
    bool atFieldStart = true;
    const auto endField = [&] {
        row.push_back(std::exchange(field, {}));
        atFieldStart = true;
    };
    const auto endRow = [&] {
        endField();
        rows.push_back(std::exchange(row, {}));
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool hasNext = i + 1 < text.size();
        if (inQuotes) {
            if (c == '"' && hasNext && text[i + 1] == '"') {
                field += c;
                ++i;
            } else if (c == '"') {
                inQuotes = false;
            } else {
                field += c;
            }
        } else if (c == '"' && atFieldStart) {
            inQuotes = true;
            atFieldStart = false;
        } else if (c == delimiter) {
            endField();
        } else if (c == '\r' || c == '\n') {
            if (c == '\r' && hasNext && text[i + 1] == '\n') ++i;
            endRow();
        } else {
            field += c;
            atFieldStart = false;
        }
    }
    if (!field.empty() || !row.empty() || inQuotes) endRow();
    return rows;
}

TEST(CSVParse, doesWhatTheRulesSay) {
    std::mt19937 random(3);
    constexpr std::string_view alphabet = "\"\",,\n\r;ab\x80\xAC\x8A \t";
    for (int repetition = 0; repetition < 30'000; ++repetition) {
        std::string text(random() % 60, ' ');
        for (char& c : text) c = random() % 3 == 0 ? 'x' : alphabet[random() % alphabet.size()];
        ASSERT_EQ(listOf(parse(text, U',')), parseByHand(text, ',')) << testing::PrintToString(text);
        ASSERT_EQ(listOf(parse(text, U';')), parseByHand(text, ';')) << testing::PrintToString(text);
    }
}

TEST(CSVParse, readsWhatItWrote) {
    std::mt19937 random(4);
    constexpr std::string_view alphabet = "\"\",\n\r;ab\t é";
    for (int repetition = 0; repetition < 3'000; ++repetition) {
        RowList list(random() % 6);
        for (auto& row : list) {
            row.resize(1 + random() % 5);
            for (auto& cell : row)
                for (std::size_t i = random() % 12; i > 0; --i) cell += alphabet[random() % alphabet.size()];
        }
        ASSERT_EQ(listOf(parse(write(textRows(list)), U',')), list);
    }
}

TEST(CSVWrite, quotesWhatNeedsIt) {
    EXPECT_EQ(write(TextRows{{"a", "b c", "d;e"}, {"1,5", "say \"hi\"", "two\nlines", "cr\r"}, {""}}),
              "a,b c,d;e\n\"1,5\",\"say \"\"hi\"\"\",\"two\nlines\",\"cr\r\"\n\n");
    EXPECT_EQ(write(TextRows()), "");
}

TEST(CSVLooksLikeText, allowsTwoPercent) {
    EXPECT_TRUE(looksLikeText(""));
    EXPECT_TRUE(looksLikeText("a\tb\r\nc’ é"));
    EXPECT_TRUE(looksLikeText(std::string(49, 'a') + "\x01"));
    EXPECT_FALSE(looksLikeText(std::string(48, 'a') + "\x01"));
    for (const char* bad : {"\x01", "\x1F", "\x7F", "\u0080", "\u009F", "\uFFFD"}) EXPECT_FALSE(looksLikeText(bad));
    EXPECT_FALSE(looksLikeText("\0"sv));
    for (const char* good : {" ", "~", "\u00A0", "\uFFFC"}) EXPECT_TRUE(looksLikeText(good));
}

TEST(CSVLooksLikeText, looksAtTheFirst65536Scalars) {
    const std::string letters = [] {
        std::string text;
        for (int i = 0; i < 65'536; ++i) text += "é";
        return text;
    }();
    EXPECT_TRUE(looksLikeText(letters + std::string(100'000, '\x01')));
    EXPECT_FALSE(looksLikeText(std::string(1'311, '\x01') + letters));
    EXPECT_TRUE(looksLikeText(std::string(1'310, '\x01') + letters));
}

TEST(CSVTable, decodesParsesAndNames) {
    const DataTable result = table(
        "\xEF\xBB\xBF"
        "Name;Cost\r\nFox;1,5\r\n\r\nOwl\r\n",
        "deck.csv");
    EXPECT_THAT(result.headers, ElementsAre("Name", "Cost"));
    EXPECT_EQ(result.rows, (TextRows{{"Fox", "1,5"}, {"Owl"}}));
    EXPECT_THAT(result.rowNumbers, ElementsAre(2, 4));
    EXPECT_EQ(result.sourceName, "deck.csv");
    EXPECT_TRUE(table("", "x").headers.empty());
    EXPECT_THAT(table("Name\na,b\n", "x").headers, ElementsAre("Name", "Column 2"));
    EXPECT_EQ(table(" , \n,,\n", "x").headers.size(), 0u) << "blanks and commas are blank rows";
}

TEST(CSVTable, readsFilesOfRealSize) {
    const DataTable deck = table(SpreadsheetTexts::deck(5'000), "deck.csv");
    ASSERT_EQ(deck.rows.rowCount(), 5'000u);
    EXPECT_EQ(deck.headers.size(), 6u);
    EXPECT_EQ(deck.rows.cell(4'999, 0), "Ember Fox 5000");
    EXPECT_EQ(deck.rows.cell(0, 3), "\"Haste\", at dusk.\nGain {coin}.");
    EXPECT_EQ(deck.rowNumbers.back(), 5'001);

    const DataTable longCell = table(SpreadsheetTexts::longCell(100'000), "deck.csv");
    ASSERT_EQ(longCell.rows.rowCount(), 2u);
    EXPECT_EQ(longCell.rows.cell(0, 1).size(), 100'000u);
    EXPECT_TRUE(longCell.rows.cell(0, 1).starts_with("He said \"now\". Draw a card, discard a card.\n"));

    const DataTable wide = table(SpreadsheetTexts::wide(300, 20), "deck.csv");
    ASSERT_EQ(wide.headers.size(), 300u);
    EXPECT_EQ(wide.headers.back(), "c300");
    EXPECT_EQ(wide.rows.cell(2, 6), "r3c7");
    EXPECT_EQ(wide.rows.cell(19, 299), "r20c300");
}

TEST(CSVTable, survivesAnyBytes) {
    std::mt19937 random(5);
    for (int repetition = 0; repetition < 2'000; ++repetition) {
        std::string bytes(random() % 200, ' ');
        for (char& byte : bytes) byte = static_cast<char>(random());
        if (repetition % 3 == 0) bytes.insert(0, repetition % 2 == 0 ? "\xFF\xFE" : "\xEF\xBB\xBF");
        const DataTable result = table(bytes, "x");
        ASSERT_EQ(result.rows.rowCount(), result.rowNumbers.size());
    }
    EXPECT_EQ(table("x" + std::string(200'000, ','), "x").headers.size(), 200'001u);
    EXPECT_EQ(table(std::string(1'000'000, '\n') + "x", "x").headers.size(), 1u);
    EXPECT_EQ(table("\"" + std::string(1'000'001, '"'), "x").headers.size(), 1u);
}

}  // namespace
}  // namespace quorvel::CSV
