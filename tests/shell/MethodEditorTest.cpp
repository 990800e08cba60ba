#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MethodEditorTest : public SmallSetTest {
  protected:
    /// Loads what the editor itself has just written.
    void reload(const std::string& method) {
        auto texts = smallSet({});
        texts.method = method;
        load(texts);
    }
};

TEST_F(MethodEditorTest, DisableMethodReachesEveryControl) {
    loadSteps({"COUNT(3)"});
    editor().DisableDescription(true);
    state().grdMacro.userEdit(1, "4", false);
    for (const bool disable : {true, false}) {
        editor().DisableMethod(disable);
        for (const auto* control : state().controlCollection) {
            if (control->kind() != controls::ControlKind::Label && control->kind() != controls::ControlKind::Menu) {
                EXPECT_EQ(control->enabled(), !disable) << control->name();
            }
        }
        EXPECT_EQ(state().grdMacro.colour(), disable ? 0x8000000FU : 0x80000005U);
    }
    EXPECT_FALSE(state().grdMacro.pendingEdit());
    EXPECT_THAT(gridValues(), ElementsAre("3"));
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(MethodEditorTest, TheLastOfTheDisablingWritesWins) {
    loadSteps({"COUNT(3)"});
    editor().DisableMethod(true);
    editor().DisableSyringe(false);
    editor().DisableDescription(false);
    EXPECT_TRUE(state().cboSyringe.enabled() && state().txtMethodDescription.enabled() && state().booDisable);
    EXPECT_EQ(state().cboSyringe.userSelect(1), controls::UserRequest::Done);
    editor().DisableSyringe(true);
    EXPECT_EQ(state().cboSyringe.userSelect(0), controls::UserRequest::NotUsable);
    EXPECT_TRUE(state().booDisableSyringe);
    // In a disabled method a refilled grid looks usable; its edits are refused.
    state().lstMethodMacroList.setListIndex(0);
    EXPECT_TRUE(state().grdMacro.enabled());
    enter(1, "4");
    EXPECT_THAT(gridValues(), ElementsAre("3"));
    EXPECT_NE(built(), "none");
}

TEST_F(MethodEditorTest, OnlyTypingADifferentTextIsAChange) {
    loadSteps({"COUNT(3)"}, {"a"});
    state().txtMethodDescription.userType("a\r\n");
    EXPECT_FALSE(state().IsChanged);
    state().txtMethodDescription.setText("b");
    EXPECT_FALSE(state().IsChanged);
    state().txtMethodDescription.userType("c");
    EXPECT_TRUE(state().IsChanged);
}

TEST_F(MethodEditorTest, ChangedIsWhatTheComparisonSays) {
    loadSteps({"COUNT(3)"});
    EXPECT_TRUE(editor().MethodIsChanged());  // written differently: version, signature
    reload(built());
    EXPECT_FALSE(editor().MethodIsChanged());
    editor().MethodIsChanged(true);
    EXPECT_TRUE(state().booBaselineLoaded);
    EXPECT_FALSE(editor().MethodIsChanged());
    enter(1, "4");
    EXPECT_TRUE(state().IsChanged);
    editor().MethodIsChanged(false);
    EXPECT_FALSE(state().IsChanged || state().booBaselineLoaded);
    EXPECT_TRUE(editor().MethodIsChanged());
    enter(1, "3");
    EXPECT_FALSE(editor().MethodIsChanged());
    EXPECT_FALSE(state().IsChanged);
}

TEST_F(MethodEditorTest, WhereNothingCanBeBuiltAnAcceptedEntryIsAChange) {
    loadSteps({"WASH(5,W1,7)"});
    reload(built());
    state().grdMacro.userEdit(1, "x", false);
    EXPECT_FALSE(editor().MethodIsChanged()) << "a refused entry is over, and the method is as it was";
    // The pending edit is accepted here, but another value does not pass, so that the entry cannot be stored.
    state().grdMacro.setCellText(3, 1, "x");
    state().grdMacro.userEdit(1, "6", false);
    EXPECT_TRUE(editor().MethodIsChanged());
    EXPECT_TRUE(state().IsChanged);
    editor().MethodIsChanged(false);
    state().cmdDelete.userClick();
    EXPECT_FALSE(editor().MethodIsChanged()) << "an empty sequence gives no document, and no entry was taken";
}

TEST_F(MethodEditorTest, WrittenAndReadAgainNothingChanges) {
    const std::vector<std::string> values{"plain",         "",       " a  b ", "\t",      "&amp;",    "&<>'\"",   "]]>",
                                          "<![CDATA[x]]>", "SL.Vol", "sl.x+1", "é ö ß €", "漢字かな", "😀\u200d🚀", "((",
                                          "%s\\n",         "&#13;",  "\u00a0", "a\rb\nc"};
    const std::vector<std::string> descriptions{
        "", "one", "one\r\n", "one\r\n\r\ntwo\r\n\r\n", "&lt; & <b> ' \"", "é\r\n漢字 😀\r\n]]>", "\r\n\r\n", "a\tb\rc"};
    std::size_t next = 0;
    for (const auto& value : values) {
        SCOPED_TRACE(value);
        loadSteps({"COUNT(3)", "IDLE()"});
        choose("NOTE");
        enter(1, value);
        enter(2, values[++next % values.size()]);
        state().cmdInsert.userClick();
        state().txtMethodDescription.userType(descriptions[next % descriptions.size()]);
        const auto sequence = state().arrMethodMacros[1];
        state().lstMethodMacroList.userSelect(0);
        const auto first = built();
        box->shown.clear();
        reload(first);
        EXPECT_THAT(box->shown, IsEmpty());
        EXPECT_THAT(errors, IsEmpty());
        EXPECT_FALSE(editor().MethodIsChanged());
        EXPECT_EQ(built(), first);
        EXPECT_EQ(state().arrMethodMacros[1].MacroName, "NOTE");
        if (value != "((") {
            EXPECT_EQ(state().arrMethodMacros[1].MacroValues, sequence.MacroValues);
        }
    }
}

}  // namespace
}  // namespace vrn::test
