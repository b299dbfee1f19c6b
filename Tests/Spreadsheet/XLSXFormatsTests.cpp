#include "Spreadsheet/XLSXFormats.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace quorvel::XLSX {

void PrintTo(const NumberFormat& format, std::ostream* out) {
    *out << "kind " << static_cast<int>(format.kind) << " width " << static_cast<int>(format.width);
}

namespace {

using Kind = NumberFormat::Kind;

std::string shown(std::string_view value, NumberFormat format, DateSystem dates = DateSystem::from1900) {
    std::string text;
    appendDisplayText(text, value, format, dates);
    return text;
}

NumberFormat padded(int width) {
    return {Kind::zeroPadded, static_cast<std::uint8_t>(width)};
}

TEST(XLSXFormats, knowsTheBuiltInIds) {
    const auto kindOf = [](int id) {
        const auto format = builtInFormat(id);
        return format ? format->kind : Kind::general;
    };
    for (int id = -1; id < 200; ++id) {
        Kind expected = Kind::general;
        if ((id >= 14 && id <= 17) || (id >= 27 && id <= 36) || (id >= 50 && id <= 58)) expected = Kind::date;
        if (id == 22) expected = Kind::dateTime;
        if ((id >= 18 && id <= 21) || (id >= 45 && id <= 47)) expected = Kind::time;
        if (id == 9 || id == 10) expected = Kind::percent;
        EXPECT_EQ(kindOf(id), expected) << id;
    }
    EXPECT_FALSE(builtInFormat(0));
    EXPECT_FALSE(builtInFormat(164));
}

TEST(XLSXFormats, classifiesCodes) {
    const std::vector<std::pair<std::string, NumberFormat>> codes{
        {"yyyy-mm-dd hh:mm", {Kind::dateTime}},
        {"m/d/yy", {Kind::date}},
        {"YYYY", {Kind::date}},
        {"d", {Kind::date}},
        {"h:mm", {Kind::time}},
        {"mm:ss", {Kind::time}},
        {"h:mm AM/PM", {Kind::time}},
        {"mmm", {Kind::date}},
        {"mmmm", {Kind::date}},
        {"0.0%", {Kind::percent}},
        {"0%;[Red]-0%", {Kind::percent}},
        {"000", padded(3)},
        {"00", padded(2)},
        {"0", {Kind::general}},
        {"0.00", {Kind::general}},
        {"#,##0", {Kind::general}},
        {"General", {Kind::general}},
        {"", {Kind::general}},
        {"@", {Kind::general}},
        {"000;-000", {Kind::general}},
        {"00000000000000000000", padded(20)},
        {"0.0\"m\"", {Kind::general}},
        {"m0", {Kind::general}},
        {"m#", {Kind::general}},
        // Quoted, bracketed and escaped parts don't count.
        {"\"Day \"0", {Kind::general}},
        {"\"No. \"000", padded(3)},
        {"\\#000", padded(3)},
        {"\\d\\h0", {Kind::general}},
        {"[Red]000", padded(3)},
        {"[$-409]d/m/yyyy", {Kind::date}},
        {"[$€-407]#,##0", {Kind::general}},
        {"[h]:mm", {Kind::date}},
        {"[hh]:mm:ss", {Kind::time}},
        {"\"]\"[x\"]\"d]00", padded(2)},
        {"\"open yyyy", {Kind::general}},
        {"[open yyyy", {Kind::general}},
        {"00\\", padded(2)},
        {"00\\é", padded(2)},
        {"00]", {Kind::general}},
        {"\\[00\\]", padded(2)},
        {"_-* #,##0.00\\ \"€\"_-", {Kind::general}},
    };
    for (const auto& [code, format] : codes) EXPECT_EQ(classifyCode(code), format) << code;
}

TEST(XLSXFormats, padsNoWiderThanAnyoneNeeds) {
    EXPECT_EQ(classifyCode(std::string(64, '0')), padded(64));
    EXPECT_EQ(classifyCode(std::string(65, '0')), NumberFormat{Kind::general});
    EXPECT_EQ(classifyCode(std::string(1'000'000, '0')), NumberFormat{Kind::general});
}

TEST(XLSXFormats, showsNumbers) {
    const std::vector<std::pair<std::string, std::string>> values{
        {"1000", "1000"},
        {"0", "0"},
        {"-0", "0"},
        {"7", "7"},
        {"-7", "-7"},
        {"007", "7"},
        {"+7", "7"},
        {"1.0", "1"},
        {"1.50", "1.5"},
        {"0.1", "0.1"},
        {"-0.1", "-0.1"},
        {".5", "0.5"},
        {"5.", "5"},
        {"0.0001", "0.0001"},
        {"0.00001", "1e-05"},
        {"0.10000000000000001", "0.1"},
        {"0.30000000000000004", "0.3"},
        {"0.33333333333333331", "0.333333333333333"},
        {"123456789012345", "123456789012345"},
        {"999999999999999", "999999999999999"},
        {"1000000000000000", "1e+15"},
        {"1e15", "1e+15"},
        {"1E3", "1000"},
        {"1e-7", "1e-07"},
        {"1234567.8901234567", "1234567.89012346"},
        {"99999999999999.9", "99999999999999.9"},
        {"1e400", "inf"},
        {" 12 ", "12"},
        {"\t12", "12"},
        {"\n12", "\n12"},
        {" x ", " x "},
        {"1,5", "1,5"},
        {"12a", "12a"},
        {"1.2.3", "1.2.3"},
        {"-", "-"},
        {"0x10", "0x10"},
        {"#N/A", "#N/A"},
        {"#REF!", "#REF!"},
        {"é", "é"},
    };
    for (const auto& [value, text] : values) EXPECT_EQ(shown(value, {Kind::general}), text) << value;
}

TEST(XLSXFormats, showsAnyNumberAsFifteenDigitsOfADouble) {
    // The short way for plain values must never differ from the long one.
    std::uint64_t state = 1;
    const auto random = [&](std::uint64_t below) {
        state = state * 6364136223846793005 + 1442695040888963407;
        return (state >> 33) % below;
    };
    for (int i = 0; i < 200'000; ++i) {
        std::string value = random(4) == 0 ? "-" : "";
        for (std::uint64_t k = random(10); k > 0; --k) value += static_cast<char>('0' + random(10));
        if (random(3) > 0) value += '.';
        for (std::uint64_t k = random(10); k > 0; --k) value += static_cast<char>('0' + random(3) * random(4));
        char* end = nullptr;
        const double number = std::strtod(value.c_str(), &end);
        if (value.empty() || *end != '\0' || end == value.c_str()) continue;
        char expected[64];
        const bool whole = number == std::round(number) && std::abs(number) < 1e15;
        std::snprintf(expected, sizeof expected, whole ? "%.0f" : "%.15g", whole && number == 0 ? 0.0 : number);
        ASSERT_EQ(shown(value, {Kind::general}), expected) << value;
    }
}

TEST(XLSXFormats, padsWithZeros) {
    EXPECT_EQ(shown("7", padded(3)), "007");
    EXPECT_EQ(shown("-7", padded(3)), "-007");
    EXPECT_EQ(shown("1234", padded(3)), "1234");
    EXPECT_EQ(shown("7.5", padded(3)), "7.5");
    EXPECT_EQ(shown("0", padded(2)), "00");
    EXPECT_EQ(shown("-0", padded(2)), "00");
    EXPECT_EQ(shown("7.0", padded(3)), "007");
    EXPECT_EQ(shown("1e15", padded(3)), "1e+15");
    EXPECT_EQ(shown("7", padded(30)), std::string(29, '0') + "7");
    EXPECT_EQ(shown("seven", padded(3)), "seven");
}

TEST(XLSXFormats, showsPercents) {
    EXPECT_EQ(shown("0.125", {Kind::percent}), "12.5%");
    EXPECT_EQ(shown("0.07", {Kind::percent}), "7%");
    EXPECT_EQ(shown("1", {Kind::percent}), "100%");
    EXPECT_EQ(shown("-0.5", {Kind::percent}), "-50%");
    EXPECT_EQ(shown("0.00001", {Kind::percent}), "0.001%");
    EXPECT_EQ(shown("#DIV/0!", {Kind::percent}), "#DIV/0!");
}

TEST(XLSXFormats, showsDates) {
    const std::vector<std::pair<std::string, std::string>> days{
        {"45000", "2023-03-15"},
        {"45000.99", "2023-03-15"},
        {"0", "1899-12-31"},
        {"1", "1900-01-01"},
        {"59", "1900-02-28"},
        {"60", "1900-03-01"},
        {"61", "1900-03-01"},
        {"62", "1900-03-02"},
        {"60.9999999", "1900-03-02"},
        {"36526", "2000-01-01"},
        {"2958465", "9999-12-31"},
        {"2958465.999", "9999-12-31"},
        {"2958465.9995", "2958465.9995"},
        {"2958466", "2958466"},
        {"3000000", "3000000"},
        {"-1", "-1"},
        {"-0.5", "-0.5"},
        {"1e300", "1e+300"},
        {"inf", "inf"},
        {"44999.9999999", "2023-03-15"},
        {"soon", "soon"},
    };
    for (const auto& [value, text] : days) EXPECT_EQ(shown(value, {Kind::date}), text) << value;
}

TEST(XLSXFormats, countsFrom1904WhereTheWorkbookSaysSo) {
    EXPECT_EQ(shown("45000", {Kind::date}, DateSystem::from1904), "2027-03-16");
    EXPECT_EQ(shown("0", {Kind::date}, DateSystem::from1904), "1904-01-01");
    EXPECT_EQ(shown("59", {Kind::date}, DateSystem::from1904), "1904-02-29");
    EXPECT_EQ(shown("60", {Kind::date}, DateSystem::from1904), "1904-03-01");
    EXPECT_EQ(shown("2958465", {Kind::date}, DateSystem::from1904), "10004-01-01");
}

TEST(XLSXFormats, showsTimes) {
    EXPECT_EQ(shown("0.25", {Kind::time}), "06:00");
    EXPECT_EQ(shown("1.5", {Kind::time}), "12:00");
    EXPECT_EQ(shown("0", {Kind::time}), "00:00");
    EXPECT_EQ(shown("0.999", {Kind::time}), "23:58");  // seconds are dropped
    EXPECT_EQ(shown("0.9999999", {Kind::time}), "00:00");
    EXPECT_EQ(shown("-0.25", {Kind::time}), "-0.25");
}

TEST(XLSXFormats, showsDatesWithTimes) {
    EXPECT_EQ(shown("45000.5", {Kind::dateTime}), "2023-03-15 12:00");
    EXPECT_EQ(shown("45000", {Kind::dateTime}), "2023-03-15");
    EXPECT_EQ(shown("45000.9999999", {Kind::dateTime}), "2023-03-16");
    EXPECT_EQ(shown("45000.0003", {Kind::dateTime}), "2023-03-15");  // 26 seconds past midnight
    EXPECT_EQ(shown("45000.001", {Kind::dateTime}), "2023-03-15 00:01");
    EXPECT_EQ(shown("0.75", {Kind::dateTime}), "1899-12-31 18:00");
}

}  // namespace
}  // namespace quorvel::XLSX
