// One macro as rows of the grid.
#include "catalogue/ParameterGrid.h"

#include "catalogue/CxmlValuesHandler.h"
#include "method/Enabling.h"
#include "support/EditorFixture.h"

namespace vrn::catalogue {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class ParameterGridTest : public EditorFixture {
  protected:
    void show(const Texts& definitions, const Texts& atoms = {}) {
        state().domMacros = parsed(test::catalogue(macro("M", definitions, atoms)));
        method::CleanGrdMacro(state());
        macroParams(state(), "M");
    }
    Texts hints() {
        Texts texts;
        for (const auto& param : state().arrMacroParams) {
            texts.push_back(param.text);
        }
        texts.erase(texts.begin());
        return texts;
    }
};

TEST_F(ParameterGridTest, EveryKindOfDefinition) {
    instrument->units["UL"] = 2;
    state().domlatestKex =
        parsed(objectList(object("SYRINGE", "10uL", {{"Max", "25"}, {"Name", "abc"}, {"Huge", "1e39"}})));
    fillSyringesize(state());
    const struct {
        std::string definition;
        std::string name;
        std::string value;
        std::string hint;
    } cases[] = {
        {"Volume(UL);10;1;100", "Volume", "10", "Range: 1 to 100 Default: 10"},
        {"Speed;2.5;0.5;10.5", "Speed", "2", "Range: 0 to 10 Default: 2"},  // halves to even
        {"Wait (s) x;5", "Wait ", "5", "Default: 5"},
        {"Only min()(X);6;5", "Only min", "6", "Range: from 5 Default: 6"},
        {"Free", "Free", "", ""},
        {"Fill(UL);SYR.Max;1;Syr.Max", "Fill", "12.5", "Range: 1 to 12.5 Default: 12.5"},
        {"Fill(XX);1;0;any.Max", "Fill", "1", "Range: 0 to 25 Default: 1"},
        {"Fill;SYR.None;SYR.Name;Max", "Fill", "0", "Range: 0 to 25 Default: 0"},
        {"Gap;;1;2", "Gap", "0", "Range: 1 to 2 Default: 0"},
        {"Tray;TRAY;STACK_A;", "Tray", "", "TRAY Or STACK_A"},
        {"", "", "", ""},
    };
    for (const auto& [definition, name, value, hint] : cases) {
        show({definition});
        EXPECT_EQ(gridNames(), Texts{name}) << definition;
        EXPECT_EQ(gridValues(), Texts{value}) << definition;
        EXPECT_EQ(hints(), Texts{hint}) << definition;
    }
    EXPECT_EQ(errorTexts(), Texts());
    EXPECT_EQ(ReturnValue(state(), "SYR.Max", 0), 0.0F);
    EXPECT_EQ(ReturnValue(state(), "SYR.Huge", 1), 0.0F);
    state().cboSyringe.clear();
    EXPECT_EQ(ReturnValue(state(), "SYR.Max", 1), 0.0F);
    EXPECT_EQ(errorTexts(), Texts{"6 ReturnValue |Overflow"});
}

TEST_F(ParameterGridTest, TheServiceIsAskedForUnitsAndTheFirstReference) {
    show({"A(UL);1;SYR.Min;Syr.Max", "B();1;2;3", "C;2"});
    EXPECT_EQ(instrument->asked, (Texts{"UnitInfo UL", "UnitPair Min"}));
}

TEST_F(ParameterGridTest, ItemsOfObjectParameters) {
    state().domlatestKex = parsed(objectList(object("TRAY", "T1") + object("TRAY", "T2") + object("BIG", "T1;T2") +
                                             object("STACK", "") + object("STACK", "S")));
    show({"Vial;TRAY;STACK", "Part;BIG;TRAY", "Speed;5", "None;VALVE"});
    const auto items = [&](int row) { return state().grdMacro.row(row)->items(); };
    EXPECT_EQ(items(1), (Texts{"T1", "T2", "", "S"}));
    EXPECT_EQ(items(2), (Texts{"T1", "T2"}));  // what the list holds already adds nothing
    EXPECT_EQ(items(4), Texts());
    EXPECT_EQ(gridValues(), (Texts{"T1", "T1", "5", ""}));
    EXPECT_EQ(state().arrObjectPositions, (std::vector<std::int16_t>{0, 1, 2, 4}));
    EXPECT_FALSE(IsObjectPosition(state(), 0));
    EXPECT_TRUE(IsObjectPosition(state(), 4));
    EXPECT_FALSE(IsObjectPosition(state(), 3));
    EXPECT_EQ(GetCurrenMacroParams(state()), "T1,T1,5,");
    const auto shared = state().grdMacro.row(1)->choices;
    show({"Speed;5", "Vial;TRAY;STACK"});
    EXPECT_EQ(state().grdMacro.row(2)->choices, shared);  // not made again for each row that is shown
    state().domConfig = parsed(configuration(category("FREE TEXT", {"Any"})));
    show({"None;VALVE"});
    EXPECT_EQ(items(1), Texts{"Any"});  // without the empty item that the list begins with
}

TEST_F(ParameterGridTest, TheAtomLineIsKeptAsXml) {
    show({}, {"MOVE(X,&lt;1 &amp; 2)", "", "ASPIRATE"});
    EXPECT_EQ(state().strAtomLine, "<ATOM>MOVE(X,&lt;1 &amp; 2)</ATOM>\r\n<ATOM></ATOM>\r\n<ATOM>ASPIRATE</ATOM>");
    EXPECT_EQ(state().grdMacro.rowCount(), 1);
    EXPECT_FALSE(state().grdMacro.enabled());
    show({});
    EXPECT_EQ(state().strAtomLine, "");
}

TEST_F(ParameterGridTest, AnOverflowEndsTheRowsThere) {
    show({});
    show({"A;1", "B;2147483648", "C;1"});
    EXPECT_EQ(gridNames(), Texts{"A"});
    EXPECT_EQ(state().arrMacroParams.size(), 2U);
    EXPECT_FALSE(state().grdMacro.enabled());  // as it was before
    EXPECT_EQ(errorTexts(), Texts{"6 macroParams |Overflow"});
}

TEST_F(ParameterGridTest, AMacroThatIsNotThereLeavesTheModel) {
    show({"A;1"});
    method::CleanGrdMacro(state());
    macroParams(state(), "m");
    EXPECT_EQ(state().arrMacroParams.size(), 2U);
    EXPECT_FALSE(state().grdMacro.enabled());
    EXPECT_EQ(state().grdMacro.topRow(), 2);
    state().domMacros = parsed("<Macros><Macro/></Macros>");
    macroParams(state(), "M");
    EXPECT_EQ(errorTexts(), Texts{"91 macroParams |Object variable or With block variable not set"});
}

TEST_F(ParameterGridTest, TheCatalogueComboIsFilledUpToAMalformedMacro) {
    state().domMacros = parsed(
        "<Macros><Macro><MacroName>A</MacroName><Description><L>one</L><L>two</L></Description></Macro>"
        "<Macro><MacroName>B</MacroName></Macro><Macro/><Macro><MacroName>C</MacroName></Macro></Macros>");
    FillMacros(state());
    EXPECT_EQ(state().cboSelectedMacro.items(), (Texts{"A", "B"}));
    EXPECT_EQ(state().cboSelectedMacro.toolTip(0), "one\r\ntwo\r\n");
    EXPECT_EQ(state().cboSelectedMacro.toolTip(1), "");
    EXPECT_EQ(errorTexts(), Texts{"91 FillMacros |Object variable or With block variable not set"});
}

TEST_F(ParameterGridTest, EnablingWalksFramesAndPassesOthersOver) {
    auto& s = state();
    method::EnableControlsUserControl(s, s.fraMethodEditor, false);
    for (auto* const control : s.controlCollection) {
        const bool has =
            control->kind() != controls::ControlKind::Label && control->kind() != controls::ControlKind::Menu;
        EXPECT_EQ(control->enabled(), !has) << control->name();
    }
    EXPECT_EQ(s.grdMacro.colour(), 0x8000000F);
    method::EnableControlsUserControl(s, s.txtMethodDescription, true);  // no container: nothing happens
    EXPECT_FALSE(s.txtMethodDescription.enabled());
    method::EnableControlsUserControl(s, s.fraArgument, true);
    EXPECT_TRUE(s.grdMacro.enabled());
    EXPECT_FALSE(s.cmdInsert.enabled());
    EXPECT_EQ(s.grdMacro.colour(), 0x80000005);
    method::DisableMethod(s, false);
    EXPECT_TRUE(s.cmdDefCycle.enabled());
    method::DisableMethod(s, true);
    method::EnableStepButtons(s, true);
    EXPECT_FALSE(s.cmdDelete.enabled());
    show({"A;1"});
    EXPECT_TRUE(s.grdMacro.enabled());  // the grid follows its rows even so
    EXPECT_TRUE(s.grdMacro.tabStop());
    EXPECT_EQ(s.grdMacro.topRow(), 1);
    EXPECT_EQ(errorTexts(), Texts());
}

}  // namespace
}  // namespace vrn::catalogue
