#include <gtest/gtest.h>

#include "text/Alignment.h"
#include "text/Ansi.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::text {
namespace {

using Items = std::vector<std::string>;

TEST(Unicode, ConvertsWhatIsUtf8) {
    const std::string text = "aé€😀\xEF\xBF\xBF";
    EXPECT_EQ(toUtf16(text), u"aé€😀\xFFFF");
    EXPECT_EQ(fromUtf16(toUtf16(text)), text);
    EXPECT_EQ(utf16Length(text), 6U);
}

TEST(Unicode, EveryBadByteCountsAsOneCharacter) {
    const struct {
        std::string_view bytes;
        std::u16string_view units;
    } cases[] = {
        {"\x80", u"\xFFFD"},                                // continuation without a lead
        {"\xC0\xAF", u"\xFFFD\xFFFD"},                      // overlong "/"
        {"\xE0\x80\xAF", u"\xFFFD\xFFFD\xFFFD"},            // overlong again
        {"\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},            // a surrogate
        {"\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},  // beyond the last code point
        {"\xFF\xFE", u"\xFFFD\xFFFD"},                      // no lead bytes at all
        {"\xE2\x82", u"\xFFFD\xFFFD"},                      // ends too early
        {"\xE2\x82z", u"\xFFFD\xFFFDz"},                    // what follows is kept
    };
    for (const auto& [bytes, units] : cases) {
        EXPECT_EQ(toUtf16(bytes), units) << bytes;
        EXPECT_EQ(utf16Length(bytes), units.size()) << bytes;
        EXPECT_FALSE(isXmlText(bytes)) << bytes;
    }
}

TEST(Unicode, UnpairedSurrogatesBecomeReplacements) {
    EXPECT_EQ(fromUtf16(std::u16string{0xD800, u'a'}), "\uFFFDa");
    EXPECT_EQ(fromUtf16(std::u16string{u'a', 0xDC00}), "a\uFFFD");
    EXPECT_EQ(fromUtf16(std::u16string{0xD83D, 0xD83D, 0xDE00}), "\uFFFD😀");
}

TEST(Unicode, KeepsOnlyWhatXmlCanHold) {
    EXPECT_EQ(withoutNonXmlCharacters(std::string_view("a\0b\x01\t\r\n\x80 \xEF\xBF\xBE€", 15)), "ab\t\r\n €");
    EXPECT_TRUE(isXmlText("tab\t and 😀"));
    EXPECT_FALSE(isXmlText("\x0B"));
}

TEST(Unicode, UpperCaseIsOneCharacterToOne) {
    EXPECT_EQ(upperCase("sl.tray-1 ß÷"), "SL.TRAY-1 ß÷");
    EXPECT_EQ(upperCase("äöüÿ čšž ĺ ŋŷ"), "ÄÖÜŸ ČŠŽ Ĺ ŊŶ");
    EXPECT_EQ(upperCase("αωμ жяё"), "ΑΩΜ ЖЯЁ");
    EXPECT_EQ(upperCase("a\xFFz"), "A\xFFZ");
}

TEST(Ansi, ConvertsByTheCodePage) {
    EXPECT_EQ(toAnsi("a€éŸ日\xFF"), "a\x80\xE9\x9F??");
    EXPECT_EQ(toAnsi("😀b"), "??b") << "one for each UTF-16 unit";
    EXPECT_EQ(fromAnsi("\x80\xE9\x9F"), "€éŸ");
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
    }
    EXPECT_EQ(toAnsi(fromAnsi(all)), all);
}

TEST(Ansi, CharactersBeyondTheCodePageAreAllEqual) {
    EXPECT_TRUE(equalInAnsi("Tray日", "Tray本"));
    EXPECT_TRUE(equalInAnsi("Tray日", "Tray?"));
    EXPECT_TRUE(equalInAnsi("é", "é"));
    EXPECT_FALSE(equalInAnsi("é", "è"));
    EXPECT_FALSE(equalInAnsi("tray", "Tray"));
    EXPECT_FALSE(equalInAnsi("日本", "?"));
}

TEST(Lists, SplitsAndJoins) {
    EXPECT_EQ(split("", ";"), Items());
    EXPECT_EQ(split(";", ";"), Items({"", ""}));
    EXPECT_EQ(split(";a;;b;", ";"), Items({"", "a", "", "b", ""}));
    EXPECT_EQ(split("a\r\nb\rc", "\r\n"), Items({"a", "b\rc"}));
    EXPECT_EQ(join({"", "a", ""}, ";"), ";a;");
    EXPECT_EQ(trimBlanks("  a \t "), "a \t");
    EXPECT_EQ(trimBlanks("   "), "");
    EXPECT_EQ(replacedAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replacedAll("a", "", "b"), "a");
    EXPECT_EQ(before("Volume(UL)", "("), "Volume");
    EXPECT_EQ(before("Volume", "("), "Volume");
}

TEST(Alignment, PutsTogetherWhatStayedAndWhatBecameSomethingOfItsKind) {
    using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;
    EXPECT_EQ(alignment({{1, 0}, {2, 0}, {3, 1}}, {{2, 0}, {4, 1}}), (Pairs{{1, 0}, {2, 1}}));
    EXPECT_EQ(alignment({}, {{1, 0}}), Pairs());
    // Too many to weigh all against all.
    std::vector<Alignable> before;
    std::vector<Alignable> after;
    for (std::size_t i = 0; i < 6000; ++i) {
        before.push_back({i, 0});
        after.push_back({i + 10000, 0});
    }
    const auto pairs = alignment(before, after);
    ASSERT_EQ(pairs.size(), 6000U);
    EXPECT_EQ(pairs.back(), (std::pair<std::size_t, std::size_t>(5999, 5999)));
}

}  // namespace
}  // namespace vrn::text
