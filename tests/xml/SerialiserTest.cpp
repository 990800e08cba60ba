#include "xml/Serialiser.h"

#include <random>

#include "xml/Support.h"

namespace vrn::xml {
namespace {

using testing::eventsOf;
using testing::loaded;

std::string escapedText(std::string_view text) {
    std::string out;
    appendEscapedText(out, text);
    return out;
}

std::string cdata(std::string_view text) {
    std::string out;
    appendCData(out, text);
    return out;
}

TEST(Serialiser, EscapesText) {
    EXPECT_EQ(escapedText(""), "");
    EXPECT_EQ(escapedText("a<b>&amp;\"'\r\n\t\xC3\xA9"), "a&lt;b&gt;&amp;amp;\"'&#13;\n\t\xC3\xA9");
    EXPECT_EQ(escapedText("]]>"), "]]&gt;");
}

TEST(Serialiser, ProtectsWhiteSpaceThatIsAText) {
    EXPECT_EQ(escapedText(" "), "&#32;");
    EXPECT_EQ(escapedText("\n \r"), "&#10; &#13;");
    EXPECT_EQ(escapedText("\t\t"), "&#9;\t");
    EXPECT_EQ(escapedText("\xC2\xA0"), "\xC2\xA0");
}

TEST(Serialiser, SplitsCDataThatHoldsItsEnd) {
    EXPECT_EQ(cdata(""), "<![CDATA[]]>");
    EXPECT_EQ(cdata("a]]>b"), "<![CDATA[a]]]]><![CDATA[>b]]>");
    for (const std::string text : {"]]>", "]]]>]>", "]]>]]>", "x]]", ">", "x\r\ny ", " ]]\r>\r]]>"}) {
        EXPECT_EQ(loaded("<a>" + cdata(text) + "</a>").documentElement().text(), text);
    }
}

TEST(Serialiser, CarriageReturnsStandBetweenCharactersOfAText) {
    EXPECT_EQ(cdata("xa\rby"), "<![CDATA[x]]>a&#13;b<![CDATA[y]]>");
    EXPECT_EQ(cdata(" a \r\n\r b \rc\r"), "<![CDATA[ ]]>a &#13;\n&#13; b &#13;c<![CDATA[\n]]>");
    EXPECT_EQ(cdata("\xE2\x82\xAC\r\xC3\xA4"), "<![CDATA[]]>\xE2\x82\xAC&#13;\xC3\xA4<![CDATA[]]>");
    EXPECT_EQ(cdata("\r a\r"), "<![CDATA[\n a\n]]>");
}

TEST(Serialiser, ContentIsWrittenAsReadingGivesItBack) {
    const auto content = [](std::string_view text) {
        std::string out;
        appendContent(out, text);
        return out;
    };
    EXPECT_EQ(content("a\rb&"), "a&#13;b&amp;");
    EXPECT_EQ(content(" \t\r\n"), "");
    for (const std::string text : {" a", "a\t", " a\rb ", "a ]]> ", " ]]\r>", "x"}) {
        EXPECT_EQ(loaded("<a>" + content(text) + "</a>").documentElement().text(), text);
    }
}

TEST(Serialiser, WritesNothingThatTheTreeDoesNotHave) {
    const std::string text = "<?xml version=\"1.0\"?><!--c--><a b=\"1\"><c/><d>x<e>y</e>z</d><?p?></a><?q r?>";
    EXPECT_EQ(loaded(text).xml(), text);
    EXPECT_EQ(loaded("<a></a>").xml(), "<a/>");
    EXPECT_EQ(loaded("<a b='\"&#39;' />").xml(), "<a b=\"&quot;'\"/>");
}

// Trees as programs build them, by chance and with all that is awkward to write.
class RandomTree {
  public:
    explicit RandomTree(unsigned seed) : random_(seed) {}

    Document build() {
        Node root = document_.node().appendChild(document_.createElement(name()));
        std::vector<Node> elements{root};
        for (int i = 0; i < 60; ++i) {
            elements.push_back(addTo(elements[below(elements.size())]));
        }
        return document_;
    }

  private:
    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }

    std::string name() {
        static const std::vector<std::string> names{"a", "B", "c-1", "_x.", "\xC3\xA4", "\xE6\xBC\xA2"};
        return names[below(names.size())];
    }

    std::string text() {
        static const std::vector<std::string> pieces{" ",   "\n", "\r",  "\t", "<", ">",        "&",
                                                     "]]>", "\"", "&#1", "x",  "'", "\xC3\xA4", "\xF0\x9F\x98\x80",
                                                     "--",  "?"};
        std::string out;
        for (std::size_t count = 1 + below(20) * below(4); count > 0; --count) {
            out += pieces[below(pieces.size())];
        }
        return out;
    }

    // Neighbouring texts would be one text when they are read again.
    Node addTo(const Node& parent) {
        const bool textStandsLast = parent.lastChild() && parent.lastChild().kind() == NodeKind::Text;
        switch (below(textStandsLast ? 4 : 6)) {
            case 0:
                (void)parent.appendChild(document_.createProcessingInstruction("p", "x " + name()));
                return parent;
            case 1:
                parent.setAttribute(name(), text());
                return parent;
            case 2:
                return parent.appendChild(document_.createElement(name()));
            case 3:
                return parent.appendChild(document_.createElement(name(), below(2) == 0 ? "" : "urn:" + name()));
            default:
                (void)parent.appendChild(document_.createTextNode(text()));
                return parent;
        }
    }

    std::mt19937 random_;
    Document document_;
};

// A declaration that the writing added is an event of the second tree only, so the comparison is from the first writing on.
TEST(Serialiser, WhatIsWrittenReadsAsTheSameTree) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        const Document built = RandomTree(seed).build();
        const std::string written = built.xml();
        const Document read = loaded(written);
        ASSERT_EQ(read.xml(), written) << seed;
        ASSERT_EQ(read.node().stringValue(), built.node().stringValue()) << seed;
        Document copy;
        ASSERT_TRUE(copy.load(built));
        ASSERT_EQ(eventsOf(copy.node()), eventsOf(built.node())) << seed;
        if (written.find("xmlns") == std::string::npos) {
            ASSERT_EQ(eventsOf(read.node()), eventsOf(built.node())) << seed;
        }
    }
}

}  // namespace
}  // namespace vrn::xml
