#include "method/CycleUpdate.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "catalogue/ParameterModel.h"
#include "method/MethodContent.h"

namespace vrn::method {

namespace {

using catalogue::ParameterDefinition;

// A parameter is told by its name; of several with one name in a cycle, by which of them it is.
using ParameterKey = std::pair<std::string, int>;

struct Slot {
    ParameterKey key;
    std::string unit;
};

std::vector<Slot> slotsOf(const std::vector<std::string>& definitions) {
    std::vector<Slot> slots;
    std::map<std::string, int> seen;
    for (const auto& text : definitions) {
        const ParameterDefinition definition(text);
        auto name = definition.displayName();
        const int occurrence = seen[name]++;
        slots.push_back({{std::move(name), occurrence}, definition.unitCode().value_or("")});
    }
    return slots;
}

bool sameParameters(const std::vector<Slot>& a, const std::vector<Slot>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Slot& x, const Slot& y) { return x.key == y.key && x.unit == y.unit; });
}

// The old and the new form of one cycle, and what is needed to go from one to the other. Where the parameters are the same, or what
// they were is not known, values stay where they are.
struct Conversion {
    bool isByName = false;
    std::vector<Slot> before;
    std::vector<Slot> after;
    std::vector<std::string> defaults;
};

void convertStep(MethodMacroEntry& entry, std::size_t step, const Conversion& conversion,
                 std::vector<ValueChange>& changes) {
    auto old = entry.MacroValues.value_or(std::vector<std::string>());
    std::map<ParameterKey, std::size_t> positions;
    for (std::size_t i = 0; i < conversion.before.size() && i < old.size(); ++i) {
        positions.emplace(conversion.before[i].key, i);
    }
    std::vector<std::string> values;
    for (std::size_t i = 0; i < conversion.after.size(); ++i) {
        const auto& slot = conversion.after[i];
        const auto found = positions.find(slot.key);
        if (found == positions.end()) {
            values.push_back(conversion.defaults.at(i));
            changes.push_back({ValueChange::Kind::Added, step, entry.MacroName, slot.key.first, values.back()});
            continue;
        }
        values.push_back(std::move(old[found->second]));
        if (conversion.before[found->second].unit != slot.unit) {
            changes.push_back({ValueChange::Kind::UnitChanged, step, entry.MacroName, slot.key.first, values.back()});
        }
        positions.erase(found);
    }
    for (std::size_t i = 0; i < old.size(); ++i) {
        const bool isNamed = i < conversion.before.size();
        if (!isNamed || positions.contains(conversion.before[i].key)) {
            changes.push_back({ValueChange::Kind::Dropped, step, entry.MacroName,
                               isNamed ? conversion.before[i].key.first : std::string(), std::move(old[i])});
        }
    }
    entry.MacroValues = values.empty() ? std::nullopt : std::optional(std::move(values));
}

// Values after the last parameter, which the grid would not show.
void dropSurplus(MethodMacroEntry& entry, std::size_t step, const Conversion& conversion,
                 std::vector<ValueChange>& changes) {
    auto& values = *entry.MacroValues;
    for (auto i = conversion.after.size(); i < values.size(); ++i) {
        changes.push_back({ValueChange::Kind::Dropped, step, entry.MacroName, {}, std::move(values[i])});
    }
    values.resize(conversion.after.size());
    if (values.empty()) {
        entry.MacroValues.reset();
    }
}

// Nothing when the catalogue does not have the cycle.
std::optional<Conversion> conversionOf(EditorState& state, const std::vector<EmbeddedCycle>& cycles,
                                       const std::string& name) {
    const auto* const embedded = findCycle(cycles, name);
    const auto macro = state.xmlValues->macros(state.domMacros).find(name);
    if (!macro) {
        return std::nullopt;
    }
    Conversion conversion;
    conversion.after = slotsOf(catalogue::definitionTexts(macro));
    if (embedded != nullptr) {
        conversion.before = slotsOf(embedded->definitions);
        conversion.isByName = !sameParameters(conversion.before, conversion.after);
    }
    if (conversion.isByName) {
        for (auto& parameter : catalogue::parametersOf(state, macro)) {
            conversion.defaults.push_back(std::move(parameter.row.value));
        }
    }
    return conversion;
}

}  // namespace

std::vector<ValueChange> adoptCatalogueCycles(EditorState& state) {
    std::vector<ValueChange> changes;
    if (sequenceIsEmpty(state)) {
        return changes;
    }
    const auto cycles = embeddedCycles(state.domMethod);
    std::map<std::string, std::optional<Conversion>> conversions;
    bool rearranged = false;
    for (std::size_t i = 0; i < state.arrMethodMacros.size(); ++i) {
        auto& entry = state.arrMethodMacros[i];
        auto known = conversions.find(entry.MacroName);
        if (known == conversions.end()) {
            known = conversions.emplace(entry.MacroName, conversionOf(state, cycles, entry.MacroName)).first;
        }
        const auto& conversion = known->second;
        if (!conversion) {
            continue;
        }
        if (conversion->isByName) {
            convertStep(entry, i, *conversion, changes);
            rearranged = true;
        } else if (entry.MacroValues && entry.MacroValues->size() > conversion->after.size()) {
            dropSurplus(entry, i, *conversion, changes);
            rearranged = true;
        }
    }
    if (rearranged) {
        state.lstMethodMacroList.setListIndex(0);
    }
    return changes;
}

}  // namespace vrn::method
