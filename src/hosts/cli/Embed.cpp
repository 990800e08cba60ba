#include "hosts/cli/Embed.h"

#include <algorithm>
#include <iterator>

#include "hosts/cli/FindingText.h"
#include "hosts/cli/Names.h"

namespace vrn::cli {

namespace {

using method::MethodVersion;
using method::ValueChange;
using method::format::currentVersion;
using method::format::currentVersionText;

// What the editor would leave out of what it writes, or write in another way than it read it.
constexpr std::array<std::string_view, 7> losses{"syringe-unknown", "sequence-empty",      "step-malformed",
                                                 "cycle-unknown",   "version-unsupported", "catalogue-fault",
                                                 "editor-report"};

bool isLoss(const Finding& finding) {
    return std::find(losses.begin(), losses.end(), finding.kind->code) != losses.end();
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

}  // namespace

std::string Embedder::objection(const method::Inspection& inspection) const {
    const auto version = inspection.verification.version;
    if (version == MethodVersion::Unsupported) {
        return "its version is not known";
    }
    if (purpose_ == EmbedPurpose::Update && version != currentVersion) {
        return "it is not of version " + std::string(currentVersionText) + ": use convert";
    }
    if (inspection.verification.code != 0) {
        return inspection.content.isSigned ? "its signature does not match" : "it is not signed";
    }
    return {};
}

bool Embedder::isWanted(const method::Inspection& inspection) const {
    if (purpose_ == EmbedPurpose::Convert) {
        return inspection.verification.version != currentVersion;
    }
    return inspection.isOutdated();
}

Outcome Embedder::rewrite(const MethodToWrite& method) {
    auto& engine = checker_.engine();
    engine.load(method.text);
    auto& state = engine.state();
    auto changes = method::adoptCatalogueCycles(state);
    // Selecting a step whose values are not valid says so; check has the same to say below.
    static_cast<void>(engine.takeReports());
    const auto built = engine.editor().GetMethodXml();
    if (const auto reports = engine.takeReports(); !built || !reports.empty()) {
        throw Fault(displayName(method.path) + ": the editor cannot write it" +
                    (reports.empty() ? "" : ": " + oneLine(reports.front())));
    }
    auto findings = checker_.check(*built).findings;
    const bool isConvert = purpose_ == EmbedPurpose::Convert;
    Outcome outcome;
    writeBack(engine, method, *built, arguments_->write, outcome);
    const bool hasErrors = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.kind->severity == Severity::Error;
    });
    outcome.status = hasErrors ? ExitStatus::Findings : ExitStatus::Well;
    const std::string done = isConvert ? "converted to version " + std::string(currentVersionText) : "updated";
    tellReport(method, outcome,
               {isConvert ? "converted" : "updated", (arguments_->write.dryRun ? "would be " : "") + done,
                std::move(changes), std::move(findings)});
    return outcome;
}

Outcome Embedder::embed(const MethodFile& file) {
    const auto method = readMethod(file.path, *console_, arguments_->write);
    const auto result = checker_.check(method.document);
    Outcome outcome;
    auto refusal = objection(result.inspection);
    if (refusal.empty() && !isWanted(result.inspection)) {
        tellReport(
            method, outcome,
            {"unchanged",
             purpose_ == EmbedPurpose::Convert ? "is of version " + std::string(currentVersionText) : "is up to date",
             {},
             {}});
        passThrough(method, arguments_->write, outcome);
        return outcome;
    }
    std::vector<Finding> lost;
    if (refusal.empty()) {
        std::copy_if(result.findings.begin(), result.findings.end(), std::back_inserter(lost), isLoss);
        if (lost.empty()) {
            return rewrite(method);
        }
        refusal = "something would be lost";
    }
    outcome.status = ExitStatus::Findings;
    tellReport(method, outcome, {"refused", refusal, {}, std::move(lost)});
    return outcome;
}

void Embedder::tellReport(const XmlFile& file, Outcome& outcome, const Report& report) const {
    const bool isRefused = std::string_view(report.status) == "refused";
    if (arguments_->methods.json) {
        auto json = reportHead(file, report.status, arguments_->write);
        if (isRefused) {
            json["message"] = report.words;
        }
        json["changes"] = changesJson(report.changes);
        json["findings"] = findingsJson(report.findings);
        tell(file, outcome, jsonLine(json));
        return;
    }
    auto lines = displayName(file.path) + ": " + (isRefused ? "not written: " : "") + report.words + "\n";
    for (const auto& change : report.changes) {
        lines += changeLine(change);
    }
    tell(file, outcome, lines + findingList(report.findings, Style(console_->outHasColour)));
}

ExitStatus embedMethods(const Console& console, const EmbedArguments& arguments, EmbedPurpose purpose) {
    const auto set = readSet(arguments.set, console);
    const auto makeWork = [&]() -> MethodWork {
        return [embedder = std::make_shared<Embedder>(console, arguments, set, purpose)](const MethodFile& file) {
            return embedder->embed(file);
        };
    };
    return runOverMethods({console, arguments.methods, set.files, makeWork, &arguments.write, {}});
}

}  // namespace vrn::cli
