// Where the parser stops, and how far it goes.
#include "xml/Support.h"

namespace vrn::xml {
namespace {

using Record = std::tuple<int, int, int, std::string>;

Record positionOf(std::string_view text) {
    Document document;
    EXPECT_FALSE(document.loadXML(text));
    const ParseError& error = document.parseError();
    return {error.filepos, error.line, error.linepos, error.srcText};
}

TEST(Parser, TellsWhereTheFirstErrorIs) {
    EXPECT_EQ(positionOf("<a>\n  <b></c>\n  </d>\n</a>"), Record(11, 2, 8, "  <b></c>"));
    EXPECT_EQ(positionOf("<a>\xF0\x9F\x98\x80\n&x;</a>"), Record(6, 2, 1, "&x;</a>"));
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
