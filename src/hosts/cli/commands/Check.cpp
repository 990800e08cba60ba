#include <array>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"

namespace vrn::cli {

namespace {

struct CheckArguments {
    SetArguments set;
    MethodArguments methods;
    std::string format = "text";
    std::string failOn = "warning";
};

std::size_t indexOf(Severity severity) { return static_cast<std::size_t>(severity); }

// The findings of one file in the wanted format.
std::string outputOf(const std::string& path, const std::vector<Finding>& findings, const CheckArguments& arguments,
                     const Style& style) {
    if (arguments.format == "json") {
        return jsonLine({{"file", displayName(path)}, {"findings", findingsJson(findings)}});
    }
    if (arguments.format == "text") {
        return findingText(path, findings, style);
    }
    std::string out;
    for (const auto& finding : findings) {
        out += (out.empty() ? "" : ",") + sarifResult(path, finding);
    }
    return out;
}

Outcome outcomeOf(const MethodFile& file, std::vector<Finding> findings, const CheckArguments& arguments,
                  const Style& style) {
    Outcome outcome;
    const auto worst = severityOf(arguments.failOn).value_or(Severity::Warning);
    for (const auto& finding : findings) {
        if (finding.kind().severity >= worst) {
            outcome.status = ExitStatus::Findings;
        }
        if (finding.concernsCatalogue()) {
            outcome.once.push_back(outputOf(finding.file, {finding}, arguments, style));
        } else {
            ++outcome.counts[indexOf(finding.kind().severity)];
        }
    }
    std::erase_if(findings, [](const Finding& finding) { return finding.concernsCatalogue(); });
    outcome.out = outputOf(file.path, findings, arguments, style);
    return outcome;
}

// What is reported of all methods together, once they are checked.
class Summary {
  public:
    void add(const Outcome& outcome) {
        ++methods_;
        faults_ += outcome.fault.empty() ? 0 : 1;
        bool any = false;
        for (std::size_t i = 0; i < counts_.size(); ++i) {
            counts_[i] += outcome.counts[i];
            any = any || outcome.counts[i] > 0;
        }
        withFindings_ += any ? 1 : 0;
    }

    void addCatalogueFault() { ++catalogueFaults_; }

    [[nodiscard]] std::string text(const Style& style) const {
        const auto checked = methods_ - faults_;
        std::string found;
        for (const auto severity : {Severity::Error, Severity::Warning, Severity::Note}) {
            if (const auto count = counts_[indexOf(severity)]; count > 0) {
                found += (found.empty() ? "" : ", ") + counted(count, severityName(severity));
            }
        }
        const auto result =
            found.empty() ? style.green("nothing found") : found + " in " + counted(withFindings_, "method");
        return counted(checked, "method") + " checked" + (checked > 0 ? ": " + result : "") +
               (catalogueFaults_ > 0 ? "; " + counted(catalogueFaults_, "fault") + " of the catalogue" : "") +
               (faults_ > 0 ? "; " + counted(faults_, "file") + " could not be read" : "") + "\n";
    }

  private:
    std::array<std::size_t, 3> counts_{};
    std::size_t methods_ = 0;
    std::size_t withFindings_ = 0;
    std::size_t faults_ = 0;
    std::size_t catalogueFaults_ = 0;
};

void listCodes(const Console& console) {
    const Style style(console.outHasColour);
    Table table;
    for (const auto& kind : findingKinds()) {
        table.add({std::string(kind.name), std::string(severityName(kind.severity)), std::string(kind.meaning)});
    }
    console.out << table.text();
}

ExitStatus run(const Console& console, CheckArguments arguments) {
    if (arguments.methods.json) {
        arguments.format = "json";
    }
    arguments.methods.json = arguments.format == "json";
    const bool sarif = arguments.format == "sarif";
    const Style style(console.outHasColour);
    const auto set = readSet(arguments.set, console);
    const auto makeWork = [&]() -> MethodWork {
        return [&, checker = std::make_shared<Checker>(set)](const MethodFile& file) {
            const auto method = readXmlFile(file.path, console, "Method");
            return outcomeOf(file, checker->check(method).findings, arguments, style);
        };
    };
    Summary summary;
    std::set<std::string> printed;
    std::string results;
    const auto addResults = [&results](const std::string& more) {
        results += (results.empty() || more.empty() ? "" : ",") + more;
    };
    const auto gather = [&](Outcome& outcome) {
        summary.add(outcome);
        std::string common;
        for (auto& output : outcome.once) {
            if (printed.insert(output).second) {
                summary.addCatalogueFault();
                common += (sarif && !common.empty() ? "," : "") + output;
            }
        }
        if (!sarif) {
            outcome.out.insert(0, common);
            return;
        }
        addResults(common);
        addResults(outcome.fault.empty() ? outcome.out : sarifFault(outcome.file, outcome.fault));
        outcome.out.clear();
    };
    const auto status = runOverMethods({console, arguments.methods, set.files, makeWork, nullptr, gather});
    if (sarif) {
        console.out << sarifDocument(results);
    } else if (arguments.format == "text") {
        console.out << summary.text(style);
    }
    return status;
}

}  // namespace

void addCheck(CLI::App& tool, Call& call) {
    Command command(tool, "check", "Find everything that is wrong with methods");
    const auto arguments = std::make_shared<CheckArguments>();
    addMethodOptions(command, arguments->methods);
    addSetOptions(command, arguments->set);
    command.option("--format", arguments->format, "How to tell")
        .oneOf({"text", "json", "sarif"})
        .metavar("FORMAT")
        .showDefault();
    command.option("--fail-on", arguments->failOn, "The mildest finding that gives exit status 1")
        .oneOf({"error", "warning", "note"})
        .metavar("SEVERITY")
        .showDefault();
    command.answer(
        "--list-codes", [&call] { listCodes(call.console); }, "List the codes of all findings and what they mean");
    command.footer(
        "Looks at signature, version, syringe, every step's cycle and values, and the embedded cycles. Each\n"
        "finding has a code that stays the same from version to version. --json is --format json.\n\n"
        "Examples:\n"
        "  vrnmethod check --set instrument/ methods/\n"
        "  vrnmethod check --set instrument/ --jobs 4 --fail-on error methods/\n"
        "  vrnmethod check --set instrument/ --format sarif methods/ > methods.sarif");
    command.callback([arguments, &call] { call.status = run(call.console, *arguments); });
}

}  // namespace vrn::cli
