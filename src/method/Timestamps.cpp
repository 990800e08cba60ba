#include "method/Timestamps.h"

#include <utility>

#include "catalogue/CxmlValuesHandler.h"
#include "method/Format.h"
#include "text/Lists.h"

namespace vrn::method {

std::string Timestamp(const EditorState& state, std::string_view path, const xml::Node& node) noexcept {
    return standardHandler(state, "Timestamp ", [&] {
        const auto element = node.selectSingleNode(path);
        return element ? element.attribute(format::timestampAttribute).value_or("") : std::string();
    });
}

std::string CatalogueTimestamp(const EditorState& state, const std::string& macroName) noexcept {
    return standardHandler(state, "Timestamp ", [&] {
        // A double quote would end the name in the path: such a name is found nowhere.
        const auto element = text::contains(macroName, "\"")
                                 ? xml::Node()
                                 : state.xmlValues->macros(state.domMacros).macroName(macroName);
        return element ? element.attribute(format::timestampAttribute).value_or("") : std::string();
    });
}

std::string EmbeddedCycleName(const xml::Document& method) {
    auto heading = format::textOf(method, format::cycleHeading);
    return heading ? format::nameForTimestamp(std::move(*heading)) : std::string();
}

bool CycleIsDifferent(const EditorState& state, const xml::Document& method) {
    const auto root = method.selectSingleNode(format::root.path);
    const auto recorded = root ? root.attribute(format::timestampAttribute) : std::nullopt;
    if (!recorded) {
        return false;
    }
    const auto name = EmbeddedCycleName(method);
    if (name.empty() || text::contains(name, "\"")) {
        return false;
    }
    const auto element = state.xmlValues->macros(state.domMacros).macroName(name);
    const auto current = element ? element.attribute(format::timestampAttribute) : std::nullopt;
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
