// The commands that only look: verify, show, check, catalogue, diff.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/ToolFixture.h"
#include "hosts/cli/Finding.h"

namespace vrn::test {
namespace {

using cli::Json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class CheckTest : public ToolFixture {
  protected:
    /// The codes of a method's findings, with step and parameter where there are any.
    std::vector<std::string> codes(const std::string& name) {
        std::vector<std::string> found;
        run("check @set --json @" + name);
        const auto json = Json::parse(out);
        for (const auto& finding : json.at("findings")) {
            auto code = finding.at("code").get<std::string>();
            code += finding.contains("step") ? " " + finding["step"].dump() : "";
            found.push_back(code +
                            (finding.contains("parameter") ? " " + finding["parameter"].get<std::string>() : ""));
        }
        return found;
    }
    /// As much of a method's timing identifier as a column of the diff shows.
    std::string beginOfTimingId(const std::string& name) {
        return parsed(text(name)).documentElement().attribute("TimingInformationID").value_or("").substr(0, 31);
    }
    /// A method of version 01 in plain text: it is not verified, which is a finding of its own.
    void writePlain(const std::vector<std::string>& steps, const std::string& syringe = "10uL") {
        write("m.xml", methodText(steps, syringe));
    }
};

TEST_F(CheckTest, AMethodThatIsInOrder) {
    writeMethod("m.xml", {"WASH(5,W1,0)", "COUNT(3)", "WASH(SL.Vol,Ask,60)", "NOTE(any, thing)"});
    EXPECT_THAT(codes("m.xml"), ElementsAre("value-surplus 4"));
    writeMethod("m.xml", {"WASH(5,W1,0)", "COUNT(3)", "WASH(SL.Vol,Ask,60)"});
    EXPECT_EQ(run("check @set @m.xml"), 0);
    EXPECT_EQ(out, "1 method checked: nothing found\n");
}

TEST_F(CheckTest, ValuesStepsAndSyringe) {
    writePlain({"WASH(50,W3,x)", "GONE(1)", "COUNT(SL.Gone)", "no step", "WASH(5)"});
    EXPECT_THAT(codes("m.xml"),
                ElementsAre("version-unsupported", "value-out-of-range 1 Volume", "value-not-in-list 1 Station",
                            "value-not-a-number 1 Hold Time", "cycle-unknown 2", "name-unknown 3 Number",
                            "step-malformed 4", "value-missing 5 Station"));
    writePlain({}, "7uL");
    EXPECT_THAT(codes("m.xml"), ElementsAre("version-unsupported", "syringe-unknown", "sequence-empty"));
    writePlain({"WASH(500,W1,0)"}, "7uL");
    EXPECT_THAT(codes("m.xml"), ElementsAre("version-unsupported", "syringe-unknown")) << "no range without a syringe";
}

TEST_F(CheckTest, SignatureVersionAndCycles) {
    writeMethod("m.xml", {"WASH(5,W1,0)", "COUNT(3)"});
    write("changed.xml", text::encodeXmlFile(text::replacedAll(text("m.xml"), "COUNT(3)", "COUNT(4)")));
    EXPECT_THAT(codes("changed.xml"), ElementsAre("signature-invalid"));
    write("unsigned.xml", text::encodeXmlFile(text("m.xml").substr(0, text("m.xml").find("<Signature")) + "</Method>"));
    EXPECT_THAT(codes("unsigned.xml"), ElementsAre("signature-missing"));
    write("old.xml", "<Method/>");
    EXPECT_THAT(codes("old.xml"), ElementsAre("signature-missing", "version-old", "syringe-unknown", "sequence-empty"));
    writeSet("2021");
    EXPECT_THAT(codes("m.xml"), ElementsAre("cycle-outdated"));
    writeSet("2020", {"Volume(UL);2;1;9", "Station;WASH_STATION", "Hold Time;0;0;600"});
    EXPECT_THAT(codes("m.xml"), ElementsAre("cycle-outdated"));
}

TEST_F(CheckTest, FindingsTellLineAndColumn) {
    const std::string method =
        "<Method a='>' b=\"/>\">\r\n"
        "<!-- <Macros><MacroVariable><MacroValues/> --><?pi <VERSION> ?>\r"
        " <Syringe><SyringeSize>7uL</SyringeSize></Syringe>\n"
        "<Macros><MacroVariable>\n"
        "<MacroValues/><MacroValues>NOTE(x)</MacroValues>\n"
        "<Note>\U0001F600<![CDATA[</Note><Note>]]></Note><MacroValues>GONE(1)</MacroValues>\n"
        "</MacroVariable><MacroVariable><MacroValues>GONE(2)</MacroValues></MacroVariable>\n"
        "<MacroData><Other/><MacroName>[MACRO WASH]</MacroName></MacroData></Macros></Method>";
    const auto positions = [this](const std::string& bytes) {
        write("m.xml", bytes);
        run("check @set --json @m.xml");
        std::vector<std::string> found;
        const auto json = Json::parse(out);
        for (const auto& finding : json.at("findings")) {
            found.push_back(finding.at("line").dump() + ":" + finding.at("column").dump() + " " +
                            finding.at("code").get<std::string>());
        }
        return found;
    };
    EXPECT_THAT(positions("<?xml version='1.0'?>\n" + method),
                ElementsAre("2:1 signature-missing", "2:1 version-old", "4:11 syringe-unknown", "7:1 step-malformed",
                            "7:41 cycle-unknown", "9:20 cycle-outdated"));
    EXPECT_THAT(positions(text::encodeXmlFile("<?xml version='1.0' encoding='UTF-16'?>" + method)),
                ElementsAre("1:40 signature-missing", "1:40 version-old", "3:11 syringe-unknown", "6:1 step-malformed",
                            "6:41 cycle-unknown", "8:20 cycle-outdated"));
}

TEST_F(CheckTest, WhatFails) {
    write("set/macros.xml", text::replacedAll(read("set/macros.xml"), "2020", "2021"));
    writeMethod("m.xml", {"WASH(5,W1,0)"});
    writeSet("2022");
    EXPECT_EQ(run("check @set @m.xml"), 1);
    EXPECT_EQ(out,
              "m.xml:1:350: warning: cycle WASH: the embedded cycle is not the catalogue's: its date is another  "
              "[cycle-outdated]\n"
              "    fix: embed the catalogue's with: vrnmethod update\n"
              "1 method checked: 1 warning in 1 method\n");
    EXPECT_EQ(run("check @set --fail-on error @m.xml"), 0);
    EXPECT_EQ(run("check @set --fail-on blunder @m.xml"), 2);
    EXPECT_EQ(run("check @set @m.xml @gone.xml"), 2) << "a fault counts more than a finding";
    EXPECT_THAT(out, HasSubstr("1 method checked: 1 warning in 1 method; 1 file could not be read\n"));
}

TEST_F(CheckTest, SarifHoldsFindingsAndFaults) {
    writePlain({"COUNT(99)"});
    EXPECT_EQ(run("check @set --format sarif @m.xml @set/config.xml @gone.xml --jobs 2"), 2);
    const auto sarif = Json::parse(out);
    EXPECT_EQ(sarif.at("version"), "2.1.0");
    const auto& results = sarif.at("runs").at(0).at("results");
    ASSERT_EQ(results.size(), 4U);
    EXPECT_EQ(results[1].at("ruleId"), "value-out-of-range");
    EXPECT_EQ(results[1].at("level"), "error");
    EXPECT_EQ(results[1].at("locations").at(0).at("logicalLocations").at(0).at("fullyQualifiedName"),
              "step 1 COUNT, Number");
    EXPECT_EQ(results[1].at("locations").at(0).at("physicalLocation").at("region"),
              Json({{"startLine", 1}, {"startColumn", text("m.xml").find("<MacroValues>") + 1}}));
    EXPECT_EQ(results[2].at("ruleId"), "file-fault");
    EXPECT_EQ(results[3].at("locations").at(0).at("physicalLocation").at("artifactLocation").at("uri"), "gone.xml");
    std::vector<std::string> rules;
    for (const auto& rule : sarif.at("runs").at(0).at("tool").at("driver").at("rules")) {
        rules.push_back(rule.at("id"));
    }
    for (const auto& result : results) {
        EXPECT_THAT(rules, testing::Contains(result.at("ruleId").get<std::string>()));
    }
}

TEST_F(CheckTest, AFaultOfTheCatalogueIsToldOnceWhereItStands) {
    for (const auto* const name : {"methods/1.xml", "methods/2.xml", "methods/3.xml"}) {
        writeMethod(name, {"COUNT(3)", "COUNT(4)", "NOTE(x)"});
    }
    write("set/macros.xml", text::replacedAll(read("set/macros.xml"), "Number;3;1;20", "Number;3;1;20000000000"));
    const auto lines = text::split(read("set/macros.xml"), "\n");
    EXPECT_EQ(run("check @set @methods --jobs 2"), 1);
    EXPECT_THAT(out, HasSubstr("error: cycle COUNT: its parameter 'Number;3;1;20000000000' cannot be used"));
    EXPECT_EQ(out.find("[catalogue-fault]"), out.rfind("[catalogue-fault]"));
    EXPECT_THAT(out, HasSubstr("; 1 fault of the catalogue\n"));
    EXPECT_THAT(out, testing::Not(HasSubstr("value-surplus")));
    const auto place = out.substr(0, out.find(": error:"));
    const auto column = std::stoul(place.substr(place.rfind(':') + 1));
    const auto line = std::stoul(place.substr(place.find(':') + 1));
    EXPECT_THAT(place, testing::StartsWith("set/macros.xml:"));
    EXPECT_THAT(lines.at(line - 1).substr(column - 1), testing::MatchesRegex("<[^>]*>Number;3;1;20000000000.*"));
    run("check @set --json @methods --jobs 2");
    EXPECT_EQ(text::split(out, "\n").size(), 5U) << "one line of the catalogue, one of each method";
    EXPECT_EQ(run("update @set @methods/1.xml"), 1) << "what cannot be checked is not written";
    EXPECT_EQ(run("edit @set --script - @methods/1.xml", "delete 2"), 2);
    EXPECT_EQ(run("show @set @methods/1.xml"), 0);
    EXPECT_THAT(out, HasSubstr("3  ! cannot be checked: the catalogue's cycle is at fault\n"));
    run("catalogue macros COUNT @set");
    EXPECT_THAT(out, HasSubstr("! its parameter 'Number;3;1;20000000000' cannot be used"));
}

TEST_F(CheckTest, EveryCodeIsDocumented) {
    std::ifstream file(VRN_SOURCE_DIR "/docs/cli.md");
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    for (const auto& kind : cli::findingKinds()) {
        EXPECT_THAT(page, HasSubstr("| `" + std::string(kind.name) + "` | " +
                                    std::string(cli::severityName(kind.severity)) + " |"));
    }
}

TEST_F(CheckTest, ResultsAreTheSameHoweverManyWork) {
    for (int i = 0; i < 30; ++i) {
        writeMethod("methods/" + std::to_string(100 + i) + ".xml", {"COUNT(" + std::to_string(i) + ")"});
    }
    run("check @set --json @methods");
    const auto alone = out;
    EXPECT_THAT(alone, HasSubstr("value-out-of-range"));
    run("check @set --json @methods --jobs 4");
    EXPECT_EQ(out, alone);
}

TEST_F(CheckTest, ShowTellsRangesListsAndWhatIsNotValid) {
    writePlain({"WASH(50,W1,0)", "GONE()", "COUNT()"});
    EXPECT_EQ(run("show @set @m.xml"), 0);
    EXPECT_EQ(out,
              "m.xml\n"
              "  Version      01\n"
              "  Signature    unknown\n"
              "  Syringe      10uL\n"
              "  Sequence     3 steps\n"
              "\n"
              "  1   WASH\n"
              "      Volume     50  UL  ! is out of range: 1 to 10\n"
              "      Station    W1      one of: W1, W2, Ask\n"
              "      Hold Time  0       0 to 600, default 0\n"
              "\n"
              "  2   GONE  ! not in the catalogue\n"
              "\n"
              "  3   COUNT\n"
              "      Number  ! has no value\n");
    run("verify --json @m.xml");
    EXPECT_EQ(Json::parse(out).at("status"), "unknown") << "show and verify use the same words";
    run("show @set --json @m.xml");
    EXPECT_EQ(Json::parse(out).at("signature"), "unknown");
    const auto volume = Json::parse(out).at("steps").at(0).at("parameters").at(0);
    EXPECT_EQ(volume.dump(),
              R"({"name":"Volume","value":"50","unit":"UL","minimum":1,"maximum":10,"default":1,"valid":false,)"
              R"("problem":"is out of range: 1 to 10"})");
}

TEST_F(CheckTest, CatalogueIsSearched) {
    EXPECT_EQ(run("catalogue macros wash --syringe 100uL @set"), 0);
    EXPECT_EQ(out,
              "WASH  2020\n"
              "    Volume     UL  10 to 100, default 10\n"
              "    Station        one of: W1, W2, Ask\n"
              "    Hold Time      0 to 600, default 0\n");
    EXPECT_EQ(run("catalogue objects syr @set"), 0);
    EXPECT_EQ(out, "10uL   SYRINGE  Min=1, Max=10\n100uL  SYRINGE  Min=10, Max=100\n");
    EXPECT_EQ(run("catalogue names @set --json"), 0);
    EXPECT_EQ(out, "{\"name\":\"SL.Vol\",\"category\":\"UL\"}\n{\"name\":\"Ask\",\"category\":\"FREE TEXT\"}\n");
    EXPECT_EQ(run("catalogue macros nothing @set"), 1);
    EXPECT_EQ(err, "vrnmethod: no macros with 'nothing'\n");
    EXPECT_EQ(run("catalogue macros --syringe 7uL @set"), 2);
    EXPECT_EQ(err, "vrnmethod: there is no syringe '7uL'; there are: 10uL, 100uL\n");
}

TEST_F(CheckTest, DiffMatchesStepsAndNames) {
    writeMethod("old.xml", {"WASH(5,W1,0)", "COUNT(3)", "NOTE(x)", "COUNT(4)"});
    EXPECT_EQ(run("diff @old.xml @old.xml"), 0);
    EXPECT_THAT(out, IsEmpty());
    writeSet("2021", {"Station;WASH_STATION", "Volume(UL);5;1;100", "Speed;1;1;9"});
    write("new.xml", text::encodeXmlFile(signedMethod({"COUNT(3)", "WASH(W2,5,7)", "COUNT(5)", "NOTE(y)"}, "100uL",
                                                      {"First", "More"})));
    EXPECT_EQ(run("diff @old.xml @new.xml"), 1);
    EXPECT_EQ(out,
              "                        old.xml                             new.xml\n"
              "Syringe                 10uL                                100uL\n"
              "Description                                                 More\n"
              "+ COUNT                                                     step 1\n"
              "    Number                                                  3\n"
              "~ WASH                  step 1                              step 2\n"
              "    Station             W1                                  W2\n"
              "    Hold Time           0\n"
              "    Speed                                                   7\n"
              "~ COUNT                 step 2                              step 3\n"
              "    Number              3                                   5\n"
              "~ NOTE                  step 3                              step 4\n"
              "    Text                x                                   y\n"
              "- COUNT                 step 4\n"
              "    Number              4\n"
              "Cycle date              2020                                2020-01-01T00:00:00\n"
              "Cycle WASH: parameters  Volume(UL);SYR.Min;SYR.Min;SYR.Max  Station;WASH_STATION\n"
              "                        Station;WASH_STATION                Volume(UL);5;1;100\n"
              "                        Hold Time;0;0;600                   Speed;1;1;9\n"
              "Cycle order             WASH, COUNT, NOTE                   COUNT, WASH, NOTE\n"
              "@TimingInformationID    " +
                  beginOfTimingId("old.xml") + "…    " + beginOfTimingId("new.xml") + "…\n" +
                  "ATOMLINE/ATOM           SET_BUSY(Hold Time)\n");
}

// Whoever signs a file that was changed outside the editor relies on this.
TEST_F(CheckTest, DiffTellsWhateverDiffers) {
    // Neither signature matches, which is no difference.
    writeText("old.xml",
              text::replacedAll(signedMethod({"WASH(5,W1,0)", "COUNT(3)"}), "<SignatureValue>", "<SignatureValue>A"));
    const auto diff = [this](const std::string& from, const std::string& to) {
        const auto old = text("old.xml");
        const auto changed = text::replacedAll(old, from, to);
        EXPECT_NE(changed, old) << from;
        writeText("new.xml", changed);
        run("diff @old.xml @new.xml --json");
        std::vector<std::string> found;
        const auto json = Json::parse(out);
        for (const auto* const part : {"head", "cycles", "rest"}) {
            for (const auto& difference : json.at(part)) {
                found.push_back(difference.at("name").get<std::string>() + " " + difference.at("old").dump() + " " +
                                difference.at("new").dump());
            }
        }
        EXPECT_EQ(run("diff @old.xml @new.xml"), found.empty() && json.at("steps").empty() ? 0 : 1);
        EXPECT_EQ(out.empty(), found.empty() && json.at("steps").empty());
        return found;
    };
    EXPECT_THAT(diff("<ATOM>SET_BUSY(Hold Time)", "<ATOM>GO"),
                ElementsAre(R"~(ATOMLINE/ATOM "SET_BUSY(Hold Time)" "GO")~"));
    EXPECT_THAT(diff("<UDON/>", "<UDON>SL.X</UDON>"), ElementsAre(R"~(SLCONFIG/OBJECT/UDON "" "SL.X")~"));
    EXPECT_THAT(diff("<Arguments/>", "<Arguments><OBJECT/></Arguments>"), ElementsAre(R"~(Arguments/OBJECT null "")~"));
    EXPECT_THAT(diff("</MacroData>", "<MacroName>[MACRO X]</MacroName><MacroLine>Y</MacroLine></MacroData>"),
                ElementsAre(R"~(X null "Y")~"));
    EXPECT_THAT(diff("<MacroName><![CDATA[[MACRO COUNT]]]></MacroName>", "<MacroName>COUNT</MacroName>"),
                ElementsAre(R"~(Macros/MacroData/MacroName[2] null "COUNT")~"));
    EXPECT_THAT(diff("<Method ", "<Method by='me' "), ElementsAre(R"~(@by null "me")~"));
    EXPECT_THAT(diff(" LastModifiedTimestamp=\"2020\"", ""), ElementsAre(R"~(WASH: date "2020" null)~"));
    EXPECT_THAT(
        diff("<MacroValues>COUNT", "<MacroValues a=\"b\">COUNT"),
        ElementsAre(R"~(Macros/MacroVariable/MacroValues[2] null "<MacroValues a=\"b\">COUNT(3)</MacroValues>")~"));
    EXPECT_THAT(diff("<Syringe>", "<!-- x --><Note/><Syringe>"),
                ElementsAre(R"~(comment() null " x ")~", R"~(Note null "")~"));
    EXPECT_THAT(diff("<ATOMLINE><ATOM>SET_BUSY(Hold Time)</ATOM></ATOMLINE>", ""),
                ElementsAre(R"~(ATOMLINE "<ATOMLINE><ATOM>SET_BUSY(Hold Time)</ATOM></ATOMLINE>" null)~"));
    const auto version = element("VERSION", currentVersion);
    EXPECT_THAT(diff("<Arguments/>" + version, version + "<Arguments/>"),
                ElementsAre(testing::StartsWith(R"~(Arguments (place) "child )~")));
    EXPECT_THAT(diff("COUNT(3)", "COUNT(3) x"), IsEmpty()) << "a step with all that it says is among the steps";
    EXPECT_EQ(out,
              "          old.xml   new.xml\n"
              "~ COUNT   step 2    step 2\n"
              "    text  COUNT(3)  COUNT(3) x\n");
    EXPECT_THAT(diff("<SignatureValue>", "<SignatureValue>A"), IsEmpty()) << "whether it matches, verify tells";
}

TEST_F(CheckTest, DiffPrintsTheEditorsAuditTrail) {
    writeMethod("old.xml", {"WASH(5,W1,0)"});
    writeMethod("new.xml", {"WASH(6,W1,7)"}, "100uL");
    EXPECT_EQ(run("diff --audit @set @old.xml @new.xml"), 2) << "6 is not valid with the new syringe";
    EXPECT_THAT(err, HasSubstr("vrnmethod: new.xml: the editor does not take it as it is: "));
    writeMethod("new.xml", {"WASH(60,W1,7)"}, "100uL");
    EXPECT_EQ(run("diff --audit @set @old.xml @new.xml"), 1);
    EXPECT_EQ(out,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><MethodAuditTrail><Syringe size=\"100uL\"/><MethodParameters>"
              "<Parameter name=\"Volume(UL)\" value=\"60\"/><Parameter name=\"Hold Time\" value=\"7\"/>"
              "</MethodParameters></MethodAuditTrail>\n");
    EXPECT_EQ(run("diff --audit @set @old.xml @old.xml"), 0);
}

}  // namespace
}  // namespace vrn::test
