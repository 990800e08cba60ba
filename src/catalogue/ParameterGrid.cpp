#include "catalogue/ParameterGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "catalogue/ParameterModel.h"
#include "method/Enabling.h"
#include "method/Format.h"
#include "text/Lists.h"
#include "text/Numbers.h"
#include "text/Unicode.h"

namespace vrn::catalogue {

namespace {

std::optional<double> number(const method::EditorState& state, std::string_view text) {
    return text::parseNumber(text, state.services.locale->decimalSeparator());
}

std::string descriptionOf(const xml::Node& macro) {
    std::string lines;
    if (const auto description = macro.child("Description")) {
        forEachContentChild(description, [&lines](const xml::Node& /*node*/, std::string_view line,
                                                  bool /*isElement*/) { lines.append(line).append(text::crlf); });
    }
    return lines;
}

// The atoms as the method will hold them: XML text, one element a line.
std::string atomLineOf(const xml::Node& macro) {
    std::string line;
    const auto atoms = macro.child("Atom");
    for (const auto& atom : childrenNamed(atoms, "AtomValue")) {
        // Nothing looks at white space at its ends, and a text of that alone would not survive every library.
        method::format::appendLeaf(line, method::format::atom, text::trimXmlSpace(atom.text()));
    }
    line.resize(line.find_last_not_of(text::crlf) + 1);
    return line;
}

void addRow(method::EditorState& state, Parameter parameter) {
    const int position = state.grdMacro.rowCount();
    if (parameter.isObject) {
        if (position > std::numeric_limits<std::int16_t>::max()) {
            errors::throwOverflow();
        }
        state.arrObjectPositions.push_back(static_cast<std::int16_t>(position));
    }
    state.arrMacroParams.push_back(std::move(parameter.model));
    state.grdMacro.addRow(std::move(parameter.row));
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
            state.cboSelectedMacro.addItem(std::string(*index.names()[i]));
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
            addRow(state, parameterOf(state, definition));
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
