#include "method/MethodContent.h"

#include <algorithm>

#include "catalogue/Indexes.h"
#include "catalogue/ParameterDefinition.h"
#include "method/Format.h"
#include "services/SignatureProfile.h"
#include "text/Lists.h"

namespace vrn::method {

std::string descriptionOf(const xml::Document& method) {
    std::string lines;
    if (const auto description = method.selectSingleNode(format::description.path)) {
        catalogue::forEachContentChild(description, [&](const xml::Node& /*node*/, std::string_view line,
                                                        bool /*isElement*/) { lines.append(line).append(text::crlf); });
    }
    return format::ReverseDescription(std::move(lines));
}

void forEachStep(const xml::Document& method, const MeetStep& meet) {
    const auto sequence = method.selectSingleNode(format::sequence.path);
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

std::vector<EmbeddedCycle> embeddedCycles(const xml::Document& method) {
    std::vector<EmbeddedCycle> cycles;
    const auto data = method.selectSingleNode(format::cycles.path);
    if (!data) {
        return cycles;
    }
    for (auto& child : catalogue::contentChildren(data)) {
        const auto kind = child.isElement ? child.node.name() : std::string();
        if (kind == format::cycleHeading.name()) {
            cycles.push_back({std::string(format::nameInHeading(child.text).value_or(child.text)), {}});
        } else if (kind == format::cycleLine.name() && !cycles.empty()) {
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
    content.version = format::textOf(method, format::version);
    content.description = descriptionOf(method);
    content.syringe = format::textOf(method, format::syringeSize);
    content.steps = stepTexts(method);
    content.cycles = embeddedCycles(method);
    if (const auto root = method.selectSingleNode(format::root.path)) {
        content.isSigned = root.child(services::signatureElementV23) || !services::signatureChildren(root).empty();
        content.timestamp = root.attribute(format::timestampAttribute).value_or("");
    }
    return content;
}

}  // namespace vrn::method
