#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/Format.h"
#include "method/MethodContent.h"
#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReaderTest : public SmallSetTest {};

TEST(Escaping, BothWays) {
    EXPECT_EQ(method::format::ConvertDescription(R"(<&lt;"'>)"), "&lt;&amp;lt;&quot;&apos;&gt;");
    EXPECT_EQ(method::format::ReverseDescription("&lt;&amp;lt;&quot;&apos;&gt;&amp;amp;"), R"(<&lt;"'>&amp;)");
}

TEST_F(ReaderTest, DescriptionLines) {
    loadSteps({"IDLE()"}, {" a &amp;amp; b ", "", "&amp;lt; &amp;amp;lt; &lt;", "<x>1</x><!-- no -->2"});
    EXPECT_EQ(state().txtMethodDescription.text(), "a & b\r\n\r\n< &lt; <\r\n12\r\n");
    EXPECT_FALSE(state().IsChanged);
}

// Comments, empty sections and the borders of sections are no part of what a signature covers.
TEST_F(ReaderTest, WhatVerifiesReadsTheSame) {
    loadSteps({"IDLE()"}, {"one", "two"});
    auto set = smallSet({});
    const auto saved = built();
    const auto within = [&saved](std::string_view element, std::string_view inserted) {
        auto text = saved;
        return text.insert(text.find(element) + element.size(), inserted);
    };
    const std::vector<std::string> same{within("<Description>", "<![CDATA[]]>"),
                                        within("</DescriptionLine>", "<!-- c -->"),
                                        within("<DescriptionLine>o", "<!-- c -->"),
                                        within("<DescriptionLine>o", "<![CDATA[]]>"),
                                        within("<MacroVariable>", "<![CDATA[]]><!-- c --><![CDATA[]]>"),
                                        within("IDL", "<!-- c -->"),
                                        within("<MacroData>", "<![CDATA[]]>")};
    for (const auto& text : same) {
        SCOPED_TRACE(text);
        set.method = text;
        load(set);
        EXPECT_THAT(errors, IsEmpty());
        EXPECT_EQ(state().txtMethodDescription.text(), "one\r\ntwo\r\n");
        EXPECT_THAT(rows(), ElementsAre("01 IDLE"));
    }
    // Bare text is one line, however it is written.
    for (const std::string_view bare :
         {"ab", "a<!-- c -->b", "a<![CDATA[b]]>", "<![CDATA[]]>a<!-- c --><![CDATA[]]>b"}) {
        EXPECT_EQ(method::descriptionOf(parsed(element("Method", element("Description", bare)))), "ab\r\n") << bare;
    }
}

TEST_F(ReaderTest, SyringeIsSelectedByItsText) {
    load(smallSet({"IDLE()"}, "5&lt;&amp;uL"));
    EXPECT_EQ(state().cboSyringe.listIndex(), 1);
    box->shown.clear();
    for (const std::string syringe : {"10UL", "", "11uL"}) {
        load(smallSet({"COUNT(2)"}, syringe));
        EXPECT_EQ(state().cboSyringe.listIndex(), controls::noSelection);
        EXPECT_EQ(box->shown.back().text, "Unable to retreive syrsize from method");
        EXPECT_EQ(box->shown.back().style, 64);
        EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
    }
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(ReaderTest, UnknownCycleEndsTheReading) {
    loadSteps({"COUNT(1)", "COUNT(2)", "count(3)", "COUNT(4)"});
    EXPECT_THAT(rows(), ElementsAre("01 COUNT", "02 COUNT"));
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "COUNT(2)"));
    EXPECT_THAT(errorTexts(), ElementsAre("-2147220504 FillMethod |Cycle does not exist."));
    EXPECT_TRUE(state().cmdDelete.enabled() && state().cmdReplace.enabled());
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 0);
    EXPECT_THAT(gridValues(), ElementsAre("1"));

    load(smallSet({"NONE(1)"}));
    EXPECT_EQ(box->shown.back().text, "Cycle NONE does not exist.");
    EXPECT_EQ(box->shown.back().style, 16);
    EXPECT_THAT(steps(), ElementsAre(""));
    EXPECT_FALSE(state().cmdDelete.enabled() || state().cmdReplace.enabled());
}

TEST_F(ReaderTest, StepThatIsNoCallEndsTheReading) {
    for (const std::string step : {"COUNT", "COUNT(3", "COUNT)3("}) {
        errors.clear();
        loadSteps({"COUNT(1)", step, "COUNT(4)"});
        EXPECT_THAT(errorTexts(), ElementsAre("5 FillMethod |Invalid procedure call or argument"));
        EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
        EXPECT_THAT(steps(), ElementsAre("COUNT(1)"));
        EXPECT_EQ(state().lstMethodMacroList.listIndex(), 0);
        EXPECT_THAT(box->shown, IsEmpty());
    }
}

TEST_F(ReaderTest, EmptyStepsArePassedOver) {
    loadSteps({"", "COUNT(1)", " ", "<!-- x -->", "COUNT(2)"});
    EXPECT_THAT(rows(), ElementsAre("01 COUNT", "02 COUNT"));
}

TEST_F(ReaderTest, ValuesBetweenTheFirstParentheses) {
    loadSteps({"WASH(5,W1,)x)", "COUNT()", "NOTE(,)"});
    EXPECT_EQ(*state().arrMethodMacros[0].MacroValues, (std::vector<std::string>{"5", "W1", ""}));
    EXPECT_FALSE(state().arrMethodMacros[1].MacroValues);
    EXPECT_EQ(*state().arrMethodMacros[2].MacroValues, (std::vector<std::string>{"", ""}));
}

TEST_F(ReaderTest, RowsAreNumberedWithAtLeastTwoDigits) {
    loadSteps(std::vector<std::string>(100, "IDLE()"));
    EXPECT_EQ(rows()[0], "01 IDLE");
    EXPECT_EQ(rows()[9], "10 IDLE");
    EXPECT_EQ(rows()[99], "100 IDLE");
}

}  // namespace
}  // namespace vrn::test
