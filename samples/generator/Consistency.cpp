#include "Consistency.h"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

#include "Definition.h"

namespace vrn::samples {

namespace {

using Set = std::set<std::string, std::less<>>;

[[noreturn]] void fail(const std::string& where, const std::string& what) {
    throw std::runtime_error("sample tables: " + where + ": " + what);
}

void insertOnce(Set& names, const std::string& name, const std::string& where) {
    if (name.empty() || name.find_first_of(",();\"") != std::string::npos) {
        fail(where, "a name cannot be \"" + name + "\"");
    }
    if (!names.insert(name).second) {
        fail(where, "\"" + name + "\" stands there twice");
    }
}

struct Known {
    explicit Known(const Installation& installation) {
        Set objects;
        for (const Object& object : installation.objects) {
            insertOnce(objects, object.type + ": " + object.name, "objects");
            types.insert(object.type);
            if (object.type == "SYRINGE") {
                for (const Property& property : object.properties) {
                    syringeProperties.insert(property.name);
                }
            }
        }
        for (const Atom& atom : installation.atoms) {
            insertOnce(atoms, atom.name, "atoms");
        }
        Set keys;
        for (const NameGroup& group : installation.names) {
            insertOnce(keys, group.key, "categories of names");
            for (const std::string& name : group.names) {
                insertOnce(names, name, "names");
            }
        }
    }

    Set types;
    Set syringeProperties;
    Set atoms;
    Set names;
};

void checkNumbers(const Known& known, const Definition& definition, const std::string& where) {
    std::vector<std::int64_t> limits;
    for (const std::string& field : definition.fields) {
        if (field.starts_with("SYR.")) {
            if (!known.syringeProperties.contains(field.substr(4))) {
                fail(where, "no syringe has " + field);
            }
            continue;
        }
        const auto number = tenths(field);
        if (!number || *number % 10 != 0 || tenthsText(*number) != field) {
            fail(where, field + " is no whole number");
        }
        limits.push_back(*number);
    }
    if (definition.fields.size() > 3) {
        fail(where, "a value has a default, a lowest and a highest value, no more");
    }
    const bool allNumbers = limits.size() == definition.fields.size();
    if (allNumbers && ((limits.size() > 1 && limits[0] < limits[1]) || (limits.size() > 2 && limits[0] > limits[2]))) {
        fail(where, "the default is out of range");
    }
}

void checkAtom(const Known& known, const std::string& atom, const Set& parameters, const std::string& where) {
    const std::size_t open = atom.find('(');
    if (open == std::string::npos || atom.back() != ')' || !known.atoms.contains(atom.substr(0, open))) {
        fail(where, "the instrument has no such atom");
    }
    for (const std::string& argument : split(std::string_view(atom).substr(open + 1, atom.size() - open - 2), ',')) {
        if (!parameters.contains(argument) && !known.names.contains(argument) && !tenths(argument)) {
            fail(where, argument + " is neither a parameter nor a name nor a number");
        }
    }
}

void checkMacro(const Known& known, const Macro& macro) {
    Set parameters;
    for (const std::string& text : macro.definitions) {
        const Definition definition(text);
        const std::string where = macro.name + ", " + text;
        insertOnce(parameters, definition.name, macro.name);
        if (!definition.isObject()) {
            checkNumbers(known, definition, where);
            continue;
        }
        for (const std::string& type : definition.fields) {
            if (!known.types.contains(type)) {
                fail(where, "no object is a " + type);
            }
        }
    }
    for (const std::string& atom : macro.atoms) {
        checkAtom(known, atom, parameters, macro.name + ", " + atom);
    }
}

}  // namespace

void checkTables(const Installation& installation) {
    const Known known(installation);
    Set macros;
    for (const Macro& macro : installation.macros) {
        insertOnce(macros, macro.name, "macros");
        checkMacro(known, macro);
    }
}

void checkDraft(const Installation& installation, const MethodDraft& draft) {
    std::map<std::string, std::size_t, std::less<>> parameterCounts;
    for (const Macro& macro : installation.macros) {
        parameterCounts.emplace(macro.name, macro.definitions.size());
    }
    for (const Step& step : draft.steps) {
        const auto found = parameterCounts.find(step.macro);
        if (found == parameterCounts.end()) {
            fail("method", "no such cycle: " + step.macro);
        }
        if (found->second != step.values.size()) {
            fail("method", step.macro + " takes " + std::to_string(found->second) + " values, not " +
                               std::to_string(step.values.size()));
        }
    }
}

}  // namespace vrn::samples
