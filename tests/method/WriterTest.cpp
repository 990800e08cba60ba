#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class WriterTest : public SmallSetTest {
  protected:
    /// The built method without the values that depend on its whole content.
    std::string builtWithoutSignature() {
        auto method = editor().GetMethodXml();
        if (!method) {
            return "none";
        }
        const auto root = method->documentElement();
        EXPECT_EQ(root.lastChild().name(), "Signature");
        root.removeChild(root.lastChild());
        root.setAttribute("TimingInformationID", "-");
        return method->xml();
    }
    std::vector<std::string> description() { return builtTexts("DescriptionLine"); }
};

TEST_F(WriterTest, WholeDocument) {
    loadSteps({"COUNT(4)", "IDLE()", "COUNT(5)"}, {"One", "", "a &amp;amp; b"});
    EXPECT_EQ(builtWithoutSignature(),
              R"(<?xml version="1.0" encoding="UTF-16"?>)"
              R"(<Method TimingInformationID="-" LastModifiedTimestamp="2020-01-01T00:00:00">)"
              "<Description><DescriptionLine>One</DescriptionLine><DescriptionLine/>"
              "<DescriptionLine>a &amp;amp; b</DescriptionLine></Description>"
              "<Syringe><SyringeSize>10uL</SyringeSize></Syringe>"
              "<Macros><MacroVariable><MacroValues>COUNT(4)</MacroValues><MacroValues>IDLE()</MacroValues>"
              "<MacroValues>COUNT(5)</MacroValues></MacroVariable>"
              "<MacroData><MacroName><![CDATA[[MACRO COUNT]]]></MacroName>"
              "<MacroLine><![CDATA[Number;3;1;20]]></MacroLine>"
              "<MacroName><![CDATA[[MACRO IDLE]]]></MacroName></MacroData></Macros>"
              "<SLCONFIG><OBJECT><OBJECTNAME/><UDON/></OBJECT></SLCONFIG>"
              "<ATOMLINE><ATOM>COUNT(Number)</ATOM></ATOMLINE><Arguments/><VERSION>04</VERSION></Method>");
}

TEST_F(WriterTest, SpecialCharactersSurviveEveryPart) {
    loadSteps({R"(A&amp;&lt;&gt;"'(7))", R"(NOTE(x&amp;amp;"'&lt;]]&gt;,&#13;&#10;&#9;é漢😀))"}, {"]]&gt;\"'"});
    state().cboSyringe.userSelect(1);
    const auto text = built();
    EXPECT_THAT(text, HasSubstr("<![CDATA[[MACRO A&<>\"']]]>"));
    EXPECT_THAT(text, HasSubstr("<![CDATA[P]]]]><![CDATA[>&Q;1;0;9]]>"));
    EXPECT_THAT(text, HasSubstr("<SyringeSize>5&lt;&amp;uL</SyringeSize>"));
    EXPECT_THAT(text, HasSubstr("<ATOM>ATOM(&amp;&lt;)</ATOM>"));
    EXPECT_THAT(text, HasSubstr("<DescriptionLine>]]&amp;gt;&amp;quot;&amp;apos;</DescriptionLine>"));
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("A&<>\"'(7)", "NOTE(x&amp;\"'<]]>,\r\n\té漢😀)"));
    EXPECT_THAT(builtTexts("MacroLine"), ElementsAre("P]]>&Q;1;0;9", "Text", "More"));
}

TEST_F(WriterTest, UserDefinedNamesAreRecorded) {
    auto texts =
        smallSet({"WASH(SL.Vol,SL.Station,7)", "NOTE(SL.Vol +3,sl.no)", "WASH(SL.VOL,W1,8)", "NOTE(SL.Any-1,xSL.b)"});
    load(texts);
    const auto method = editor().GetMethodXml();
    ASSERT_TRUE(method);
    const auto object = [](const std::string& name, const std::string& udon) {
        return element("OBJECT", element("OBJECTNAME", name) + element("UDON", udon));
    };
    EXPECT_EQ(method->selectSingleNode("/Method/SLCONFIG").xml(),
              element("SLCONFIG", object("UL", "SL.Vol") + object("WASH_STATION", "SL.Station") +
                                      object("UL", "SL.Vol") + object("None", "SL.Any")));
    EXPECT_EQ(
        method->selectSingleNode("/Method/Arguments").xml(),
        element("Arguments", object("UL", "SL.Vol") + object("WASH_STATION", "SL.Station") + object("None", "SL.Any")));

    // A later build starts anew; the method's own record is asked before the configuration.
    loadSteps({"IDLE()"});
    EXPECT_THAT(built(), HasSubstr("<SLCONFIG><OBJECT><OBJECTNAME/><UDON/></OBJECT></SLCONFIG>"));
    texts.method.insert(texts.method.rfind("</Method>"), element("Arguments", object("OWN", "SL.Vol")));
    load(texts);
    std::vector<std::string> categories;
    for (const auto& written : editor().GetMethodXml()->selectSingleNode("Method/Arguments").children("OBJECT")) {
        categories.push_back(written.child("OBJECTNAME").text());
    }
    EXPECT_THAT(categories, ElementsAre("OWN", "WASH_STATION", "None"));
}

TEST_F(WriterTest, DescriptionLinesEndWithCrLf) {
    loadSteps({"IDLE()"}, {});
    const std::vector<std::pair<std::string, std::vector<std::string>>> boxes{{"", {""}},
                                                                              {"\r\n", {""}},
                                                                              {"a", {"a"}},
                                                                              {"a\r\n", {"a"}},
                                                                              {"a\n\nb\n", {"a", "", "b"}},
                                                                              {"\r\n\r\n", {"", ""}},
                                                                              {"a\r\n\r\n", {"a", ""}},
                                                                              {"&lt;<", {"&amp;lt;&lt;"}}};
    for (const auto& [typed, lines] : boxes) {
        state().txtMethodDescription.userType(typed);
        EXPECT_EQ(description(), lines) << typed;
    }
}

TEST_F(WriterTest, RejectedPendingEditGivesNothing) {
    loadSteps({"COUNT(4)"});
    state().grdMacro.userEdit(1, "21", false);
    EXPECT_EQ(built(), "none");
    EXPECT_THAT(boxTexts(), ElementsAre("The entered value is out of range."));
    // The refused edit is over, and the method stands as it was.
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("COUNT(4)"));
}

TEST_F(WriterTest, UnsavedEditsReplaceTheSelectedStep) {
    loadSteps({"COUNT(4)", "COUNT(5)"});
    state().lstMethodMacroList.userSelect(1);
    state().grdMacro.userEdit(1, "20", false);
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("COUNT(4)", "COUNT(20)"));
    EXPECT_TRUE(state().IsChanged);
    choose("IDLE");
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("COUNT(4)", "COUNT(20)"));
    choose("NOTE");
    enter(2, "x");
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("COUNT(4)", "NOTE(,x)"));
}

TEST_F(WriterTest, UnsavedEditsBecomeTheFirstStep) {
    loadNothing();
    choose("COUNT");
    EXPECT_EQ(built(), "none");
    enter(1, "7");
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("COUNT(7)"));
    EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
}

TEST_F(WriterTest, UnsavedEditsThatDoNotPassGiveNothing) {
    loadSteps({"WASH(5,W1,7)"});
    enter(3, "8");
    state().grdMacro.setCellText(1, 1, "11");
    EXPECT_EQ(built(), "none");
    EXPECT_THAT(boxTexts(), ElementsAre("In macro WASH, the parameter 'Volume' with value of '11' is out of range.\r\n"
                                        "The valid range is (1-10) ."));
    EXPECT_THAT(steps(), ElementsAre("WASH(5,W1,7)"));
    // The message put the default in, so the same edits pass now.
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("WASH(5,W1,8)"));

    enter(3, "9");
    editor().DisableMethod(true);
    EXPECT_EQ(built(), "none");
    editor().DisableMethod(false);
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("WASH(5,W1,9)"));
}

TEST_F(WriterTest, SecondBuildOnBecomesTheBaseline) {
    loadSteps({"COUNT(4)"});
    const auto loaded = state().domMethodBaseline.xml();
    const auto first = built();
    EXPECT_TRUE(state().booBaselineLoaded);
    EXPECT_EQ(state().domMethodBaseline.xml(), loaded);
    EXPECT_EQ(built(), first);
    EXPECT_EQ(state().domMethodBaseline.xml(), first);
    state().grdMacro.userEdit(1, "x", false);
    EXPECT_EQ(built(), "none");
    EXPECT_EQ(state().domMethodBaseline.xml(), first);

    loadNothing();
    editor().MethodIsChanged(false);
    EXPECT_EQ(built(), "none");
    EXPECT_TRUE(state().booBaselineLoaded);
}

}  // namespace
}  // namespace vrn::test
