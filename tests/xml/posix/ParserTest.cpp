// What the contract of the XML port leaves to the back end or to the parser behind it: where libxml2 stops, and how far it
// goes. Wine's MSXML has lower limits than the port (depth 256, texts of 10 MB) and does not tell positions.
#include "xml/Support.h"

namespace vrn::xml {
namespace {

using Position = std::tuple<int, int, int, std::string>;

Position positionOf(std::string_view text) {
    Document document;
    EXPECT_FALSE(document.loadXML(text));
    const ParseError& error = document.parseError();
    return {error.filepos, error.line, error.linepos, error.srcText};
}

TEST(Parser, TellsWhereTheFirstErrorIs) {
    EXPECT_EQ(positionOf("<a>\n  <b></c>\n  </d>\n</a>"), Position(13, 2, 10, "  <b></c>"));
    EXPECT_EQ(positionOf("<a>\xF0\x9F\x98\x80\n&x;</a>"), Position(9, 2, 4, "&x;</a>"));
}

TEST(Parser, ReadsTheDeepestTextThatThePortAllows) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text = "<a>" + text + "</a>";
    }
    EXPECT_TRUE(Document().loadXML(text));
}

TEST(Parser, ReadsTextsOfManyMegabytes) {
    const std::string text(20U << 20U, 'x');
    const Document document = testing::loaded("<a b='" + text + "'>" + text + "<![CDATA[" + text + "]]></a>");
    EXPECT_EQ(document.documentElement().attribute("b"), text);
    EXPECT_EQ(document.node().text().size(), 2 * text.size());
}

}  // namespace
}  // namespace vrn::xml
