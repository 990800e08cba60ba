#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audit/AuditTrail.h"
#include "audit/ChangeDetection.h"
#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string declaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";
const std::string nothing = declaration + "<MethodAuditTrail/>";

std::string trail(const std::string& content) {
    return declaration + "<MethodAuditTrail>" + content + "</MethodAuditTrail>";
}

class AuditTrailTest : public SmallSetTest {
  protected:
    /// Loads these steps with the catalogue's own time recorded.
    void loadUpToDate(const std::vector<std::string>& steps) {
        auto texts = smallSet(steps);
        texts.method.replace(0, 7, "<Method LastModifiedTimestamp=\"" + std::string(catalogueTime) + "\">");
        load(texts);
        box->shown.clear();
    }
    std::string compare(const std::string& oldList, const std::string& newList) {
        state().domNewMethod = parsed(
            "<Method><Macros><MacroData><MacroName>M</MacroName><MacroLine>A(x);1;2</MacroLine>"
            "<MacroLine>B</MacroLine><Other/><MacroLine>C;</MacroLine></MacroData></Macros></Method>");
        const auto audit = audit::Create_AuditTrail(state());
        audit::Compare_params(state(), *audit, oldList, newList);
        return audit->xml();
    }
};

std::string parameters(const std::vector<std::pair<std::string, std::string>>& entries) {
    std::string all;
    for (const auto& [name, value] : entries) {
        all += R"(<Parameter name=")" + name + R"(" value=")" + value + R"("/>)";
    }
    return trail("<MethodParameters>" + all + "</MethodParameters>");
}

TEST_F(AuditTrailTest, NothingChanged) {
    loadUpToDate({"WASH(5,W1,7)", "COUNT(3)"});
    EXPECT_EQ(editor().AuditTrail(), nothing);
    EXPECT_EQ(editor().AuditTrail(), nothing);
    // What the trail does not speak of: later steps and the description.
    state().txtMethodDescription.userType("other");
    state().lstMethodMacroList.userSelect(1);
    enter(1, "4");
    state().cmdReplace.userClick();
    state().cboSelectedMacro.userSelect(0);
    EXPECT_EQ(editor().AuditTrail(), nothing);
}

TEST_F(AuditTrailTest, EverythingChanged) {
    load(smallSet({"COUNT(4)"}));
    state().cboSyringe.userSelect(1);
    choose("WASH");
    enter(1, "6");
    EXPECT_EQ(editor().AuditTrail(),
              trail(R"(<Cycle name="WASH" date="2020-01-01T00:00:00"/><Syringe size="5&lt;&amp;uL"/><MethodParameters>)"
                    R"-(<Parameter name="Volume(UL)" value="6"/><Parameter name="Station" value="W1"/>)-"
                    R"(<Parameter name="Hold Time" value="0"/></MethodParameters>)"));
    ASSERT_TRUE(state().domNewMethod);
    EXPECT_EQ(state().domNewMethod->selectSingleNode("Method/Macros/MacroVariable/MacroValues").text(), "WASH(6,W1,0)");
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(AuditTrailTest, WithoutANewMethod) {
    loadUpToDate({"COUNT(4)"});
    state().grdMacro.userEdit(1, "x", false);
    EXPECT_EQ(editor().AuditTrail(), trail(R"(<Cycle name=""/><Syringe size=""/>)"));
    EXPECT_FALSE(state().domNewMethod);
    EXPECT_EQ(editor().AuditTrail(), nothing);
}

TEST_F(AuditTrailTest, ComparesByPosition) {
    EXPECT_EQ(compare("1,2,3", "1,2,3"), nothing);
    EXPECT_EQ(compare("1,Slow,", "2,slow,x"), parameters({{"A(x)", "2"}, {"B", "slow"}, {"C", "x"}}));
    EXPECT_EQ(compare("1,2", "1,"), nothing);
    EXPECT_EQ(compare("", "x"), parameters({{"A(x)", "x"}}));
    EXPECT_EQ(compare("1", "1,,y,z"), parameters({{"C", "y"}, {"", "z"}}));
    EXPECT_EQ(compare("1,2", ""), nothing);
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(AuditTrailTest, ShorterNewListEndsTheComparison) {
    EXPECT_EQ(compare("1,2,3", "9,2"), parameters({{"A(x)", "9"}}));
    EXPECT_THAT(errorTexts(), ElementsAre("9 Compare_params |Subscript out of range"));
}

}  // namespace
}  // namespace vrn::test
