#include "Cards/Quantity.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvel {
namespace {

TEST(Quantity, UnderstandsCounts) {
    const std::pair<std::string, std::int64_t> cases[] = {
        {"", 1},
        {"   ", 1},
        {"\r\n\t ", 1},
        {"\u00a0\u2009", 1},
        {"1", 1},
        {"3", 3},
        {"x3", 3},
        {"3x", 3},
        {"×3", 3},
        {"3×", 3},
        {"X3", 3},
        {"3X", 3},
        {"3 x", 3},
        {"x 3", 3},
        {"× 3", 3},
        {"x3x", 3},
        {"×3x", 3},
        {"x\u00a03", 3},
        {"+3", 3},
        {"x+3", 3},
        {"007", 7},
        {"999", 999},
        {"1000", 999},
        {"0", 0},
        {"x0", 0},
        {"-0", 0},
        {"2.0", 2},
        {"2.", 2},
        {"1e2", 100},
        {"1E2", 100},
        {"1.5e1", 15},
        {"-0.0", 0},
        {"1e18", 999},
        {"9e18", 999},
        {"9223372036854775807", 999},
        {" 4 ", 4},
        {"\u20094\u2009", 4},
        {"\n4\r\n", 4},
        {"\u2028 4", 4},
        {"1000.0", 999},
        {"1e-400", 0},
    };
    for (const auto& [text, count] : cases) {
        EXPECT_EQ(Quantity::parse(text), (Quantity::Parsed{count, true})) << '"' << text << '"';
    }
}

TEST(Quantity, PrintsOneOfWhatIsNoCount) {
    const std::string texts[] = {
        "abc",
        "1.5",
        "-1",
        "x",
        "×",
        "xx",
        "x x",
        "-x3",
        "x-3",
        "xx3",
        "3xx",
        "1,5",
        "1 2",
        "2..0",
        "inf",
        "-inf",
        "infinity",
        "nan",
        "NaN",
        "1e30",
        "1e999",
        "-0.5",
        "0x10",
        "0x1p4",
        "0x1p4x",
        "9223372036854775808",
        "9999999999999999999",
        "99999999999999999999999999",
        "x\n3",
        "3\nx",
        "٣",
        "３",
        "½",
        "x̂3",
        "3\u0301",
        std::string("3\0", 2),
        "\xff",
        "1e",
        "e1",
        "--1",
        "+-1",
        "one",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(Quantity::parse(text), (Quantity::Parsed{1, false})) << '"' << text << '"';
    }
}

TEST(Quantity, WholeNumbersInAnyDress) {
    for (std::int64_t n = 0; n <= 1100; n += 7) {
        const Quantity::Parsed expected{std::min(n, Quantity::maximum), true};
        const std::string digits = std::to_string(n);
        for (const std::string& text : {digits, "x" + digits, digits + "×", " × " + digits + " ", digits + ".000",
                                        "00" + digits, digits + "e0", "\t" + digits + "\n"})
            EXPECT_EQ(Quantity::parse(text), expected) << text;
    }
}

TEST(Quantity, TakesHugeCells) {
    EXPECT_EQ(Quantity::parse(std::string(1'000'000, 'x')).understood, false);
    EXPECT_EQ(Quantity::parse(std::string(1'000'000, '9')).understood, false);
    EXPECT_EQ(Quantity::parse(std::string(1'000'000, ' ') + "5").count, 5);
    EXPECT_EQ(Quantity::parse(std::string(1'000'000, '0') + "5").count, 5);
}

}  // namespace
}  // namespace quorvel
