// Whoever does what a finding names as its fix is rid of the finding.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <set>

#include "cli/ToolFixture.h"
#include "hosts/cli/Finding.h"

namespace vrn::test {
namespace {

using cli::Json;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Case {
    std::string code;
    std::string from;  ///< a piece of an intact method, and what it becomes
    std::string to;
    std::string script = {};  ///< for a fix by edit
};

class FixTest : public ToolFixture {
  protected:
    static constexpr const char* name = "m.xml";

    /// An intact method with a piece replaced. What is not about the signature gets one that matches.
    void writeBroken(const Case& broken) {
        const auto intact = signedMethod({"WASH(5,W1,0)", "COUNT(3)"});
        auto text = text::replacedAll(intact, broken.from, broken.to);
        EXPECT_NE(text, intact) << broken.from;
        if (broken.code == "signature-missing") {
            text = text.substr(0, text.find("<Signature")) + "</Method>";
        }
        writeText(name, text);
        if (!broken.code.starts_with("signature-")) {
            run("sign --force @m.xml");
        }
    }
    /// Codes of what is found, the fix of the first one in `fix`.
    std::vector<std::string> found() {
        run("check @set --json @m.xml");
        const auto findings = Json::parse(out).at("findings");
        fix = findings.empty() ? "" : findings.front().value("fix", "");
        std::vector<std::string> codes;
        for (const auto& finding : findings) {
            codes.push_back(finding.at("code"));
        }
        return codes;
    }
    /// Does what the last command in the fix says.
    int apply(const std::string& script) {
        constexpr std::string_view tool = "vrnmethod ";
        const auto at = fix.rfind(tool);
        EXPECT_NE(at, std::string::npos) << fix;
        const auto rest = fix.substr(at + tool.size());
        const auto command = rest.substr(0, rest.find_first_of(",;"));
        return command == "edit" ? run("edit @set --script - @m.xml", script) : run(command + " @set @m.xml");
    }

    std::string fix;
};

TEST_F(FixTest, TheFixThatAFindingNamesMendsIt) {
    const std::string count =
        "<MacroName><![CDATA[[MACRO COUNT]]]></MacroName><MacroLine><![CDATA[Number;3;1;20]]></MacroLine>";
    const std::vector<Case> cases{
        {"signature-missing", "First", "Second"},
        {"signature-invalid", "COUNT(3)", "COUNT(4)"},
        {"syringe-unknown", "10uL", "7uL", "syringe 10uL"},
        {"sequence-empty", "<MacroValues>WASH(5,W1,0)</MacroValues><MacroValues>COUNT(3)</MacroValues>", "",
         "insert COUNT"},
        {"step-malformed", "COUNT(3)", "COUNT 3", "replace 2 COUNT Number=7"},
        {"step-malformed", "WASH(5,W1,0)", ")(", "description X\ndelete 1"},
        {"cycle-unknown", "COUNT(3)", "GONE(3)", "delete 2\ninsert COUNT"},
        {"cycle-unknown", "WASH(5,W1,0)", "GONE(3)", "replace 1 NOTE Text=x\nset 2 Number=9"},
        {"value-not-a-number", "COUNT(3)", "COUNT(x)", "set 2 Number=4"},
        {"value-out-of-range", "COUNT(3)", "COUNT(99)", "set 2 Number=4"},
        {"value-not-in-list", "W1", "W9", "set 1 Station=W2"},
        {"name-unknown", "WASH(5", "WASH(SL.Gone", "set 1 Volume=SL.Vol"},
        {"value-missing", "WASH(5,W1,0)", "WASH(5,W1)", "set 1 \"Hold Time\"=5"},
        {"value-surplus", "COUNT(3)", "COUNT(3,4)"},
        {"cycle-outdated", "Number;3;1;20", "Number;3;1;30"},
        {"cycle-outdated", "Timestamp=\"2020\"", "Timestamp=\"2019\""},
        {"cycle-outdated", "[[MACRO WASH]]", "[WASH]"},
        {"cycles-differ", count, ""},
        {"cycles-differ", "<MacroData>", "<MacroData>" + count},
        {"cycles-differ", "</MacroData>", "<MacroName>[MACRO NOTE]</MacroName><MacroLine>Text</MacroLine></MacroData>"},
        {"atoms-differ", "SET_BUSY(Hold Time)", "SET_BUSY(Volume)"},
        {"atoms-differ", "<ATOM>SET_BUSY(Hold Time)</ATOM>", "<ATOM>SET_BUSY(Hold Time)</ATOM><X/>"},
        {"names-differ", "<UDON/>", "<UDON>SL.Vol</UDON>"},
        {"names-differ", "<Arguments/>", "<Arguments><OBJECT/></Arguments>"},
    };
    std::set<std::string_view> left{"signature-missing"};
    for (const auto& kind : cli::findingKinds()) {
        left.insert(kind.name);
    }
    for (const auto& each : cases) {
        writeBroken(each);
        EXPECT_THAT(found(), Contains(each.code)) << each.to;
        EXPECT_EQ(apply(each.script), 0) << each.code << ", " << each.to << ": " << fix << "\n" << out << err;
        EXPECT_THAT(found(), IsEmpty()) << each.code << ", " << each.to;
        left.erase(each.code);
    }
    // Old versions have a test of their own; for the others no command is named.
    EXPECT_THAT(left, ElementsAre("catalogue-fault", "editor-report", "version-old", "version-unsupported"));
}

TEST_F(FixTest, OneAfterTheOtherWhereThereAreSeveral) {
    const Case broken{"signature-missing", "<MacroValues>COUNT(3)</MacroValues>",
                      "<MacroValues>COUNT(99,1)</MacroValues><MacroValues>GONE(1)</MacroValues>"};
    writeBroken(broken);
    EXPECT_THAT(found(), ElementsAre("signature-missing", "value-out-of-range", "value-surplus", "cycle-unknown"));
    EXPECT_EQ(apply(""), 0) << fix << err;
    EXPECT_THAT(found(), ElementsAre("value-out-of-range", "value-surplus", "cycle-unknown"));
    EXPECT_EQ(apply("delete 3\nreplace 2 COUNT Number=9"), 0) << fix << err;
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(FixTest, NothingIsNamedThatNoCommandDoes) {
    writeText(name,
              text::replacedAll(signedMethod({"COUNT(99)", "GONE(1)"}), "<VERSION>" + currentVersion, "<VERSION>70"));
    found();
    EXPECT_THAT(out, testing::Not(HasSubstr("vrnmethod")));
    writeText(name,
              "<Method><Macros><MacroVariable><MacroValues>COUNT(99)</MacroValues></MacroVariable></Macros></Method>");
    EXPECT_THAT(found(), Contains("version-old"));
    EXPECT_EQ(fix, "find an intact copy: methods of older versions are not signed any more");
}

TEST_F(FixTest, EditReplacesAndDeletesWhatTheEditorCannotRead) {
    const auto broken = signedMethod({"COUNT(3)", "WASH(5,W1,0)", "COUNT(4)", "COUNT(5)"});
    const auto edit = [&](const std::string& script) {
        writeText(name, text::replacedAll(text::replacedAll(broken, "COUNT(4)", "GONE(4)"), "COUNT(5)", "no step"));
        run("sign --force @m.xml");
        return run("edit @set --script - @m.xml", script);
    };
    EXPECT_EQ(edit("replace 3 COUNT Number=7\nsyringe 100uL\ndelete 1\ndelete 3\nset 1 Volume=50"), 0) << err;
    EXPECT_THAT(steps(name), ElementsAre("WASH(50,W1,0)", "COUNT(7)"));
    EXPECT_EQ(run("verify @m.xml"), 0);
    EXPECT_EQ(edit("replace 3 COUNT\ndelete 3\ndelete 3"), 0) << err;
    EXPECT_THAT(steps(name), ElementsAre("COUNT(3)", "WASH(5,W1,0)"));
    EXPECT_EQ(edit("delete 3\nset 1 Number=7"), 2);
    EXPECT_EQ(err,
              "vrnmethod: (standard input):2: before this, delete or replace what the editor cannot read: step 3: "
              "'no step' is not a cycle with its values in parentheses\n");
    EXPECT_EQ(edit("delete 3"), 2);
    EXPECT_EQ(err,
              "vrnmethod: m.xml: cannot be edited: step 3: 'no step' is not a cycle with its values in "
              "parentheses: delete or replace it\n");
    EXPECT_EQ(edit("delete 5"), 2);
    EXPECT_EQ(err, "vrnmethod: (standard input):1: there is no step 5; the method has 4\n");
}

}  // namespace
}  // namespace vrn::test
