#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "audit/AuditTrail.h"
#include "audit/MethodDiff.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/Output.h"
#include "method/SignatureState.h"
#include "text/Lists.h"
#include "text/Unicode.h"

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
        for (const auto& difference : diff.rest) {
            addRest(difference);
        }
        return table_.text();
    }

  private:
    // A value in a row of its own; what is there and empty is distinguished from what is not there.
    [[nodiscard]] static std::string cell(const std::optional<std::string>& value) {
        return !value ? std::string() : value->empty() ? "(empty)" : printable(*value);
    }

    // Texts of several lines are shown side by side, equal lines left out at both ends.
    void addLines(const Difference& difference, const std::string& prefix) {
        auto before = text::split(difference.before.value_or(""), "\n");
        auto after = text::split(difference.after.value_or(""), "\n");
        auto label = prefix + difference.name;
        if (before.size() <= 1 && after.size() <= 1) {
            table_.add({printable(label), style_.red(cell(difference.before)), style_.green(cell(difference.after))});
            return;
        }
        while (!before.empty() && !after.empty() && before.back() == after.back()) {
            before.pop_back();
            after.pop_back();
        }
        std::size_t first = 0;
        while (first < std::min(before.size(), after.size()) && before[first] == after[first]) {
            ++first;
        }
        for (auto i = first; i < std::max(before.size(), after.size()); ++i) {
            table_.add({printable(label), i < before.size() ? style_.red(printable(before[i])) : "",
                        i < after.size() ? style_.green(printable(after[i])) : ""});
            label.clear();
        }
    }

    // Signatures' values, XML of whole elements: the part is shown in which two long values begin to differ.
    void addRest(const Difference& difference) {
        const auto before = cell(difference.before);
        const auto after = cell(difference.after);
        const auto same = static_cast<std::size_t>(
            std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin());
        table_.add({printable(difference.name), style_.red(excerpt(before, same)), style_.green(excerpt(after, same))});
    }

    [[nodiscard]] static std::string excerpt(const std::string& value, std::size_t around) {
        constexpr std::size_t widest = 32;
        constexpr std::size_t lead = 8;
        if (displayWidth(value) <= widest) {
            return value;
        }
        std::string shown;
        std::string_view left = value;
        if (around > lead) {
            shown = "…";
            while (value.size() - left.size() + lead < around) {
                (void)text::takeCodePoint(left);
            }
        }
        while (!left.empty() && displayWidth(shown) + 1 < widest) {
            auto rest = left;
            (void)text::takeCodePoint(rest);
            shown += left.substr(0, left.size() - rest.size());
            left = rest;
        }
        return left.empty() ? shown : shown + "…";
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
            table_.add(
                {"    " + printable(value.name), style_.red(cell(value.before)), style_.green(cell(value.after))});
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
    return {{"old", displayName(arguments.before)},   {"new", displayName(arguments.after)},
            {"head", differencesJson(diff.head)},     {"steps", std::move(steps)},
            {"cycles", differencesJson(diff.cycles)}, {"rest", differencesJson(diff.rest)}};
}

std::string signatureName(Engine& engine, const xml::Document& method) {
    engine.state().domMethod = method;
    const auto verification = method::VerifyLoadedMethod(engine.state());
    return std::string(method::signatureStateName(method::signatureState(verification, method::contentOf(method))));
}

// That one method is intact and the other is not says more than the bytes of their signatures.
void addSignature(MethodDiff& diff, const xml::Document& before, const xml::Document& after) {
    Engine engine;
    auto old = signatureName(engine, before);
    auto now = signatureName(engine, after);
    if (old != now) {
        diff.head.insert(diff.head.begin(), {"Signature", std::move(old), std::move(now)});
    }
}

ExitStatus printDiff(const Console& console, const DiffArguments& arguments) {
    const auto before = readXmlFile(arguments.before, console, "Method");
    const auto after = readXmlFile(arguments.after, console, "Method");
    auto diff = differenceOf(before.document, after.document);
    addSignature(diff, before.document, after.document);
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
        throw Fault(displayName(arguments.after) + ": the editor does not take it as it is: " + report);
    }
    const auto audit = audit::AuditTrailAgainst(engine.state(), before.document);
    for (const auto& report : engine.takeReports()) {
        console.err << "vrnmethod: the audit trail is not complete: " << report << "\n";
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

void addDiff(CLI::App& tool, Call& call) {
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
        "changed, \"+\" one that is new, \"-\" one that is gone. Whatever else differs in the documents stands below,\n"
        "by its path. Exit status 1 when there is a difference.\n\n"
        "Examples:\n"
        "  vrnmethod diff method.xml.bak method.xml\n"
        "  git show HEAD:method.xml | vrnmethod diff - method.xml\n"
        "  vrnmethod diff --audit --set instrument/ old.xml new.xml");
    command.callback([arguments, &call] {
        call.about = {{"old", displayName(arguments->before)}, {"new", displayName(arguments->after)}};
        call.status = arguments->audit ? printAudit(call.console, *arguments) : printDiff(call.console, *arguments);
    });
}

}  // namespace vrn::cli
