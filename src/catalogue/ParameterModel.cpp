#include "catalogue/ParameterModel.h"

#include <span>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "catalogue/ParameterGrid.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::catalogue {

namespace {

float fieldValue(method::EditorState& state, const std::string& field, std::int32_t unitFactor) {
    if (const auto value = text::parseNumber(field, state.services.locale->decimalSeparator())) {
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

// The service is told of the first reference among the fields, without its prefix. Whether there is one.
bool announceReference(method::EditorState& state, const ParameterDefinition& definition) {
    for (std::size_t k = 1; k < definition.fields.size(); ++k) {
        if (!isNumberText(state, definition.fields[k])) {
            auto code = text::replacedAll(definition.fields[k], "SYR.", "");
            text::replaceAll(code, "Syr.", "");
            std::string first;
            std::string second;
            state.services.instrument->UnitPair(code, first, second);
            return true;
        }
    }
    return false;
}

Parameter valueParameter(method::EditorState& state, const ParameterDefinition& definition, std::int32_t unitFactor) {
    Parameter parameter;
    auto& param = parameter.model;
    param.field0 = definition.fields[0];
    param.anyText = definition.fields.size() == 1;
    parameter.followsSyringe = announceReference(state, definition);
    const auto resolve = [&](std::size_t k) {
        return k < definition.fields.size() ? std::optional(fieldValue(state, definition.fields[k], unitFactor))
                                            : std::nullopt;
    };
    param.defaultValue = resolve(1);
    param.minimum = resolve(2);
    param.maximum = resolve(3);
    param.text = rangeHint(param);
    parameter.row.value = param.defaultValue ? text::shortestText(*param.defaultValue) : std::string();
    return parameter;
}

// "TRAY;STACK" reads "TRAY Or STACK".
std::string typesHint(std::string_view definition) {
    auto hint = text::replacedAll(std::string(definition.substr(definition.find(';') + 1)), ";", " Or ");
    if (hint.ends_with(" Or ") || hint.ends_with(" OR ") || hint.ends_with(" or ") || hint.ends_with(" oR ")) {
        hint.resize(hint.size() - 4);
    }
    return hint;
}

Parameter objectParameter(method::EditorState& state, const ParameterDefinition& definition, std::string_view text) {
    Parameter parameter;
    parameter.isObject = true;
    parameter.model.field0 = definition.fields[0];
    parameter.model.text = typesHint(text);
    parameter.row.style = controls::EditStyle::DropDownList;
    parameter.row.choices =
        state.xmlValues->objectChoices(state.domlatestKex, state.domConfig, std::span(definition.fields).subspan(1));
    const auto& items = parameter.row.items();
    parameter.row.value = items.empty() ? std::string() : items.front();
    return parameter;
}

}  // namespace

Parameter parameterOf(method::EditorState& state, const std::string& definitionText) {
    const ParameterDefinition definition(definitionText);
    std::string unitText;
    std::int32_t unitFactor = 1;
    const auto code = definition.unitCode();
    if (code && !code->empty()) {
        state.services.instrument->UnitInfo(*code, unitText, unitFactor);
    }
    auto parameter = definition.isObject() ? objectParameter(state, definition, definitionText)
                                           : valueParameter(state, definition, unitFactor);
    parameter.row.name = definition.displayName();
    parameter.unit = unitText.empty() ? code.value_or("") : unitText;
    return parameter;
}

std::vector<Parameter> parametersOf(method::EditorState& state, const xml::Node& macro) {
    std::vector<Parameter> parameters;
    for (const auto& definition : definitionTexts(macro)) {
        parameters.push_back(parameterOf(state, definition));
    }
    return parameters;
}

}  // namespace vrn::catalogue
