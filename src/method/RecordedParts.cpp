#include "method/RecordedParts.h"

#include <utility>

#include "catalogue/Configuration.h"
#include "catalogue/Indexes.h"
#include "method/Format.h"
#include "method/MethodWriter.h"
#include "text/Lists.h"

namespace vrn::method {

namespace {

std::vector<std::string> atomsIn(const xml::Node& line) {
    std::vector<std::string> atoms;
    if (line) {
        for (const auto& child : catalogue::contentChildren(line)) {
            atoms.push_back(child.isElement && child.node.name() != format::atom.name() ? child.node.xml()
                                                                                        : child.text);
        }
    }
    return atoms;
}

std::vector<NamedArgument> argumentsIn(const xml::Node& part) {
    std::vector<NamedArgument> arguments;
    if (!part) {
        return arguments;
    }
    for (const auto& child : catalogue::contentChildren(part)) {
        const auto& object = child.node;
        NamedArgument argument;
        std::size_t known = 0;
        if (object.name() == format::object.name()) {
            const auto name = object.child(format::objectName.name());
            const auto udon = object.child(format::udon.name());
            argument = {name ? name.text() : "", udon ? udon.text() : ""};
            known = (name ? 1U : 0U) + (udon ? 1U : 0U);
        }
        if (known != 2 || catalogue::contentChildren(object).size() != known) {
            argument.category = object.xml();  // no category has a name like that
        }
        arguments.push_back(std::move(argument));
    }
    return arguments;
}

NamedArgument withCategory(EditorState& state, const std::string& name) {
    return {catalogue::GetPredUnitName(state, state.domConfig, name), name};
}

}  // namespace

RecordedParts recordedParts(const xml::Document& method) {
    const auto root = method.documentElement();
    return {atomsIn(root.child(format::atoms.name())), argumentsIn(root.child(format::configuration.name())),
            argumentsIn(root.child(format::arguments.name()))};
}

std::vector<std::string> atomsOf(const xml::Node& macro) {
    std::vector<std::string> atoms;
    for (const auto& atom : catalogue::childrenNamed(macro.child("Atom"), "AtomValue")) {
        atoms.push_back(atom.text());
    }
    return atoms;
}

RecordedParts namesInUse(EditorState& state, const xml::Document& method, const std::vector<MethodMacroEntry>& steps) {
    std::vector<std::string> cycles;
    UdonsByMacro byCycle;
    catalogue::UdonCollection all;
    for (const auto& step : steps) {
        auto [entry, isNew] = byCycle.try_emplace(step.MacroName);
        if (isNew) {
            cycles.push_back(step.MacroName);
        }
        if (step.MacroValues) {
            for (const auto& value : *step.MacroValues) {
                entry->second.addValue(value);
                all.addValue(value);
            }
        }
    }
    catalogue::CheckCycleUdons(state, method, all);
    RecordedParts parts;
    for (const auto& cycle : cycles) {
        // List texts: a name with a separator in it becomes two.
        std::vector<std::string> categories;
        for (const auto& name : byCycle.at(cycle).names()) {
            categories.push_back(catalogue::GetPredUnitName(state, state.domConfig, name));
        }
        categories = text::split(text::join(categories, ";"), ";");
        const auto names = text::split(text::join(byCycle.at(cycle).names(), ";"), ";");
        for (std::size_t i = 0; i < names.size(); ++i) {
            parts.configuration.push_back({i < categories.size() ? categories[i] : std::string(), names[i]});
        }
    }
    if (parts.configuration.empty()) {
        parts.configuration.emplace_back();
    }
    for (const auto& name : all.names()) {
        parts.arguments.push_back(withCategory(state, name));
    }
    return parts;
}

}  // namespace vrn::method
