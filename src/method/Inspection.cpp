#include "method/Inspection.h"

#include <algorithm>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "method/Timestamps.h"

namespace vrn::method {

const std::vector<std::string>* Inspector::definitions(const std::string& macro) {
    if (const auto known = definitions_.find(macro); known != definitions_.end()) {
        return &known->second;
    }
    const auto node = state_->xmlValues->macros(state_->domMacros).find(macro);
    return node ? &definitions_.emplace(macro, catalogue::definitionTexts(node)).first->second : nullptr;
}

std::vector<CycleComparison> Inspector::compareCycles(const xml::Document& method, const MethodContent& content) {
    std::vector<CycleComparison> comparisons;
    for (const auto& cycle : content.cycles) {
        CycleComparison comparison;
        comparison.name = cycle.name;
        const auto* const own = definitions(cycle.name);
        comparison.inCatalogue = own != nullptr;
        comparison.dateDiffers = comparisons.empty() && standardHandler(*state_, "SetXmlDocuments ", [&] {
                                     return CycleIsDifferent(*state_, method);
                                 });
        comparison.definitionsDiffer = own != nullptr && *own != cycle.definitions;
        comparisons.push_back(std::move(comparison));
    }
    return comparisons;
}

const std::vector<catalogue::Parameter>* Inspector::parameters(const std::string& macro) {
    const std::pair key(state_->cboSyringe.listIndex(), macro);
    if (const auto known = parameters_.find(key); known != parameters_.end()) {
        return &known->second;
    }
    const auto node = state_->xmlValues->macros(state_->domMacros).find(macro);
    if (!node) {
        return nullptr;
    }
    auto resolved =
        standardHandler(*state_, "macroParams ", [&] { return std::optional(catalogue::parametersOf(*state_, node)); });
    // Not kept when it failed: every method with the cycle is to hear of it.
    return resolved ? &parameters_.emplace(key, std::move(*resolved)).first->second : &none_;
}

InspectedStep Inspector::inspectStep(const std::string& text) {
    InspectedStep step;
    step.text = text;
    MethodMacroEntry entry;
    try {
        entry = stepOf(text);
    } catch (const errors::Error&) {
        step.readable = false;
        return step;
    }
    step.macro = entry.MacroName;
    const auto* const parameters = this->parameters(step.macro);
    step.known = parameters != nullptr;
    if (!step.known) {
        return step;
    }
    auto values = entry.MacroValues.value_or(std::vector<std::string>());
    const auto both = std::min(values.size(), parameters->size());
    for (std::size_t i = 0; i < both; ++i) {
        const auto& parameter = (*parameters)[i];
        const auto status = catalogue::valueStatus(*state_, parameter, values[i]);
        step.values.push_back({&parameter, std::move(values[i]), status});
    }
    for (auto i = both; i < values.size(); ++i) {
        step.surplus.push_back(std::move(values[i]));
    }
    for (auto i = both; i < parameters->size(); ++i) {
        step.missing.push_back(&(*parameters)[i]);
    }
    return step;
}

Inspection Inspector::inspect(const xml::Document& method) {
    Inspection inspection;
    state_->domMethod = method;
    inspection.verification = VerifyLoadedMethod(*state_);
    inspection.content = contentOf(method);
    const auto& syringe = inspection.content.syringe;
    const auto index = syringe ? state_->cboSyringe.indexOf(*syringe) : controls::noSelection;
    inspection.syringeKnown = index != controls::noSelection;
    state_->cboSyringe.setListIndex(index);
    for (const auto& text : inspection.content.steps) {
        inspection.steps.push_back(inspectStep(text));
    }
    inspection.cycles = compareCycles(method, inspection.content);
    return inspection;
}

}  // namespace vrn::method
