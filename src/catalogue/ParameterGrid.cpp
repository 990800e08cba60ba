#include "catalogue/ParameterGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "method/Enabling.h"
#include "text/Lists.h"
#include "text/Numbers.h"
#include "xml/Serialiser.h"

namespace vrn::catalogue {

namespace {

std::optional<double> number(const method::EditorState& state, std::string_view text) {
    return text::parseNumber(text, state.services.locale->decimalSeparator());
}

std::string descriptionOf(const xml::Node& macro) {
    std::string lines;
    if (const auto description = macro.child("Description")) {
        for (const auto& line : contentChildren(description)) {
            lines += line.text();
            lines += text::crlf;
        }
    }
    return lines;
}

// The atoms as the method will hold them: XML text, one element a line.
std::string atomLineOf(const xml::Node& macro) {
    std::string line;
    const auto atoms = macro.child("Atom");
    for (const auto& atom : childrenNamed(atoms, "AtomValue")) {
        line += line.empty() ? "<ATOM>" : "\r\n<ATOM>";
        xml::appendEscapedText(line, atom.text());
        line += "</ATOM>";
    }
    return line;
}

float fieldValue(method::EditorState& state, const std::string& field, std::int32_t unitFactor) {
    if (const auto value = number(state, field)) {
        return static_cast<float>(text::roundToInt32(*value));
    }
    return ReturnValue(state, field, unitFactor);
}

std::string rangeHint(const method::MacroParam& param) {
    std::string hint;
    if (param.minimum) {
        hint = "Range: " + std::string(param.maximum ? "" : "from ") + text::shortestText(*param.minimum);
        if (param.maximum) {
            hint += " to " + text::shortestText(*param.maximum);
        }
        hint += " ";
    }
    if (param.defaultValue) {
        hint += "Default: " + text::shortestText(*param.defaultValue);
    }
    return hint;
}

// The service is told of the first reference among the fields, without its prefix.
void announceReference(method::EditorState& state, const ParameterDefinition& definition) {
    for (std::size_t k = 1; k < definition.fields.size(); ++k) {
        if (!isNumberText(state, definition.fields[k])) {
            auto code = text::replacedAll(definition.fields[k], "SYR.", "");
            text::replaceAll(code, "Syr.", "");
            std::string first;
            std::string second;
            state.services.instrument->UnitPair(code, first, second);
            return;
        }
    }
}

void addValueParameter(method::EditorState& state, const ParameterDefinition& definition, std::int32_t unitFactor) {
    method::MacroParam param;
    param.field0 = definition.fields[0];
    param.anyText = definition.fields.size() == 1;
    announceReference(state, definition);
    const auto resolve = [&](std::size_t k) {
        return k < definition.fields.size() ? std::optional(fieldValue(state, definition.fields[k], unitFactor))
                                            : std::nullopt;
    };
    param.defaultValue = resolve(1);
    param.minimum = resolve(2);
    param.maximum = resolve(3);
    param.text = rangeHint(param);
    controls::GridRow row;
    row.name = definition.displayName();
    row.value = param.defaultValue ? text::shortestText(*param.defaultValue) : std::string();
    state.arrMacroParams.push_back(std::move(param));
    state.grdMacro.addRow(std::move(row));
}

// A type's objects once each, as a list text without separators at its ends.
std::string objectItems(method::EditorState& state, const ParameterDefinition& definition) {
    std::string list;
    for (std::size_t k = 1; k < definition.fields.size(); ++k) {
        const auto objects =
            state.xmlValues->RetrieveValues(1, state.domlatestKex, state.domConfig, definition.fields[k]);
        if (!text::contains(list, objects)) {
            list += ";" + objects;
        }
    }
    const auto begin = list.find_first_not_of(';');
    return begin == std::string::npos ? std::string() : list.substr(begin, list.find_last_not_of(';') - begin + 1);
}

// "TRAY;STACK" reads "TRAY Or STACK".
std::string typesHint(std::string_view definition) {
    auto hint = text::replacedAll(std::string(definition.substr(definition.find(';') + 1)), ";", " Or ");
    if (hint.ends_with(" Or ") || hint.ends_with(" OR ") || hint.ends_with(" or ") || hint.ends_with(" oR ")) {
        hint.resize(hint.size() - 4);
    }
    return hint;
}

void addObjectParameter(method::EditorState& state, const ParameterDefinition& definition, std::string_view text) {
    const int position = state.grdMacro.rowCount();
    if (position > std::numeric_limits<std::int16_t>::max()) {
        errors::throwOverflow();
    }
    method::MacroParam param;
    param.field0 = definition.fields[0];
    param.text = typesHint(text);
    controls::GridRow row;
    row.name = definition.displayName();
    row.style = controls::EditStyle::DropDownList;
    row.items = text::split(objectItems(state, definition), ";");
    row.value = row.items.empty() ? std::string() : row.items.front();
    state.arrMacroParams.push_back(std::move(param));
    state.grdMacro.addRow(std::move(row));
    state.arrObjectPositions.push_back(static_cast<std::int16_t>(position));
}

void addParameter(method::EditorState& state, const std::string& text) {
    const ParameterDefinition definition(text);
    std::string unitText;
    std::int32_t unitFactor = 1;
    if (const auto code = definition.unitCode(); code && !code->empty()) {
        state.services.instrument->UnitInfo(*code, unitText, unitFactor);
    }
    if (definition.isObject()) {
        addObjectParameter(state, definition, text);
    } else {
        addValueParameter(state, definition, unitFactor);
    }
}

}  // namespace

bool isNumberText(const method::EditorState& state, std::string_view text) { return number(state, text).has_value(); }

void FillMacros(method::EditorState& state) noexcept {
    standardHandler(state, "FillMacros ", [&] {
        const auto& index = state.xmlValues->macros(state.domMacros);
        for (std::size_t i = 0; i < index.macros().size(); ++i) {
            if (!index.names()[i]) {
                errors::throwObjectNotSet();
            }
            state.cboSelectedMacro.addItem(*index.names()[i]);
            if (auto description = descriptionOf(index.macros()[i]); !description.empty()) {
                state.cboSelectedMacro.setToolTip(state.cboSelectedMacro.count() - 1, std::move(description));
            }
        }
    });
}

void fillSyringesize(method::EditorState& state) noexcept {
    standardHandler(state, "vrnMethodEditor.VRN_MethodEditor.fillSyringesize ", [&] {
        const auto syringes = state.xmlValues->RetrieveValues(1, state.domlatestKex, state.domConfig, "SYRINGE");
        for (auto& syringe : text::split(syringes, ";")) {
            state.cboSyringe.addItem(std::move(syringe));
        }
        if (state.cboSyringe.count() > 0) {
            state.cboSyringe.setListIndex(0);
        }
    });
}

std::string ObjectPropertyValue(method::EditorState& state, const std::string& objectType,
                                const std::string& objectName, const std::string& propertyName,
                                const std::string& filterProperty) {
    const auto& index = state.xmlValues->objects(state.domlatestKex);
    return objectName.empty() ? index.namesWithProperty(objectType, filterProperty)
                              : index.propertyOf(objectType, objectName, propertyName);
}

float ReturnValue(method::EditorState& state, const std::string& field, std::int32_t unitFactor) noexcept {
    return standardHandler(state, "ReturnValue ", [&]() -> float {
        const auto dot = field.find('.');
        const auto property = dot == std::string::npos ? field : field.substr(dot + 1);
        const auto syringe = state.cboSyringe.text();
        // Without a syringe the look-up would answer with the list of all of them.
        const auto text = syringe.empty() ? std::string() : ObjectPropertyValue(state, "SYRINGE", syringe, property);
        const auto value = number(state, text);
        const auto single = value && unitFactor >= 1 ? static_cast<float>(*value / unitFactor) : 0.0F;
        if (std::isinf(single)) {
            errors::throwOverflow();
        }
        return single;
    });
}

void macroParams(method::EditorState& state, const std::string& name) noexcept {
    standardHandler(state, "macroParams ", [&] {
        const auto macro = state.xmlValues->macros(state.domMacros).find(name);
        if (!macro) {
            method::ChangeGridTopRow(state);
            return;
        }
        state.strAtomLine = atomLineOf(macro);
        state.arrMacroParams.assign(1, {});
        state.arrObjectPositions.assign(1, 0);
        state.strShownMacro = name;
        for (const auto& definition : definitionTexts(macro)) {
            addParameter(state, definition);
        }
        method::ChangeGridTopRow(state);
    });
}

bool IsObjectPosition(const method::EditorState& state, int row) noexcept {
    // Element 0 stands for no row; the others are in row order.
    return std::binary_search(state.arrObjectPositions.begin() + 1, state.arrObjectPositions.end(), row);
}

std::string GetCurrenMacroParams(const method::EditorState& state) {
    std::string values;
    for (int row = 1; row < state.grdMacro.rowCount(); ++row) {
        values += (row == 1 ? "" : ",") + state.grdMacro.cellText(row, 1);
    }
    return values;
}

}  // namespace vrn::catalogue
