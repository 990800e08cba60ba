#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SequenceEditingTest : public SmallSetTest {
  protected:
    void select(int row) { state().lstMethodMacroList.userSelect(row); }
    [[nodiscard]] int selected() { return state().lstMethodMacroList.listIndex(); }
};

TEST_F(SequenceEditingTest, InsertIntoTheEmptySequence) {
    loadNothing();
    choose("COUNT");
    state().cmdInsert.userClick();
    EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
    EXPECT_THAT(steps(), ElementsAre("COUNT(3)"));
    EXPECT_EQ(selected(), 0);
    EXPECT_TRUE(state().IsChanged && state().cmdDelete.enabled() && state().cmdReplace.enabled());
    EXPECT_FALSE(state().booUpdating || state().booUnsavedEdits);
    // The press in the list that follows.
    EXPECT_EQ(state().txtToolTip.left(), 1236);
    EXPECT_EQ(state().txtToolTip.top(), 1405);
    EXPECT_EQ(state().lngListMouseY, 105);
}

TEST_F(SequenceEditingTest, InsertGoesBehindTheSelectedRow) {
    loadSteps({"COUNT(1)", "COUNT(2)", "COUNT(3)"});
    select(1);
    choose("NOTE");
    enter(1, "a,b");
    state().cmdInsert.userClick();
    EXPECT_THAT(rows(), ElementsAre("01 COUNT", "02 COUNT", "03 NOTE", "04 COUNT"));
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "COUNT(2)", "NOTE(a,b,)", "COUNT(3)"));
    EXPECT_EQ(selected(), 1);
    EXPECT_THAT(gridValues(), ElementsAre("a,b", ""));
    // Without parameters there are no values; the list is an array all the same.
    choose("IDLE");
    state().cmdInsert.userClick();
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "COUNT(2)", "IDLE()", "NOTE(a,b,)", "COUNT(3)"));
}

TEST_F(SequenceEditingTest, NamesAreTrimmedButOnAppending) {
    auto texts = smallSet({});
    texts.macros = catalogue(macro("<![CDATA[ PAD ]]>", {}) + macro("COUNT", {"Number;3;1;20"}));
    texts.method.clear();
    load(texts);
    choose(" PAD ");
    state().cmdInsert.userClick();
    choose(" PAD ");
    state().cmdInsert.userClick();
    EXPECT_THAT(rows(), ElementsAre("01  PAD ", "02 PAD"));
    choose(" PAD ");
    state().cmdReplace.userClick();
    EXPECT_THAT(rows(), ElementsAre("01 PAD", "02 PAD"));
}

TEST_F(SequenceEditingTest, InsertAndReplaceNeedValidValues) {
    loadSteps({"COUNT(1)"});
    state().grdMacro.setCellText(1, 1, "x");
    state().cmdInsert.userClick();
    state().grdMacro.setCellText(1, 1, "21");
    state().cmdReplace.userClick();
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)"));
    EXPECT_FALSE(state().IsChanged);
    EXPECT_EQ(box->shown.size(), 2U);
    editor().DisableMethod(true);
    EXPECT_EQ(state().cmdInsert.userClick(), controls::UserRequest::NotUsable);
    state().cmdInsert.press();
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)"));
    EXPECT_EQ(box->shown.size(), 2U);
}

TEST_F(SequenceEditingTest, WithoutChosenMacro) {
    loadSteps({"COUNT(1)"});
    state().cboSelectedMacro.setListIndex(controls::noSelection);
    state().cmdInsert.userClick();
    EXPECT_FALSE(state().IsChanged);
    state().cmdReplace.userClick();
    EXPECT_TRUE(state().IsChanged);
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)"));
    EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
}

TEST_F(SequenceEditingTest, ReplaceTakesTheGridsValues) {
    loadSteps({"COUNT(1)", "COUNT(2)"});
    select(1);
    choose("NOTE");
    enter(1, "x");
    state().cmdReplace.userClick();
    EXPECT_THAT(rows(), ElementsAre("01 COUNT", "02 NOTE"));
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "NOTE(x,)"));
    EXPECT_EQ(state().grdMacro.currentColumn(), 1);
    enter(1, "");
    state().cmdReplace.userClick();
    EXPECT_EQ(*state().arrMethodMacros[1].MacroValues, (std::vector<std::string>{"", ""}));
    choose("IDLE");
    state().cmdReplace.userClick();
    EXPECT_TRUE(state().arrMethodMacros[1].MacroValues->empty());
    EXPECT_FALSE(state().booUpdating);
}

TEST_F(SequenceEditingTest, DeleteOneOfSeveral) {
    loadSteps({"COUNT(1)", "NOTE(a,b)", "COUNT(3)"});
    select(1);
    state().cmdDelete.userClick();
    EXPECT_TRUE(state().IsChanged);
    EXPECT_THAT(rows(), ElementsAre("01 COUNT", "02 COUNT"));
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "COUNT(3)"));
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(state().lngListMouseY, 195);
    // The catalogue's own values are shown after a deletion, not the row's.
    EXPECT_TRUE(state().booGridFromCatalogue);
    state().cmdDelete.userClick();
    EXPECT_THAT(rows(), ElementsAre("01 COUNT"));
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(state().lngListMouseY, 0);
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(SequenceEditingTest, DeletingTheOnlyStepIsNoChange) {
    loadSteps({"COUNT(1)"});
    state().cmdDelete.userClick();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_THAT(steps(), ElementsAre(""));
    EXPECT_FALSE(state().arrMethodMacros[0].MacroValues);
    EXPECT_FALSE(state().IsChanged || state().cmdDelete.enabled() || state().cmdReplace.enabled());
    EXPECT_THAT(gridValues(), ElementsAre("3"));
    state().cmdDelete.press();
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(SequenceEditingTest, DeleteWithoutSelection) {
    loadSteps({"COUNT(1)", "COUNT(2)"});
    state().lstMethodMacroList.setListIndex(controls::noSelection);
    state().cmdDelete.userClick();
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "COUNT(2)"));
    EXPECT_FALSE(state().IsChanged);
    select(0);
    state().cmdDelete.userClick();
    state().lstMethodMacroList.setListIndex(controls::noSelection);
    state().cmdDelete.userClick();
    EXPECT_THAT(errorTexts(), ElementsAre("5 cmdDelete_Click |Invalid procedure call or argument"));
    EXPECT_THAT(steps(), ElementsAre("COUNT(2)"));
}

TEST_F(SequenceEditingTest, AnotherLoadWhileAValueIsRefused) {
    loadSteps({"COUNT(1)", "COUNT(2)"});
    state().grdMacro.setCellText(1, 1, "99");
    box->whileShown = [&] { loadSteps({"NOTE(,)"}); };
    state().cmdInsert.userClick();
    EXPECT_THAT(rows(), ElementsAre("01 NOTE"));
    EXPECT_THAT(gridValues(), ElementsAre("", ""));
    state().grdMacro.userEdit(1, "pending", false);
    state().cmdReplace.userClick();
    EXPECT_THAT(steps(), ElementsAre("NOTE(pending,)"));
}

}  // namespace
}  // namespace vrn::test
