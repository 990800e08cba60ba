#include "xml/Place.h"

#include "xml/Support.h"

namespace vrn::xml {
namespace {

using Record = std::tuple<int, int, int, std::string>;

Record positionOf(const ParseError& error) { return {error.filepos, error.line, error.linepos, error.srcText}; }

TEST(ParseErrorRecord, CountsInUtf16Units) {
    const std::string text = "<a>\r\n\xC3\xA4\xF0\x9F\x98\x80 x\rlast";
    EXPECT_EQ(positionOf(parseErrorAt(text, 12, 1, "")), Record(9, 2, 5, "\xC3\xA4\xF0\x9F\x98\x80 x"));
    EXPECT_EQ(positionOf(parseErrorAt(text, 14, 1, "")), Record(11, 3, 1, "last"));
    EXPECT_EQ(positionOf(parseErrorAt(text, 999, 1, "")), Record(15, 3, 5, "last"));
    EXPECT_EQ(positionOf(parseErrorAt("", 0, 1, "")), Record(0, 1, 1, ""));
}

TEST(ParseErrorRecord, IsTextWhateverTheInputIs) {
    const ParseError error = parseErrorAt("a\xFF\x01z\nb", 1, 7, "two\nlines \xFE\n");
    EXPECT_EQ(error.srcText, "a\xEF\xBF\xBD\xEF\xBF\xBDz");
    EXPECT_EQ(error.reason, "two lines \xEF\xBF\xBD");
    EXPECT_EQ(error.errorCode, 7);
    EXPECT_EQ(error.url, "");
}

TEST(ParseErrorRecord, TellsWhereTheFirstBadCharacterIs) {
    Document document;
    EXPECT_FALSE(document.loadXML("\xEF\xBB\xBF<a>\n" + std::string(10000, 'x') + "\n\x02</a>"));
    EXPECT_EQ(document.parseError().filepos, 10005);
    EXPECT_EQ(document.parseError().line, 3);
    EXPECT_FALSE(document.loadXML(std::string_view("<a>\n<b>\0</c></a>", 16)));
    EXPECT_EQ(positionOf(document.parseError()), Record(7, 2, 4, "<b>\xEF\xBF\xBD</c></a>"));
    EXPECT_FALSE(document.loadXML(std::string_view("<a></b>\0", 8)));
    EXPECT_EQ(document.parseError().filepos, 5);
    EXPECT_EQ(document.parseError().reason.find('\n'), std::string::npos);
    EXPECT_TRUE(document.loadXML("<a/>"));
    EXPECT_EQ(document.parseError().reason, "");
}

TEST(ParseErrorRecord, NamesAProhibitedDtd) {
    Document document;
    for (const std::string prolog : {"", "<?xml version='1.0'?>\n", "<!--\n -->", "<!-- x --><?p?> "}) {
        EXPECT_FALSE(document.loadXML(prolog + "<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>"));
        EXPECT_EQ(document.parseError().errorCode, ParseError::dtdProhibited);
        EXPECT_EQ(document.parseError().reason, "DTD is prohibited.");
        EXPECT_EQ(document.parseError().filepos, static_cast<int>(prolog.size()));
    }
}

}  // namespace
}  // namespace vrn::xml
