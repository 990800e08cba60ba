#include <ostream>

#include "audit/AuditTrail.h"
#include "audit/MethodDiff.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Names.h"
#include "hosts/cli/Output.h"
#include "text/Lists.h"

namespace vrn::cli {

using audit::Difference;
using audit::differenceOf;
using audit::MethodDiff;
using audit::StepDifference;

namespace {

struct DiffArguments {
    SetArguments set;
    std::string before;
    std::string after;
    bool audit = false;
    bool json = false;
};

class DiffText {
  public:
    explicit DiffText(const Style& style) : style_(style) {}

    std::string text(const DiffArguments& arguments, const MethodDiff& diff) {
        table_.add({"", style_.bold(displayName(arguments.before)), style_.bold(displayName(arguments.after))});
        for (const auto& difference : diff.head) {
            addLines(difference, "");
        }
        for (const auto& step : diff.steps) {
            addStep(step);
        }
        for (const auto& difference : diff.cycles) {
            addLines(difference, "Cycle ");
        }
        return table_.text();
    }

  private:
    // Texts of several lines stand side by side, equal lines left out at both ends.
    void addLines(const Difference& difference, const std::string& prefix) {
        auto before = text::split(difference.before.value_or(""), "\n");
        auto after = text::split(difference.after.value_or(""), "\n");
        while (!before.empty() && !after.empty() && before.back() == after.back()) {
            before.pop_back();
            after.pop_back();
        }
        std::size_t first = 0;
        while (first < std::min(before.size(), after.size()) && before[first] == after[first]) {
            ++first;
        }
        auto label = prefix + difference.name;
        for (auto i = first; i < std::max(before.size(), after.size()); ++i) {
            table_.add({printable(label), i < before.size() ? style_.red(printable(before[i])) : "",
                        i < after.size() ? style_.green(printable(after[i])) : ""});
            label.clear();
        }
    }

    void addStep(const StepDifference& step) {
        const auto number = [](std::size_t value) { return "step " + std::to_string(value); };
        if (!step.before) {
            table_.add({"+ " + printable(step.cycle), "", style_.green(number(*step.after))});
        } else if (!step.after) {
            table_.add({"- " + printable(step.cycle), style_.red(number(*step.before)), ""});
        } else {
            table_.add({"~ " + printable(step.cycle), number(*step.before), number(*step.after)});
        }
        for (const auto& value : step.values) {
            table_.add({"    " + printable(value.name), style_.red(printable(value.before.value_or(""))),
                        style_.green(printable(value.after.value_or("")))});
        }
    }

    Style style_;
    Table table_;
};

Json differenceJson(const Difference& difference) {
    const auto text = [](const std::optional<std::string>& value) { return value ? Json(*value) : Json(); };
    return {{"name", difference.name}, {"old", text(difference.before)}, {"new", text(difference.after)}};
}

Json differencesJson(const std::vector<Difference>& differences) {
    Json all = Json::array();
    for (const auto& difference : differences) {
        all.push_back(differenceJson(difference));
    }
    return all;
}

Json diffJson(const DiffArguments& arguments, const MethodDiff& diff) {
    Json steps = Json::array();
    for (const auto& step : diff.steps) {
        const auto number = [](const std::optional<std::size_t>& value) { return value ? Json(*value) : Json(); };
        steps.push_back({{"cycle", step.cycle},
                         {"old", number(step.before)},
                         {"new", number(step.after)},
                         {"values", differencesJson(step.values)}});
    }
    return {{"old", displayName(arguments.before)},
            {"new", displayName(arguments.after)},
            {"head", differencesJson(diff.head)},
            {"steps", std::move(steps)},
            {"cycles", differencesJson(diff.cycles)}};
}

ExitStatus printDiff(const Console& console, const DiffArguments& arguments) {
    const auto before = readXmlFile(arguments.before, console, "Method");
    const auto after = readXmlFile(arguments.after, console, "Method");
    const auto diff = differenceOf(method::contentOf(before.document), method::contentOf(after.document));
    if (arguments.json) {
        console.out << jsonLine(diffJson(arguments, diff));
    } else if (!diff.empty()) {
        console.out << DiffText(Style(console.outHasColour)).text(arguments, diff);
    }
    return diff.empty() ? ExitStatus::Well : ExitStatus::Findings;
}

ExitStatus printAudit(const Console& console, const DiffArguments& arguments) {
    const auto set = readSet(arguments.set, console);
    const auto before = readXmlFile(arguments.before, console, "Method");
    const auto after = readXmlFile(arguments.after, console, "Method");
    Engine engine(set);
    engine.load(after.text);
    for (const auto& report : engine.takeReports()) {
        throw Fault(displayName(arguments.after) + ": the editor does not take it as it is: " + oneLine(report));
    }
    const auto audit = audit::AuditTrailAgainst(engine.state(), before.document);
    for (const auto& report : engine.takeReports()) {
        console.err << "vrnmethod: the audit trail is not complete: " << oneLine(report) << "\n";
    }
    if (arguments.json) {
        console.out << jsonLine(
            {{"old", displayName(arguments.before)}, {"new", displayName(arguments.after)}, {"audit", audit}});
    } else {
        console.out << audit << "\n";
    }
    const bool nothing = text::contains(audit, "<MethodAuditTrail/>");
    return nothing ? ExitStatus::Well : ExitStatus::Findings;
}

}  // namespace

void addDiff(CLI::App& tool, Session& session) {
    Command command(tool, "diff", "Tell what changed between two methods");
    const auto arguments = std::make_shared<DiffArguments>();
    command.option("OLD", arguments->before, "The method before").required().metavar("");
    command.option("NEW", arguments->after, "The method after; either may be - for standard input")
        .required()
        .metavar("");
    command.flag("--audit", arguments->audit,
                 "Print the editor's audit trail document instead; needs the document set");
    command.flag("--json", arguments->json, "Print one JSON object");
    addSetOptions(command, arguments->set);
    command.footer(
        "Steps are matched by their cycles, values by the names of their parameters. \"~\" marks a step that\n"
        "changed, \"+\" one that is new, \"-\" one that is gone. Exit status 1 when there is a difference.\n\n"
        "Examples:\n"
        "  vrnmethod diff method.xml.bak method.xml\n"
        "  git show HEAD:method.xml | vrnmethod diff - method.xml\n"
        "  vrnmethod diff --audit --set instrument/ old.xml new.xml");
    command.callback([arguments, &session] {
        session.status =
            arguments->audit ? printAudit(session.console, *arguments) : printDiff(session.console, *arguments);
    });
}

}  // namespace vrn::cli
