// User-defined names, and the properties of objects, as the editor asks for them.
#include "catalogue/Configuration.h"

#include "catalogue/ParameterGrid.h"
#include "support/EditorFixture.h"

namespace vrn::catalogue {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class ConfigurationTest : public EditorFixture {};

TEST_F(ConfigurationTest, AValueIsConfiguredWhenItIsPartOfTheNames) {
    state().domConfig = parsed(configuration(category("UL", {"Gone"}) + category("UL", {"Mix1", "Mix2"}) +
                                             category("None", {"Free", "None9"})));
    instrument->names["UL"] = {"Host"};
    const struct {
        std::string name;
        std::string value;
        bool configured;
    } cases[] = {
        {"Volume(UL)", "Mix1", true},  {" Volume(UL)(X) ", "Mix", true},
        {"Volume(UL)", "1Mix2", true},                                 // two names side by side
        {"Volume(UL)", "mix1", false}, {"Volume(UL)", "Gone", false},  // the last category of a key decides
        {"Volume(UL)", "Host", true},  {"Volume(UL)", "Hos", false},
        {"Volume(UL)", "", false},     {"Volume(ul)", "Mix1", false},
        {"Volume()", "Free", true},    {"Volume", "Free", true},
        {"Volume)UL(", "Free", true},  {"Volume", "Free9", true},  // the key is taken out of the names
    };
    for (const auto* const time : {"at first", "again"}) {
        for (const auto& [name, value, configured] : cases) {
            EXPECT_EQ(ControlUserDef_Obj(state(), name, value), configured) << name << " " << value << " " << time;
        }
    }
    state().domConfig = xml::Document();
    EXPECT_FALSE(ControlUserDef_Obj(state(), "Volume(UL)", "Host"));
    EXPECT_EQ(errorTexts(), Texts());
    state().domConfig = parsed("<Config><Arguments><OBJECT/></Arguments></Config>");
    EXPECT_FALSE(ControlUserDef_Obj(state(), "Volume(UL)", "Host"));
    EXPECT_EQ(errorTexts(), Texts{"91 vrnMethodEditor.VRN_MethodEditor.ControlUserDef_Obj |"
                                  "Object variable or With block variable not set"});
}

TEST_F(ConfigurationTest, TheMethodsOwnCategoryComesFirst) {
    const auto config =
        parsed(configuration("<OBJECT><UDON>orphan</UDON></OBJECT>" + category("B", {"both", "config"}) +
                             category("C", {"config", "blank", "orphan"})));
    state().domMethodBaseline =
        parsed(element("Method", element("Arguments", category("A", {"both"}) + category("", {"blank"}))));
    const std::pair<std::string, std::string> cases[] = {
        {"both", "A"}, {"config", "B"}, {"blank", "C"}, {"orphan", "C"}, {"neither", ""}, {"Both", ""}, {"bo\"th", ""}};
    for (const auto& [name, key] : cases) {
        EXPECT_EQ(GetPredUnitName(state(), config, name), key) << name;
    }
    EXPECT_EQ(GetPredUnitName(state(), xml::Document(), "both"), "A");
    EXPECT_EQ(errorTexts(), Texts());
}

TEST_F(ConfigurationTest, TheNamesAMethodUsesAreCollectedOnce) {
    const auto method = parsed(
        "<Method><Macros><MacroVariable><MacroValues>A(SL.one,5,SL.Two +3)</MacroValues><MacroValues/>"
        "<MacroValues>B(sl.small, SL.blank,SL.ONE)</MacroValues><MacroValues>no values</MacroValues><MacroValues>C(</MacroValues>"
        "</MacroVariable></Macros><ATOMLINE><ATOM>MOVE(SL.two-1,SL.three+2,(SL.no)</ATOM><ATOM>GO()</ATOM></ATOMLINE></Method>");
    EXPECT_EQ(MethodUdons(state(), method).names(), (Texts{"SL.one", "SL.Two", "SL.three"}));
    EXPECT_EQ(MethodUdons(state(), xml::Document()).names(), Texts());
    std::string cut = "SL.a+b-c d";
    ClearSpaces(cut);
    EXPECT_EQ(cut, "SL.a");
}

TEST_F(ConfigurationTest, PropertiesOfObjectsAreFoundInTheAnsiCodePage) {
    state().domlatestKex = parsed(objectList(
        object("SYRINGE", "日", {{"Volume", "10"}}) + object("SYRINGE", "B") + object("TRAY", "B", {{"Volume", "7"}}) +
        object("SYRINGE", "B", {{"Other", "1"}, {"Volume", "20"}, {"Volume", "30"}})));
    const auto value = [&](const std::string& type, const std::string& name, const std::string& property,
                           const std::string& filter = {}) {
        return ObjectPropertyValue(state(), type, name, property, filter);
    };
    EXPECT_EQ(value("SYRINGE", "本", "Volume"), "10");  // neither is in the code page
    EXPECT_EQ(value("SYRINGE", "B", "Volume"), "20");   // the search goes on behind an object without the property
    EXPECT_EQ(value("SYRINGE", "b", "Volume"), "");
    EXPECT_EQ(value("SYRINGE", "", ""), "日;B;B");
    EXPECT_EQ(value("SYRINGE", "", "", "Volume"), "日;B");
    EXPECT_EQ(value("VALVE", "", ""), "");
    state().domlatestKex = parsed("<LATESTKEX/>");
    EXPECT_EQ(value("SYRINGE", "B", "Volume"), "");
}

TEST_F(ConfigurationTest, AMalformedObjectFailsTheSearchesThatMeetIt) {
    const auto failsFor = [&](const std::string& name, const std::string& property) {
        try {
            static_cast<void>(ObjectPropertyValue(state(), "T", name, property));
            return false;
        } catch (const errors::Error& error) {
            return error.number() == errors::number::objectNotSet;
        }
    };
    state().domlatestKex =
        parsed(objectList(object("T", "first", {{"P", "1"}}) + "<OBJECT><ObjectType>X</ObjectType></OBJECT>" +
                          object("T", "last", {{"P", "1"}})));
    EXPECT_FALSE(failsFor("first", "P"));
    EXPECT_TRUE(failsFor("first", "Q"));
    EXPECT_TRUE(failsFor("last", "P"));
    EXPECT_TRUE(failsFor("", ""));
    state().domlatestKex =
        parsed(objectList("<OBJECT><ObjectType>T</ObjectType><ObjectName>A</ObjectName><Property>"
                          "<PropertyName>P</PropertyName></Property><Property/></OBJECT>"));
    EXPECT_TRUE(failsFor("A", "P"));
    EXPECT_TRUE(failsFor("A", "Q"));
    EXPECT_FALSE(failsFor("B", "P"));
}

TEST_F(ConfigurationTest, TheSyringesAreListedWithEmptyItems) {
    const auto fill = [&](const std::string& objects) {
        state().domlatestKex = parsed(objectList(objects));
        state().cboSyringe.clear();
        fillSyringesize(state());
        return state().cboSyringe.items();
    };
    state().domConfig = parsed(configuration(category("SYRINGE", {"Mine"}) + category("FREE TEXT", {"Any"})));
    EXPECT_EQ(fill(object("SYRINGE", "10uL") + object("SYRINGE", "100uL")), (Texts{"10uL", "100uL", "Mine"}));
    EXPECT_EQ(state().cboSyringe.text(), "10uL");
    EXPECT_EQ(fill(""), (Texts{"", "Mine"}));
    EXPECT_EQ(state().cboSyringe.listIndex(), 0);
    state().domConfig = xml::Document();
    EXPECT_EQ(fill(""), Texts());
    EXPECT_EQ(state().cboSyringe.listIndex(), -1);
    EXPECT_EQ(fill("<OBJECT/>"), Texts());
    EXPECT_EQ(errorTexts(), Texts{"91 vrnMethodEditor.VRN_MethodEditor.fillSyringesize |"
                                  "Object variable or With block variable not set"});
}

}  // namespace
}  // namespace vrn::catalogue
