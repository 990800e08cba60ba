// The catalogue parser on its own: lists of objects, atoms, user-defined names and units.
#include <gmock/gmock.h>

#include "catalogue/CxmlValuesHandler.h"
#include "errors/Error.h"
#include "errors/modErr.h"
#include "support/Documents.h"
#include "support/Services.h"

namespace vrn::catalogue {
namespace {

using namespace test;
using ::testing::ElementsAre;

class ListsTest : public ::testing::Test {
  protected:
    ListsTest() { services_.instrument = instrument; }

    std::string retrieve(std::int16_t kind, const std::string& objects, const std::string& config,
                         const std::string& key) {
        return handler.RetrieveValues(kind, parsed(objects), parsed(config), key);
    }
    std::string units(const std::string& names, const std::string& macros) {
        return handler.UnitsInOneMacro(names, parsed(test::catalogue(macros)));
    }
    template <typename Act>
    std::string failureOf(Act&& act) {
        try {
            act();
            return "none";
        } catch (const errors::Error& error) {
            return std::to_string(error.number()) + " " + error.source();
        }
    }

    std::shared_ptr<TableInstrumentService> instrument = std::make_shared<TableInstrumentService>();

  private:
    services::Services services_;

  protected:
    CxmlValuesHandler handler{services_};
    const std::string link = "Version: " + errors::versionText() + " At line: 0|";
};

TEST(ItIsObject, TakesCapitalsAndUnderscoresOnly) {
    EXPECT_TRUE(ItIsObject("INJ_VALVE"));
    for (const auto* text : {"", "TRAY_1", "Tray", "TRAY ", "ÄB"}) {
        EXPECT_FALSE(ItIsObject(text)) << text;
    }
}

TEST_F(ListsTest, ObjectsOfATypeThenConfiguredThenFreeText) {
    const auto trays = objectList(object("TRAY", "Tray1") + object("VALVE", "V") + object("TRAY", "Tray2"));
    const auto nothing = objectList("");
    const auto mine = category("TRAY", {"MyTray"});
    const auto any = category("FREE TEXT", {"Any"});
    const struct {
        std::string objects;
        std::string config;
        std::string key;
        std::string list;
    } cases[] = {
        {trays, "", "TRAY", "Tray1;Tray2"},
        {trays, configuration(mine), "TRAY", "Tray1;Tray2;MyTray"},
        {trays, configuration(any + mine), "TRAY", "Tray1;Tray2;MyTray;Any"},
        {trays, configuration(any), "tray", ";Any"},
        {trays, configuration(any), "", ""},
        {nothing, configuration(any), "TRAY", ";Any"},
        {nothing, configuration(mine), "TRAY", ";MyTray"},
        {nothing, configuration(any), "SYRINGE", ""},
        {"<LATESTKEX/>", configuration(any), "TRAY", ""},
        {"", configuration(any), "TRAY", ""},
    };
    for (const auto& [objects, config, key, list] : cases) {
        EXPECT_EQ(retrieve(1, objects, config, key), list) << key << " " << config;
    }
    EXPECT_EQ(retrieve(3, trays, "", "TRAY"), "");
}

TEST_F(ListsTest, TheLinesOfAnAtom) {
    const auto atoms =
        objectList("",
                   "<ATOM><AtomName>EMPTY</AtomName></ATOM>"
                   "<ATOM><AtomName>MOVE</AtomName><Param>X</Param><!-- no line --><Other>Y</Other></ATOM>"
                   "<ATOM><Param>lost</Param><AtomName>ODD</AtomName></ATOM>");
    EXPECT_EQ(retrieve(2, atoms, "", "MOVE"), "X\r\nY\r\n");
    EXPECT_EQ(retrieve(2, atoms, "", "ODD"), "ODD\r\n");
    EXPECT_EQ(retrieve(2, atoms, "", "EMPTY"), "");
    EXPECT_EQ(retrieve(2, atoms, "", "move"), "");
    EXPECT_EQ(retrieve(2, "<LATESTKEX/>", "", "MOVE"), "");
}

TEST_F(ListsTest, ANamelessAtomFailsOnlyWhenTheWalkMeetsIt) {
    const auto atoms = objectList("", "<ATOM><AtomName>A</AtomName></ATOM><ATOM/>");
    EXPECT_EQ(retrieve(2, atoms, "", "A"), "");
    EXPECT_EQ(failureOf([&] { retrieve(2, atoms, "", "B"); }),
              "91 vrnMethodEditor.CxmlValuesHandler.RetrieveValues " + link + "vrnMethodEditor");
}

TEST_F(ListsTest, MalformedDocumentsFailWithAChainOfSources) {
    const auto typeless = objectList(object("TRAY", "T") + "<OBJECT><ObjectName>N</ObjectName></OBJECT>");
    const auto nameless = objectList("<OBJECT><ObjectType>VALVE</ObjectType></OBJECT>" + object("TRAY", "T"));
    const std::string retrieving = "91 vrnMethodEditor.CxmlValuesHandler.RetrieveValues " + link;
    EXPECT_EQ(failureOf([&] { retrieve(1, typeless, "", "TRAY"); }), retrieving + "vrnMethodEditor");
    EXPECT_EQ(failureOf([&] { retrieve(1, nameless, "", "VALVE"); }), retrieving + "vrnMethodEditor");
    EXPECT_EQ(retrieve(1, nameless, "", "TRAY"), "T");
    for (const auto* config :
         {"<Config/>", "<Config><Other/></Config>", "<Config><Arguments><OBJECT/></Arguments></Config>"}) {
        EXPECT_EQ(failureOf([&] { retrieve(1, objectList(""), config, "TRAY"); }),
                  retrieving + "vrnMethodEditor.CxmlValuesHandler.SLObject " + link + "vrnMethodEditor")
            << config;
    }
}

TEST_F(ListsTest, ServiceNamesComeFirstAndAreNotRepeated) {
    const auto config = configuration(category("TRAY", {"MyTray", "Spare", "", "TRAY"}) + category("VALVE", {"V"}) +
                                      category("TRAY", {"MyTray", "a;b"}));
    retrieve(1, objectList(""), config, "");
    EXPECT_EQ(handler.SLObject("TRAY"), "MyTray;Spare;MyTray;a;b");
    instrument->names["TRAY"] = {"Spare", "a", "Spare"};
    EXPECT_EQ(handler.SLObject("TRAY"), "Spare;a;Spare;MyTray;MyTray;a;b");
    EXPECT_EQ(handler.SLObject("tray"), "");
    retrieve(1, objectList(""), "", "");
    EXPECT_EQ(handler.SLObject("TRAY"), "Spare;a;Spare");
}

TEST_F(ListsTest, TheEntriesOfTypesAreSharedUntilSomethingChanges) {
    const std::vector<std::string> types{"TRAY", "STACK"};
    auto objects = parsed(objectList(object("TRAY", "T") + object("STACK", "S")));
    auto config = parsed(configuration(category("FREE TEXT", {"Any"})));
    const auto choices = [&] { return handler.objectChoices(objects, config, types); };
    const auto first = choices();
    EXPECT_THAT(first->items(), ElementsAre("T", "Any", "S", "Any"));
    EXPECT_TRUE(first->contains("Any"));
    EXPECT_FALSE(first->contains("any"));
    EXPECT_EQ(choices(), first);
    EXPECT_THAT(handler.objectChoices(objects, config, {types.begin(), 1})->items(), ElementsAre("T", "Any"));

    // The service is asked each time.
    instrument->names["STACK"] = {"Own"};
    EXPECT_THAT(choices()->items(), ElementsAre("T", "Any", "S", "Own", "Any"));
    instrument->names.clear();
    config = parsed(configuration(category("TRAY", {"Mine"})));
    EXPECT_THAT(choices()->items(), ElementsAre("T", "Mine", "S"));
    objects = parsed(objectList(object("TRAY", "Other")));
    EXPECT_THAT(choices()->items(), ElementsAre("Other", "Mine"));
    handler.forget(objects);
    EXPECT_THAT(choices()->items(), ElementsAre("Other", "Mine"));
    EXPECT_THAT(first->items(), ElementsAre("T", "Any", "S", "Any"));

    config = parsed("<Config/>");
    EXPECT_EQ(failureOf(choices), "91 vrnMethodEditor.CxmlValuesHandler.RetrieveValues " + link +
                                      "vrnMethodEditor.CxmlValuesHandler.SLObject " + link + "vrnMethodEditor");
}

TEST_F(ListsTest, MoreTypesThanAreKept) {
    std::string many;
    std::vector<std::string> names;
    for (int i = 0; i < 200; ++i) {
        names.push_back("T_" + std::string(static_cast<std::size_t>(i), 'X'));
        many += object(names.back(), std::to_string(i));
    }
    const auto objects = parsed(objectList(many));
    const xml::Document none;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_THAT(handler.objectChoices(objects, none, {&names[i], 1})->items(), ElementsAre(std::to_string(i)));
        }
    }
}

TEST_F(ListsTest, UnitsAndTypesOfTheNamedMacros) {
    instrument->pairs["E"] = "STD";
    const auto macros = macro("INJ", {"Volume(UL);10;1;100", "Vial;TRAY"}) +
                        macro("INJECT", {"Speed(UL/S);1", "Text"}) +
                        macro("WASH", {"Cycles;1;0;5", "Amount()(X);1", "From;TRAY;STACK;"});
    const struct {
        std::string names;
        std::string list;
    } cases[] = {
        {"INJ", "UL;TRAY"},         {"INJECT", "UL;TRAY"},  // its front is another macro's name, which is taken out
        {"WASH", "STD;TRAY;STACK"}, {"WASH;INJ", "UL;STD;STACK;TRAY"},
        {"INJ;INJECT", "UL;TRAY"},  {"NONE", ";"},
    };
    for (const auto& [names, list] : cases) {
        EXPECT_EQ(units(names, macros), list) << names;
    }
    EXPECT_EQ(handler.UnitsInOneMacro("INJ", parsed("<Other/>")), ";");
    EXPECT_EQ(units("A", "<Macro><MacroName>A</MacroName></Macro>"), ";");
    EXPECT_EQ(failureOf([&] { units("Z", macros + "<Macro/>"); }),
              "91 vrnMethodEditor.CxmlValuesHandler.UnitsInOneMacro " + link + "vrnMethodEditor");
    EXPECT_EQ(units("WASH", macros + "<Macro/>"), "STD;TRAY;STACK");
}

TEST(CleanRepetition, GivesWhatItHasAlwaysGiven) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {";", ""},
        {"A;", "A"},
        {"A;B;A;", "B;A"},
        {"A;A;", ";A"},
        {"A;B;A", "B;A;A"},
        {"TRAY;TRAY_B;", "TRAY_B;TRAY"},
        {"B_TRAY;TRAY;", "B_;TRAY"},
        {"A;B;", "A;B"},
    };
    for (const auto& [list, cleaned] : cases) {
        EXPECT_EQ(CxmlValuesHandler::CleanRepetition(list), cleaned) << list;
    }
}

TEST(MacroIndex, NamesAreFoundTrimmedAndAsTheyStand) {
    const auto document = parsed(
        "<Macros><Macro><MacroName> A </MacroName></Macro><Macro><MacroName x='2'>A</MacroName></Macro>"
        "<Macro/><Macro><MacroName>B</MacroName></Macro></Macros>");
    const MacroIndex index(document);
    EXPECT_EQ(index.find("A"), index.macros()[0]);
    EXPECT_EQ(index.macroName(" A "), index.macros()[0].child("MacroName"));
    EXPECT_EQ(index.macroName("A"), index.macros()[1].child("MacroName"));
    EXPECT_FALSE(index.macroName("C"));
    for (const auto* behind : {"B", "C"}) {
        EXPECT_THROW(static_cast<void>(index.find(behind)), errors::Error) << behind;
    }
}

}  // namespace
}  // namespace vrn::catalogue
