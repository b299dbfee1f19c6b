#include "Spreadsheet/HeapMeter.h"
#include "Spreadsheet/XMLEvents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

/// The events of a document, written down: "<name a=1>" and "text</name>".
struct Events {
    std::string log;
    std::string failure;

    XMLEvents::OnStart onStart() {
        return [this](std::string_view name, const XMLAttributes& attributes) {
            log += "<" + std::string(name);
            attributes.findIf([&](std::string_view attribute) {
                log += " " + std::string(attribute) + "=" + std::string(*attributes.find(attribute));
                return false;
            });
            log += ">";
        };
    }

    XMLEvents::OnEnd onEnd() {
        return [this](std::string_view name, std::string& text) { log += text + "</" + std::string(name) + ">"; };
    }
};

Events parsed(std::string_view document) {
    Events events;
    const auto result = XMLEvents::parse(document, events.onStart(), events.onEnd());
    if (!result) events.failure = result.error();
    return events;
}

std::string logOf(std::string_view document) {
    const Events events = parsed(document);
    return events.failure.empty() ? events.log : "failed: " + events.failure;
}

std::string nested(int depth) {
    std::string document;
    for (int i = 0; i < depth; ++i) document += "<a>";
    for (int i = 0; i < depth; ++i) document += "</a>";
    return document;
}

TEST(XMLEvents, tellsTagsAndText) {
    EXPECT_EQ(logOf("<a><b x='1' y=\"2\">text</b><c/></a>"), "<a><b x=1 y=2>text</b><c></c></a>");
    EXPECT_EQ(logOf("<?xml version='1.0' encoding='UTF-8'?>\n<a>é</a>\n"), "<a>é</a>");
}

TEST(XMLEvents, givesTheTextSinceTheLastTag) {
    EXPECT_EQ(logOf("<a>one<b>two</b>three</a>"), "<a><b>two</b>three</a>");
    EXPECT_EQ(logOf("<a>one<b>two</b></a>"), "<a><b>two</b></a>");
    EXPECT_EQ(logOf("<a>1<!-- no tag -->2<?nor this?>3<![CDATA[<4>]]></a>"), "<a>123<4></a>");
}

TEST(XMLEvents, takesPrefixesOffElementsAndLeavesThemOnAttributes) {
    EXPECT_EQ(logOf("<x:a r:id='1' id='2'><x:y:b/></x:a>"), "<a r:id=1 id=2><y:b></y:b></a>");
}

TEST(XMLEvents, knowsTheStandardsEntitiesAndNoOthers) {
    EXPECT_EQ(logOf("<a b='&lt;&quot;&#65;'>&amp;&gt;&apos;&#x1F600;</a>"), "<a b=<\"A>&>'😀</a>");
    EXPECT_EQ(logOf("<a>&nbsp;</a>"), "failed: undefined entity");
}

TEST(XMLEvents, makesLineEndsOne) {
    EXPECT_EQ(logOf("<a>1\r\n2\r3&#13;4</a>"), "<a>1\n2\n3\r4</a>");
}

TEST(XMLEvents, readsTheEncodingsOfTheStandard) {
    EXPECT_EQ(logOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>caf\xE9</a>"), "<a>café</a>");
    EXPECT_EQ(logOf("\xEF\xBB\xBF<a>é</a>"), "<a>é</a>");
    EXPECT_EQ(logOf(std::string_view("\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18)), "<a>é</a>");
    EXPECT_EQ(logOf("<a>caf\xE9</a>"), "failed: not well-formed (invalid token)");
}

TEST(XMLEvents, saysWhatIsWrong) {
    EXPECT_EQ(parsed("<a><b></a>").failure, "mismatched tag");
    EXPECT_EQ(parsed("").failure, "no element found");
    EXPECT_EQ(parsed("<a>").failure, "no element found");
    EXPECT_EQ(parsed("<a/><b/>").failure, "junk after document element");
    EXPECT_EQ(parsed("<a b='1' b='2'/>").failure, "duplicate attribute");
    EXPECT_EQ(parsed("no XML").failure, "syntax error");
    EXPECT_EQ(parsed("<a>&#0;</a>").failure, "reference to invalid character number");
}

TEST(XMLEvents, stopsAtADocumentType) {
    const std::string message = "a document type declaration";
    EXPECT_EQ(parsed("<!DOCTYPE a><a/>").failure, message);
    EXPECT_EQ(parsed("<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a/>").failure, message);
    EXPECT_EQ(parsed("<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/hostname'>]><a>&x;</a>").failure, message);
    std::string laughs = "<!DOCTYPE a [<!ENTITY e0 'ha'>";
    for (int i = 1; i < 64; ++i) {
        const std::string before = "&e" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(i) + " '" + before + before + before + before + "'>";
    }
    const Events events = parsed(laughs + "]><a>&e63;</a>");
    EXPECT_EQ(events.failure, message);
    EXPECT_EQ(events.log, "");
}

TEST(XMLEvents, stopsAtDeepNesting) {
    EXPECT_EQ(parsed(nested(256)).failure, "");
    EXPECT_EQ(parsed(nested(257)).failure, "elements nested too deeply");
    EXPECT_EQ(parsed(nested(1'000'000)).failure, "elements nested too deeply");
    std::string wide = "<a>";
    for (int i = 0; i < 1000; ++i) wide += "<b><c/></b>";
    EXPECT_EQ(parsed(wide + "</a>").failure, "");
}

TEST(XMLEvents, tellsNothingOnceItStopped) {
    EXPECT_THAT(parsed("<a>" + nested(300) + "</a><b/>").log, testing::Not(testing::HasSubstr("<b>")));
    EXPECT_THAT(parsed(nested(300)).log, testing::Not(testing::HasSubstr("</a>")));
}

TEST(XMLEvents, takesADocumentInPiecesOfAnySize) {
    const std::string document =
        "<?xml version='1.0'?><x:a b='1&amp;2'>é<![CDATA[]]]>&#x1F600;<c/>tail\r\n</x:a><!-- end -->";
    const std::string whole = logOf(document);
    for (std::size_t size = 1; size <= document.size(); ++size) {
        Events events;
        XMLEvents parser(events.onStart(), events.onEnd());
        for (std::size_t start = 0; start < document.size(); start += size)
            EXPECT_TRUE(parser.push(document.substr(start, size)));
        EXPECT_TRUE(parser.finish());
        EXPECT_EQ(events.log, whole) << size;
    }
}

TEST(XMLEvents, letsTheCallbackTakeTheText) {
    std::string taken;
    const auto result = XMLEvents::parse(
        "<a><b>one</b><b>two</b></a>", [](std::string_view, const XMLAttributes&) {},
        [&](std::string_view name, std::string& text) {
            if (name == "b") taken += std::exchange(text, std::string());
        });
    EXPECT_TRUE(result);
    EXPECT_EQ(taken, "onetwo");
}

TEST(XMLEvents, failsForGoodOncePushFailed) {
    Events events;
    XMLEvents parser(events.onStart(), events.onEnd());
    EXPECT_TRUE(parser.isReadable());
    EXPECT_FALSE(parser.push("<a></b>"));
    EXPECT_FALSE(parser.isReadable());
    EXPECT_FALSE(parser.push("<a>"));
    EXPECT_EQ(events.log, "<a>");
    EXPECT_EQ(parser.finish().error(), "mismatched tag");
    EXPECT_EQ(parser.finish().error(), "mismatched tag");
}

TEST(XMLEvents, knowsWhetherItIsBetweenTags) {
    const auto isBetween = [](std::initializer_list<std::string_view> pieces) {
        XMLEvents parser([](std::string_view, const XMLAttributes&) {}, [](std::string_view, std::string&) {});
        for (const std::string_view piece : pieces) parser.push(piece);
        return parser.isBetweenTags();
    };
    EXPECT_TRUE(isBetween({"<a>"}));
    EXPECT_TRUE(isBetween({"<?xml version='1.0'?><a><b/>"}));
    EXPECT_TRUE(isBetween({"\xEF\xBB\xBF<a>"}));
    EXPECT_TRUE(isBetween({"<a><b></b>"}));
    EXPECT_FALSE(isBetween({}));
    EXPECT_FALSE(isBetween({"<?xml version='1.0'?>"}));
    EXPECT_FALSE(isBetween({"<a/>"}));
    EXPECT_FALSE(isBetween({"<a></a>"}));
    EXPECT_FALSE(isBetween({"<a>text"}));
    EXPECT_FALSE(isBetween({"<a> "}));
    EXPECT_FALSE(isBetween({"<a><b"}));
    EXPECT_FALSE(isBetween({"<a><!-- <b> -->"}));
    EXPECT_FALSE(isBetween({"<a><!-- <b>"}));
    EXPECT_FALSE(isBetween({"<a><![CDATA[<b>"}));
    EXPECT_FALSE(isBetween({"<a><?b <c>"}));
    EXPECT_FALSE(isBetween({"<a b='>"}));
    EXPECT_FALSE(isBetween({"<a></b>"}));
    EXPECT_FALSE(isBetween({"<", "a>"}));  // too little to tell the encoding by
    EXPECT_FALSE(isBetween({std::string_view("\xFF\xFE<\0a\0>\0", 8)}));
    EXPECT_FALSE(isBetween({std::string_view("<\0a\0>\0", 6)}));
    EXPECT_FALSE(isBetween({std::string_view("\0<\0a\0>", 6)}));
    EXPECT_TRUE(isBetween({nested(254).substr(0, 254 * 3)}));
    EXPECT_FALSE(isBetween({nested(255).substr(0, 255 * 3)}));
}

TEST(XMLEvents, asksForPiecesThatGrowWithATag) {
    XMLEvents parser([](std::string_view, const XMLAttributes&) {}, [](std::string_view, std::string&) {});
    const std::size_t usual = parser.wantedSize();
    EXPECT_GT(usual, 0U);
    parser.push("<a>" + std::string(1'000'000, 'x'));
    EXPECT_EQ(parser.wantedSize(), usual);
    parser.push("<b c='" + std::string(1'000'000, 'x'));
    EXPECT_GE(parser.wantedSize(), 1'000'000U);
}

TEST(XMLEvents, boundsTheMemoryOfTags) {
    const std::size_t mebibyte = 1 << 20;
    // One tag without an end, one attribute, one comment, and millions of names: none may cost many times its size.
    EXPECT_EQ(parsed("<a b='" + std::string(48 * mebibyte, 'x') + "'/>").failure, "out of memory");
    EXPECT_EQ(parsed("<" + std::string(48 * mebibyte, 'x')).failure, "out of memory");
    EXPECT_EQ(parsed("<a><!--" + std::string(48 * mebibyte, 'x') + "--></a>").failure, "out of memory");
    std::string names = "<a>";
    for (int i = 0; i < 2'000'000; ++i) names += "<n" + std::to_string(i) + "/>";
    EXPECT_EQ(parsed(names + "</a>").failure, "out of memory");
    EXPECT_EQ(parsed("<a b='" + std::string(4 * mebibyte, 'x') + "'/>").failure, "");
    // A parser that failed gives all its memory back to the account.
    for (int i = 0; i < 100; ++i) EXPECT_EQ(logOf("<a/>"), "<a></a>");
}

TEST(XMLEvents, holdsALongTextOnce) {
    const std::size_t size = std::size_t{200} << 20;
    const std::string document = "<a>" + std::string(size, 'x') + "</a>";
    std::size_t seen = 0;
    const test::HeapMeter meter;
    const auto result = XMLEvents::parse(
        document, [](std::string_view, const XMLAttributes&) {},
        [&](std::string_view, std::string& text) { seen = text.size(); });
    EXPECT_TRUE(result);
    EXPECT_EQ(seen, size);
    EXPECT_LT(meter.peak(), 2 * size + (std::size_t{40} << 20));
}

}  // namespace
}  // namespace quorvel
