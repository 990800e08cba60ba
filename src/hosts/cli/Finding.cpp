#include "hosts/cli/Finding.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "errors/modErr.h"

namespace vrn::cli {

namespace {

constexpr auto codeCount = static_cast<std::size_t>(FindingCode::Count);

using Code = FindingCode;
constexpr std::array<FindingKind, codeCount> kinds{{
    {Code::SignatureMissing, "signature-missing", Severity::Error, Subject::Signature, Loss::Everything,
     "The method has no signature: the editor refuses it."},
    {Code::SignatureInvalid, "signature-invalid", Severity::Error, Subject::Signature, Loss::Everything,
     "The signature does not match: the file was changed outside the editor, which refuses it."},
    {Code::VersionOld, "version-old", Severity::Note, Subject::Version, Loss::Nothing,
     "The method is of version 02 or 03, or says none."},
    {Code::VersionUnsupported, "version-unsupported", Severity::Error, Subject::Version, Loss::Everything,
     "The method says a version that the editor does not know."},
    {Code::SyringeUnknown, "syringe-unknown", Severity::Error, Subject::Syringe, Loss::Part,
     "The instrument does not have the method's syringe."},
    {Code::SequenceEmpty, "sequence-empty", Severity::Warning, Subject::Sequence, Loss::Part,
     "The method has no step."},
    {Code::StepMalformed, "step-malformed", Severity::Error, Subject::Step, Loss::Part,
     "A step is not a cycle with its values in parentheses."},
    {Code::CycleUnknown, "cycle-unknown", Severity::Error, Subject::Step, Loss::Part,
     "The catalogue does not have a step's cycle: the editor reads no further than there."},
    {Code::ValueNotANumber, "value-not-a-number", Severity::Error, Subject::Step, Loss::Nothing,
     "A value is neither a number nor a configured name."},
    {Code::ValueOutOfRange, "value-out-of-range", Severity::Error, Subject::Step, Loss::Nothing,
     "A number is outside of its parameter's range."},
    {Code::ValueNotInList, "value-not-in-list", Severity::Error, Subject::Step, Loss::Nothing,
     "A value names an object that the instrument does not have."},
    {Code::NameUnknown, "name-unknown", Severity::Error, Subject::Step, Loss::Nothing,
     "A value refers to a user-defined name that is not defined any more."},
    {Code::ValueMissing, "value-missing", Severity::Warning, Subject::Step, Loss::Nothing,
     "A step has fewer values than its cycle has parameters."},
    {Code::ValueSurplus, "value-surplus", Severity::Warning, Subject::Step, Loss::Nothing,
     "A step has more values than its cycle has parameters."},
    {Code::CycleOutdated, "cycle-outdated", Severity::Warning, Subject::Cycles, Loss::Nothing,
     "An embedded cycle is not the catalogue's any more."},
    {Code::CyclesDiffer, "cycles-differ", Severity::Warning, Subject::Cycles, Loss::Nothing,
     "The embedded cycles are not those of the steps, in order of their first use."},
    {Code::AtomsDiffer, "atoms-differ", Severity::Warning, Subject::Atoms, Loss::Nothing,
     "The atom line is not what the catalogue gives for any of the steps' cycles."},
    {Code::NamesDiffer, "names-differ", Severity::Warning, Subject::Names, Loss::Nothing,
     "The user-defined names that the method records are not those that its values use."},
    {Code::CatalogueFault, "catalogue-fault", Severity::Error, Subject::Catalogue, Loss::Everything,
     "A cycle's parameters cannot be used as the catalogue defines them; told once, of the catalogue."},
    {Code::EditorReport, "editor-report", Severity::Error, Subject::Editor, Loss::Everything,
     "The editor reported something that no other code stands for."},
}};

// A code without an entry leaves the array's last entries empty, which are then not in order.
constexpr bool isEachInItsPlace() {
    for (std::size_t i = 0; i < codeCount; ++i) {
        if (static_cast<std::size_t>(kinds[i].code) != i || kinds[i].name.empty()) {
            return false;
        }
    }
    return true;
}
static_assert(isEachInItsPlace(), "every code has its entry in the table, in the order of the codes");

constexpr std::string_view faultCode = "file-fault";

std::string coloured(Severity severity, const Style& style) {
    const auto name = severityName(severity);
    switch (severity) {
        case Severity::Error:
            return style.red(name);
        case Severity::Warning:
            return style.yellow(name);
        case Severity::Note:
            break;
    }
    return style.cyan(name);
}

// What is wrong, on the rest of a line.
std::string messageText(const Finding& finding, const Style& style) {
    const auto place = placeOf(finding);
    return (place.empty() ? "" : printable(place) + ": ") + printable(finding.message) + "  " +
           style.dim("[" + std::string(finding.kind().name) + "]") + "\n";
}

// What mends it, on a line of its own if anything does.
std::string fixText(const Finding& finding, std::size_t indent, const Style& style) {
    return finding.fix.empty() ? "" : std::string(indent, ' ') + style.dim("fix: " + printable(finding.fix)) + "\n";
}

// One finding; texts that are empty are left out.
Json findingJson(const Finding& finding) {
    Json json = {{"code", finding.kind().name}, {"severity", severityName(finding.kind().severity)}};
    if (!finding.file.empty()) {
        json["file"] = displayName(finding.file);
    }
    if (finding.position.line > 0) {
        json["line"] = finding.position.line;
        json["column"] = finding.position.column;
    }
    if (finding.step > 0) {
        json["step"] = finding.step;
    }
    const auto addText = [&json](const char* key, const std::string& text) {
        if (!text.empty()) {
            json[key] = text;
        }
    };
    addText("cycle", finding.cycle);
    addText("parameter", finding.parameter);
    addText("value", finding.value);
    addText("message", finding.message);
    addText("fix", finding.fix);
    return json;
}

Json sarifLocation(const std::string& path, xml::Position position = {}) {
    Json physical = {{"artifactLocation", {{"uri", uriOf(path)}}}};
    if (position.line > 0) {
        physical["region"] = {{"startLine", position.line}, {"startColumn", position.column}};
    }
    return {{"physicalLocation", std::move(physical)}};
}

Json sarifRules() {
    Json rules = Json::array();
    for (const auto& kind : kinds) {
        rules.push_back({{"id", kind.name},
                         {"shortDescription", {{"text", kind.meaning}}},
                         {"defaultConfiguration", {{"level", severityName(kind.severity)}}}});
    }
    rules.push_back({{"id", faultCode},
                     {"shortDescription", {{"text", "The file cannot be read as a method."}}},
                     {"defaultConfiguration", {{"level", "error"}}}});
    return rules;
}

}  // namespace

std::string_view severityName(Severity severity) noexcept {
    switch (severity) {
        case Severity::Error:
            return "error";
        case Severity::Warning:
            return "warning";
        case Severity::Note:
            break;
    }
    return "note";
}

std::optional<Severity> severityOf(std::string_view name) noexcept {
    for (const auto severity : {Severity::Note, Severity::Warning, Severity::Error}) {
        if (severityName(severity) == name) {
            return severity;
        }
    }
    return std::nullopt;
}

std::span<const FindingKind> findingKinds() noexcept { return kinds; }

const FindingKind& Finding::kind() const noexcept { return kinds[static_cast<std::size_t>(code)]; }

bool hasErrors(const std::vector<Finding>& findings) noexcept {
    return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) { return finding.isError(); });
}

std::string placeOf(const Finding& finding) {
    std::string place = finding.step > 0 ? "step " + std::to_string(finding.step) : "";
    if (!finding.cycle.empty()) {
        place += (place.empty() ? "cycle " : " ") + finding.cycle;
    }
    return finding.parameter.empty() ? place : place + ", " + finding.parameter;
}

std::string findingText(const std::string& file, const std::vector<Finding>& findings, const Style& style) {
    std::string out;
    for (const auto& finding : findings) {
        const auto& position = finding.position;
        const auto place = position.line == 0
                               ? std::string()
                               : ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
        out += style.bold(displayName(finding.file.empty() ? file : finding.file) + place + ":") + " " +
               coloured(finding.kind().severity, style) + ": " + messageText(finding, style) +
               fixText(finding, 4, style);
    }
    return out;
}

std::string findingList(const std::vector<Finding>& findings, const Style& style) {
    std::string out;
    for (const auto& finding : findings) {
        out += "  " + padded(coloured(finding.kind().severity, style), 9) + messageText(finding, style) +
               fixText(finding, 11, style);
    }
    return out;
}

Json findingsJson(const std::vector<Finding>& findings) {
    Json all = Json::array();
    for (const auto& finding : findings) {
        all.push_back(findingJson(finding));
    }
    return all;
}

std::string sarifResult(const std::string& path, const Finding& finding) {
    const auto place = placeOf(finding);
    auto location = sarifLocation(finding.file.empty() ? path : finding.file, finding.position);
    if (!place.empty()) {
        location["logicalLocations"] = Json::array({{{"fullyQualifiedName", place}}});
    }
    Json message = (place.empty() ? "" : place + ": ") + finding.message +
                   (finding.fix.empty() ? "" : ". To mend it, " + finding.fix);
    return jsonText({{"ruleId", finding.kind().name},
                     {"level", severityName(finding.kind().severity)},
                     {"message", {{"text", std::move(message)}}},
                     {"locations", Json::array({std::move(location)})}});
}

std::string sarifFault(const std::string& path, const std::string& what) {
    return jsonText({{"ruleId", faultCode},
                     {"level", "error"},
                     {"message", {{"text", what}}},
                     {"locations", Json::array({sarifLocation(path)})}});
}

std::string sarifDocument(const std::string& results) {
    const Json driver = {{"name", "vrnmethod"}, {"version", errors::versionText()}, {"rules", sarifRules()}};
    return R"({"$schema":"https://json.schemastore.org/sarif-2.1.0.json","version":"2.1.0","runs":[{"columnKind":"utf16CodeUnits","tool":{"driver":)" +
           jsonText(driver) + R"(},"results":[)" + results + "]}]}\n";
}

}  // namespace vrn::cli
