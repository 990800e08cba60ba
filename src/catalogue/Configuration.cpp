#include "catalogue/Configuration.h"

#include <algorithm>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "method/Format.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::catalogue {

namespace {

void addArguments(const std::string& call, UdonCollection& udons) {
    text::forEachItem(method::format::recordedArguments(call), ",",
                      [&udons](std::string_view value) { udons.addValue(value); });
}

}  // namespace

bool ControlUserDef_Obj(method::EditorState& state, const std::string& name, const std::string& value) {
    return standardHandler(state, "vrnMethodEditor.VRN_MethodEditor.ControlUserDef_Obj ", [&] {
        if (value.empty() || !state.domConfig.hasChildNodes()) {
            return false;
        }
        const auto key = categoryKey(name);
        if (state.xmlValues->configuration(state.domConfig).lastTextContains(key, value)) {
            return true;
        }
        const auto own = state.services.instrument->ObjectNames(key);
        return own && std::find(own->begin(), own->end(), value) != own->end();
    });
}

std::string GetPredUnitName(method::EditorState& state, const xml::Document& configuration, const std::string& udon) {
    return standardHandler(state, "GetPredUnitName ", [&]() -> std::string {
        if (text::contains(udon, "\"")) {
            return {};
        }
        auto category = state.xmlValues->baselineArguments(state.domMethodBaseline).keyOfName(udon);
        if (!category || category->empty()) {
            category = state.xmlValues->configuration(configuration).keyOfName(udon);
        }
        return category.value_or("");
    });
}

void ClearSpaces(std::string& text) {
    for (const char mark : {' ', '-', '+'}) {
        if (const auto at = text.find(mark); at != std::string::npos) {
            text.resize(at);
        }
    }
}

void UdonCollection::addValue(std::string_view value) {
    if (!value.starts_with("SL.")) {
        return;
    }
    if (known_.contains(value)) {
        return;  // as most are, written as before
    }
    known_.emplace(value);
    std::string cleaned(value);
    ClearSpaces(cleaned);
    if (upperCased_.insert(text::upperCase(cleaned)).second) {
        names_.push_back(std::move(cleaned));
    }
}

void CheckMacroValues(method::EditorState& state, const xml::Document& method, UdonCollection& udons) {
    standardHandler(state, "CheckMacroValues ", [&] {
        const auto sequence = method.selectSingleNode(method::format::sequence.path);
        for (const auto& step : childrenNamed(sequence, method::format::step.name())) {
            addArguments(step.text(), udons);
        }
    });
}

void CheckCycleUdons(method::EditorState& state, const xml::Document& method, UdonCollection& udons) {
    standardHandler(state, "CheckCycleUdons ", [&] {
        for (const auto& atom :
             childrenNamed(method.selectSingleNode(method::format::atoms.path), method::format::atom.name())) {
            addArguments(atom.text(), udons);
        }
    });
}

UdonCollection MethodUdons(method::EditorState& state, const xml::Document& method) {
    return standardHandler(state, "MethodUdons ", [&] {
        UdonCollection udons;
        CheckMacroValues(state, method, udons);
        CheckCycleUdons(state, method, udons);
        return udons;
    });
}

}  // namespace vrn::catalogue
