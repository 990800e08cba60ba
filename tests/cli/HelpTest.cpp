// What the tool says of itself: help, completions, the manual page, schemas.
#include <CLI/CLI.hpp>

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/ToolFixture.h"
#include "hosts/cli/Help.h"

namespace vrn::test {
namespace {

using ::testing::HasSubstr;

class HelpTest : public ToolFixture {
  protected:
    HelpTest() {
        cli::Call call{{in_, sink_, sink_}};
        CLI::App tool;
        cli::describeTool(tool, call);
        help = cli::helpOf(tool);
    }
    cli::ToolHelp help;

  private:
    std::istringstream in_;
    std::ostringstream sink_;
};

TEST_F(HelpTest, EveryCommandExplainsItselfByExample) {
    EXPECT_GE(help.commands.size(), 14U);
    EXPECT_EQ(run("--help"), 0);
    const auto overview = out;
    for (const auto& command : help.commands) {
        EXPECT_THAT(overview, HasSubstr(command.name));
        EXPECT_EQ(run(command.name + " --help"), 0);
        EXPECT_THAT(out, HasSubstr("Example")) << command.name;
        for (const auto& option : command.options) {
            EXPECT_FALSE(option.description.empty()) << command.name << " " << option.names.front();
        }
    }
    EXPECT_EQ(run("help verify"), 0);
    EXPECT_THAT(out, HasSubstr("vrnmethod verify [OPTIONS]"));
    EXPECT_EQ(run("fly"), 2);
    EXPECT_EQ(err, "vrnmethod: there is no command 'fly'\nTo read more: vrnmethod --help\n");
    EXPECT_EQ(run("chekc @set @m.xml"), 2);
    EXPECT_THAT(err, HasSubstr("there is no command 'chekc'; did you mean 'check'?\n"));
    EXPECT_EQ(run("help chekc"), 2);
    EXPECT_THAT(err, HasSubstr("did you mean 'check'?\n"));
    EXPECT_EQ(run("verify --jbos 2 @m.xml"), 2);
    EXPECT_EQ(
        err, "vrnmethod: there is no option '--jbos'; did you mean '--jobs'?\nTo read more: vrnmethod verify --help\n");
    EXPECT_EQ(run("check"), 2);
    EXPECT_EQ(err, "vrnmethod: METHOD is required\nTo read more: vrnmethod check --help\n");
    EXPECT_EQ(run("--version"), 0);
}

TEST_F(HelpTest, CallsAtFaultAreToldInPlainWords) {
    const auto told = [this](const std::string& call) {
        EXPECT_EQ(run(call), 2) << call;
        return err.substr(0, err.find('\n'));
    };
    EXPECT_EQ(told("check m.xml --set"), "vrnmethod: --set needs a value");
    EXPECT_EQ(told("check m.xml --set a --set b"), "vrnmethod: --set can be given only once");
    EXPECT_EQ(told("diff a b c"), "vrnmethod: 'c' is one argument too many");
    for (const std::string jobs : {"0", "257", "x", "-1", "99999999999999999999"}) {
        EXPECT_EQ(told("verify m.xml --jobs=" + jobs),
                  "vrnmethod: --jobs: '" + jobs + "' is not a whole number from 1 to 256");
    }
    EXPECT_EQ(told("check m.xml --format yaml"), "vrnmethod: --format: 'yaml' is none of: text, json, sarif");
}

TEST_F(HelpTest, CompletionsAndManualKnowEveryOption) {
    run("completion bash");
    const auto bash = out;
    run("completion zsh");
    const auto zsh = out;
    run("completion fish");
    const auto fish = out;
    run("man");
    for (const auto& command : help.commands) {
        EXPECT_THAT(bash, HasSubstr(command.name));
        EXPECT_THAT(zsh, HasSubstr("        '" + command.name + ":"));
        EXPECT_THAT(fish, HasSubstr("-a " + command.name + " "));
        EXPECT_THAT(out, HasSubstr(".SS " + command.name + "\n"));
        for (const auto& option : command.options) {
            for (const auto& name : option.names) {
                if (name.starts_with("--")) {
                    EXPECT_THAT(bash, HasSubstr(name));
                    EXPECT_THAT(zsh, HasSubstr(name));
                    EXPECT_THAT(fish, HasSubstr(" -l " + name.substr(2) + " "));
                    EXPECT_THAT(out, HasSubstr(text::replacedAll(name, "-", "\\-")));
                }
            }
        }
    }
    EXPECT_THAT(bash, HasSubstr("complete -F _vrnmethod vrnmethod\n"));
    EXPECT_THAT(zsh, HasSubstr("    _vrnmethod \"$@\"\n"));
    EXPECT_THAT(bash, HasSubstr("check:--format) mapfile -t COMPREPLY < <(compgen -W 'text json sarif'"));
    EXPECT_THAT(zsh, HasSubstr("[How to tell]:FORMAT:(text json sarif)"));
    EXPECT_THAT(fish, HasSubstr("-l format -d 'How to tell' -x -a 'text json sarif'"));
}

TEST_F(HelpTest, TheManualShowsNoMarkdown) {
    run("man");
    for (const auto& line : text::split(out, "\n")) {
        EXPECT_FALSE(text::contains(line, "`") || text::contains(line, "](") || text::contains(line, "**") ||
                     line.starts_with('#') || line.starts_with('|'))
            << line;
    }
    EXPECT_EQ(
        cli::roffParagraphs("# Title\n\nSee `a-b` and [the page](x.md#y) **now**.\n| k | v |\n|---|---|\n| `x` | 1 |\n"
                            "- one\n  more\n\n  as it stands\n"),
        ".PP\n\\fBTitle\\fR\n.PP\n.PP\nSee \\fBa\\-b\\fR and the page \\fBnow\\fR.\n"
        ".TP\n\\fBx\\fR\nv: 1\n.IP \\(bu 2\none\nmore\n.PP\n.nf\n  as it stands\n.fi\n.PP\n");
}

TEST_F(HelpTest, EveryTextComesAsJsonToo) {
    for (const std::string command : {"schema method", "key", "completion bash", "man"}) {
        ASSERT_EQ(run(command), 0);
        const auto text = out;
        ASSERT_EQ(run(command + " --json"), 0);
        EXPECT_EQ(cli::Json::parse(out), (cli::Json{{command.substr(0, command.find(' ')), text}}));
    }
}

TEST_F(HelpTest, SchemasAreDocuments) {
    for (const auto* const kind : {"macros", "objects", "config", "method", "audit"}) {
        EXPECT_EQ(run(std::string("schema ") + kind), 0);
        EXPECT_EQ(parsed(out).documentElement().name(), "xs:schema") << kind;
    }
}

}  // namespace
}  // namespace vrn::test
