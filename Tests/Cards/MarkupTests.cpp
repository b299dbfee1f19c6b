#include "Cards/Markup.h"
#include "Foundation/Text.h"

#include <gmock/gmock.h>
#include <random>

namespace quorvel {
namespace {

using Runs = std::vector<MarkupRun>;

MarkupRun plain(std::string text) {
    return MarkupText{std::move(text), false, false};
}
MarkupRun bold(std::string text) {
    return MarkupText{std::move(text), true, false};
}
MarkupRun italic(std::string text) {
    return MarkupText{std::move(text), false, true};
}
MarkupRun both(std::string text) {
    return MarkupText{std::move(text), true, true};
}
MarkupRun icon(std::string name) {
    return MarkupIcon{std::move(name)};
}

/// "text" in one of plain:, b:, i:, bi:, and icon: by "{name}", for readable failures.
std::string dump(const Runs& runs) {
    std::string result;
    for (const MarkupRun& run : runs) {
        if (const auto* each = std::get_if<MarkupIcon>(&run)) {
            result += "{" + each->name + "}";
        } else {
            const auto& text = std::get<MarkupText>(run);
            result += std::string(text.bold ? "b" : "") + (text.italic ? "i" : "") + "(" + text.text + ")";
        }
    }
    return result;
}

TEST(Markup, Parses) {
    const std::pair<std::string, Runs> cases[] = {
        {"", {}},
        {"plain", {plain("plain")}},
        {"**bold**", {bold("bold")}},
        {"*italic*", {italic("italic")}},
        {"***x***", {both("x")}},
        {"a **b** c", {plain("a "), bold("b"), plain(" c")}},
        {"2 * 3 * 4", {plain("2 "), italic(" 3 "), plain(" 4")}},
        {"2 * 3", {plain("2 * 3")}},
        {"**a*b**c*", {bold("a"), both("b"), italic("c")}},
        {"*a **b* c**", {italic("a "), both("b"), bold(" c")}},
        {"**bold", {plain("**bold")}},
        {"*it", {plain("*it")}},
        {"**a\nb**", {bold("a\nb")}},
        // Marks without anything to mark.
        {"**", {plain("**")}},
        {"***", {plain("***")}},
        {"****", {}},
        {"*", {plain("*")}},
        {"a*", {plain("a*")}},
        {"a**", {plain("a**")}},
        {"*a**", {plain("*a**")}},
        {"**a*", {plain("**a*")}},
        {"a****b", {plain("ab")}},
        {"* *", {italic(" ")}},
        {"*a*b*c*", {italic("a"), plain("b"), italic("c")}},
        // Escapes.
        {R"(\*not italic\*)", {plain("*not italic*")}},
        {R"(a\nb)", {plain("a\nb")}},
        {R"(a\\nb)", {plain(R"(a\nb)")}},
        {R"(\{icon:coin})", {plain("{icon:coin}")}},
        {R"(\)", {plain(R"(\)")}},
        {R"(end\)", {plain(R"(end\)")}},
        {R"(\q)", {plain("q")}},
        {R"(*a\*b*)", {italic("a*b")}},
        {R"(*a\*)", {plain("*a*")}},
        {R"(**a\**)", {plain("**a**")}},
        {R"(**a*\***)", {bold("a**")}},
        {R"(*a\\*)", {italic(R"(a\)")}},
        // Icons.
        {"{icon:coin}", {icon("coin")}},
        {"{Icon:Coin}", {icon("coin")}},
        {"{ICON:ÉTÉ}", {icon("été")}},
        {"{icon:coin-2_b}", {icon("coin-2_b")}},
        {"{icon:ß٣}", {icon("ß٣")}},
        {"Gain 1 {icon:coin}.", {plain("Gain 1 "), icon("coin"), plain(".")}},
        {"**a{icon:x}b**", {bold("a"), icon("x"), bold("b")}},
        {"{icon:a}{icon:b}", {icon("a"), icon("b")}},
        {"{{icon:a}}", {plain("{"), icon("a"), plain("}")}},
        {"{icon:}", {plain("{icon:}")}},
        {"{icon:co in}", {plain("{icon:co in}")}},
        {"{icon:coin", {plain("{icon:coin")}},
        {"{icon:", {plain("{icon:")}},
        {"{icon", {plain("{icon")}},
        {"{", {plain("{")}},
        {"{ icon:coin}", {plain("{ icon:coin}")}},
        {"{icon:{icon:b}", {plain("{icon:"), icon("b")}},
        {"{icon:*a*}", {plain("{icon:"), italic("a"), plain("}")}},
        {"{ıcon:coin}", {plain("{ıcon:coin}")}},
        {"{İcon:coin}", {plain("{İcon:coin}")}},
        // Line ends.
        {"a\rb", {plain("a\nb")}},
        {"a\r\nb", {plain("a\r\nb")}},
        {"a\nb", {plain("a\nb")}},
        {"\r\r\n", {plain("\n\r\n")}},
        {"\\\r", {plain("\r")}},
        {"\\\r\n", {plain("\r\n")}},
        // A mark with a combining character on it is another character.
        {"*\u0301a*", {plain("*\u0301a*")}},
        {"*a*\u0301", {plain("*a*\u0301")}},
        {"{\u0301icon:coin}", {plain("{\u0301icon:coin}")}},
        {"{icon:coin}\u0301", {plain("{icon:coin}\u0301")}},
        {"{icon:coi\u0301n}", {icon("coi\u0301n")}},
        {"\\n\u0301", {plain("n\u0301")}},
        {"**é*ü*ß**", {bold("é"), both("ü"), bold("ß")}},
        {"\\\u0301*a*", {plain("\\\u0301"), italic("a")}},
    };
    for (const auto& [text, runs] : cases)
        EXPECT_TRUE(Markup::parse(text) == runs) << text << " gave " << dump(Markup::parse(text));
}

TEST(Markup, PlainText) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"Gain 1 {icon:coin}", "Gain 1 [coin]"},
        {"**a** *b* c", "a b c"},
        {"{icon:X}{icon:Y}", "[x][y]"},
        {R"(a\nb\*)", "a\nb*"},
        {"**open", "**open"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(Markup::plainText(text), expected) << text;
}

// The language read word for word, each search done anew.
class SlowReading {
public:
    explicit SlowReading(std::string_view text) : characters_(Text::characters(text)) {}

    Runs runs() {
        std::size_t i = 0;
        while (i < characters_.size()) {
            if (is("\\", i) && i + 1 < characters_.size()) {
                add(is("n", i + 1) ? "\n" : characters_[i + 1]);
                i += 2;
            } else if (is("*", i) && is("*", i + 1)) {
                i += 2;
                toggle(bold_, finds(i, true), "**");
            } else if (is("*", i)) {
                i += 1;
                toggle(italic_, finds(i, false), "*");
            } else if (const std::size_t length = iconLength(i); length > 0) {
                runs_.push_back(MarkupIcon{Text::lowercased(joined(i + 6, i + length - 1))});
                i += length;
            } else {
                add(is("\r", i) ? "\n" : characters_[i]);
                i += 1;
            }
        }
        return runs_;
    }

private:
    bool is(std::string_view character, std::size_t i) const {
        return i < characters_.size() && characters_[i] == character;
    }

    bool finds(std::size_t i, bool pair) const {
        while (i < characters_.size()) {
            const bool two = is("*", i) && is("*", i + 1);
            if (is("\\", i)) {
                i += 2;
            } else if (pair ? two : is("*", i) && !two) {
                return true;
            } else {
                i += !pair && two ? 2 : 1;
            }
        }
        return false;
    }

    std::string joined(std::size_t first, std::size_t end) const {
        std::string result;
        for (std::size_t i = first; i < std::min(end, characters_.size()); ++i) result += characters_[i];
        return result;
    }

    std::size_t iconLength(std::size_t i) const {
        if (Text::lowercased(joined(i, i + 6)) != "{icon:") return 0;
        std::size_t end = i + 6;
        while (end < characters_.size() && (Text::isLetterOrNumber(characters_[end]) || is("-", end) || is("_", end)))
            ++end;
        return end > i + 6 && is("}", end) ? end + 1 - i : 0;
    }

    void toggle(bool& flag, bool closes, std::string_view literal) {
        if (flag || closes) {
            flag = !flag;
        } else {
            add(literal);
        }
    }

    void add(std::string_view text) {
        auto* last = runs_.empty() ? nullptr : std::get_if<MarkupText>(&runs_.back());
        if (last && last->bold == bold_ && last->italic == italic_) {
            last->text += text;
        } else {
            runs_.push_back(MarkupText{std::string(text), bold_, italic_});
        }
    }

    std::vector<std::string_view> characters_;
    Runs runs_;
    bool bold_ = false;
    bool italic_ = false;
};

std::string randomText(std::mt19937& random, bool onlyASCII) {
    static const std::string_view pieces[] = {
        "*", "*",  "**", "\\", "{",      "}", "{icon:", "{icon:a}",    "a",    "n",
        " ", "\r", "\n", "-",  "\u0301", "é", "\r\n",   "👩‍👧", "\xff", "٣"};
    std::string text;
    for (auto length = random() % 16; length > 0; --length) text += pieces[random() % (onlyASCII ? 14 : 20)];
    return text;
}

TEST(Markup, AgreesWithTheSlowReading) {
    std::mt19937 random(11);
    for (int round = 0; round < 40'000; ++round) {
        const std::string text = randomText(random, round % 2 == 0);
        const Runs runs = Markup::parse(text);
        ASSERT_EQ(dump(runs), dump(SlowReading(text).runs())) << testing::PrintToString(text);
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const auto* here = std::get_if<MarkupText>(&runs[i]);
            if (!here) continue;
            ASSERT_FALSE(here->text.empty());
            const auto* next = i + 1 < runs.size() ? std::get_if<MarkupText>(&runs[i + 1]) : nullptr;
            ASSERT_FALSE(next && next->bold == here->bold && next->italic == here->italic);
        }
    }
}

TEST(Markup, EscapedTextReadsAsItself) {
    std::mt19937 random(12);
    for (int round = 0; round < 5'000; ++round) {
        const std::string text = randomText(random, round % 2 == 0);
        std::string escaped;
        // A mark would join the backslash in front of it.
        bool startsWithMark = false;
        for (const std::string_view character : Text::characters(text)) {
            startsWithMark |= character.starts_with("\u0301");
            escaped += character == "n" ? "n" : "\\" + std::string(character);
        }
        if (startsWithMark) continue;
        ASSERT_EQ(Markup::plainText(escaped), text) << testing::PrintToString(text);
    }
}

TEST(Markup, TakesHostileTexts) {
    constexpr std::size_t size = 1'000'000;
    for (const std::string_view piece : {"*", "**a", "*a", "*a*a**", "\\", "\\*", "*\\", "{", "{icon:", "{icon:a}",
                                         "\r", "\r\n", "***a", "*\u0301", "\u0301", "é*", "{icon:aé", "**\\**"}) {
        std::string text;
        while (text.size() < size) text += piece;
        for (const std::string& each : {"**" + text, text + "*"}) {
            std::size_t length = 0;
            for (const MarkupRun& run : Markup::parse(each))
                if (const auto* part = std::get_if<MarkupText>(&run)) length += part->text.size();
            EXPECT_LE(length, each.size());
        }
    }
    EXPECT_TRUE(Markup::parse("{icon:" + std::string(size, 'A') + "}") == Runs{icon(std::string(size, 'a'))});
}

}  // namespace
}  // namespace quorvel
