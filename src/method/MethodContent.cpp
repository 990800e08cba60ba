#include "method/MethodContent.h"

#include <algorithm>

#include "catalogue/Indexes.h"
#include "catalogue/ParameterDefinition.h"
#include "method/MethodText.h"
#include "services/SignatureProfile.h"
#include "text/Lists.h"

namespace vrn::method {

namespace {

std::string cycleName(std::string_view text) {
    constexpr std::string_view prefix = "[MACRO ";
    if (!text.starts_with(prefix) || !text.ends_with(']')) {
        return std::string(text);
    }
    return std::string(text.substr(prefix.size(), text.size() - prefix.size() - 1));
}

}  // namespace

std::string descriptionOf(const xml::Document& method) {
    std::string lines;
    if (const auto description = method.selectSingleNode("Method/Description")) {
        catalogue::forEachContentChild(description, [&](const xml::Node& /*node*/, std::string_view line,
                                                        bool /*isElement*/) { lines.append(line).append(text::crlf); });
    }
    return ReverseDescription(std::move(lines));
}

void forEachStep(const xml::Document& method, const MeetStep& meet) {
    const auto sequence = method.selectSingleNode("Method/Macros/MacroVariable");
    if (!sequence) {
        return;
    }
    bool goOn = true;
    catalogue::forEachContentChild(sequence, [&](const xml::Node& node, std::string_view text, bool /*isElement*/) {
        // An element without text is how an empty sequence is written: no step.
        goOn = goOn && (text.empty() || meet(node, text));
    });
}

std::vector<std::string> stepTexts(const xml::Document& method) {
    std::vector<std::string> texts;
    forEachStep(method, [&texts](const xml::Node& /*node*/, std::string_view text) {
        texts.emplace_back(text);
        return true;
    });
    return texts;
}

std::vector<xml::Node> stepNodes(const xml::Document& method) {
    std::vector<xml::Node> nodes;
    forEachStep(method, [&nodes](const xml::Node& node, std::string_view /*text*/) {
        nodes.push_back(node);
        return true;
    });
    return nodes;
}

std::optional<StepParentheses> parenthesesOf(std::string_view text) noexcept {
    const auto open = text.find('(');
    const auto close = text.find(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    return StepParentheses{open, close};
}

MethodMacroEntry stepOf(std::string_view text) {
    const auto parentheses = parenthesesOf(text);
    if (!parentheses) {
        errors::throwInvalidProcedureCall();
    }
    const auto [open, close] = *parentheses;
    MethodMacroEntry entry;
    entry.MacroName = text.substr(0, open);
    if (auto values = text::split(text.substr(open + 1, close - open - 1), ","); !values.empty()) {
        entry.MacroValues = std::move(values);
    }
    return entry;
}

std::vector<EmbeddedCycle> embeddedCycles(const xml::Document& method) {
    std::vector<EmbeddedCycle> cycles;
    const auto data = method.selectSingleNode("Method/Macros/MacroData");
    if (!data) {
        return cycles;
    }
    for (auto& child : catalogue::contentChildren(data)) {
        const auto kind = child.isElement ? child.node.name() : std::string();
        if (kind == "MacroName") {
            cycles.push_back({cycleName(child.text), {}});
        } else if (kind == "MacroLine" && !cycles.empty()) {
            cycles.back().definitions.push_back(std::move(child.text));
        }
    }
    return cycles;
}

const EmbeddedCycle* findCycle(const std::vector<EmbeddedCycle>& cycles, std::string_view name) {
    const auto found =
        std::find_if(cycles.begin(), cycles.end(), [name](const EmbeddedCycle& cycle) { return cycle.name == name; });
    return found == cycles.end() ? nullptr : &*found;
}

std::vector<std::string> parameterNames(const std::vector<std::string>& definitions) {
    std::vector<std::string> names;
    names.reserve(definitions.size());
    for (const auto& definition : definitions) {
        names.push_back(catalogue::ParameterDefinition(definition).displayName());
    }
    return names;
}

MethodContent contentOf(const xml::Document& method) {
    MethodContent content;
    if (const auto version = method.selectSingleNode("Method/VERSION")) {
        content.version = version.text();
    }
    content.description = descriptionOf(method);
    if (const auto syringe = method.selectSingleNode("/Method/Syringe/SyringeSize")) {
        content.syringe = syringe.text();
    }
    content.steps = stepTexts(method);
    content.cycles = embeddedCycles(method);
    if (const auto root = method.selectSingleNode("/Method")) {
        content.isSigned = root.child("Signature") || !services::signatureChildren(root).empty();
        content.timestamp = root.attribute("LastModifiedTimestamp").value_or("");
    }
    return content;
}

}  // namespace vrn::method
