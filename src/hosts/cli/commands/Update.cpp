// The two commands that write methods anew in today's form: the catalogue's cycles embedded, values kept by their parameters' names,
// the current version, signed.
#include <algorithm>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>

#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "method/CycleUpdate.h"
#include "method/Format.h"

namespace vrn::cli {

namespace {

using method::MethodVersion;
using method::ValueChange;

std::string currentVersion() { return std::string(method::format::currentVersionText); }

std::string olderVersions() {
    std::string versions;
    for (const auto& known : method::format::knownVersions) {
        if (known.version != method::format::currentVersion) {
            versions.append(versions.empty() ? "" : ", ").append(known.text);
        }
    }
    return versions;
}

std::string_view kindName(ValueChange::Kind kind) {
    switch (kind) {
        case ValueChange::Kind::Added:
            return "added";
        case ValueChange::Kind::Dropped:
            return "dropped";
        case ValueChange::Kind::UnitChanged:
            break;
    }
    return "unit changed";
}

std::string changeLine(const ValueChange& change) {
    const auto parameter = change.parameter.empty() ? "a value without name" : change.parameter;
    std::string line = "  " + padded(std::string(kindName(change.kind)), 14) + "step " +
                       std::to_string(change.step + 1) + " " + printable(change.macro) + ", " + printable(parameter);
    line += change.kind == ValueChange::Kind::Dropped ? ", was '" : " = '";
    return line + printable(change.value) + "'\n";
}

Json changesJson(const std::vector<ValueChange>& changes) {
    Json all = Json::array();
    for (const auto& change : changes) {
        all.push_back({{"change", kindName(change.kind)},
                       {"step", change.step + 1},
                       {"cycle", change.macro},
                       {"parameter", change.parameter},
                       {"value", change.value}});
    }
    return all;
}

// What one command wants of a method before it is written anew.
enum class EmbedPurpose { Update, Convert };

struct EmbedArguments {
    SetArguments set;
    MethodArguments methods;
    WriteArguments write;
};

class Embedder {
  public:
    Embedder(const Console& console, const EmbedArguments& arguments, const SetTexts& set, EmbedPurpose purpose)
        : console_(&console), arguments_(&arguments), checker_(set), purpose_(purpose) {}

    Outcome embed(const MethodFile& file) {
        const auto method = readMethod(file.path, *console_, arguments_->write);
        const auto result = checker_.check(method.document);
        Outcome outcome;
        auto refusal = objection(result.inspection);
        if (refusal.empty() && !isWanted(result.inspection)) {
            report(method, outcome,
                   {"unchanged",
                    purpose_ == EmbedPurpose::Convert ? "is of version " + currentVersion() : "is up to date",
                    {},
                    {}});
            passThrough(method, arguments_->write, outcome);
            return outcome;
        }
        std::vector<Finding> lost;
        if (refusal.empty()) {
            std::copy_if(result.findings.begin(), result.findings.end(), std::back_inserter(lost),
                         [](const Finding& finding) { return finding.kind().loss != Loss::Nothing; });
            if (lost.empty()) {
                return rewrite(method);
            }
            refusal = "something would be lost";
        }
        outcome.status = ExitStatus::Findings;
        report(method, outcome, {"refused", refusal, {}, std::move(lost)});
        return outcome;
    }

  private:
    struct Report {
        const char* status;
        std::string words;
        std::vector<ValueChange> changes;
        std::vector<Finding> findings;
    };

    // Why the method is not to be written anew; empty when it is.
    [[nodiscard]] std::string objection(const method::Inspection& inspection) const {
        const auto version = inspection.verification.version;
        if (version == MethodVersion::Unsupported) {
            return "its version is not known";
        }
        if (purpose_ == EmbedPurpose::Update && version != method::format::currentVersion) {
            return "it is not of version " + currentVersion() + ": use convert";
        }
        if (inspection.verification.code != 0) {
            return inspection.content.isSigned ? "its signature does not match" : "it is not signed";
        }
        return {};
    }

    [[nodiscard]] bool isWanted(const method::Inspection& inspection) const {
        if (purpose_ == EmbedPurpose::Convert) {
            return inspection.verification.version != method::format::currentVersion;
        }
        return inspection.isOutdated();
    }

    Outcome rewrite(const MethodToWrite& method) {
        auto& engine = checker_.engine();
        engine.load(method.text);
        auto& state = engine.state();
        auto changes = method::adoptCatalogueCycles(state);
        // To select a step whose values are not valid reports that; check finds the same below.
        static_cast<void>(engine.takeReports());
        const auto built = engine.editor().GetMethodXml();
        if (const auto reports = engine.takeReports(); !built || !reports.empty()) {
            throw Fault(displayName(method.path) + ": the editor cannot write it" +
                        (reports.empty() ? "" : ": " + reports.front()));
        }
        auto findings = checker_.check(*built).findings;
        const bool isConvert = purpose_ == EmbedPurpose::Convert;
        Outcome outcome;
        writeBack(engine, method, *built, arguments_->write, outcome);
        outcome.status = hasErrors(findings) ? ExitStatus::Findings : ExitStatus::Well;
        const std::string done = isConvert ? "converted to version " + currentVersion() : "updated";
        report(method, outcome,
               {isConvert ? "converted" : "updated", (arguments_->write.dryRun ? "would be " : "") + done,
                std::move(changes), std::move(findings)});
        return outcome;
    }

    void report(const XmlFile& file, Outcome& outcome, const Report& result) const {
        const bool isRefused = std::string_view(result.status) == "refused";
        if (arguments_->methods.json) {
            auto json = reportHead(file, result.status, arguments_->write);
            if (isRefused) {
                json["message"] = result.words;
            }
            json["changes"] = changesJson(result.changes);
            json["findings"] = findingsJson(result.findings);
            cli::report(file, outcome, jsonLine(json));
            return;
        }
        auto lines = displayName(file.path) + ": " + (isRefused ? "not written: " : "") + result.words + "\n";
        for (const auto& change : result.changes) {
            lines += changeLine(change);
        }
        cli::report(file, outcome, lines + findingList(result.findings, Style(console_->outHasColour)));
    }

    const Console* console_;
    const EmbedArguments* arguments_;
    Checker checker_;
    EmbedPurpose purpose_;
};

ExitStatus embedMethods(const Console& console, const EmbedArguments& arguments, EmbedPurpose purpose) {
    const auto set = readSet(arguments.set, console);
    const auto makeWork = [&]() -> MethodWork {
        return [embedder = std::make_shared<Embedder>(console, arguments, set, purpose)](const MethodFile& file) {
            return embedder->embed(file);
        };
    };
    return runOverMethods({console, arguments.methods, set.files, makeWork, &arguments.write, {}});
}

void addEmbedding(CLI::App& tool, Call& call, EmbedPurpose purpose, const char* name, const std::string& summary,
                  const char* footer) {
    Command command(tool, name, summary);
    const auto arguments = std::make_shared<EmbedArguments>();
    addMethodOptions(command, arguments->methods);
    addSetOptions(command, arguments->set);
    addWriteOptions(command, arguments->write);
    command.footer(footer);
    command.callback([arguments, purpose, &call] { call.status = embedMethods(call.console, *arguments, purpose); });
}

}  // namespace

void addUpdate(CLI::App& tool, Call& call) {
    addEmbedding(
        tool, call, EmbedPurpose::Update, "update", "Embed the catalogue's cycles in methods that hold older ones",
        "Values are kept by the names of their parameters; what is new gets its default. What was added or\n"
        "dropped is told, and which values are not valid now. The result is signed. A method is left alone\n"
        "when its cycles are the catalogue's, when it is not intact, and when something of it would be lost.\n\n"
        "Examples:\n"
        "  vrnmethod update --set instrument/ --dry-run methods/\n"
        "  vrnmethod update --set instrument/ --backup .bak --jobs 4 methods/");
}

void addConvert(CLI::App& tool, Call& call) {
    addEmbedding(tool, call, EmbedPurpose::Convert, "convert",
                 "Bring methods of version " + olderVersions() + " or none to version " + currentVersion(),
                 "The old signature is verified first. The result holds the catalogue's cycles and is signed.\n\n"
                 "Examples:\n"
                 "  vrnmethod convert --set instrument/ --dry-run archive/\n"
                 "  vrnmethod convert --set instrument/ --backup .v03 archive/");
}

}  // namespace vrn::cli
