#include "Cards/MakeCard.h"
#include "Cards/Placeholders.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

TEST(Placeholders, TakeTheCardsValues) {
    const Card card = makeCard({{"Title", "Mule"}, {"Cost", "3"}, {"a{{b", "inner"}, {"Self", "{{title}} **x**"}});
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"{{title}}", "Mule"},
        {"{{ Title }}", "Mule"},
        {"{{\ttitle\u00a0}}", "Mule"},
        {"{{title}}{{cost}}", "Mule3"},
        {"a {{title}} b {{cost}} c", "a Mule b 3 c"},
        {"{{nope}}", ""},
        {"{{}}", ""},
        {"{{ }}", ""},
        {"Cost: {{cost", "Cost: {{cost"},
        {"a }} b", "a }} b"},
        {"{{title}} and {{b", "Mule and {{b"},
        {"{{title\n}}", ""},
        {"{{a{{b}}", "inner"},
        {"{{Self}}", "{{title}} **x**"},
        {"{{{title}}}", "}"},
        {"{title}", "{title}"},
        {"{ {title}}", "{ {title}}"},
        {"{{title}", "{{title}"},
        {"{{title} }", "{{title} }"},
        {"}}{{title}}{{", "}}Mule{{"},
    };
    for (const auto& [text, resolved] : cases) EXPECT_EQ(Placeholders::resolve(text, &card), resolved) << text;
}

TEST(Placeholders, WithoutACardShowTheirNames) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"{{ Title }}", "[Title]"},   {"{{}}", "[]"},     {"{{a}}{{B c}}", "[a][B c]"}, {"x {{a", "x {{a"},
        {"{{title\n}}", "[title\n]"}, {"plain", "plain"},
    };
    for (const auto& [text, resolved] : cases) EXPECT_EQ(Placeholders::resolve(text, nullptr), resolved) << text;
}

TEST(Placeholders, ListTheirNames) {
    EXPECT_THAT(Placeholders::names(""), IsEmpty());
    EXPECT_THAT(Placeholders::names("no {one}"), IsEmpty());
    EXPECT_THAT(Placeholders::names("{{ Title }} {{COST}}{{title}} {{}} {{ }}"), ElementsAre("title", "cost", "title"));
    EXPECT_THAT(Placeholders::names("{{Größe}} {{ÉTÉ}}"), ElementsAre("größe", "été"));
    EXPECT_THAT(Placeholders::names("{{a}} {{b"), ElementsAre("a"));
    EXPECT_THAT(Placeholders::names("{{a\n}}"), ElementsAre("a\n"));
}

TEST(Placeholders, MayOccurWhereTwoBracesStand) {
    EXPECT_TRUE(Placeholders::mayOccurIn("a{{b"));
    EXPECT_FALSE(Placeholders::mayOccurIn("{a} }}"));
    EXPECT_FALSE(Placeholders::mayOccurIn(""));
}

TEST(Placeholders, TakeHostileTexts) {
    const Card card = makeCard({{"Title", "Mule"}});
    constexpr int many = 500'000;
    const std::string open = repeated("{{", many);
    EXPECT_EQ(Placeholders::resolve(open, &card), open);
    EXPECT_EQ(Placeholders::resolve(open + "}}", &card), "");
    EXPECT_THAT(Placeholders::names(open), IsEmpty());
    const std::string close = repeated("}}", many);
    EXPECT_EQ(Placeholders::resolve(close, &card), close);
    EXPECT_EQ(Placeholders::resolve(close + "{{", &card), close + "{{");
    EXPECT_EQ(Placeholders::resolve(repeated("{{}}", many), &card), "");
    EXPECT_EQ(Placeholders::resolve(repeated("{{ title }}", many), &card), repeated("Mule", many));
    EXPECT_EQ(Placeholders::names(repeated("{{x}}", many)).size(), static_cast<std::size_t>(many));
    EXPECT_EQ(Placeholders::resolve("\xff{{\xfe}}\xff", &card), "\xff\xff");
}

}  // namespace
}  // namespace quorvel
