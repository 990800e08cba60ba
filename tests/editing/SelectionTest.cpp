#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "editing/Selection.h"
#include "method/SmallSet.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SelectionTest : public SmallSetTest {};

TEST_F(SelectionTest, RowShowsItsValuesAndMovesTheCatalogue) {
    loadSteps({"COUNT(1)", "NOTE(a,b,c,d)"});
    EXPECT_EQ(state().cboSelectedMacro.text(), "COUNT");
    state().lstMethodMacroList.userSelect(1);
    EXPECT_EQ(state().cboSelectedMacro.text(), "NOTE");
    EXPECT_THAT(gridNames(), ElementsAre("Text", "More"));
    EXPECT_THAT(gridValues(), ElementsAre("a", "b"));
    EXPECT_TRUE(state().booGridFromSequence && state().booMacroShown);
    EXPECT_FALSE(state().booGridFromCatalogue || state().booUpdating);
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "NOTE(a,b,c,d)"));
    EXPECT_FALSE(state().IsChanged);
}

TEST_F(SelectionTest, ShownValuesAreValidatedLast) {
    loadSteps({"COUNT(1)", "COUNT(21)"});
    state().lstMethodMacroList.userSelect(1);
    EXPECT_EQ(box->shown.size(), 1U);
    EXPECT_THAT(gridValues(), ElementsAre("3"));
    EXPECT_FALSE(state().booUnsavedEdits);
    EXPECT_THAT(steps(), ElementsAre("COUNT(1)", "COUNT(21)"));
}

TEST_F(SelectionTest, InitialCycleTakesTheStepAgain) {
    loadSteps({"COUNT(7)"});
    enter(1, "8");
    EXPECT_TRUE(state().booUnsavedEdits);
    state().cmdDefCycle.press();
    EXPECT_THAT(gridValues(), ElementsAre("7"));
    EXPECT_FALSE(state().booUnsavedEdits);
    choose("NOTE");
    state().cmdDefCycle.press();
    EXPECT_EQ(state().cboSelectedMacro.text(), "COUNT");

    loadNothing();
    choose("NOTE");
    enter(1, "x");
    state().cmdDefCycle.press();
    EXPECT_THAT(gridValues(), ElementsAre("x", ""));
    EXPECT_EQ(state().cmdDefCycle.userClick(), controls::UserRequest::NotUsable);
}

TEST_F(SelectionTest, MouseOnTheList) {
    loadSteps({"COUNT(7)"});
    const auto press = [&](int button, float x, float y) {
        state().grdMacro.setCellText(1, 1, "8");
        state().txtToolTip.setVisible(true);
        EXPECT_EQ(state().lstMethodMacroList.userMouseDown(0, button, 0, x, y), controls::UserRequest::Done);
    };
    press(1, 10, 2.5F);
    EXPECT_THAT(gridValues(), ElementsAre("7"));
    EXPECT_EQ(state().txtToolTip.left(), 510);
    EXPECT_EQ(state().txtToolTip.top(), 1302.5F);
    EXPECT_FALSE(state().txtToolTip.visible());
    EXPECT_EQ(state().lngListMouseY, 2);
    press(2, 20, 3.5F);
    EXPECT_THAT(gridValues(), ElementsAre("8"));
    EXPECT_FALSE(state().txtToolTip.visible());
    EXPECT_EQ(state().txtToolTip.left(), 510);
    EXPECT_EQ(state().lngListMouseY, 4);
    press(4, 0, 9);
    EXPECT_TRUE(state().txtToolTip.visible());
    EXPECT_EQ(state().lngListMouseY, 9);
    editor().DisableMethod(true);
    EXPECT_EQ(state().lstMethodMacroList.userMouseDown(0, 1, 0, 0, 1), controls::UserRequest::NotUsable);
    EXPECT_EQ(state().lngListMouseY, 9);
}

TEST_F(SelectionTest, AWrongStepSpeaksOnceWhenItIsPressed) {
    loadSteps({"COUNT(99)", "COUNT(98)", "COUNT(7)"});
    auto& list = state().lstMethodMacroList;
    const auto textsOfPress = [&](int row) {
        box->shown.clear();
        list.userMouseDown(row, 1, 0, 0, 0);
        return boxTexts();
    };
    const auto about = [](const std::string& value) {
        return "In macro COUNT, the parameter 'Number' with value of '" + value +
               "' is out of range.\r\nThe valid range is (1-20) .";
    };
    EXPECT_THAT(textsOfPress(1), ElementsAre(about("98")));
    EXPECT_THAT(textsOfPress(1), ElementsAre(about("98")));
    EXPECT_THAT(textsOfPress(2), ElementsAre());
    EXPECT_THAT(textsOfPress(0), ElementsAre(about("99")));
    enter(1, "6");
    state().grdMacro.userEdit(1, "50", false);
    EXPECT_THAT(textsOfPress(1), ElementsAre("The entered value is out of range.", about("98")));
}

TEST_F(SelectionTest, AnotherSyringeKeepsTheValues) {
    const auto syringe = [](const std::string& name, const std::string& most) {
        return object("SYRINGE", name, {{"Max", most}});
    };
    load({catalogue(macro("FILL", {"Volume;SYR.Max;0;SYR.Max"})),
          objectList(syringe("10uL", "10") + syringe("5uL", "5")), methodText({"FILL(8)"}), ""});
    box->shown.clear();
    state().cboSyringe.userSelect(0);
    EXPECT_FALSE(state().IsChanged);
    state().cboSyringe.userSelect(1);
    EXPECT_TRUE(state().IsChanged);
    EXPECT_THAT(gridValues(), ElementsAre("8"));
    EXPECT_EQ(state().arrMacroParams[1].text, "Range: 0 to 5 Default: 5");
    EXPECT_FALSE(state().booUnsavedEdits);
    EXPECT_THAT(box->shown, IsEmpty());
    // Unsaved edits stay unsaved, and a pending one goes in first.
    state().grdMacro.userEdit(1, "4", false);
    state().cboSyringe.userSelect(0);
    EXPECT_TRUE(state().booUnsavedEdits);
    EXPECT_THAT(gridValues(), ElementsAre("4"));
    EXPECT_THAT(builtTexts("MacroValues"), ElementsAre("FILL(4)"));
}

}  // namespace
}  // namespace vrn::test
