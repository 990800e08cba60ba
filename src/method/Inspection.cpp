#include "method/Inspection.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "method/Format.h"
#include "method/RecordedParts.h"
#include "method/Timestamps.h"
#include "text/Lists.h"

namespace vrn::method {

namespace {

bool isWhole(const Inspection& inspection) {
    return !inspection.steps.empty() &&
           std::all_of(inspection.steps.begin(), inspection.steps.end(),
                       [](const InspectedStep& step) { return step.readable && step.known; });
}

// The names of the cycles that a save embeds, in order of their first use; kept as a list text.
std::vector<std::string> cyclesOf(const std::vector<InspectedStep>& steps) {
    std::set<std::string_view> seen;
    std::vector<std::string> names;
    for (const auto& step : steps) {
        if (seen.insert(step.macro).second) {
            names.emplace_back(step.macro);
        }
    }
    return text::split(text::join(names, ";"), ";");
}

bool isReference(std::string_view value) { return value.starts_with("SL."); }

// The references among each step's values: all that names are looked for in.
std::vector<MethodMacroEntry> referencesIn(const std::vector<InspectedStep>& steps) {
    std::vector<MethodMacroEntry> entries;
    for (const auto& step : steps) {
        std::vector<std::string> references;
        for (const auto& value : step.values) {
            if (isReference(value.value)) {
                references.emplace_back(value.value);
            }
        }
        for (const auto* const others : {&step.surplus, &step.unchecked}) {
            for (const auto& value : *others) {
                if (isReference(value)) {
                    references.emplace_back(value);
                }
            }
        }
        entries.push_back({std::string(step.macro), std::move(references)});
    }
    return entries;
}

// The values between a step's parentheses.
std::vector<std::string_view> valuesOf(std::string_view text, const format::StepParentheses& at) {
    std::vector<std::string_view> values;
    auto rest = text.substr(at.open + 1, at.close - at.open - 1);
    if (rest.empty()) {
        return values;
    }
    values.reserve(static_cast<std::size_t>(std::count(rest.begin(), rest.end(), ',')) + 1);
    for (auto comma = rest.find(','); comma != std::string_view::npos; comma = rest.find(',')) {
        values.push_back(rest.substr(0, comma));
        rest.remove_prefix(comma + 1);
    }
    values.push_back(rest);
    return values;
}

bool isAmong(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

void addFault(Inspection& inspection, const CatalogueFault& fault) {
    const bool isTold = std::any_of(inspection.catalogueFaults.begin(), inspection.catalogueFaults.end(),
                                    [&](const CatalogueFault& told) { return told.cycle == fault.cycle; });
    if (!isTold) {
        inspection.catalogueFaults.push_back(fault);
    }
}

}  // namespace

bool Inspection::isOutdated() const noexcept {
    return !cyclesNotEmbedded.empty() || cyclesInOtherOrder || atomsDiffer || configurationDiffers || argumentsDiffer ||
           std::any_of(cycles.begin(), cycles.end(),
                       [](const CycleComparison& cycle) { return cycle.isOutdated() || !cycle.isUsed; }) ||
           std::any_of(steps.begin(), steps.end(), [](const InspectedStep& step) { return !step.surplus.empty(); });
}

const Inspector::Cycle* Inspector::cycle(const std::string& macro) {
    if (const auto known = cycles_.find(macro); known != cycles_.end()) {
        return &known->second;
    }
    const auto node = state_->xmlValues->macros(state_->domMacros).find(macro);
    return node ? &cycles_.emplace(macro, Cycle{catalogue::definitionTexts(node), atomsOf(node)}).first->second
                : nullptr;
}

CycleComparison Inspector::compareCycle(const xml::Document& method, const EmbeddedCycle& cycle, bool isFirst) {
    CycleComparison comparison;
    comparison.name = cycle.name;
    const auto* const own = this->cycle(cycle.name);
    comparison.inCatalogue = own != nullptr;
    comparison.definitionsDiffer = own != nullptr && own->definitions != cycle.definitions;
    if (isFirst) {
        try {
            comparison.dateDiffers = CycleIsDifferent(*state_, method);
        } catch (const errors::Error&) {
            comparison.isNamed = false;
        }
    }
    return comparison;
}

Inspector::Resolved Inspector::resolve(const std::string& macro, const xml::Node& node) {
    Resolved resolved;
    for (const auto& definition : catalogue::definitionTexts(node)) {
        try {
            resolved.parameters.push_back(catalogue::parameterOf(*state_, definition));
        } catch (const errors::Error& error) {
            resolved.fault = {macro, resolved.parameters.size(), definition, error.description()};
            resolved.parameters.clear();
            break;
        }
    }
    return resolved;
}

const Inspector::Resolved* Inspector::resolved(std::string_view macro) {
    auto& known = resolved_[state_->cboSyringe.listIndex()];
    if (const auto found = known.find(macro); found != known.end()) {
        return &found->second;
    }
    const std::string name(macro);
    const auto node = state_->xmlValues->macros(state_->domMacros).find(name);
    return node ? &known.emplace(name, resolve(name, node)).first->second : nullptr;
}

const std::vector<catalogue::Parameter>* Inspector::parameters(const std::string& macro) {
    const auto* const found = resolved(macro);
    return found == nullptr ? nullptr : &found->parameters;
}

const CatalogueFault* Inspector::faultOf(const std::string& macro) {
    const auto* const found = resolved(macro);
    return found == nullptr || !found->fault ? nullptr : &*found->fault;
}

InspectedStep Inspector::inspectStep(std::string_view text, Inspection& inspection) {
    InspectedStep step;
    step.text = text;
    const auto parentheses = format::parenthesesOf(text);
    step.readable = parentheses.has_value();
    if (!step.readable) {
        return step;
    }
    step.macro = text.substr(0, parentheses->open);
    const auto* const found = resolved(step.macro);
    step.known = found != nullptr;
    if (!step.known) {
        return step;
    }
    auto values = valuesOf(text, *parentheses);
    usesNames_ = usesNames_ || std::any_of(values.begin(), values.end(), isReference);
    if (found->fault) {
        step.unchecked = std::move(values);
        addFault(inspection, *found->fault);
        return step;
    }
    const auto& parameters = found->parameters;
    const auto both = std::min(values.size(), parameters.size());
    step.values.reserve(both);
    for (std::size_t i = 0; i < both; ++i) {
        step.values.push_back({&parameters[i], values[i], catalogue::valueStatus(*state_, parameters[i], values[i])});
    }
    step.surplus.assign(values.begin() + static_cast<std::ptrdiff_t>(both), values.end());
    for (auto i = both; i < parameters.size(); ++i) {
        step.missing.push_back(&parameters[i]);
    }
    return step;
}

void Inspector::compareRecorded(Inspection& inspection, const xml::Document& method) {
    const auto wanted = cyclesOf(inspection.steps);
    std::vector<std::string> embedded;
    for (auto& cycle : inspection.cycles) {
        cycle.isUsed = isAmong(wanted, cycle.name);
        if (cycle.isUsed) {
            embedded.push_back(cycle.name);
        }
    }
    std::copy_if(wanted.begin(), wanted.end(), std::back_inserter(inspection.cyclesNotEmbedded),
                 [&](const std::string& name) { return !isAmong(embedded, name); });
    inspection.cyclesInOtherOrder = inspection.cyclesNotEmbedded.empty() && embedded != wanted;
    const auto recorded = recordedParts(method);
    // The cycle that was shown when the method was saved: the first one as a rule, but the user may have looked at another.
    inspection.atomsDiffer = std::none_of(wanted.begin(), wanted.end(), [&](const std::string& name) {
        const auto* const own = cycle(name);
        return own != nullptr && own->atoms == recorded.atoms;
    });
    const std::vector<NamedArgument> noConfiguration(1);
    const bool isPlain = !usesNames_ && recorded.configuration == noConfiguration && recorded.arguments.empty();
    const bool atomsUseNames = std::any_of(recorded.atoms.begin(), recorded.atoms.end(),
                                           [](const std::string& atom) { return text::contains(atom, "SL."); });
    if (isPlain && !atomsUseNames) {
        return;
    }
    state_->domMethodBaseline = method;  // categories that the method has on record count more than the configuration's
    const auto inUse = namesInUse(*state_, method, referencesIn(inspection.steps));
    inspection.configurationDiffers = recorded.configuration != inUse.configuration;
    inspection.argumentsDiffer = recorded.arguments != inUse.arguments;
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
    usesNames_ = false;
    inspection.steps.reserve(inspection.content.steps.size());
    for (const auto& text : inspection.content.steps) {
        inspection.steps.push_back(inspectStep(text, inspection));
    }
    for (const auto& cycle : inspection.content.cycles) {
        inspection.cycles.push_back(compareCycle(method, cycle, inspection.cycles.empty()));
    }
    if (isWhole(inspection)) {
        compareRecorded(inspection, method);
    }
    return inspection;
}

}  // namespace vrn::method
