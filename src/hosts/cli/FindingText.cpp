#include "hosts/cli/FindingText.h"

#include "errors/modErr.h"
#include "hosts/cli/Names.h"

namespace vrn::cli {

namespace {

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
           style.dim("[" + std::string(finding.kind->code) + "]") + "\n";
}

// What mends it, on a line of its own if anything does.
std::string fixText(const Finding& finding, std::size_t indent, const Style& style) {
    return finding.fix.empty() ? "" : std::string(indent, ' ') + style.dim("fix: " + printable(finding.fix)) + "\n";
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
    for (const auto& kind : findingKinds()) {
        rules.push_back({{"id", kind.code},
                         {"shortDescription", {{"text", kind.meaning}}},
                         {"defaultConfiguration", {{"level", severityName(kind.severity)}}}});
    }
    rules.push_back({{"id", faultCode},
                     {"shortDescription", {{"text", "The file cannot be read as a method."}}},
                     {"defaultConfiguration", {{"level", "error"}}}});
    return rules;
}

}  // namespace

std::string findingText(const std::string& file, const std::vector<Finding>& findings, const Style& style) {
    std::string out;
    for (const auto& finding : findings) {
        const auto& position = finding.position;
        const auto place = position.line == 0
                               ? std::string()
                               : ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
        out += style.bold(displayName(finding.file.empty() ? file : finding.file) + place + ":") + " " +
               coloured(finding.kind->severity, style) + ": " + messageText(finding, style) +
               fixText(finding, 4, style);
    }
    return out;
}

std::string findingList(const std::vector<Finding>& findings, const Style& style) {
    std::string out;
    for (const auto& finding : findings) {
        out += "  " + padded(coloured(finding.kind->severity, style), 9) + messageText(finding, style) +
               fixText(finding, 11, style);
    }
    return out;
}

Json findingJson(const Finding& finding) {
    Json json = {{"code", finding.kind->code}, {"severity", severityName(finding.kind->severity)}};
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
    return jsonText({{"ruleId", finding.kind->code},
                     {"level", severityName(finding.kind->severity)},
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
