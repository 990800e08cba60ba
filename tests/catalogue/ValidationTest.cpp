// Checks of entered values, and the menu that offers values.
#include "catalogue/Validation.h"

#include "catalogue/ParameterGrid.h"
#include "errors/modErr.h"
#include "support/EditorFixture.h"

namespace vrn::catalogue {
namespace {

using namespace test;
using controls::UserRequest;
using Texts = std::vector<std::string>;

class ValidationTest : public EditorFixture {
  protected:
    explicit ValidationTest(std::string separator = ".") : EditorFixture(std::move(separator)) {
        load({test::catalogue(macro("WASH", {"Volume(UL);10;0;100", "Vial;TRAY", "Free", "Low;6;5"})),
              objectList(object("TRAY", "T1") + object("TRAY", "T2")), "",
              configuration(category("UL", {"Mix1"}) + category("None", {"Nil"}) + category("TRAY", {"Mine"}) +
                            category("FREE TEXT", {"Any", "Nil"}))});
        state().cboSelectedMacro.userSelect(0);
        box->shown.clear();
    }
    bool validate(int row, const std::string& value) {
        box->shown.clear();
        state().grdMacro.setCellText(row, 1, value);
        return ValidateParams(state());
    }
    Texts menu(int row, int position = 200) {
        state().mnuUserIndex.close();
        state().grdMacro.userMouseDown(row, position);
        return state().mnuUserIndex.shown() ? state().mnuUserIndex.captions() : Texts();
    }
    const std::string wrongValue =
        "Parameter 'Volume' has incorrect value.\r\n"
        "Please enter a Value within the range or select one item from the popup menu.";
};

class CommaLocaleTest : public ValidationTest {
  protected:
    CommaLocaleTest() : ValidationTest(",") {}
};

TEST_F(ValidationTest, AcceptsNumbersInRangeNamesAndObjects) {
    for (const auto* value : {"0", "100", " 5.5 ", "1e1", "sl.Tray1", "xSL.y", "Mix1", "Mix", "99.999999999"}) {
        EXPECT_TRUE(validate(1, value)) << value;
    }
    EXPECT_TRUE(validate(2, "no such tray"));
    EXPECT_TRUE(validate(3, "any text"));
    EXPECT_TRUE(validate(4, "1e999"));
    EXPECT_TRUE(box->shown.empty());
}

TEST_F(ValidationTest, ShowsTheFirstWrongValueAndResetsIt) {
    const auto outOfRange = [](const std::string& name, const std::string& value, const std::string& range) {
        return "In macro WASH, the parameter '" + name + "' with value of '" + value +
               "' is out of range.\r\nThe valid range is (" + range + ") .";
    };
    const struct {
        int row;
        std::string value;
        std::string message;
        std::string reset;
    } cases[] = {
        {1, "", wrongValue, "10"},
        {1, "1,5", wrongValue, "10"},
        {1, "T1", wrongValue, "10"},
        {1, "100.5", outOfRange("Volume", "100.5", "0-100"), "10"},
        {1, "-1e999", outOfRange("Volume", "-1e999", "0-100"), "10"},
        {4, "4", outOfRange("Low", "4", "5-"), "6"},
    };
    for (const auto& [row, value, message, reset] : cases) {
        EXPECT_FALSE(validate(row, value)) << value;
        ASSERT_EQ(boxTexts(), Texts{message});
        EXPECT_EQ(box->shown[0].style, 16);
        EXPECT_EQ(box->shown[0].caption, "Method Editor Component - Method Editor Control");
        EXPECT_EQ(state().grdMacro.cellText(row, 1), reset);
    }
    state().grdMacro.setCellText(4, 1, "zz");
    EXPECT_FALSE(validate(1, "zz"));
    EXPECT_EQ(gridValues(), (Texts{"10", "T1", "", "zz"}));  // one row at a time
    EXPECT_FALSE(state().IsChanged);
    EXPECT_FALSE(state().booUnsavedEdits);
    editor().DisableMethod(true);
    EXPECT_FALSE(validate(1, "zz"));
    EXPECT_TRUE(box->shown.empty());
}

TEST_F(ValidationTest, AModelWithoutTheRowFailsToTheCaller) {
    state().grdMacro.addRow({"Extra", "1", controls::EditStyle::Text, {}});
    try {
        static_cast<void>(ValidateParams(state()));
        ADD_FAILURE();
    } catch (const errors::Error& error) {
        EXPECT_EQ(error.number(), 9);
        EXPECT_EQ(error.source(), "vrnMethodEditor.VRN_MethodEditor.ValidateParams Version: " + errors::versionText() +
                                      " At line: 0|vrnMethodEditor");
    }
}

TEST_F(ValidationTest, AnEnteredValueIsTakenOrRefused) {
    auto& grid = state().grdMacro;
    grid.userEdit(1, "10", true);
    EXPECT_FALSE(state().IsChanged);  // it was 10 before
    grid.userEdit(1, "500", true);
    EXPECT_EQ(boxTexts(), Texts{"The entered value is out of range."});
    EXPECT_EQ(box->shown[0].style, 16);
    EXPECT_EQ(grid.cellText(1, 1), "10");
    EXPECT_FALSE(state().IsChanged);
    grid.userEdit(1, "50", true);
    EXPECT_TRUE(state().IsChanged);
    EXPECT_TRUE(state().booUnsavedEdits);
    EXPECT_TRUE(grdMacro_OnValidate(state()));  // nothing pending
    editor().DisableMethod(true);
    EXPECT_TRUE(grdMacro_OnValidate(state()));
    grid.setEnabled(true);
    grid.userEdit(1, "60", true);
    EXPECT_EQ(grid.cellText(1, 1), "50");
    EXPECT_EQ(box->shown.size(), 1U);
    EXPECT_EQ(errorTexts(), Texts());
}

// The host hears of a malformed configuration while the value is checked, and acts on it.
TEST_F(ValidationTest, TheHostMayLoadAnotherMethodMeanwhile) {
    editor().onMethodEditorError([&](const errors::MethodEditorErrorArguments&) {
        editor().onMethodEditorError(nullptr);
        load({test::catalogue(macro("LONG", Texts(20, "Volume;3;1;9"))), objectList(""), "", ""});
        state().cboSelectedMacro.setListIndex(0);
    });
    state().domConfig = parsed("<Config><Arguments><OBJECT/></Arguments></Config>");
    state().grdMacro.userEdit(1, "50", true);
    EXPECT_EQ(gridValues(), Texts(20, "3"));
    EXPECT_FALSE(state().IsChanged);
}

TEST_F(ValidationTest, TheHostMayLoadAnotherMethodWhileAMessageIsOpen) {
    box->whileShown = [this] { load({test::catalogue(macro("OTHER", {"Volume;3"})), objectList(""), "", ""}); };
    EXPECT_FALSE(validate(1, "500"));
    EXPECT_EQ(gridValues(), Texts());
}

TEST_F(CommaLocaleTest, NumbersAreTypedWithTheLocalesSeparator) {
    EXPECT_TRUE(validate(1, "1.5"));
    EXPECT_TRUE(validate(1, "1,5"));
    EXPECT_FALSE(validate(1, "1.000,5"));
    auto& grid = state().grdMacro;
    grid.userEdit(1, "2,5", true);
    EXPECT_EQ(grid.cellText(1, 1), "2.5");  // as the method keeps it
    grid.userEdit(3, "a,b", true);
    EXPECT_EQ(grid.cellText(3, 1), "a,b");
    state().domMacros = parsed(test::catalogue(macro("M", {"Volume;2,5;0.5"})));
    state().grdMacro.clearRows();
    macroParams(state(), "M");
    EXPECT_EQ(state().arrMacroParams.back().text, "Range: from 0 Default: 2");
}

TEST_F(ValidationTest, TheMenuOffersNamesAndTheDefault) {
    instrument->names["UL"] = {"Host", "Nil"};
    EXPECT_EQ(menu(1), (Texts{"Host", "Nil", "Mix1", "Any", "Default: 10"}));
    EXPECT_EQ(menu(2), (Texts{"T1", "T2", "Mine", "Any", "Nil"}));
    EXPECT_EQ(menu(3), (Texts{"Nil", "Any"}));
    EXPECT_EQ(menu(0), Texts());
    for (const auto& [position, shown] : {std::pair(149, false), {150, true}, {250, true}, {251, false}, {-1, false}}) {
        EXPECT_EQ(menu(1, position).empty(), !shown) << position;
    }
    state().domConfig = xml::Document();
    EXPECT_EQ(menu(4), Texts{"Default: 6"});
    EXPECT_EQ(menu(3), Texts());
    EXPECT_EQ(errorTexts(), Texts());
}

TEST_F(ValidationTest, AChosenEntryIsTheUsersEdit) {
    auto& grid = state().grdMacro;
    grid.setCellText(1, 1, "20");
    menu(1);
    grid.userMouseMove(4);  // the open menu keeps its row
    EXPECT_EQ(state().mnuUserIndex.userChoose(3), UserRequest::Done);
    EXPECT_EQ(grid.cellText(1, 1), "10");
    EXPECT_TRUE(state().IsChanged);
    menu(2);
    state().mnuUserIndex.userChoose(2);
    EXPECT_EQ(grid.cellText(2, 1), "Mine");
    menu(1);
    editor().DisableMethod(true);
    state().mnuUserIndex.userChoose(0);
    EXPECT_EQ(grid.cellText(1, 1), "10");
    EXPECT_TRUE(box->shown.empty());
}

TEST_F(ValidationTest, AFailureLeavesTheMenuAsItStood) {
    menu(1);
    state().domConfig = parsed("<Config><Other/></Config>");
    state().grdMacro.userMouseDown(1, 200);
    EXPECT_TRUE(state().mnuUserIndex.shown());
    EXPECT_EQ(errorTexts(), Texts{"91 grdMacro_OnMouseDown |Object variable or With block variable not set"});
}

TEST_F(ValidationTest, TheHintFollowsTheMouse) {
    auto& grid = state().grdMacro;
    grid.userMouseMove(1);
    EXPECT_TRUE(state().txtToolTip.visible());
    EXPECT_EQ(state().txtToolTip.text(), "Range: 0 to 100 Default: 10");
    grid.userMouseMove(3);
    EXPECT_FALSE(state().txtToolTip.visible());  // no hint, nothing to show
    grid.userMouseMove(2);
    EXPECT_EQ(state().txtToolTip.text(), "TRAY");
    grid.userMouseMove(-1);
    EXPECT_FALSE(state().txtToolTip.visible());
    for (const auto* const frame : {&state().fraArgument, &state().fraMethodEditor}) {
        grid.userMouseMove(1);
        frame->userMouseMove();
        EXPECT_FALSE(state().txtToolTip.visible());
    }
    grid.addRow({"Extra", "1", controls::EditStyle::Text, {}});
    grid.userMouseMove(5);
    EXPECT_EQ(errorTexts(), Texts{"9 grdMacro_OnMouseMove |Subscript out of range"});
}

}  // namespace
}  // namespace vrn::catalogue
