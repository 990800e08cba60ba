#include "method/Timestamps.h"

#include "catalogue/CxmlValuesHandler.h"
#include "text/Lists.h"

namespace vrn::method {

namespace {

constexpr std::string_view timestampAttribute = "LastModifiedTimestamp";
constexpr std::string_view namePrefix = "[MACRO ";

}  // namespace

std::string Timestamp(const EditorState& state, std::string_view path, const xml::Node& node) noexcept {
    return standardHandler(state, "Timestamp ", [&] {
        const auto element = node.selectSingleNode(path);
        return element ? element.attribute(timestampAttribute).value_or("") : std::string();
    });
}

std::string CatalogueTimestamp(const EditorState& state, const std::string& macroName) noexcept {
    return standardHandler(state, "Timestamp ", [&] {
        // A double quote would end the name in the path: such a name is found nowhere.
        const auto element = text::contains(macroName, "\"")
                                 ? xml::Node()
                                 : state.xmlValues->macros(state.domMacros).macroName(macroName);
        return element ? element.attribute(timestampAttribute).value_or("") : std::string();
    });
}

std::string EmbeddedCycleName(const xml::Document& method) {
    const auto node = method.selectSingleNode("Method/Macros/MacroData/MacroName");
    if (!node) {
        return {};
    }
    auto name = node.text();
    if (const auto prefix = name.find(namePrefix); prefix != std::string::npos) {
        name.erase(prefix, namePrefix.size());
    }
    const auto close = name.rfind(']');
    if (close == std::string::npos) {
        errors::throwInvalidProcedureCall();
    }
    name.resize(close);
    return name;
}

bool CycleIsDifferent(const EditorState& state, const xml::Document& method) {
    const auto root = method.selectSingleNode("/Method");
    const auto recorded = root ? root.attribute(timestampAttribute) : std::nullopt;
    if (!recorded) {
        return false;
    }
    const auto name = EmbeddedCycleName(method);
    if (name.empty() || text::contains(name, "\"")) {
        return false;
    }
    const auto element = state.xmlValues->macros(state.domMacros).macroName(name);
    const auto current = element ? element.attribute(timestampAttribute) : std::nullopt;
    return current && *current != *recorded;
}

void UpdateCycleDateLabel(EditorState& state, const xml::Document& method) {
    state.booCycleDateChanged = CycleIsDifferent(state, method);
    RefreshCycleDateNotice(state);
}

void RefreshCycleDateNotice(EditorState& state) {
    state.lblCycleDateChanged.setCaption(state.booCycleDateChanged ? std::string(cycleDateWarning) : std::string());
    state.lblCycleDateChanged.setVisible(state.booCycleDateChanged);
}

}  // namespace vrn::method
