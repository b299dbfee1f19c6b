#include "Foundation/Text.h"

#include <gmock/gmock.h>
#include <limits>

namespace quorvel::Text {
namespace {

using testing::ElementsAre;

std::vector<char32_t> scalars(std::string_view text) {
    std::vector<char32_t> result;
    for (std::size_t offset = 0; offset < text.size();) result.push_back(nextScalar(text, offset));
    return result;
}

TEST(Text, readsEveryScalarItWrites) {
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
        if (scalar == 0xD800) scalar = 0xE000;
        std::string text;
        appendScalar(text, scalar);
        std::size_t offset = 0;
        ASSERT_EQ(nextScalar(text, offset), scalar);
        ASSERT_EQ(offset, text.size());
    }
}

TEST(Text, readsEachIllFormedSequenceAsOneReplacement) {
    const char32_t bad = 0xFFFD;
    EXPECT_THAT(scalars("a\x80z"), ElementsAre(U'a', bad, U'z'));               // a lone continuation
    EXPECT_THAT(scalars("\xC0\xAF"), ElementsAre(bad, bad));                    // overlong
    EXPECT_THAT(scalars("\xE0\x80\xAF"), ElementsAre(bad, bad, bad));           // overlong in three bytes
    EXPECT_THAT(scalars("\xED\xA0\x80"), ElementsAre(bad, bad, bad));           // a surrogate
    EXPECT_THAT(scalars("\xF4\x90\x80\x80"), ElementsAre(bad, bad, bad, bad));  // above 10FFFF
    EXPECT_THAT(scalars("\xE2\x82z"), ElementsAre(bad, U'z'));                  // truncated, then a letter
    EXPECT_THAT(scalars("\xF0\x9F\x98"), ElementsAre(bad));                     // truncated at the end
    EXPECT_THAT(scalars("\xFF\xFE"), ElementsAre(bad, bad));
}

TEST(Text, writesWhatIsNoScalarAsReplacement) {
    std::string text;
    appendScalar(text, 0xD800);
    appendScalar(text, 0x110000);
    EXPECT_EQ(text, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Text, knowsBlanksAndLineEnds) {
    for (const char32_t blank : {U' ', U'\t', U'\u00A0', U'\u2003', U'\u202F', U'\u3000'}) {
        EXPECT_TRUE(isBlank(blank));
        EXPECT_TRUE(isWhitespaceOrNewline(blank));
    }
    for (const char32_t end : {U'\n', U'\v', U'\f', U'\r', char32_t{0x85}, U'\u2028', U'\u2029'}) {
        EXPECT_FALSE(isBlank(end));
        EXPECT_TRUE(isWhitespaceOrNewline(end));
    }
    for (const char32_t other : {U'a', U'\0', U'\u200B', U'\uFEFF'}) {
        EXPECT_FALSE(isBlank(other));
        EXPECT_FALSE(isWhitespaceOrNewline(other));
    }
}

TEST(Text, trims) {
    EXPECT_EQ(trimBlanks(" \t a b \u00A0\u3000"), "a b");
    EXPECT_EQ(trimBlanks("\n a \n"), "\n a \n");
    EXPECT_EQ(trimBlanks(" \t\u2003 "), "");
    EXPECT_EQ(trimBlanks(""), "");
    EXPECT_EQ(trimWhitespaceAndNewlines("\r\n\u2028 é \u0085\n"), "é");
    EXPECT_EQ(trimWhitespaceAndNewlines("\n"), "");
    EXPECT_EQ(trimBlanks("\x80 a\xC2"), "\x80 a\xC2") << "broken bytes are no blanks";
    EXPECT_EQ(trimBlanks("a\x80\x80\x80\x80\x80 "), "a\x80\x80\x80\x80\x80");
}

TEST(Text, knowsLettersAndNumbersOfAnyScript) {
    for (const char32_t scalar : {U'a', U'Z', U'0', U'é', U'Ж', U'漢', U'ª', U'½', U'Ⅷ', U'٣'})
        EXPECT_TRUE(isLetterOrNumber(scalar)) << std::uint32_t{scalar};
    for (const char32_t scalar : {U' ', U'-', U'_', U'\u0301', U'€', U'😀', U'\uFFFD'})
        EXPECT_FALSE(isLetterOrNumber(scalar)) << std::uint32_t{scalar};
    EXPECT_TRUE(isLetterOrNumber("e\u0301"));
    EXPECT_FALSE(isLetterOrNumber("\u0301"));
    EXPECT_FALSE(isLetterOrNumber(""));
}

TEST(Text, changesCase) {
    EXPECT_EQ(lowercased("ABC xyz ÉÀ ЖШ ΑΣ"), "abc xyz éà жш ασ");
    EXPECT_EQ(lowercased("İ"), "i\u0307");
    EXPECT_EQ(lowercased("ẞ"), "ß");
    EXPECT_EQ(uppercased("abc é ж"), "ABC É Ж");
    EXPECT_EQ(uppercased("straße"), "STRASSE");
    EXPECT_EQ(uppercased("ẞİ"), "ẞİ");
    EXPECT_EQ(uppercased("ﬁne ŉ ᾳ ΐ"), "FINE ʼN ΑΙ Ι\u0308\u0301");
    EXPECT_EQ(lowercased("a\x80"), "a\xEF\xBF\xBD");
    EXPECT_EQ(lowercased(""), "");
}

TEST(Text, lowerCasingTwiceChangesNothingMore) {
    for (char32_t scalar = 0x80; scalar < 0x20000; ++scalar) {
        if (scalar == 0xD800) scalar = 0xE000;
        std::string text;
        appendScalar(text, scalar);
        const std::string lower = lowercased(text);
        ASSERT_EQ(lowercased(lower), lower);
        ASSERT_TRUE(equalsIgnoringCase(text, lower)) << std::hex << std::uint32_t{scalar};
        ASSERT_TRUE(equalsIgnoringCase(text, uppercased(text)) || scalar == 0x131) << std::hex << std::uint32_t{scalar};
    }
}

TEST(Text, comparesWithoutCase) {
    EXPECT_TRUE(equalsIgnoringCase("Title", "tITLE"));
    EXPECT_TRUE(equalsIgnoringCase("STRASSE", "straße"));
    EXPECT_TRUE(equalsIgnoringCase("ΟΔΟΣ", "οδος"));
    EXPECT_TRUE(equalsIgnoringCase("É", "e\u0301")) << "composed or not";
    EXPECT_FALSE(equalsIgnoringCase("Café", "CAFE"));
    EXPECT_FALSE(equalsIgnoringCase("a", "ab"));
    EXPECT_TRUE(equalsIgnoringCase("", ""));
    EXPECT_TRUE(equalsIgnoringCase("q\u0307\u0323", "Q\u0323\u0307")) << "marks in either order";
}

TEST(Text, comparesWithoutCaseAndMarks) {
    EXPECT_TRUE(equalsIgnoringCaseAndMarks("Café", "CAFE"));
    EXPECT_TRUE(equalsIgnoringCaseAndMarks("Ångström", "angstrom"));
    EXPECT_TRUE(equalsIgnoringCaseAndMarks("e\u0301\u0323", "E"));
    EXPECT_FALSE(equalsIgnoringCaseAndMarks("Cafés", "CAFE"));
    EXPECT_FALSE(equalsIgnoringCaseAndMarks("ø", "o")) << "a letter of its own";
}

TEST(Text, searchesWithoutCaseAndMarks) {
    EXPECT_TRUE(containsIgnoringCaseAndMarks("A Crème Brûlée", "BRULEE"));
    EXPECT_TRUE(containsIgnoringCaseAndMarks("straße", "SS"));
    EXPECT_TRUE(containsIgnoringCaseAndMarks("gold", "gold"));
    EXPECT_FALSE(containsIgnoringCaseAndMarks("gold", " gold"));
    EXPECT_FALSE(containsIgnoringCaseAndMarks("", "a"));
    EXPECT_TRUE(containsIgnoringCaseAndMarks("abc", ""));
}

TEST(Text, ordersManyMarksInTime) {
    std::string a = "x";
    std::string b = "x";
    for (int i = 0; i < 50'000; ++i) a += "\u0301\u0323";
    for (int i = 0; i < 50'000; ++i) b += "\u0323";
    for (int i = 0; i < 50'000; ++i) b += "\u0301";
    EXPECT_TRUE(equalsIgnoringCase(a, b));
}

TEST(Text, splitsIntoCharacters) {
    EXPECT_THAT(characters("abc"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(characters("a\r\nb\n\r"), ElementsAre("a", "\r\n", "b", "\n", "\r"));
    EXPECT_THAT(characters("e\u0301x"), ElementsAre("e\u0301", "x"));
    EXPECT_THAT(characters("👨‍👩‍👧🏳️‍🌈"), ElementsAre("👨‍👩‍👧", "🏳️‍🌈"));
    EXPECT_THAT(characters("🇩🇪🇫🇷🇨"), ElementsAre("🇩🇪", "🇫🇷", "🇨"));
    EXPECT_THAT(characters("👍🏽!"), ElementsAre("👍🏽", "!"));
    EXPECT_THAT(characters("각"), ElementsAre("각"));
    EXPECT_THAT(characters("a\x80z"), ElementsAre("a", "\x80", "z"));
    EXPECT_THAT(characters(""), ElementsAre());
}

TEST(Text, charactersJoinToTheText) {
    std::string text;
    for (char32_t scalar = 1; scalar < 0x30000; scalar += 7) appendScalar(text, scalar);
    text += "\xFF\xC2";
    std::string joined;
    for (const std::string_view character : characters(text)) {
        ASSERT_FALSE(character.empty());
        joined += character;
    }
    EXPECT_EQ(joined, text);
}

TEST(Text, parsesIntegers) {
    EXPECT_EQ(parseInteger("0"), 0);
    EXPECT_EQ(parseInteger("+12"), 12);
    EXPECT_EQ(parseInteger("-007"), -7);
    EXPECT_EQ(parseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    for (const char* text : {"", "+", "-", "+-1", "-+1", "--1", " 1", "1 ", "1.0", "0x1", "1e2", "٣",
                             "9223372036854775808", "-9223372036854775809"})
        EXPECT_EQ(parseInteger(text), std::nullopt) << text;
}

TEST(Text, parsesDecimals) {
    EXPECT_EQ(parseDecimal("2"), 2.0);
    EXPECT_EQ(parseDecimal("-2.50"), -2.5);
    EXPECT_EQ(parseDecimal("+.5"), 0.5);
    EXPECT_EQ(parseDecimal("2."), 2.0);
    EXPECT_EQ(parseDecimal("1e2"), 100.0);
    EXPECT_EQ(parseDecimal("0.1"), 0.1);
    for (const char* text : {"", ".", "+", "+-1", "-+1", " 1", "1 ", "1,5", "1e", "0x10", "1.5x", "e5", "1e2.5"})
        EXPECT_EQ(parseDecimal(text), std::nullopt) << text;
}

TEST(Text, parsesDecimalsBeyondTheRangeOfDoubles) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(parseDecimal("inf"), infinity);
    EXPECT_EQ(parseDecimal("1e400"), infinity);
    EXPECT_EQ(parseDecimal("-1e99999999999999999999999"), -infinity);
    EXPECT_EQ(parseDecimal("0.001e999"), infinity);
    EXPECT_EQ(parseDecimal(std::string(400, '9')), infinity);
    EXPECT_EQ(parseDecimal("1e-400"), 0.0);
    EXPECT_EQ(parseDecimal("1000e-99999999999999999999999"), 0.0);
    EXPECT_EQ(parseDecimal("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(parseDecimal("0e99999999999"), 0.0);
}

TEST(Text, takesPathsApart) {
    EXPECT_EQ(lastPathComponent("/a/b.csv"), "b.csv");
    EXPECT_EQ(lastPathComponent("b.csv"), "b.csv");
    EXPECT_EQ(lastPathComponent("/a/b//"), "b");
    EXPECT_EQ(lastPathComponent("/"), "");
    EXPECT_EQ(lowercasedExtension("/a.b/deck.NUMBERS"), "numbers");
    EXPECT_EQ(lowercasedExtension("deck.tar.Gz"), "gz");
    EXPECT_EQ(lowercasedExtension("/a.b/deck"), "");
    EXPECT_EQ(lowercasedExtension(".csv"), "");
    EXPECT_EQ(lowercasedExtension("deck."), "");
}

TEST(Text, replacesAll) {
    EXPECT_EQ(replaceAll("a-b-c", "-", "–"), "a–b–c");
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("", "a", "x"), "");
    EXPECT_EQ(replaceAll("aa", "a", "aa"), "aaaa");
}

}  // namespace
}  // namespace quorvel::Text
