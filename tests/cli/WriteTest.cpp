// The commands that write: sign, update, convert, edit.
#include <gmock/gmock.h>

#include "cli/ToolFixture.h"
#include "text/Unicode.h"

namespace vrn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class WriteTest : public ToolFixture {
  protected:
    void changeText(const std::string& name, const std::string& from, const std::string& to) {
        write(name, text::encodeXmlFile(text::replacedAll(text(name), from, to)));
    }
    int edit(const std::string& script, const std::string& options = {}) {
        return run("edit @m.xml --script - @set" + (options.empty() ? "" : " " + options), script);
    }
};

TEST_F(WriteTest, SignTakesWhatCheckLetsPass) {
    writeMethod("m.xml", {"COUNT(3)"});
    const auto intact = read("m.xml");
    EXPECT_EQ(run("sign @set @m.xml"), 0);
    EXPECT_EQ(out, "m.xml: is signed already\n");
    EXPECT_EQ(read("m.xml"), intact);
    write("m.xml", text::encodeXmlFile(text("m.xml").substr(0, text("m.xml").find("<Signature")) + "</Method>"));
    const auto before = read("m.xml");
    EXPECT_EQ(run("sign @set --dry-run @m.xml"), 0);
    EXPECT_EQ(out, "m.xml: would be signed\n");
    EXPECT_EQ(run("sign @set --dry-run --json @m.xml"), 0);
    EXPECT_EQ(out, "{\"file\":\"m.xml\",\"status\":\"signed\",\"dryRun\":true}\n");
    EXPECT_EQ(read("m.xml"), before);
    EXPECT_EQ(run("sign @set --backup .bak @m.xml"), 0);
    EXPECT_EQ(run("verify @m.xml"), 0);
    EXPECT_EQ(read("m.xml.bak"), before);
    EXPECT_EQ(read("m.xml"), intact);
}

TEST_F(WriteTest, ASignatureThatDoesNotMatchIsReplacedByForceAlone) {
    writeMethod("m.xml", {"COUNT(3)"});
    write("trusted.xml", read("m.xml"));
    changeText("m.xml", "COUNT(3)", "COUNT(4)");
    const auto changed = read("m.xml");
    EXPECT_EQ(run("sign @set @m.xml"), 1);
    EXPECT_THAT(err, HasSubstr("m.xml: not signed: its signature does not match: look at what was changed with diff"));
    EXPECT_EQ(run("sign @set --json @m.xml"), 1);
    EXPECT_THAT(out, HasSubstr(R"("status":"refused","message":"its signature does not match)"));
    EXPECT_EQ(read("m.xml"), changed);
    EXPECT_EQ(run("diff @trusted.xml @m.xml"), 1);
    EXPECT_THAT(out, HasSubstr("Signature   intact       changed\n"));
    EXPECT_EQ(run("sign @set --force --dry-run --json @m.xml"), 0);
    EXPECT_EQ(out, "{\"file\":\"m.xml\",\"status\":\"signed-anew\",\"dryRun\":true}\n");
    EXPECT_EQ(run("sign --force @m.xml"), 0);
    EXPECT_EQ(out, "m.xml: signature did not match; signed anew\n");
    EXPECT_EQ(run("verify @m.xml"), 0);
    EXPECT_THAT(steps("m.xml"), ElementsAre("COUNT(4)"));
}

TEST_F(WriteTest, SignRefusesErrorsUnlessForced) {
    writeMethod("m.xml", {"COUNT(3)"});
    write("m.xml", text::encodeXmlFile(text::replacedAll(text("m.xml").substr(0, text("m.xml").find("<Signature")),
                                                         "COUNT(3)", "COUNT(99)") +
                                       "</Method>"));
    const auto before = read("m.xml");
    EXPECT_EQ(run("sign @set @m.xml"), 1);
    EXPECT_THAT(err, HasSubstr("m.xml: not signed: check finds errors"));
    EXPECT_THAT(err, HasSubstr("step 1 COUNT, Number: '99' is out of range: 1 to 20  [value-out-of-range]"));
    EXPECT_EQ(read("m.xml"), before);
    EXPECT_EQ(run("sign --force @m.xml"), 0);
    EXPECT_EQ(run("verify @m.xml"), 0);
    changeText("m.xml", "<VERSION>" + currentVersion, "<VERSION>03");
    EXPECT_EQ(run("sign --force @m.xml"), 1);
    EXPECT_THAT(err, HasSubstr("it is not of version " + currentVersion + ": use convert"));
}

TEST_F(WriteTest, UpdateKeepsValuesByNameAndSigns) {
    writeMethod("m.xml", {"WASH(5,W2,30)", "COUNT(7)"});
    EXPECT_EQ(run("update @set @m.xml"), 0);
    EXPECT_EQ(out, "m.xml: is up to date\n");
    writeSet("2021", {"Speed;4;1;9", "Station;WASH_STATION", "Volume(UL);2;1;4"});
    EXPECT_EQ(run("update @set --dry-run @m.xml"), 1);
    EXPECT_EQ(out,
              "m.xml: would be updated\n"
              "  added         step 1 WASH, Speed = '4'\n"
              "  dropped       step 1 WASH, Hold Time, was '30'\n"
              "  error    step 1 WASH, Volume: '5' is out of range: 1 to 4  [value-out-of-range]\n"
              "           fix: set a value in the range or a configured name with: vrnmethod edit\n");
    EXPECT_THAT(steps("m.xml"), ElementsAre("WASH(5,W2,30)", "COUNT(7)"));
    EXPECT_EQ(run("update @set @m.xml"), 1);
    EXPECT_THAT(steps("m.xml"), ElementsAre("WASH(4,W2,5)", "COUNT(7)"));
    EXPECT_EQ(run("verify @m.xml"), 0);
    EXPECT_EQ(run("update @set @m.xml"), 0);
    EXPECT_EQ(out, "m.xml: is up to date\n");
}

TEST_F(WriteTest, UpdateLosesNothing) {
    writeMethod("m.xml", {"WASH(5,W2,30)", "NOTE(x)"});
    const auto before = read("m.xml");
    writeSet("2021");
    write("set/macros.xml", text::replacedAll(read("set/macros.xml"), ">NOTE<", ">REMARK<"));
    EXPECT_EQ(run("update @set @m.xml"), 1);
    EXPECT_EQ(
        out,
        "m.xml: not written: something would be lost\n"
        "  error    step 2 NOTE: the catalogue has no cycle 'NOTE'  [cycle-unknown]\n"
        "           fix: put the cycle back into the catalogue, or replace or delete the step with: vrnmethod edit\n");
    write("changed.xml", before);
    changeText("changed.xml", "NOTE(x)", "NOTE(y)");
    EXPECT_EQ(run("update @set --json @changed.xml"), 1);
    EXPECT_THAT(out, HasSubstr(R"("status":"refused","message":"its signature does not match")"));
    EXPECT_EQ(read("m.xml"), before);
}

TEST_F(WriteTest, ConvertBringsOldVersionsToToday) {
    const fs::path samples = VRN_SOURCE_DIR "/samples/instrument";
    for (const auto* const name : {"version-02.xml", "version-03.xml", "no-version.xml", "signed.xml"}) {
        fs::copy_file(samples / "methods" / name, path("methods") / name);
    }
    const auto current = read("methods/signed.xml");
    write("methods/version-70.xml", current);
    changeText("methods/version-70.xml", "<VERSION>" + currentVersion, "<VERSION>70");
    fs::remove_all(path("set"));
    fs::copy(samples, path("set"));
    EXPECT_EQ(run("convert @set @methods --jobs 2"), 1);
    EXPECT_EQ(out, withCurrentVersion("methods/no-version.xml: converted to version @VERSION@\n"
                                      "methods/signed.xml: is of version @VERSION@\n"
                                      "methods/version-02.xml: converted to version @VERSION@\n"
                                      "methods/version-03.xml: converted to version @VERSION@\n"
                                      "methods/version-70.xml: not written: its version is not known\n"));
    EXPECT_EQ(read("methods/signed.xml"), current);
    for (const auto* const name : {"methods/version-02.xml", "methods/version-03.xml", "methods/no-version.xml"}) {
        EXPECT_EQ(text(name), text("methods/signed.xml")) << name;
    }
}

TEST_F(WriteTest, StandardInputGoesToStandardOutput) {
    writeMethod("m.xml", {"WASH(5,W2,30)"});
    const auto method = read("m.xml");
    writeSet("2021");
    EXPECT_EQ(run("update @set -", method), 0);
    EXPECT_EQ(err, "(standard input): updated\n");
    EXPECT_THAT(text::decodeXmlFile(out), HasSubstr("LastModifiedTimestamp=\"2021\""));
    const auto updated = out;
    EXPECT_EQ(run("update @set -", updated), 0);
    EXPECT_EQ(out, updated) << "what is up to date passes through";
    EXPECT_EQ(run("sign @set -", updated), 0);
    EXPECT_EQ(out, updated);
}

TEST_F(WriteTest, EditWorksLikeAUserAtTheWindow) {
    writeMethod("m.xml", {"COUNT(3)", "WASH(5,W1,0)"});
    EXPECT_EQ(edit("set 2 Volume=6 \"Hold Time\"=7 Station=W2\n"
                   "insert NOTE before 1 Text=\"at first\"\n"
                   "insert COUNT after 2\n"
                   "insert WASH Volume=SL.Vol Station=Ask\n"
                   "replace 2 COUNT Number=20\n"
                   "delete 3\n"
                   "description \"One & all\" Two\n",
                   "--audit @audit.xml --backup ~"),
              0)
        << err;
    EXPECT_EQ(out, "m.xml: edited: 7 edits\n");
    EXPECT_THAT(steps("m.xml"), ElementsAre("NOTE(at first)", "COUNT(20)", "WASH(6,W2,7)", "WASH(SL.Vol,Ask,0)"));
    EXPECT_THAT(steps("m.xml~"), ElementsAre("COUNT(3)", "WASH(5,W1,0)"));
    EXPECT_EQ(method::descriptionOf(parsed(text("m.xml"))), "One & all\r\nTwo\r\n");
    EXPECT_EQ(
        read("audit.xml"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><MethodAuditTrail><Cycle name=\"NOTE\"/>"
        "<MethodParameters><Parameter name=\"Text\" value=\"at first\"/></MethodParameters></MethodAuditTrail>\n");
    EXPECT_EQ(run("verify @m.xml"), 0);
}

TEST_F(WriteTest, EditIsAllOrNothing) {
    writeMethod("m.xml", {"COUNT(3)", "WASH(5,W1,0)"});
    const auto before = read("m.xml");
    const auto expectFault = [&](const std::string& script, const std::string& what) {
        EXPECT_EQ(edit("delete 1\n" + script, "--audit @audit.xml"), 2);
        EXPECT_EQ(err, "vrnmethod: (standard input):2" + what + "\n");
        EXPECT_EQ(read("m.xml"), before);
        EXPECT_FALSE(fs::exists(path("audit.xml")));
    };
    expectFault("set 1 Volume=11", ": '11' is refused for 'Volume': Range: 1 to 10 Default: 1");
    expectFault("set 1 Station=W3", ": 'W3' is refused for 'Station': WASH_STATION");
    expectFault("set 1 Vol=1", ": there is no parameter 'Vol'; there are: Volume, Station, Hold Time");
    expectFault("set 2 Volume=1", ": there is no step 2; the method has 1");
    expectFault("insert GONE", ": the catalogue has no macro 'GONE'");
    expectFault("insert COUNT after 3", ": there is no step 3; the method has 1");
    expectFault("insert COUNT before 2", ": there is no step 2; the method has 1");
    expectFault("syringe 7uL", ": there is no syringe '7uL'; there are: 10uL, 100uL");
    expectFault("twist", ":1: 'twist' is no edit; there are insert, replace, delete, set, syringe and description");
    EXPECT_EQ(edit("delete 1\ndelete 1"), 2);
    EXPECT_EQ(err, "vrnmethod: m.xml: nothing was written: the method has no step\n");
    EXPECT_EQ(edit("syringe 100uL"), 1) << "the volume is below the new syringe's range";
    EXPECT_THAT(out, HasSubstr("not written: check would find errors"));
    EXPECT_EQ(read("m.xml"), before);
    EXPECT_EQ(edit("syringe 100uL\nset 2 Volume=50"), 0) << err;
    EXPECT_THAT(steps("m.xml"), ElementsAre("COUNT(3)", "WASH(50,W1,0)"));
}

TEST_F(WriteTest, EditChangesNothingThatTheScriptDoesNotName) {
    writeMethod("m.xml", {"WASH(50,W1,99999)", "COUNT(3)"}, "100uL");
    EXPECT_EQ(edit("set 1 Volume=60"), 2);
    EXPECT_EQ(err,
              "vrnmethod: (standard input):1: the step's 'Hold Time' holds '99999', which is not valid: set it too\n");
    EXPECT_EQ(edit("set 1 Volume=60 \"Hold Time\"=9"), 0) << err;
    EXPECT_THAT(steps("m.xml"), ElementsAre("WASH(60,W1,9)", "COUNT(3)"));
    changeText("m.xml", "COUNT(3)", "COUNT(4)");
    EXPECT_EQ(edit("delete 1"), 2);
    EXPECT_THAT(err, HasSubstr("m.xml: cannot be edited: the signature does not match"));
}

TEST_F(WriteTest, NoAuditTrailOfAnEditThatWasNotWritten) {
    writeMethod("m.xml", {"COUNT(3)"});
    fs::permissions(path("m.xml"), fs::perms(0444));
    EXPECT_EQ(edit("set 1 Number=4", "--audit @audit.xml"), 2);
    EXPECT_EQ(err, "vrnmethod: m.xml: is read-only\n");
    EXPECT_FALSE(fs::exists(path("audit.xml")));
    fs::permissions(path("m.xml"), fs::perms(0644));
    EXPECT_EQ(edit("set 1 Number=4", "--audit @methods"), 2);
    EXPECT_EQ(err, "vrnmethod: methods: is a folder\n");
    EXPECT_THAT(steps("m.xml"), ElementsAre("COUNT(3)"));
}

TEST_F(WriteTest, TheAuditTrailDestroysNothingThatTheCallUses) {
    writeMethod("m.xml", {"COUNT(3)"});
    write("script.txt", "set 1 Number=4");
    fs::create_symlink("m.xml", path("link.xml"));
    fs::create_hard_link(path("m.xml"), path("hard.xml"));
    fs::create_symlink("m.xml~", path("later.xml"));
    const auto method = read("m.xml");
    const auto macros = read("set/macros.xml");
    for (const auto* const audit :
         {"m.xml", "methods/../m.xml", "link.xml", "hard.xml", "m.xml~", "later.xml", "script.txt", "set/macros.xml"}) {
        EXPECT_EQ(run("edit @m.xml --script @script.txt @set --backup ~ --audit " + std::string(audit)), 2) << audit;
        EXPECT_THAT(err, StartsWith("vrnmethod: " + std::string(audit) + ": ")) << audit;
    }
    EXPECT_EQ(read("m.xml"), method);
    EXPECT_EQ(read("script.txt"), "set 1 Number=4");
    EXPECT_EQ(read("set/macros.xml"), macros);
    EXPECT_FALSE(fs::exists(path("m.xml~")));
}

TEST_F(WriteTest, ReportsStayOutOfTheMethod) {
    writeMethod("m.xml", {"COUNT(3)"});
    writeMethod("other.xml", {"COUNT(3)"});
    changeText("m.xml", "COUNT(3)", "COUNT(4)");
    const auto changed = read("m.xml");
    EXPECT_EQ(run("sign --force - @other.xml nothing.xml --json", changed), 2);
    EXPECT_EQ(method::stepTexts(parsed(text::decodeXmlFile(out))), std::vector<std::string>{"COUNT(4)"});
    EXPECT_THAT(err, HasSubstr(R"({"file":"other.xml","status":"unchanged"})"));
    EXPECT_THAT(err, HasSubstr(R"({"file":"nothing.xml","error":)"));
    EXPECT_EQ(run("convert @set - --json", "<Method>"), 2);
    EXPECT_EQ(out, "");
}

TEST_F(WriteTest, AScriptInUtf16) {
    writeMethod("m.xml", {"NOTE(x)"});
    std::string script("\xFF\xFE");
    for (const char16_t unit : text::toUtf16("set 1 Text=\xC3\xA9\xF0\x9F\x98\x80")) {
        script += {static_cast<char>(unit & 0xFFU), static_cast<char>(unit >> 8U)};
    }
    EXPECT_EQ(edit(script), 0) << err;
    EXPECT_THAT(steps("m.xml"), ElementsAre("NOTE(\xC3\xA9\xF0\x9F\x98\x80)"));
}

TEST_F(WriteTest, TheAuditTrailMayGoToTheOutput) {
    writeMethod("m.xml", {"COUNT(3)"});
    EXPECT_EQ(edit("set 1 Number=4", "--audit -"), 0);
    EXPECT_THAT(out, StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?><MethodAuditTrail"));
    EXPECT_EQ(err, "m.xml: edited: 1 edit\n") << "the report makes way";
    EXPECT_FALSE(fs::exists(path("-")));
}

}  // namespace
}  // namespace vrn::test
