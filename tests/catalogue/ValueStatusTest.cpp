// What values that a method holds are worth on an instrument.
#include "catalogue/ValueStatus.h"

#include "catalogue/CxmlValuesHandler.h"
#include "support/EditorFixture.h"

namespace vrn::catalogue {
namespace {

using namespace test;

class ValueStatusTest : public EditorFixture {
  protected:
    ValueStatusTest() {
        load({test::catalogue(macro(
                  "WASH", {"Volume(UL);SYR.Def;SYR.Min;SYR.Max", "Vial;TRAY;RACK", "Free", "Low;6;5", "Gate;VALVE"})),
              objectList(object("SYRINGE", "S", {{"Def", "2"}, {"Min", "0.5"}, {"Max", "8"}}) + object("TRAY", "T1")),
              "",
              configuration(category("UL", {"Mix1", "SL.Vol"}) + category("None", {"Nil"}) +
                            category("TRAY", {"SL.Mine"}) + category("FREE TEXT", {"Any"}))});
        parameters = parametersOf(state(), state().xmlValues->macros(state().domMacros).find("WASH"));
    }
    std::string status(std::size_t parameter, const std::string& value) {
        return statusText(parameters.at(parameter), valueStatus(state(), parameters.at(parameter), value));
    }

    std::vector<Parameter> parameters;
};

TEST_F(ValueStatusTest, ParametersAreWhatTheGridShows) {
    state().cboSelectedMacro.userSelect(0);
    ASSERT_EQ(parameters.size(), gridNames().size());
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        EXPECT_EQ(parameters[i].row.name, gridNames()[i]);
        EXPECT_EQ(parameters[i].row.value, gridValues()[i]);
        EXPECT_EQ(parameters[i].model.text, state().arrMacroParams.at(i + 1).text);
    }
    EXPECT_EQ(parameters[0].unit, "UL");
    EXPECT_TRUE(parameters[0].followsSyringe);
    EXPECT_TRUE(parameters[1].isObject);
}

TEST_F(ValueStatusTest, NumbersAgainstTheSyringesRange) {
    EXPECT_EQ(status(0, "0.5"), "");
    EXPECT_EQ(status(0, "8.5"), "is out of range: 0.5 to 8");
    EXPECT_EQ(status(0, "Mix1"), "");
    EXPECT_EQ(status(0, "lots"), "is neither a number nor a configured name");
    EXPECT_EQ(status(3, "4"), "is out of range: 5 or more");
    EXPECT_EQ(status(2, "whatever"), "");
    state().cboSyringe.setListIndex(controls::noSelection);
    parameters = parametersOf(state(), state().xmlValues->macros(state().domMacros).find("WASH"));
    EXPECT_EQ(status(0, "8.5"), "cannot be checked: its range is that of the syringe");
}

TEST_F(ValueStatusTest, ObjectsAndNamesThatAreGone) {
    EXPECT_EQ(status(1, "T1"), "");
    EXPECT_EQ(status(1, "Any"), "");
    EXPECT_EQ(status(1, "Nil"), "") << "the window's menu offers it too";
    EXPECT_EQ(status(1, "T2"), "is not among the instrument's objects: TRAY Or RACK");
    EXPECT_EQ(status(4, "V1"), "is not among the instrument's objects: VALVE") << "the free text is in its list";
    EXPECT_EQ(status(1, "SL.Mine"), "");
    EXPECT_EQ(status(0, "SL.Vol+5"), "") << "an offset is no part of the name";
    EXPECT_EQ(status(0, "SL.Gone"), "is a user-defined name that is no longer defined");
    instrument->names["UL"] = {"SL.Gone"};
    EXPECT_EQ(status(0, "SL.Gone"), "");
}

}  // namespace
}  // namespace vrn::catalogue
